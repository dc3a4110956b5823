// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/messenger.h"

#include "messenger/core/accounts_on_host.h"
#include "messenger/core/cards/cards_on_host.h"
#include "messenger/core/cards/picture_process.h"
#include "messenger/core/dialogs/dialogs_on_host.h"
#include "messenger/core/host_core.h"
#include "messenger/core/news/news_on_host.h"
#include "messenger/core/news/players.h"
#include "messenger/core/passwords/key_ring.h"
#include "messenger/core/roster/roster_on_host.h"
#include "messenger/core/talk/talk_on_host.h"
#include "messenger/core/transfers/transfers_on_host.h"
#include "messenger/core/windows_on_host.h"
#include "messenger/core/wire_on_host.h"

namespace oku {

struct Messenger::Private {
    explicit Private(MessengerOptions options) : core(std::move(options)) {}

    HostCore core;
    std::unique_ptr<AccountsFace> accounts = accountsOnHost(core);
    std::unique_ptr<RosterFace> roster =
        rosterOnHost({core.accounts, core.contacts, core.roster, core.authorizations, core.info});
    std::unique_ptr<TalkFace> talk =
        talkOnHost({core.accounts, core.contacts, core.history, core.delivery, core.arrivals, core.typing});
    std::unique_ptr<CardsFace> cards =
        cardsOnHost({core.accounts, core.contactCards, core.ownCards, core.ownPicture, core.contactPictures});
    std::unique_ptr<NewsFace> news = newsOnHost({core.accounts, core.news, core.popups});
    std::unique_ptr<WindowsFace> windows = windowsOnHost(core);
    std::unique_ptr<DialogsFace> dialogs = dialogsOnHost({core.accounts, core.dialogs, core.dialogInput, core.pages});
    std::unique_ptr<WireFace> wire = wireOnHost(core);
    std::unique_ptr<TransfersFace> transfers =
        transfersOnHost({core.accounts, core.transfers, core.offers, core.choosers, core.received});
};

Messenger::Messenger(MessengerOptions options, QObject* parent)
    : MessengerFace(parent), d(std::make_unique<Private>(std::move(options))) {
    connect(&d->core.sessions, &Sessions::rosterComplete, d->roster.get(), &RosterFace::rosterComplete);
    connect(&d->core, &HostCore::finished, this, &Messenger::finished);
}

Messenger::~Messenger() = default;

QString Messenger::start() {
    const QString reason = d->core.start();
    if (!reason.isEmpty()) return reason;
    for (const Account& known : d->accounts->accounts()) {
        d->core.contacts.list(*d->core.accounts.inPlugin(known.jid)).dropChanges();
        emit d->roster->rosterComplete(known.jid);
    }
    return {};
}

void Messenger::shutdown() { d->core.shutdown(); }

bool Messenger::running() const { return d->core.running(); }

QString Messenger::profileDir() const { return d->core.profile.directory(); }

AccountsFace& Messenger::accounts() const { return *d->accounts; }

RosterFace& Messenger::roster() const { return *d->roster; }

TalkFace& Messenger::talk() const { return *d->talk; }

CardsFace& Messenger::cards() const { return *d->cards; }

NewsFace& Messenger::news() const { return *d->news; }

WindowsFace& Messenger::windows() const { return *d->windows; }

DialogsFace& Messenger::dialogs() const { return *d->dialogs; }

WireFace& Messenger::wire() const { return *d->wire; }

TransfersFace& Messenger::transfers() const { return *d->transfers; }

MessengerOptions installedOptions() {
    MessengerOptions options;
    options.modulePath = findModule(QCoreApplication::applicationDirPath());
    options.keyRing = systemKeyRing();
    options.players = sessionPlayers();
    options.pictures = std::make_shared<PictureProcess>(findPictureProgram(QCoreApplication::applicationDirPath()));
    return options;
}

}  // namespace oku
