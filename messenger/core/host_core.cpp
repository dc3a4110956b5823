#include "messenger/core/host_core.h"

#include <map>
#include <QDir>
#include <QSslCertificate>

#include "messenger/core/raw_xml.h"

namespace oku {
namespace {

constexpr int kSignOffTime = 3000;  // milliseconds for the servers to close, and for the key ring to write

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
      typing(services, accounts, contacts, options.typingSeconds),
      sockets(services, accounts, queue, boxes, socketSettings(options), options.resolver),
      sessions({services, accounts, queue, contacts, history, delivery, queries, watch, typing, sockets}) {
    profile.provide(services);
    sockets.setProxyFile(profile.directory() + QStringLiteral("oku.config"));
    hooks.add(console);
    hooks.add(clearTextGuard);
    if (options.stanzaGuard) hooks.add(guard);
    hooks.add(digestCheck);
    hooks.add(queries);
    hooks.add(watch);
    hooks.add(delivery);
    hooks.add(sessions);
    connectParts();
}

HostCore::~HostCore() {
    // Without an event loop there is nobody to wait for; what is open is answered, and the plugin goes.
    passwords.stopAsking();
    boxes.close();
    if (loader.loaded() && !queue.busy()) queue.post({}, [this] { unload(); });
}

void HostCore::connectParts() {
    connect(&settings, &SettingsService::noticed, this, [this](const QString& text) { emit noticed({}, text); });
    connect(&passwords, &Passwords::noticed, this, &HostCore::noticed);
    connect(&history, &History::failed, this, [this](const QString& text) { emit noticed({}, text); });
    connect(&sessions, &Sessions::noticed, this, &HostCore::noticed);
    connect(&contacts, &ContactService::noticed, this, &HostCore::noticed);
    connect(&roster, &RosterCommands::noticed, this, &HostCore::noticed);
    connect(&sockets, &SocketBridge::noticed, this, &HostCore::noticed);
    connect(&log, &LogService::noticed, this, &HostCore::noticed);
    connect(&sockets, &SocketBridge::progressed, this, [this](const QString& account, const QString& text) {
        log.write(2, QStringLiteral("NET"), account + QStringLiteral(": ") + text);
    });
    connect(&queue, &PluginQueue::failed, this, [this](const QString& reason) {
        log.write(0, QStringLiteral("OKU"), QStringLiteral("Exception in the host: ") + reason);
    });
    connectGuards();
    connect(&patience_, &QTimer::timeout, this, &HostCore::finishShutdown);
    patience_.setSingleShot(true);
    connect(&sockets, &SocketBridge::ended, this, [this](AccountEntry* account, const net::End&, bool told) {
        if (told && leaving_.remove(account->key) && !lingers()) patience_.start(0);
    });
    connect(&passwords, &Passwords::written, this, [this] {
        if (patience_.isActive() && !lingers()) patience_.start(0);
    });
    // What the plugin tells the user during a login is why the login ends, if it does.
    connect(&log, &LogService::noticed, this, [this](const QString& jid, const QString& text) {
        auto* account = accounts.byJid(jid);
        if (account && account->loggingIn()) account->reason = text;
    });
}

void HostCore::connectGuards() {
    connect(&clearTextGuard, &ClearTextGuard::refused, this, [this](AccountEntry* account) {
        endUntrusted(
            *account,
            QCoreApplication::translate(
                "HostCore", "Połączenie nie jest szyfrowane, więc zostało zakończone, zanim cokolwiek wysłano."));
    });
    connect(&digestCheck, &DigestCheck::refused, this, [this](AccountEntry* account, bool sent) {
        endUntrusted(*account,
                     sent ? QCoreApplication::translate(
                                "HostCore", "Serwer nie dowiódł, że zna hasło tego konta: jego odpowiedź jest błędna.")
                          : QCoreApplication::translate("HostCore",
                                                        "Serwer nie dowiódł, że zna hasło tego konta, "
                                                        "a połączenie nie jest szyfrowane."));
    });
    connect(&guard, &StanzaGuard::distrusted, this, [this](AccountEntry* account) {
        emit noticed(
            account->jid(),
            account->line.encrypted
                ? QCoreApplication::translate("HostCore",
                                              "Zanim logowanie się skończyło, przyszły dane, o które nikt nie prosił. "
                                              "Zostały odrzucone.")
                : QCoreApplication::translate("HostCore",
                                              "Zanim połączenie było szyfrowane, przyszły dane, którym nie można ufać. "
                                              "Zostały odrzucone."));
    });
}

void HostCore::endUntrusted(AccountEntry& account, const QString& reason) {
    account.reason = reason;
    emit noticed(account.jid(), reason);
    sessions.setStatus(account, Status::offline, account.description);
}

QString HostCore::start() {
    if (QString reason = profile.open(); !reason.isEmpty()) return reason;
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
    contacts.setStarting(true);
    loader.load(HostTable::table());
    contacts.setStarting(false);
    for (const auto& account : accounts.all()) {
        if (!account->registered) continue;
        contacts.list(*account);
        passwords.load(account->settings);
    }
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
    windows.dropPlugin();
    contacts.dropPlugin();
    events.dropPlugin();
    services.dropPlugin();
    settings.dropPlugin();
    sessions.update();
}

void HostCore::reload(const QString& newAccount) {
    queue.post({}, [this, newAccount] {
        std::map<QString, AccountEntry::Choice> online;
        for (const auto& account : accounts.all()) {
            if (account->keptChoice) {
                online[account->key] = *account->keptChoice;
            } else if (account->connection != ConnectionState::offline) {
                const Status status = account->status == Status::offline ? Status::online : account->status;
                online[account->key] = {status, account->description, {}};
            }
        }
        unload();
        load();
        emit accountChanged(newAccount);
        for (const auto& [key, choice] : online) {
            if (auto* account = accounts.byKey(key)) sessions.setStatus(*account, choice.status, choice.description);
        }
    });
}

bool HostCore::activateMenu(const QString& id) {
    for (const auto& entry : accounts.all()) {
        AccountEntry& account = *entry;
        const auto status = menus.chosenStatus(QString::fromStdU16String(account.service(u"Menu")), id);
        if (!account.registered || !status) continue;
        sessions.choose(account, {*status, account.description, [this, id] { menus.activate(id); }});
        return true;
    }
    return menus.activate(id);
}

bool HostCore::confirmStatusWindow(AccountEntry& account, Status status, const QString& description, bool protect) {
    if (!account.statusWindowCallback) return false;
    sessions.choose(account, {status, description, [this, &account, status, description, protect] {
                                  windows.confirmStatusWindow(account, status, description, protect);
                              }});
    return true;
}

QString HostCore::rawXml(AccountEntry& account, const QString& xml) {
    if (!account.loggedIn()) return notConnected();
    if (QString fault = rawXmlFault(xml); !fault.isEmpty()) return fault;
    queue.post(account.key, [this, &account, bytes = xml.toUtf8()] {
        if (!queries.sendRaw(account, bytes)) emit noticed(account.jid(), notConnected());
    });
    return {};
}

void HostCore::shutdown() {
    if (shuttingDown_) return;
    shuttingDown_ = true;
    passwords.stopAsking();
    boxes.close();
    queue.post({}, [this] { signOff(); });
}

// The servers get the time to close their streams, so that what was sent last is known to have arrived.
void HostCore::signOff() {
    for (const auto& account : accounts.all()) {
        if (account->has(OKU_FLAG_CONNECTED)) leaving_.insert(account->key);
        if (account->connection != ConnectionState::offline) {
            sessions.setStatus(*account, Status::offline, account->description);
        }
    }
    patience_.start(lingers() ? kSignOffTime : 0);
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
