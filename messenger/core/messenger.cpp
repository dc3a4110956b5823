#include "messenger/core/messenger.h"
#include "messenger/core/options.h"
#include "messenger/core/values/setting_keys.h"

#include "messenger/core/accounts/account_setup.h"
#include "messenger/core/accounts/certificate_pins.h"
#include "messenger/core/accounts/setting_rules.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/host_core.h"
#include "messenger/core/storage/private_file.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/xml/xml_text.h"

namespace oku {
namespace {

QString noAccount(const QString& jid) {
    return QCoreApplication::translate("Messenger", "Nie ma takiego konta: %1").arg(jid);
}

QString key(const char16_t* name) { return QString::fromUtf16(name); }

}  // namespace

class Messenger::Private : public HostCore {
public:
    using HostCore::HostCore;

    /// The account that has this address, and is in the plugin.
    AccountEntry* find(const QString& jid) const {
        auto* account = accounts.byJid(jid);
        return account && account->registered ? account : nullptr;
    }

    /// Writes what was changed, so that whoever changed it knows whether it lasts.
    static QString writeSettings(const AccountEntry& account) {
        if (account.settings->write()) return {};
        return QCoreApplication::translate("Messenger", "Zmiana działa, ale nie można jej zapisać w pliku %1.")
            .arg(account.settings->path());
    }

    /// Writes the settings of an account that was set up or changed, and tells of it.
    QString writeAccount(const AccountEntry& account) {
        if (QString reason = writeSettings(account); !reason.isEmpty()) return reason;
        emit accountChanged(account.jid());
        return {};
    }

    /// Runs `command` for the account, or gives the reason why not.
    template <typename Command>
    QString with(const QString& jid, Command command) {
        auto* account = find(jid);
        return account ? command(*account) : noAccount(jid);
    }
};

Messenger::Messenger(MessengerOptions options, QObject* parent)
    : QObject(parent), d(std::make_unique<Private>(std::move(options))) {
    connect(&d->sessions, &Sessions::connectionChanged, this, &Messenger::connectionChanged);
    connect(&d->sessions, &Sessions::ownStatusChanged, this, &Messenger::ownStatusChanged);
    connect(&d->sessions, &Sessions::rosterComplete, this, &Messenger::rosterComplete);
    connect(&d->sessions, &Sessions::messageReceived, this, &Messenger::messageReceived);
    connect(&d->sessions, &Sessions::authorizationRequested, this, &Messenger::authorizationRequested);
    connect(&d->contacts, &ContactService::changed, this, &Messenger::contactChanged);
    connect(&d->contacts, &ContactService::unreadChanged, this, &Messenger::unreadChanged);
    connect(&d->contacts, &ContactService::removed, this, &Messenger::contactRemoved);
    connect(&d->contacts, &ContactService::presence, this, &Messenger::presenceReceived);
    connect(&d->delivery, &Delivery::sent, this, &Messenger::messageSent);
    connect(&d->delivery, &Delivery::queued, this, &Messenger::messageQueued);
    connect(&d->delivery, &Delivery::stateChanged, this, &Messenger::messageStateChanged);
    connect(&d->typing, &TypingNotices::changed, this, &Messenger::typingReceived);
    connect(&d->boxes, &MessageBoxes::opened, this, &Messenger::boxOpened);
    connect(&d->boxes, &MessageBoxes::closed, this, &Messenger::boxClosed);
    connect(&d->menus, &MenuModel::changed, this, &Messenger::menuChanged);
    connect(&d->windows, &WindowServices::statusWindowRequested, this, &Messenger::statusWindowRequested);
    connect(&d->windows, &WindowServices::busyChanged, this, &Messenger::busyChanged);
    connect(&d->windows, &WindowServices::cardStatus, this, &Messenger::noticed);
    connect(d.get(), &HostCore::accountChanged, this, &Messenger::accountChanged);
    connect(d.get(), &HostCore::accountRemoved, this, &Messenger::accountRemoved);
    connect(d.get(), &HostCore::noticed, this, &Messenger::noticed);
    connect(&d->log, &LogService::logged, this, &Messenger::logged);
    connect(&d->console, &Console::seen, this, &Messenger::xmlSeen);
    connect(&d->info, &InfoRequests::contactAnswered, this, &Messenger::infoReceived);
    connect(&d->info, &InfoRequests::contactComplete, this, &Messenger::infoComplete);
    connect(&d->info, &InfoRequests::serverAnswered, this, &Messenger::serverInfoReceived);
    connect(&d->sockets, &SocketBridge::certificateRefused, this, &Messenger::certificateRefused);
    connect(d.get(), &HostCore::finished, this, &Messenger::finished);
}

Messenger::~Messenger() = default;

QString Messenger::start() {
    const QString reason = d->start();
    if (!reason.isEmpty()) return reason;
    for (const Account& known : accounts()) {
        d->contacts.list(*d->find(known.jid)).dropChanges();
        emit rosterComplete(known.jid);
    }
    return {};
}

void Messenger::shutdown() { d->shutdown(); }

bool Messenger::running() const { return d->running(); }

QString Messenger::profileDir() const { return d->profile.directory(); }

QList<Account> Messenger::accounts() const {
    QList<Account> list;
    for (const auto& entry : d->accounts.all()) {
        if (!entry->registered || entry->jid().isEmpty()) continue;
        list.append(
            {entry->jid(), entry->key, entry->connection, entry->status, entry->description, entry->encrypted()});
    }
    return list;
}

std::optional<Account> Messenger::account(const QString& jid) const {
    const QString bare = bareJid(jid);
    for (const Account& candidate : accounts()) {
        if (candidate.jid == bare) return candidate;
    }
    return std::nullopt;
}

QString Messenger::addAccount(const QString& jid, const QString& password, const QVariantMap& settings) {
    if (!d->running()) return QCoreApplication::translate("Messenger", "Wtyczka nie jest wczytana.");
    if (!looksLikeJid(jid)) return QCoreApplication::translate("Messenger", "To nie jest adres konta: %1").arg(jid);
    for (auto at = settings.begin(); at != settings.end(); ++at) {
        if (QString fault = settingFault(at.key(), at.value()); !fault.isEmpty()) return fault;
    }
    if (auto* known = d->find(jid)) {
        changeAccount(*known->settings, jid, password, settings);
        d->sockets.sockets().forgetFailures(known->socket);
        return d->writeAccount(*known);
    }
    for (const auto& entry : d->accounts.all()) {
        if (!entry->registered || !entry->jid().isEmpty()) continue;
        setUpAccount(*entry->settings, jid, password, settings);
        return d->writeAccount(*entry);
    }
    const QString path = newAccountPath(profileDir(), moduleBaseName(d->options.modulePath), jid);
    const auto file = d->settings.store(path);
    setUpAccount(*file, jid, password, settings);
    if (!file->write())
        return QCoreApplication::translate("Messenger", "Nie można zapisać konta w pliku %1.").arg(path);
    d->reload(bareJid(jid), path);
    return {};
}

QString Messenger::removeAccount(const QString& jid, bool withHistory) {
    return d->with(jid, [&](AccountEntry& entry) {
        d->removeAccount(entry, withHistory);
        return QString();
    });
}

QString Messenger::setStatus(const QString& account, Status status, const QString& description) {
    if (d->setStatusOfNew(account, status, description)) return {};
    return d->with(account, [&](AccountEntry& entry) {
        d->passwords.whenLoaded(entry.key,
                                [this, &entry, status, description] { d->setStatus(entry, status, description); });
        return QString();
    });
}

QVariant Messenger::settingValue(const QString& account, const QString& name) const {
    const auto* entry = d->find(account);
    return entry ? entry->settings->value(name) : QVariant();
}

QString Messenger::setSetting(const QString& account, const QString& name, const QVariant& value) {
    return d->with(account, [&](AccountEntry& entry) {
        if (QString fault = settingFault(name, value); !fault.isEmpty()) return fault;
        entry.settings->set(name, value);
        return d->writeSettings(entry);
    });
}

QList<Contact> Messenger::contacts(const QString& account) const {
    const auto* entry = d->find(account);
    return entry ? d->contacts.list(*entry).contacts() : QList<Contact>();
}

std::optional<Contact> Messenger::contact(const QString& account, const QString& jid) const {
    const auto* entry = d->find(account);
    return entry ? d->contacts.list(*entry).contact(bareJid(jid)) : std::nullopt;
}

QString Messenger::addContact(const QString& account, const QString& jid, const QString& name, const QString& group) {
    return d->with(account, [&](AccountEntry& entry) { return d->roster.add(entry, jid, name, group); });
}

QString Messenger::renameContact(const QString& account, const QString& jid, const QString& name) {
    return d->with(account, [&](AccountEntry& entry) { return d->roster.rename(entry, jid, name); });
}

QString Messenger::moveContact(const QString& account, const QString& jid, const QString& group) {
    return d->with(account, [&](AccountEntry& entry) { return d->roster.move(entry, jid, group); });
}

QString Messenger::removeContact(const QString& account, const QString& jid) {
    return d->with(account, [&](AccountEntry& entry) { return d->roster.remove(entry, jid); });
}

QString Messenger::subscribe(const QString& account, const QString& jid) {
    return d->with(account, [&](AccountEntry& entry) { return d->roster.subscribe(entry, jid); });
}

QString Messenger::authorize(const QString& account, const QString& jid, bool askInReturn) {
    const int bits = OKU_AUTH_ACCEPT | (askInReturn ? OKU_AUTH_ASK_IN_RETURN : 0);
    return d->with(account, [&](AccountEntry& entry) { return d->roster.answer(entry, jid, bits); });
}

QString Messenger::deny(const QString& account, const QString& jid) {
    return d->with(account, [&](AccountEntry& entry) { return d->roster.answer(entry, jid, OKU_AUTH_REFUSE); });
}

QStringList Messenger::pendingAuthorizations(const QString& account) const {
    const auto* entry = d->find(account);
    return entry ? entry->authorizations.list() : QStringList();
}

QString Messenger::sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                               const QString& subject, qint64* number) {
    return d->with(account, [&](AccountEntry& entry) {
        if (QString fault = addressFault(to); !fault.isEmpty()) return fault;
        if (body.isEmpty()) return QCoreApplication::translate("Messenger", "Wiadomość jest pusta.");
        // They cannot stand on the wire, and what the plugin gets ends at a NUL.
        if (!isXmlText(body) || !isXmlText(subject))
            return QCoreApplication::translate("Messenger", "Wiadomość zawiera znaki, których nie można wysłać.");
        Message message;
        message.account = entry.jid();
        message.contact = bareJid(to);
        message.direction = Direction::out;
        message.subject = subject;
        message.body = body;
        message.kind = kind;
        message.time = QDateTime::currentDateTimeUtc();
        const qint64 written = d->delivery.send(entry, message);
        if (number) *number = written;
        return written ? QString()
                       : QCoreApplication::translate("Messenger",
                                                     "Nie można zapisać wiadomości, więc nie została wysłana.");
    });
}

QString Messenger::resendMessage(qint64 number) {
    const auto message = d->history.message(number);
    const bool again = message && message->direction == Direction::out &&
                       (message->state == DeliveryState::failed || message->state == DeliveryState::unconfirmed);
    if (!again) return QCoreApplication::translate("Messenger", "Tej wiadomości nie można wysłać ponownie.");
    return d->with(message->account, [&](AccountEntry& entry) {
        d->delivery.resend(entry, *message);
        return QString();
    });
}

QString Messenger::cancelMessage(qint64 number) {
    const auto message = d->history.message(number);
    if (!message || message->direction != Direction::out || message->state != DeliveryState::queued)
        return QCoreApplication::translate("Messenger", "Ta wiadomość nie czeka na wysłanie.");
    return d->with(message->account, [&](AccountEntry& entry) {
        return d->delivery.cancel(entry, *message)
                   ? QString()
                   : QCoreApplication::translate("Messenger", "Nie można wycofać wiadomości.");
    });
}

QString Messenger::sendTyping(const QString& account, const QString& to, bool composing) {
    return d->with(account, [&](AccountEntry& entry) {
        if (entry.settings->number(key(setting::sendTyping), 1) == 0 || !entry.ready()) return QString();
        d->queue.post(entry.key, [this, &entry, jid = bareJid(to), composing] {
            if (!entry.registered) return;
            auto record = makeRecord<OKU_CONTACT_RECORD>();
            record.id = widePointer(jid);
            record.pfClass = widePointer(entry.pfClass);
            record.netId = entry.netId;
            d->services.call(entry.service(u"PFTNSend"), wordOf(&record), composing ? 1 : 0);
        });
        return QString();
    });
}

void Messenger::markRead(const QString& account, const QString& jid) {
    if (const auto* entry = d->find(account)) d->contacts.list(*entry).clearUnread(bareJid(jid));
}

QList<Message> Messenger::history(const QString& account, const QString& with, int limit, const QString& search) const {
    return d->history.find(bareJid(account), bareJid(with), limit, search);
}

QString Messenger::exportHistory(const QString& account, const QString& with, ExportFormat format, const QString& path,
                                 bool replace) const {
    constexpr int everything = -1;
    const auto messages = d->history.find(bareJid(account), bareJid(with), everything, {});
    // What was exported before is worth more than a part of it.
    if (!d->history.readWhole()) return QCoreApplication::translate("Messenger", "Nie można odczytać archiwum rozmów.");
    const QByteArray content = format == ExportFormat::json ? historyAsJson(messages) : historyAsText(messages);
    const QString reason = replaceFile(path, content, replace ? Target::inPlace : Target::nothing);
    if (reason.isEmpty()) return {};
    return QCoreApplication::translate("Messenger", "Nie można zapisać pliku %1: %2").arg(path, reason);
}

QString Messenger::answerBox(int number, BoxButton button) {
    if (d->boxes.answer(number, button)) return {};
    return QCoreApplication::translate("Messenger", "Nie ma takiego pytania, albo nie ma w nim takiej odpowiedzi.");
}

QList<MessageBox> Messenger::openBoxes() const { return d->boxes.open(); }

QList<MenuItem> Messenger::menu(const QString& parent) const { return d->menus.items(parent); }

QString Messenger::statusMenu(const QString& account) const {
    const auto* entry = d->find(account);
    return entry ? QString::fromStdU16String(entry->service(u"Menu")) : QString();
}

QString Messenger::activateMenu(const QString& id) {
    return d->activateMenu(id) ? QString() : QCoreApplication::translate("Messenger", "Nie ma takiej pozycji menu.");
}

QString Messenger::confirmStatusWindow(const QString& account, Status status, const QString& description,
                                       bool protect) {
    return d->with(account, [&](AccountEntry& entry) {
        return d->confirmStatusWindow(entry, status, description, protect)
                   ? QString()
                   : QCoreApplication::translate("Messenger", "To konto nie ma okna statusu.");
    });
}

QString Messenger::sendRaw(const QString& account, const QString& xml) {
    return d->with(account, [&](AccountEntry& entry) { return d->rawXml(entry, xml); });
}

void Messenger::setConsole(bool on) { d->console.setOn(on); }

bool Messenger::console() const { return d->console.on(); }

QString Messenger::requestInfo(const QString& account, const QString& jid) {
    return d->with(account, [&](AccountEntry& entry) { return d->info.askContact(entry, jid); });
}

QString Messenger::requestServerInfo(const QString& account) {
    return d->with(account, [&](AccountEntry& entry) { return d->info.askServer(entry); });
}

QString Messenger::pinCertificate(const QString& account, const QString& fingerprint) {
    return d->with(account, [&](AccountEntry& entry) {
        const QString name = key(setting::pinnedCertificate);
        const auto pins = fingerprint.isEmpty() ? QString() : withPin(entry.settings->text(name), fingerprint);
        if (!pins) return QCoreApplication::translate("Messenger", "To nie jest odcisk SHA-256: %1").arg(fingerprint);
        entry.settings->set(name, pins->isEmpty() ? QVariant() : QVariant(*pins));
        return d->writeSettings(entry);
    });
}

}  // namespace oku
