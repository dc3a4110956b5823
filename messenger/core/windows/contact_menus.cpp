// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/windows/contact_menus.h"

#include <algorithm>
#include <array>
#include <QCoreApplication>

#include "host/oku/menu.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

constexpr const char16_t* kListMenu = u"OKU/Loc/ContactList";
constexpr const char16_t* kChatMenu = u"OKU/Loc/ChatWND";

struct KnownItem {
    QLatin1String id;
    const char* caption;
};
constexpr std::array kItems = std::to_array<KnownItem>({
    {QLatin1String("OKU/Contact/Archive"), QT_TRANSLATE_NOOP("ContactMenu", "Archiwum rozmów")},
    {QLatin1String("OKU/Contact/SendFile"), QT_TRANSLATE_NOOP("ContactMenu", "Wyślij plik")},
    {QLatin1String("OKU/Contact/Message"), QT_TRANSLATE_NOOP("ContactMenu", "Wyślij wiadomość")},
    {QLatin1String("OKU/Contact/Chat"), QT_TRANSLATE_NOOP("ContactMenu", "Rozmawiaj")},
    {QLatin1String("OKU/Contact/Delete"), QT_TRANSLATE_NOOP("ContactMenu", "Usuń z listy")},
    {QLatin1String("OKU/Contact/Edit"), QT_TRANSLATE_NOOP("ContactMenu", "Właściwości")},
    {QLatin1String("OKU/Contact/PubDir"), QT_TRANSLATE_NOOP("ContactMenu", "Wizytówka")},
});

QString captionOf(const QString& id) {
    const auto known = std::find_if(kItems.begin(), kItems.end(), [&](const KnownItem& item) { return item.id == id; });
    return known == kItems.end() ? id : QCoreApplication::translate("ContactMenu", known->caption);
}

OKU_WORD OKU_CALL permit(OKU_WORD name, OKU_WORD, OKU_WORD context) {
    const QString id = wideText(name);
    if (id.isEmpty()) return 0;
    MenuItem item;
    item.id = id;
    item.caption = captionOf(id);
    reinterpret_cast<QList<MenuItem>*>(context)->append(item);
    return 1;
}

}  // namespace

void ContactMenus::ask(const AccountEntry& account, const QString& jid, bool inChat) {
    const auto inTurn = [this, of = account.jid(), pfClass = account.pfClass, netId = account.netId, jid, inChat] {
        auto contact = makeRecord<OKU_CONTACT_RECORD>();
        contact.id = widePointer(jid);
        contact.pfClass = widePointer(pfClass);
        contact.netId = netId;
        QList<MenuItem> items;
        auto menu = makeRecord<OKU_CONTACT_MENU>();
        menu.contactCount = 1;
        menu.menu = inChat ? kChatMenu : kListMenu;
        menu.contact = &contact;
        menu.add = permit;
        menu.addContext = wordOf(&items);
        events_.fire(u"OKU/OnMenuRebuild", wordOf(&menu), 0);
        emit told(of, jid, items);
    };
    // From the event loop, so that the answer never comes before whoever asked has heard that it will.
    QMetaObject::invokeMethod(
        this, [this, inTurn] { queue_.post({}, inTurn); }, Qt::QueuedConnection);
}

}  // namespace oku
