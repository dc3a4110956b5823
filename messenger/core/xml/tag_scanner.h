// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace oku {

/// One tag of a text of XML, or what else stands between `<` and `>`. The views lead into the text.
struct XmlTag {
    enum class Kind {
        open,
        close,
        empty,
        section,  ///< CDATA
        other,    ///< a comment, an instruction or a document type
    };
    Kind kind = Kind::open;
    std::string_view name;        ///< as it stands, prefix included
    std::string_view attributes;  ///< everything behind the name
    std::size_t begin = 0;
    std::size_t end = 0;  ///< behind the `>`
};

/// Reads a text of XML tag by tag, as the plugin does: where the plugin finds an element, it is found here too. Other
/// text, in which the plugin reads no further, is harmless. Keeps no tree, and its time grows with the length only.
class TagScanner {
public:
    explicit TagScanner(std::string_view text) : text_(text) {}
    /// The next tag, or nothing at the end or where the text is cut.
    std::optional<XmlTag> next();
    /// The same, and nothing that stands between tags but text is passed over.
    std::optional<XmlTag> nextMarkup();

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// One attribute as it stands in its tag.
struct XmlAttribute {
    std::string_view name;
    std::string_view value;  ///< between its quotes, not yet read: see readValue()
};

/// Walks over the attributes of a tag.
class AttributeScanner {
public:
    explicit AttributeScanner(const XmlTag& tag) : text_(tag.attributes) {}
    std::optional<XmlAttribute> next();

private:
    std::string_view text_;
};

/// The value of an attribute, read, or nothing.
std::optional<std::string> attribute(const XmlTag& tag, std::string_view name);
/// Where the attribute stands in the scanned text, from the first letter of its name to its closing quote.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};
std::optional<Span> attributeSpan(const XmlTag& tag, std::string_view name);

/// One direct child of a top-level element.
struct XmlChild {
    XmlTag tag;
    Span content;
};

/// One top-level element of a piece of a stream.
struct Stanza {
    XmlTag tag;
    Span whole;
    std::vector<XmlChild> children;

    [[nodiscard]] std::string attribute(std::string_view name) const;  ///< empty when it is not there
    /// The first child of that name, and of that `xmlns` unless it is empty.
    [[nodiscard]] const XmlChild* child(std::string_view name, std::string_view xmlns = {}) const;
};

/// The complete top-level elements of a text, and the end tags that close nothing.
struct StanzaList {
    std::vector<Stanza> stanzas;
    std::vector<Span> strayEnds;
};
StanzaList splitStanzas(std::string_view text);

}  // namespace oku
