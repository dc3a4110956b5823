#include "messenger/terminal/messenger_client.h"

#include <utility>

namespace oku::terminal {

MessengerClient::MessengerClient(MessengerOptions options) : messenger_(std::move(options)) {}

MessengerClient::~MessengerClient() { setListener(nullptr); }

void MessengerClient::setListener(ClientListener* listener) {
    connections_.reset();
    if (listener == nullptr) return;
    connections_ = std::make_unique<QObject>();
    // Every signal goes to the listener's function of the same name.
    const auto hear = [this, listener](auto signal, auto function) {
        QObject::connect(&messenger_, signal, connections_.get(),
                         [listener, function](const auto&... values) { (listener->*function)(values...); });
    };
    hear(&Messenger::accountChanged, &ClientListener::accountChanged);
    hear(&Messenger::accountRemoved, &ClientListener::accountRemoved);
    hear(&Messenger::connectionChanged, &ClientListener::connectionChanged);
    hear(&Messenger::ownStatusChanged, &ClientListener::ownStatusChanged);
    hear(&Messenger::rosterComplete, &ClientListener::rosterComplete);
    hear(&Messenger::contactChanged, &ClientListener::contactChanged);
    hear(&Messenger::contactRemoved, &ClientListener::contactRemoved);
    hear(&Messenger::presenceReceived, &ClientListener::presenceReceived);
    hear(&Messenger::messageReceived, &ClientListener::messageReceived);
    hear(&Messenger::messageSent, &ClientListener::messageSent);
    hear(&Messenger::messageQueued, &ClientListener::messageQueued);
    hear(&Messenger::messageStateChanged, &ClientListener::messageStateChanged);
    hear(&Messenger::typingReceived, &ClientListener::typingReceived);
    hear(&Messenger::authorizationRequested, &ClientListener::authorizationRequested);
    hear(&Messenger::boxOpened, &ClientListener::boxOpened);
    hear(&Messenger::boxClosed, &ClientListener::boxClosed);
    hear(&Messenger::noticed, &ClientListener::noticed);
    hear(&Messenger::logged, &ClientListener::logged);
    hear(&Messenger::xmlSeen, &ClientListener::xmlSeen);
    hear(&Messenger::infoReceived, &ClientListener::infoReceived);
    hear(&Messenger::infoComplete, &ClientListener::infoComplete);
    hear(&Messenger::serverInfoReceived, &ClientListener::serverInfoReceived);
    hear(&Messenger::certificateRefused, &ClientListener::certificateRefused);
    hear(&Messenger::finished, &ClientListener::finished);
}

QString MessengerClient::start() { return messenger_.start(); }
void MessengerClient::shutdown() { messenger_.shutdown(); }
QString MessengerClient::profileDir() const { return messenger_.profileDir(); }
QList<Account> MessengerClient::accounts() const { return messenger_.accounts(); }

QString MessengerClient::addAccount(const QString& jid, const QString& password, const QVariantMap& settings) {
    return messenger_.addAccount(jid, password, settings);
}

QString MessengerClient::removeAccount(const QString& jid, bool withHistory) {
    return messenger_.removeAccount(jid, withHistory);
}

QString MessengerClient::setStatus(const QString& account, Status status, const QString& description) {
    return messenger_.setStatus(account, status, description);
}

QVariant MessengerClient::settingValue(const QString& account, const QString& key) const {
    return messenger_.settingValue(account, key);
}

QString MessengerClient::setSetting(const QString& account, const QString& key, const QVariant& value) {
    return messenger_.setSetting(account, key, value);
}

QList<Contact> MessengerClient::contacts(const QString& account) const { return messenger_.contacts(account); }

std::optional<Contact> MessengerClient::contact(const QString& account, const QString& jid) const {
    return messenger_.contact(account, jid);
}

QString MessengerClient::addContact(const QString& account, const QString& jid, const QString& name,
                                    const QString& group) {
    return messenger_.addContact(account, jid, name, group);
}

QString MessengerClient::renameContact(const QString& account, const QString& jid, const QString& name) {
    return messenger_.renameContact(account, jid, name);
}

QString MessengerClient::moveContact(const QString& account, const QString& jid, const QString& group) {
    return messenger_.moveContact(account, jid, group);
}

QString MessengerClient::removeContact(const QString& account, const QString& jid) {
    return messenger_.removeContact(account, jid);
}

QString MessengerClient::subscribe(const QString& account, const QString& jid) {
    return messenger_.subscribe(account, jid);
}

QString MessengerClient::authorize(const QString& account, const QString& jid, bool askInReturn) {
    return messenger_.authorize(account, jid, askInReturn);
}

QString MessengerClient::deny(const QString& account, const QString& jid) { return messenger_.deny(account, jid); }

QStringList MessengerClient::pendingAuthorizations(const QString& account) const {
    return messenger_.pendingAuthorizations(account);
}

QString MessengerClient::sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                                     const QString& subject) {
    return messenger_.sendMessage(account, to, body, kind, subject);
}

QString MessengerClient::cancelMessage(qint64 number) { return messenger_.cancelMessage(number); }
QString MessengerClient::resendMessage(qint64 number) { return messenger_.resendMessage(number); }

QString MessengerClient::sendTyping(const QString& account, const QString& to, bool composing) {
    return messenger_.sendTyping(account, to, composing);
}

void MessengerClient::markRead(const QString& account, const QString& jid) { messenger_.markRead(account, jid); }

QList<Message> MessengerClient::history(const QString& account, const QString& with, int limit,
                                        const QString& search) const {
    return messenger_.history(account, with, limit, search);
}

QString MessengerClient::exportHistory(const QString& account, const QString& with, const QString& path,
                                       bool replace) const {
    const bool json = path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
    return messenger_.exportHistory(account, with, json ? Messenger::ExportFormat::json : Messenger::ExportFormat::text,
                                    path, replace);
}

QString MessengerClient::answerBox(int number, BoxButton button) { return messenger_.answerBox(number, button); }
QList<MessageBox> MessengerClient::openBoxes() const { return messenger_.openBoxes(); }

QString MessengerClient::sendRaw(const QString& account, const QString& xml) {
    return messenger_.sendRaw(account, xml);
}

void MessengerClient::setConsole(bool on) { messenger_.setConsole(on); }

QString MessengerClient::requestInfo(const QString& account, const QString& jid) {
    return messenger_.requestInfo(account, jid);
}

QString MessengerClient::requestServerInfo(const QString& account) { return messenger_.requestServerInfo(account); }

QString MessengerClient::pinCertificate(const QString& account, const QString& fingerprint) {
    return messenger_.pinCertificate(account, fingerprint);
}

}  // namespace oku::terminal
