// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The reader of received XML.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/util/xml_element.h"

namespace util {
class XmlReader;
}

/// Reads UTF-8 XML and appends each top-level element to `out`, in order. There may be any number of them;
/// character data, comments and instructions between them are dropped. A NUL ends the text.
///
/// Where the text turns bad, reading ends without a word: the top-level elements that were complete stay, the one that
/// was begun is dropped. Bad are tags that do not match or do not end, `<` in a value, an attribute given twice, a
/// control character, a reference to a character that XML does not allow, and every entity but the five predefined
/// ones: none is ever expanded. Bytes that are no UTF-8 are not bad, they become U+FFFD.
///
/// Time grows with the length of the text only, and the stack does not grow with the depth of the tree.
void lutXMLParseA(std::vector<xmlElement>& out, std::string_view text);

/// The same elements one at a time, so that no more than one of them is in memory. The text is borrowed.
class XmlSequence {
public:
    explicit XmlSequence(std::string_view text);
    ~XmlSequence();
    XmlSequence(const XmlSequence&) = delete;
    XmlSequence& operator=(const XmlSequence&) = delete;

    /// Reads the next top-level element; false at the end of what can be read.
    bool next(xmlElement& element);

    /// Reads the first element before its turn and keeps a copy of what is left, so that the text is borrowed no
    /// longer.
    void detach();

private:
    std::unique_ptr<util::XmlReader> reader_;
    xmlElement ahead_;
    bool hasAhead_ = false;
    std::string rest_;
};
