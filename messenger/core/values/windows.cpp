// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/windows.h"

#include <array>

namespace oku {

QString programMenu() { return QStringLiteral("OKU/Menu/Main/Opt"); }

QString boxStyleWord(BoxStyle style) {
    constexpr std::array words = {"error", "warning", "information", "question"};
    return QString::fromLatin1(words[static_cast<std::size_t>(style)]);
}

}  // namespace oku
