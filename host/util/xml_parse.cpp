// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/xml_parse.h"

#include <utility>

#include "host/util/xml_reader.h"

void lutXMLParseA(std::vector<xmlElement>& out, std::string_view text) {
    util::XmlReader reader(text.substr(0, text.find('\0')));
    while (reader.readTopLevel()) out.push_back(reader.take());
}

XmlSequence::XmlSequence(std::string_view text)
    : reader_(std::make_unique<util::XmlReader>(text.substr(0, text.find('\0')))) {}

XmlSequence::~XmlSequence() = default;

bool XmlSequence::next(xmlElement& element) {
    if (std::exchange(hasAhead_, false)) {
        element = std::move(ahead_);
        return true;
    }
    if (!reader_) return false;
    if (reader_->readTopLevel()) {
        element = reader_->take();
        return true;
    }
    reader_.reset();
    return false;
}

void XmlSequence::detach() {
    hasAhead_ = next(ahead_);
    if (!reader_) return;
    rest_ = reader_->rest();
    reader_->goOnIn(rest_);
}
