// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/host_core.h"

#include <QDir>
#include <QSslCertificate>
#include <utility>

#include "messenger/core/process/free_memory.h"

namespace oku {
namespace {

constexpr int kTidyingDelay = 200;  // milliseconds from a new list of contacts

net::SocketSettings socketSettings(const MessengerOptions& options) {
    net::SocketSettings settings;
    settings.stall = options.loginSeconds * 1000;
    if (!options.caFile.isEmpty()) settings.extraCa = QSslCertificate::fromPath(options.caFile);
    return settings;
}

/// Paths are taken from where the program was started, before the current directory becomes the profile's.
MessengerOptions withAbsolutePaths(MessengerOptions options) {
    const QDir here = QDir::current();
    options.modulePath = here.absoluteFilePath(options.modulePath);
    if (!options.caFile.isEmpty()) options.caFile = here.absoluteFilePath(options.caFile);
    return options;
}

}  // namespace

HostCore::HostCore(MessengerOptions given, QObject* parent)
    : QObject(parent),
      options(withAbsolutePaths(std::move(given))),
      profile(options.profileDir),
      log(services, accounts, queue, options.verbose),
      history(profile.historyPath()),
      typing(services, accounts, queue, contacts, options.typingSeconds),
      sockets(services, accounts, queue, boxes, socketSettings(options), options.resolver),
      sessions({accounts, queue, contacts, history, delivery, queries, watch, typing, sockets, choices}),
      publisher({services, accounts, queue, transfers,
                 [this](const AccountEntry& account) { return sockets.sockets().localAddress(account.socket); }}) {
    profile.provide(services);
    sockets.setProxyFile(profile.directory() + QStringLiteral("oku.config"));
    hooks.add(console);
    guards.addTo(hooks, options.stanzaGuard);
    hooks.add(queries);
    hooks.add(watch);
    hooks.add(delivery);
    hooks.add(arrivals);
    hooks.add(sessions);
    connectParts();
}

HostCore::~HostCore() {
    // Without an event loop there is nobody to wait for; what is open is answered, and the plugin goes.
    passwords.stopAsking();
    boxes.close();
    offers.close();
    if (loader.loaded() && !queue.busy()) queue.post({}, [this] { unload(); });
}

void HostCore::connectParts() {
    connect(&settings, &SettingsService::noticed, this, [this](const QString& text) { emit noticed({}, text); });
    connect(&passwords, &Passwords::noticed, this, &HostCore::noticed);
    connect(&companion, &TuneCompanion::noticed, this, &HostCore::noticed);
    connect(&sessions, &Sessions::connectionChanged, &companion, &TuneCompanion::reconsider);
    choices.beforeLeaving([this](const AccountEntry& account) { companion.takeBack(account); });
    connect(&news, &PersonalNews::refused, this, &HostCore::noticed);
    connect(&links, &LinkService::noticed, this, [this](const QString& text) { emit noticed({}, text); });
    connect(&boxes, &MessageBoxes::unanswered, this, [this](const MessageBox& box) {
        emit noticed({},
                     QCoreApplication::translate("HostCore", "Nikt nie odpowiedział przez %1 s: %2. Odpowiedź: nie.")
                         .arg(box.seconds)
                         .arg(box.title));
    });
    connect(&boxes, &MessageBoxes::refusedUnasked, this, [this] {
        emit noticed({},
                     QCoreApplication::translate(
                         "HostCore", "Strony WWW pytają dalej; przez 2 minuty dostają bez pytania odpowiedź: nie."));
    });
    connect(&queue, &PluginQueue::callFinished, &boxes, &MessageBoxes::endCall);
    connect(&boxes, &MessageBoxes::leftOut, this, [this](const QString& title, int count) {
        emit noticed(
            {}, QCoreApplication::translate("HostCore", "Pominięto dalsze komunikaty (%1): %2.").arg(count).arg(title));
    });
    connect(&history, &History::failed, this, [this](const QString& text) { emit noticed({}, text); });
    connect(&sessions, &Sessions::noticed, this, &HostCore::noticed);
    connect(&guards, &LineGuards::noticed, this, &HostCore::noticed);
    connect(&authorizations, &Authorizations::noticed, this, &HostCore::noticed);
    connect(&reload, &PluginReload::noticed, this, &HostCore::noticed);
    connect(&contacts, &ContactService::noticed, this, &HostCore::noticed);
    connect(&roster, &RosterCommands::noticed, this, &HostCore::noticed);
    connect(&sockets, &SocketBridge::noticed, this, &HostCore::noticed);
    connect(&log, &LogService::noticed, this, &HostCore::noticed);
    connect(&offers, &FileOffers::noticed, this, &HostCore::noticed);
    connect(&offers, &FileOffers::pluginHeld, &sockets.sockets(), &net::SocketService::setPluginBusy);
    const auto wroteTo = [this](const QString&, const Message& message) { offers.wroteTo(message.contact); };
    connect(&delivery, &Delivery::sent, this, wroteTo);
    connect(&delivery, &Delivery::queued, this, wroteTo);
    connect(&choosers, &FileChoosers::noticed, this, &HostCore::noticed);
    connect(&received, &ReceivedFiles::noticed, this, &HostCore::noticed);
    connect(&publisher, &FilePublisher::noticed, this, &HostCore::noticed);
    connect(&sockets, &SocketBridge::progressed, this, [this](const QString& account, const QString& text) {
        log.write(2, QStringLiteral("NET"), account + QStringLiteral(": ") + text);
    });
    connect(&queue, &PluginQueue::failed, this, [this](const QString& reason) {
        log.write(0, QStringLiteral("OKU"), QStringLiteral("Exception in the host: ") + reason);
    });
    connect(&watch, &StreamWatch::bounced, &delivery,
            [this](AccountEntry* account, const QString& id, const QString& from) {
                delivery.bounced(*account, id, from);
            });
    connect(&watch, &StreamWatch::rosterItem, &contacts,
            [this](AccountEntry* account, const QString& jid, const ContactDetails& details) {
                contacts.list(*account).setDetails(jid, details);
            });
    dialogServices.setGroups([this] { return contacts.groups(); });
    // What a long list needed on its way to the contacts is many times what they keep.
    tidying_.setSingleShot(true);
    tidying_.setInterval(kTidyingDelay);
    connect(&tidying_, &QTimer::timeout, this, &giveBackFreeMemory);
    connect(&contacts, &ContactService::rebuilt, this, [this] { tidying_.start(); });
    connectCards();
    // What the plugin tells the user during a login is why the login ends, if it does.
    connect(&log, &LogService::noticed, this, [this](const QString& jid, const QString& text) {
        auto* account = accounts.byJid(jid);
        if (account && account->loggingIn()) account->reason = text;
    });
}

void HostCore::connectCards() {
    connect(&sessions, &Sessions::connectionChanged, this, [this](const QString& jid, ConnectionState state) {
        const auto* account = accounts.byJid(jid);
        if (!account || state != ConnectionState::connecting) return;
        // A connection that was replaced ends without a word.
        cardsLost(*account);
        ownPicture.connectionBegins(account->key);
    });
    connect(&sockets, &SocketBridge::ended, this, [this](AccountEntry* account, const net::End&, bool told) {
        if (!told) return;
        cardsLost(*account);
        ownPicture.connectionEnded(account->key);
    });
}

void HostCore::cardsLost(const AccountEntry& account) {
    contactCards.connectionEnded(account);
    ownCards.connectionEnded(account);
}

QString HostCore::start() {
    if (QString reason = profile.open(); !reason.isEmpty()) return reason;
    pictures.tidy();
    if (QString reason = loader.open(options.modulePath); !reason.isEmpty()) return reason;
    if (!QDir::setCurrent(profile.directory())) {
        loader.close();
        return QCoreApplication::translate("HostCore", "Nie można wejść do katalogu %1").arg(profile.directory());
    }
    queue.post({}, [this] { load(); });
    return {};
}

void HostCore::load() {
    queue.setClosedToThreads(false);
    boxes.allow();
    offers.allow();
    contacts.setStarting(true);
    dialogServices.setModule(loader.module());
    loader.load(HostTable::table());
    news.listen(events);
    contacts.setStarting(false);
    for (const auto& account : accounts.all()) {
        if (!account->registered) continue;
        contacts.list(*account);
        passwords.load(account->settings);
    }
    ownPicture.pluginLoaded();
}

void HostCore::unload() {
    // From here on a thread of the plugin that calls the host gets 0 at once: the plugin waits for it to end.
    queue.setClosedToThreads(true);
    loader.unload();
    dropPlugin();
}

// What still waits in the queue finds by its name or number that the plugin's side of it is gone.
void HostCore::dropPlugin() {
    // First of all, as the flags of an account lay in the plugin.
    accounts.dropPlugin();
    timers.dropPlugin();
    sockets.dropPlugin();
    menus.dropPlugin();
    statusWindows.dropPlugin();
    dialogs.dropAll();
    windows.dropPlugin();
    transfers.dropPlugin();
    choosers.dropPlugin();
    popups.dropPlugin();
    publisher.dropPlugin();
    contacts.dropPlugin();
    events.dropPlugin();
    services.dropPlugin();
    settings.dropPlugin();
    sessions.update();
}

void HostCore::shutdown() {
    if (shuttingDown_) return;
    shuttingDown_ = true;
    passwords.stopAsking();
    boxes.close();
    offers.close();
    // From the event loop, behind what was asked for before and goes that way too.
    QMetaObject::invokeMethod(
        this, [this] { queue.post({}, [this] { signOff.start([this] { finishShutdown(); }); }); },
        Qt::QueuedConnection);
}

void HostCore::finishShutdown() {
    queue.post({}, [this] {
        if (finished_) return;
        finished_ = true;
        if (loader.loaded()) unload();
        queue.clear();
        loader.close();
        history.close();
        emit finished();
    });
}

}  // namespace oku
