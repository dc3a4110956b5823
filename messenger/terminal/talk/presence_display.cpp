// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/presence_display.h"

#include <algorithm>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr std::size_t kMostResources = 64;  // remembered of one contact

}  // namespace

PresenceDisplay::PresenceDisplay(const Desk& desk) : desk_(desk) {
    connect(&desk.messenger.roster(), &RosterFace::presenceReceived, this, &PresenceDisplay::onPresence);
    connect(&desk.messenger.accounts(), &AccountsFace::connectionChanged, this,
            [this](const QString& account, ConnectionState state) {
                if (state != ConnectionState::offline) return;
                told_.removeIf([&](auto entry) { return entry.key().account == account; });
            });
}

// The server tells us of ourselves too.
bool PresenceDisplay::isOwn(const QString& account, const QString& jid, const Resource& resource) const {
    if (jid != account) return false;
    const QVariant user = desk_.messenger.accounts().settingValue(account, QStringLiteral("XMPP/User"));
    return resource.name == user.toString().section(u'/', 1);
}

void PresenceDisplay::onPresence(const QString& account, const QString& jid, const Resource& resource) {
    if (isOwn(account, jid, resource)) return;
    const Peer peer{account, jid};
    if (!isNew(peer, resource)) return;
    const QString name = desk_.contacts.nameOf(peer);
    const QString who = resource.name.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, oneLine(resource.name));
    desk_.log.tellOf(
        peer, withDescription(QStringLiteral("%1: %2").arg(who, statusText(resource.status)), resource.description),
        statusStyle(resource.status), statusMark(resource.status));
}

// Remembers it. Of strangers nothing is remembered, of contacts no more resources than a contact can have.
bool PresenceDisplay::isNew(const Peer& peer, const Resource& resource) {
    const bool gone = resource.status == Status::offline;
    auto known = told_.find(peer);
    if (known == told_.end()) {
        if (gone || (peer.jid != peer.account && !desk_.contacts.isContact(peer))) return !gone;
        known = told_.insert(peer, {});
    }
    std::vector<ToldPresence>& told = *known;
    const auto before =
        std::find_if(told.begin(), told.end(), [&](const ToldPresence& one) { return one.resource == resource.name; });
    if (before == told.end()) {
        if (gone) return false;
        if (told.size() >= kMostResources) told.erase(told.begin());
        told.push_back({resource.name, resource.status, resource.description});
        return true;
    }
    if (gone) {
        told.erase(before);
        return true;
    }
    if (before->status == resource.status && before->description == resource.description) return false;
    before->status = resource.status;
    before->description = resource.description;
    return true;
}

}  // namespace oku::terminal
