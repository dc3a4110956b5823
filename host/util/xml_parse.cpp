#include "host/util/xml_parse.h"

#include "host/util/xml_reader.h"

void lutXMLParseA(std::vector<xmlElement>& out, std::string_view text) {
    util::XmlReader reader(text.substr(0, text.find('\0')));
    while (reader.readTopLevel()) out.push_back(reader.take());
}

XmlSequence::XmlSequence(std::string_view text)
    : reader_(std::make_unique<util::XmlReader>(text.substr(0, text.find('\0')))) {}

XmlSequence::~XmlSequence() = default;

bool XmlSequence::next(xmlElement& element) {
    if (!reader_) return false;
    if (reader_->readTopLevel()) {
        element = reader_->take();
        return true;
    }
    reader_.reset();
    return false;
}
