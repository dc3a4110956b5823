#include "messenger/core/host_core.h"

#include <QDir>
#include <QFile>
#include <QSslCertificate>
#include <utility>

#include "messenger/core/process/free_memory.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"
#include "messenger/core/xml/raw_xml.h"

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

QString notEncrypted(bool loggedIn) {
    return loggedIn
               ? QCoreApplication::translate("HostCore",
                                             "Połączenie nie jest szyfrowane, a na tym koncie już takie być nie może. "
                                             "Zostało zakończone.")
               : QCoreApplication::translate(
                     "HostCore", "Połączenie nie jest szyfrowane, więc zostało zakończone, zanim cokolwiek wysłano.");
}

QString notProven(bool sent) {
    return sent ? QCoreApplication::translate(
                      "HostCore", "Serwer nie dowiódł, że zna hasło tego konta: jego odpowiedź jest błędna.")
                : QCoreApplication::translate("HostCore",
                                              "Serwer nie dowiódł, że zna hasło tego konta, "
                                              "a połączenie nie jest szyfrowane.");
}

QString takenOut(bool encrypted) {
    return encrypted
               ? QCoreApplication::translate("HostCore",
                                             "Zanim logowanie się skończyło, przyszły dane, o które nikt nie prosił. "
                                             "Zostały odrzucone.")
               : QCoreApplication::translate("HostCore",
                                             "Zanim połączenie było szyfrowane, przyszły dane, którym nie można ufać. "
                                             "Zostały odrzucone.");
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
    // What a long list needed on its way to the contacts is many times what they keep.
    tidying_.setSingleShot(true);
    tidying_.setInterval(kTidyingDelay);
    connect(&tidying_, &QTimer::timeout, this, &giveBackFreeMemory);
    connect(&contacts, &ContactService::rebuilt, this, [this] { tidying_.start(); });
    // What the plugin tells the user during a login is why the login ends, if it does.
    connect(&log, &LogService::noticed, this, [this](const QString& jid, const QString& text) {
        auto* account = accounts.byJid(jid);
        if (account && account->loggingIn()) account->reason = text;
    });
}

void HostCore::connectGuards() {
    connect(&clearTextGuard, &ClearTextGuard::refused, this,
            [this](AccountEntry* account) { endUntrusted(*account, notEncrypted(account->loggedIn())); });
    connect(&settings, &SettingsService::changed, this, [this](const QString& path, const QString& key) {
        auto* account = accounts.byKey(path);
        if (account && key == QString::fromUtf16(setting::allowClearText)) clearTextGuard.permissionChanged(*account);
    });
    connect(&digestCheck, &DigestCheck::refused, this,
            [this](AccountEntry* account, bool sent) { endUntrusted(*account, notProven(sent)); });
    connect(&guard, &StanzaGuard::sessionRefused, this, [](AccountEntry* account, const QString& condition) {
        account->reason = QCoreApplication::translate("HostCore", "Serwer odmówił otwarcia sesji.");
        if (!condition.isEmpty()) account->reason += QStringLiteral(" (%1)").arg(condition);
    });
    connect(&guard, &StanzaGuard::distrusted, this,
            [this](AccountEntry* account) { emit noticed(account->jid(), takenOut(account->line.encrypted)); });
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

void HostCore::reload(const QString& newAccount, const QString& key) {
    newAccounts_.insert_or_assign(newAccount, key);
    startReload();
}

void HostCore::startReload() {
    queue.post({}, [this] {
        keepChoices();
        reloading_ = true;
        if (backOnline_.empty()) {
            loadAnew();
        } else {
            signOff_.start([this] { queue.post({}, [this] { loadAnew(); }); });
        }
    });
}

void HostCore::keepChoices() {
    for (const auto& account : accounts.all()) {
        if (account->keptChoice) {
            backOnline_.insert_or_assign(account->key, *account->keptChoice);
        } else if (account->connection != ConnectionState::offline) {
            // While it signs off, what was chosen before counts.
            const Status status = account->status == Status::offline ? Status::online : account->status;
            backOnline_.try_emplace(account->key, AccountEntry::Choice{status, account->description, {}});
        }
    }
}

void HostCore::loadAnew() {
    if (shuttingDown_ || !std::exchange(reloading_, false)) return;
    unload();
    for (const Removal& account : std::exchange(removals_, {})) forget(account);
    load();
    const auto backOnline = std::exchange(backOnline_, {});
    for (const auto& [jid, key] : std::exchange(newAccounts_, {})) emit accountChanged(jid);
    for (const auto& [key, choice] : backOnline) {
        auto* account = accounts.byKey(key);
        if (!account) continue;
        passwords.whenLoaded(key, [this, account, status = choice.status, description = choice.description] {
            setStatus(*account, status, description);
        });
    }
}

void HostCore::removeAccount(const AccountEntry& account, bool withHistory) {
    removals_.push_back({account.key, account.jid(), withHistory});
    startReload();
}

void HostCore::forget(const Removal& account) {
    backOnline_.erase(account.key);
    passwords.forget(account.key);
    contacts.forget(account.key);
    QString base = account.key;
    base.chop(QStringLiteral(".config").size());
    QFile::remove(base + QStringLiteral(".roster"));
    if (!settings.store(account.key)->remove()) {
        emit noticed(account.jid,
                     QCoreApplication::translate("HostCore", "Nie można usunąć pliku %1").arg(account.key));
    }
    if (account.withHistory) {
        history.removeAll(account.jid);
    } else {
        // An account of the same name that is added later must not send it.
        for (const Message& waiting : history.outgoing(account.jid, DeliveryState::queued))
            history.setState(waiting.number, DeliveryState::failed);
    }
    emit accountRemoved(account.jid);
}

void HostCore::setStatus(AccountEntry& account, Status status, const QString& description) {
    if (reloading_) {
        setStatusAfterReload(account.key, status, description);
    } else {
        sessions.setStatus(account, status, description);
    }
}

bool HostCore::setStatusOfNew(const QString& jid, Status status, const QString& description) {
    const auto found = newAccounts_.find(bareJid(jid));
    if (found == newAccounts_.end()) return false;
    setStatusAfterReload(found->second, status, description);
    return true;
}

void HostCore::setStatusAfterReload(const QString& key, Status status, const QString& description) {
    if (status == Status::offline) {
        backOnline_.erase(key);
    } else {
        backOnline_.insert_or_assign(key, AccountEntry::Choice{status, description, {}});
    }
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
    queue.post({}, [this] { signOff_.start([this] { finishShutdown(); }); });
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
