// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Writing XML. Every stanza is composed from the inside out: the result of one level is the inner text of the next.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

/// An attribute to write. The value is plain text: composing escapes it.
struct XmlPair {
    std::u16string_view name;
    std::u16string_view value;
};

/// One element as text. `inner` is XML already and stands as it is; when it is empty the short form is written. The
/// attributes stand in the order given, empty ones too.
std::u16string lutCPW(std::u16string_view name, std::u16string_view inner,
                      std::initializer_list<XmlPair> attributes = {});

/// Plain text as XML: `& < > " '` become entities, and what XML 1.0 does not allow (U+0000 to U+001F but tab, line feed
/// and carriage return; lone surrogates; U+FFFE and U+FFFF) is left out, so that no pasted text can break the stream.
std::u16string lutXMLEscapeW(std::u16string_view text);

/// The inverse: puts the five entities and character references back. Anything else stays as it stands.
std::u16string lutXMLRestorW(std::u16string_view text);
