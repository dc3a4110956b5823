// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "assembly/account_pages.h"

#include <memory>
#include <optional>

#include "dialogs/options.h"
#include "dialogs/properties_info.h"
#include "dialogs/properties_layout.h"
#include "host/oku/windows.h"
#include "host/record.h"
#include "host/services/pages.h"
#include "plugin/contact_record.h"

namespace protolink {

OKU_WORD AccountPages::onOptionsPage(OKU_WORD pageEvent) {
    const auto* event = readRecord<OKU_PAGE_EVENT>(pageEvent);
    if (!event) return 0;
    const CClientClass& client = account_.client;
    return pages_.onEvent(*event, {client.files.displayName, client.jid.bare}, [this] {
        return std::make_shared<CWndXMPPOptions>(windows_, account_, connection_, parts_.roster, avatars_);
    });
}

OKU_WORD AccountPages::onPropertiesPage(OKU_WORD pageEvent) {
    const auto* event = readRecord<OKU_PAGE_EVENT>(pageEvent);
    if (!event) return 0;
    return pages_.onEvent(*event, {properties::kSettingsTitle, properties::kSettingsDescription}, [this, event] {
        const auto contact = event->contact ? std::optional(readText(event->contact->id)) : std::nullopt;
        return std::make_shared<CWndPropertiesXMPP>(windows_, parts_, contact);
    });
}

OKU_WORD AccountPages::onInformationPage(OKU_WORD pageEvent) {
    const auto* event = readRecord<OKU_PAGE_EVENT>(pageEvent);
    if (!event) return 0;
    return pages_.onEvent(*event, {properties::kInformationTitle, properties::kInformationDescription}, [this, event] {
        const std::u16string contact = event->contact ? readText(event->contact->id) : std::u16string();
        return std::make_shared<CWndPropertiesInfo>(windows_, account_, parts_.contacts, contact);
    });
}

OKU_WORD AccountPages::onAddPages(OKU_WORD propertiesEvent, OKU_WORD properties) const {
    const auto* event = readRecord<OKU_PROPERTIES_EVENT>(propertiesEvent);
    const CClientClass& client = account_.client;
    if (event && event->event == OKU_PROPERTIES_OPEN && isOfAccount(client, event->contact))
        Pages(client.host).addInformationPage({informationPage_, client.context}, properties);
    return 0;
}

}  // namespace protolink
