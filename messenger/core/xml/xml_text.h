// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Text on its way into XML.
namespace oku {

/// Whether each character may stand in XML 1.0; controls such as NUL, halves of surrogate pairs and U+FFFE may not.
bool isXmlText(const QString& text);
/// Text for character data or an attribute's value: escaped, and without what XML 1.0 does not allow.
QString xmlEscaped(const QString& text);

}  // namespace oku
