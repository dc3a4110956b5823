// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The single pass from UTF-8 to a tree. Inside of host/util only.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/util/xml_element.h"
#include "host/util/xml_text.h"

namespace util {

/// Reads a text from its begin to its end, one top-level element at a time. Every step tells false when the text ends
/// or turns bad; the reader is of no use from then on.
class XmlReader {
public:
    explicit XmlReader(std::string_view text);

    /// Reads up to the end of the next complete top-level element.
    bool readTopLevel();

    /// The text behind the element that was read last.
    std::string_view rest() const { return {at_, left()}; }
    /// Takes that text from another place.
    void goOnIn(std::string_view rest) {
        at_ = rest.data();
        end_ = at_ + rest.size();
    }

    /// The element that readTopLevel has read.
    xmlElement take();

private:
    /// An element whose closing tag is to come. Its place stays: an element gets no sibling while it is open.
    struct Open {
        xmlElement* element;
        std::string_view name;
    };

    /// A part of the text. Unlike a view it has no first value, so that an array of them costs nothing.
    struct Piece {
        const char* begin;
        const char* end;
        std::string_view text() const { return {begin, static_cast<std::size_t>(end - begin)}; }
    };

    struct RawAttribute {
        Piece name;
        Piece value;
    };

    /// The attributes of a tag are found first and converted then, so that they get their place in one allocation.
    using RawAttributes = std::array<RawAttribute, 16>;

    bool readMarkup();
    bool readOpening();
    xmlElement& addChild(xmlElement& parent);
    bool readAttributes(xmlElement& element, bool& empty);
    bool readRawAttribute(RawAttribute& attribute);
    bool convert(const RawAttribute* raw, std::size_t count, xmlElement& element) const;
    bool readClosing();
    bool readExclamation();
    bool readCData();
    bool skipDeclaration();
    bool skipPast(std::string_view mark);
    bool skipBlanks();
    bool readName(std::string_view& name);
    bool appendText(std::string_view raw, TextPlace place);
    bool appendValue(std::string_view raw, std::u16string& out) const {
        return appendXmlText(raw, end_, TextPlace::Value, &out);
    }

    std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }
    bool follows(std::string_view mark) const { return std::string_view(at_, left()).starts_with(mark); }

    const char* at_;
    const char* end_;
    xmlElement root_;
    std::vector<Open> open_;
};

}  // namespace util
