// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/contact_offers.h"

#include <algorithm>
#include <array>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/arguments.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

/// What of the plugin's menu is done by which command.
struct Deed {
    QLatin1String item;
    QLatin1String command;
};
constexpr std::array kDeeds = std::to_array<Deed>({
    {QLatin1String("OKU/Contact/Archive"), QLatin1String("/history")},
    {QLatin1String("OKU/Contact/SendFile"), QLatin1String("/file")},
    {QLatin1String("OKU/Contact/Message"), QLatin1String("/msg")},
    {QLatin1String("OKU/Contact/Chat"), QLatin1String("/chat-with")},
    {QLatin1String("OKU/Contact/Delete"), QLatin1String("/remove")},
    {QLatin1String("OKU/Contact/Edit"), QLatin1String("/properties")},
    {QLatin1String("OKU/Contact/PubDir"), QLatin1String("/card")},
});

}  // namespace

ContactOffers::ContactOffers(const Desk& desk, DialogPrompt& dialogs) : desk_(desk), dialogs_(dialogs) {
    connect(&desk.messenger.dialogs(), &DialogsFace::propertyPagesTold, this,
            [this](const QString& account, const QString& jid, const QList<DialogPage>& pages) {
                onPages({account, jid}, pages);
            });
    connect(&desk.messenger.windows(), &WindowsFace::contactMenuTold, this,
            [this](const QString& account, const QString& jid, const QList<MenuItem>& items) {
                onMenu({account, jid}, items);
            });
}

QString ContactOffers::openPage(const Peer& peer, qsizetype place) {
    wanted_ = peer;
    place_ = place;
    return desk_.messenger.dialogs().askPropertyPages(peer.account, peer.jid);
}

void ContactOffers::onPages(const Peer& peer, const QList<DialogPage>& pages) {
    if (peer != wanted_) return;
    wanted_ = {};
    const qsizetype place = std::max<qsizetype>(place_, 1);
    if (place > pages.size()) {
        desk_.log.tellError(say(Text::DialogNoPage));
        return;
    }
    if (place_ == 0) tellFurther(peer, pages);
    dialogs_.expect();
    const QString reason = desk_.messenger.dialogs().openProperties(peer.account, peer.jid, pages.at(place - 1).id);
    if (!reason.isEmpty()) desk_.log.tellError(reason);
}

void ContactOffers::tellFurther(const Peer& peer, const QList<DialogPage>& pages) {
    for (qsizetype place = 1; place < pages.size(); ++place) {
        desk_.log.list(say(Text::FurtherPage, oneLine(pages.at(place).caption),
                           QStringLiteral("/properties %1 %2").arg(quoted(peer.jid)).arg(place + 1)),
                       Style::Faint);
    }
}

QString ContactOffers::tellMenu(const Peer& peer) {
    asked_ = peer;
    const bool inChat = desk_.windows.partner() == peer;
    return desk_.messenger.windows().askContactMenu(peer.account, peer.jid, inChat);
}

void ContactOffers::onMenu(const Peer& peer, const QList<MenuItem>& items) {
    if (peer != asked_) return;
    asked_ = {};
    if (items.isEmpty()) desk_.log.list(say(Text::ContactMenuEmpty), Style::Faint);
    for (const MenuItem& item : items) {
        const auto deed =
            std::find_if(kDeeds.begin(), kDeeds.end(), [&](const Deed& one) { return one.item == item.id; });
        const QString caption = oneLine(item.caption);
        desk_.log.list(
            deed == kDeeds.end() ? caption : QStringLiteral("%1: %2 %3").arg(caption, deed->command, quoted(peer.jid)));
    }
}

}  // namespace oku::terminal
