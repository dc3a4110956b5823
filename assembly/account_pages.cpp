// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "assembly/account_pages.h"

#include "dialogs/options.h"
#include "host/record.h"

namespace protolink {

OKU_WORD AccountPages::onOptionsPage(OKU_WORD pageEvent) {
    const auto* event = readRecord<OKU_PAGE_EVENT>(pageEvent);
    if (!event) return 0;
    return pages_.onEvent(*event, {client_.files.displayName, client_.jid.bare},
                          [this] { return std::make_shared<CWndXMPPOptions>(windows_, client_, roster_, avatars_); });
}

}  // namespace protolink
