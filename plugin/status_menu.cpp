// The status menu, the status window and the host's own status service: the three ways in which a person chooses a
// status.
#include <array>

#include "host/oku/menu.h"
#include "host/oku/windows.h"
#include "host/record.h"
#include "host/services/menus.h"
#include "host/services/status_window.h"
#include "host/util/format.h"
#include "plugin/client_class.h"

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

void CClientClass::addStatusMenu(const AccountEntries& entries) const {
    const Menus menus(host);
    MenuItem item;
    item.parent = accountServiceName(netId, u"Menu");
    item.context = context;
    item.callback = entries.statusMenu;
    for (const auto& row : kStatusItems) {
        item.id = lutCID(row.id, netId);
        item.caption = row.caption;
        item.order = row.order;
        item.icon = row.icon;
        menus.add(item);
    }

    MenuItem separator;
    separator.parent = item.parent;
    separator.context = context;
    separator.id = u"SEPARATOR";
    separator.flags = OKU_MENU_SEPARATOR;
    separator.order = 1003;
    menus.add(separator);

    item.id = lutCID(u"XMPP/%d/Presence/Descr", netId);
    item.caption = u"Opis...";
    item.order = 1002;
    item.icon.clear();
    item.callback = entries.statusWindow;
    menus.add(item);
}

void CClientClass::showStatusIcon(Status shown) const {
    MenuItem item;
    item.id = lutCID(u"XMPP/%d/Menu", netId);
    item.parent = u"OKU/Menu/Main/States";
    item.flags = OKU_MENU_CHANGE_ICON;
    item.icon = formatText(u"XMPP/Icon/%s", statusToName(shown));
    Menus(host).modify(item);
}

OKU_WORD CClientClass::onStatusMenu(OKU_WORD param) {
    const auto* event = readRecord<OKU_MENU_EVENT>(param);
    if (!event || !event->id) return 0;
    const std::u16string id = readText(event->id);
    const std::size_t slash = id.rfind(u'/');
    const Status chosen = statusFromName(slash == std::u16string::npos ? id : id.substr(slash + 1));
    layers->forgetRetries();
    layers->setStatus(chosen, statusDescription, 0);
    return 0;
}

OKU_WORD CClientClass::onStatusWindow() {
    // The window may change the status before it closes.
    const std::u16string description = statusDescription;
    StatusWindow(host).show(netId, description, static_cast<std::uint32_t>(status), descProtect);
    return 0;
}

OKU_WORD CClientClass::onStatusResult(OKU_WORD param) {
    const auto* event = readRecord<OKU_STATUS_WINDOW_EVENT>(param);
    if (!event) return 0;
    if (event->event == OKU_STATUS_WINDOW_CONFIRMED) {
        const auto chosen = static_cast<Status>(event->status);
        const std::u16string description = readText(event->description);
        descProtect = event->protect;
        settings.set(setting::kDescriptionProtected, static_cast<std::int32_t>(descProtect));
        layers->forgetRetries();
        layers->setStatus(chosen, description, 0);
    } else if (event->event == OKU_STATUS_WINDOW_WANTS_TEXTS) {
        const std::u16string address = jid.bare;
        StatusWindow(host).setTexts(address + u" - Ustaw status...", u"Status", address, event->window);
    }
    return 0;
}

OKU_WORD CClientClass::onStatusSet(OKU_WORD param) {
    const auto* wanted = readRecord<OKU_STATUS_SET>(param);
    if (!wanted) return 0;
    const std::u16string description = descProtect ? statusDescription : readText(wanted->description);
    layers->setStatus(static_cast<Status>(wanted->status), description, wanted->flagsWord);
    return 1;
}
