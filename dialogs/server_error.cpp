// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/server_error.h"

#include "im/stanza_errors.h"

namespace protolink {

std::u16string unexpectedAnswer(const xmlElement& stanza) {
    std::u16string text = u"Serwer zwrócił błąd, albo coś czego się nie spodziewaliśmy.";
    std::u16string reason;
    if (stanzaErrorText(reason, stanza.GetChildPtr(u"error"), true)) text += u"\r\n" + reason;
    return text;
}

}  // namespace protolink
