// What the list of contacts shows, and how it is seen.
#include <algorithm>

#include "messenger/core/values/setting_keys.h"
#include "messenger/terminal/talk/session.h"

namespace oku::terminal {

void Session::readContactView() {
    if (account().isEmpty()) return;
    const QVariant shown = messenger_.accounts().settingValue(account(), QString::fromUtf16(setting::contactList));
    if (shown.isValid()) contactView_.shown = shown.toInt() != 0;
    contactView_.reachableOnly =
        messenger_.accounts().settingValue(account(), QString::fromUtf16(setting::reachableOnly)).toInt() != 0;
}

void Session::setContactView(const ContactView& view) {
    const auto keep = [this](const char16_t* key, bool value) {
        if (account().isEmpty()) return;
        const QString reason = messenger_.accounts().setSetting(account(), QString::fromUtf16(key), value ? 1 : 0);
        if (!reason.isEmpty()) tellError(reason);
    };
    if (view.shown && view.shown != contactView_.shown) keep(setting::contactList, *view.shown);
    if (view.reachableOnly != contactView_.reachableOnly) keep(setting::reachableOnly, view.reachableOnly);
    contactView_ = view;
    display_.changed();
}

QStringList Session::accountNames() const {
    QStringList names;
    for (const Account& one : messenger_.accounts().accounts()) names.append(one.jid);
    return names;
}

ListedContact Session::listedOf(const QString& account, const Contact& contact) const {
    ListedContact listed;
    listed.peer = {account, contact.jid};
    listed.name = contact.name.isEmpty() ? contact.jid : contact.name;
    listed.group = contact.group;
    listed.status = contact.status;
    listed.hidden = contact.subscription == QLatin1String("none") || contact.subscription == QLatin1String("from");
    listed.unread = windows_.unread(listed.peer);
    return listed;
}

void Session::eachListed(const std::function<void(const ListedContact&)>& take) const {
    for (const Account& one : messenger_.accounts().accounts())
        for (const Contact& contact : messenger_.roster().contacts(one.jid)) take(listedOf(one.jid, contact));
    for (const Peer& peer : windows_.conversations())
        if (const auto contact = listed(peer); contact && contact->stranger) take(*contact);
}

std::optional<ListedContact> Session::listed(const Peer& peer) const {
    if (const auto contact = messenger_.roster().contact(peer.account, peer.jid))
        return listedOf(peer.account, *contact);
    if (!windows_.isOpen(peer)) return std::nullopt;
    ListedContact stranger;
    stranger.peer = peer;
    stranger.name = nameOf(peer);
    stranger.stranger = true;
    stranger.hidden = true;
    stranger.unread = windows_.unread(peer);
    return stranger;
}

bool Session::isTyping(const Peer& peer) const { return windows_.isTyping(peer); }

}  // namespace oku::terminal
