// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/status_menu.h"

#include <array>

#include "host/oku/menu.h"
#include "host/oku/windows.h"
#include "host/record.h"
#include "host/services/menus.h"
#include "host/services/status_window.h"
#include "host/util/format.h"

namespace protolink {

namespace {

struct StatusItem {
    const char16_t* id;
    const char16_t* caption;
    std::int32_t order;
    const char16_t* icon;
};

constexpr std::array<StatusItem, 7> kStatusItems{{
    {u"XMPP/%d/Presence/Online", u"Dostępny", 1010, u"XMPP/Icon/available"},
    {u"XMPP/%d/Presence/Chat", u"Porozmawiajmy", 1009, u"XMPP/Icon/chat"},
    {u"XMPP/%d/Presence/DND", u"Jestem zajęty", 1008, u"XMPP/Icon/dnd"},
    {u"XMPP/%d/Presence/Away", u"Zaraz wracam", 1007, u"XMPP/Icon/away"},
    {u"XMPP/%d/Presence/XA", u"Wrócę później", 1006, u"XMPP/Icon/xa"},
    {u"XMPP/%d/Presence/Invisible", u"Niewidoczny", 1005, u"XMPP/Icon/invisible"},
    {u"XMPP/%d/Presence/Unavailable", u"Niedostępny", 1004, u"XMPP/Icon/unavailable"},
}};

}  // namespace

void StatusMenu::add(const AccountEntries& entries) const {
    const Menus menus(client_.host);
    MenuItem item;
    item.parent = accountServiceName(client_.netId, u"Menu");
    item.context = client_.context;
    item.callback = entries.statusMenu;
    for (const auto& row : kStatusItems) {
        item.id = lutCID(row.id, client_.netId);
        item.caption = row.caption;
        item.order = row.order;
        item.icon = row.icon;
        menus.add(item);
    }

    MenuItem separator;
    separator.parent = item.parent;
    separator.context = client_.context;
    separator.id = u"SEPARATOR";
    separator.flags = OKU_MENU_SEPARATOR;
    separator.order = 1003;
    menus.add(separator);

    item.id = lutCID(u"XMPP/%d/Presence/Descr", client_.netId);
    item.caption = u"Opis...";
    item.order = 1002;
    item.icon.clear();
    item.callback = entries.statusWindow;
    menus.add(item);
}

OKU_WORD StatusMenu::onStatusMenu(OKU_WORD param) {
    const auto* event = readRecord<OKU_MENU_EVENT>(param);
    if (!event || !event->id) return 0;
    const std::u16string id = readText(event->id);
    const std::size_t slash = id.rfind(u'/');
    const Status chosen = statusFromName(slash == std::u16string::npos ? id : id.substr(slash + 1));
    client_.session->forgetRetries();
    client_.session->setStatus(chosen, client_.statusDescription, 0);
    return 0;
}

OKU_WORD StatusMenu::onStatusWindow() {
    // The window may change the status before it closes.
    const std::u16string description = client_.statusDescription;
    StatusWindow(client_.host)
        .show(client_.netId, description, static_cast<std::uint32_t>(client_.status), client_.descProtect);
    return 0;
}

OKU_WORD StatusMenu::onStatusResult(OKU_WORD param) {
    const auto* event = readRecord<OKU_STATUS_WINDOW_EVENT>(param);
    if (!event) return 0;
    if (event->event == OKU_STATUS_WINDOW_CONFIRMED) {
        const auto chosen = static_cast<Status>(event->status);
        const std::u16string description = readText(event->description);
        client_.descProtect = event->protect;
        client_.settings.set(setting::kDescriptionProtected, static_cast<std::int32_t>(client_.descProtect));
        client_.session->forgetRetries();
        client_.session->setStatus(chosen, description, 0);
    } else if (event->event == OKU_STATUS_WINDOW_WANTS_TEXTS) {
        const std::u16string address = client_.jid.bare;
        StatusWindow(client_.host).setTexts(address + u" - Ustaw status...", u"Status", address, event->window);
    }
    return 0;
}

OKU_WORD StatusMenu::onStatusSet(OKU_WORD param) {
    const auto* wanted = readRecord<OKU_STATUS_SET>(param);
    if (!wanted) return 0;
    const std::u16string description = client_.descProtect ? client_.statusDescription : readText(wanted->description);
    client_.session->setStatus(static_cast<Status>(wanted->status), description, wanted->flagsWord);
    return 1;
}

}  // namespace protolink
