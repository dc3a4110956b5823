// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "assembly/account_pages.h"

#include "dialogs/options.h"
#include "host/record.h"

namespace protolink {

OKU_WORD AccountPages::onOptionsPage(OKU_WORD pageEvent) {
    const auto* event = readRecord<OKU_PAGE_EVENT>(pageEvent);
    if (!event) return 0;
    const CClientClass& client = account_.client;
    return pages_.onEvent(*event, {client.files.displayName, client.jid.bare}, [this] {
        return std::make_shared<CWndXMPPOptions>(windows_, account_, connection_, roster_, avatars_);
    });
}

}  // namespace protolink
