// The messenger as the terminal sees it. The program runs on MessengerClient (the core's facade); tests put a scripted
// one in its place. Meanings, reasons and lifetimes are those of messenger/core/messenger.h.
#pragma once

#include <algorithm>
#include <optional>
#include <QList>
#include <QString>
#include <QVariant>

#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/info.h"
#include "messenger/core/values/log_line.h"
#include "messenger/core/values/message.h"
#include "messenger/core/values/windows.h"

namespace oku::terminal {

// What the messenger tells. Called on the thread of the event loop, possibly from inside a command.
class ClientListener {
public:
    virtual ~ClientListener() = default;

    virtual void accountChanged(const QString& account) = 0;
    virtual void accountRemoved(const QString& account) = 0;
    virtual void connectionChanged(const QString& account, ConnectionState state, const QString& reason) = 0;
    virtual void ownStatusChanged(const QString& account, Status status, const QString& description) = 0;
    virtual void rosterComplete(const QString& account) = 0;
    virtual void contactChanged(const QString& account, const Contact& contact) = 0;
    virtual void contactRemoved(const QString& account, const QString& jid) = 0;
    virtual void presenceReceived(const QString& account, const QString& jid, const Resource& resource) = 0;
    virtual void messageReceived(const QString& account, const Message& message) = 0;
    virtual void messageSent(const QString& account, const Message& message) = 0;
    virtual void messageQueued(const QString& account, const Message& message) = 0;
    virtual void messageStateChanged(const QString& account, const Message& message) = 0;
    virtual void typingReceived(const QString& account, const QString& jid, bool composing) = 0;
    virtual void authorizationRequested(const QString& account, const QString& jid) = 0;
    virtual void boxOpened(const MessageBox& box) = 0;
    virtual void boxClosed(int number) = 0;
    virtual void noticed(const QString& account, const QString& text) = 0;
    virtual void logged(const LogLine& line) = 0;
    virtual void xmlSeen(const QString& account, bool incoming, const QString& data) = 0;
    virtual void infoReceived(const QString& account, const ContactInfo& info) = 0;
    virtual void infoComplete(const QString& account, const QString& jid) = 0;
    virtual void serverInfoReceived(const QString& account, const ServerInfo& info) = 0;
    virtual void certificateRefused(const QString& account, const CertificateProblem& problem) = 0;
    virtual void finished() = 0;
};

class Client {
public:
    virtual ~Client() = default;

    // The one who hears; must outlive the client or be taken away with null.
    virtual void setListener(ClientListener* listener) = 0;

    virtual QString start() = 0;
    virtual void shutdown() = 0;
    virtual QString profileDir() const = 0;

    virtual QList<Account> accounts() const = 0;
    // Whether the account's connection is encrypted; false also while there is none.
    bool encrypted(const QString& account) const {
        const QList<Account> all = accounts();
        return std::any_of(all.begin(), all.end(),
                           [&](const Account& one) { return one.jid == account && one.encrypted; });
    }
    virtual QString addAccount(const QString& jid, const QString& password, const QVariantMap& settings) = 0;
    virtual QString removeAccount(const QString& jid, bool withHistory) = 0;
    virtual QString setStatus(const QString& account, Status status, const QString& description) = 0;
    virtual QVariant settingValue(const QString& account, const QString& key) const = 0;
    virtual QString setSetting(const QString& account, const QString& key, const QVariant& value) = 0;

    virtual QList<Contact> contacts(const QString& account) const = 0;
    virtual std::optional<Contact> contact(const QString& account, const QString& jid) const = 0;
    virtual QString addContact(const QString& account, const QString& jid, const QString& name,
                               const QString& group) = 0;
    virtual QString renameContact(const QString& account, const QString& jid, const QString& name) = 0;
    virtual QString moveContact(const QString& account, const QString& jid, const QString& group) = 0;
    virtual QString removeContact(const QString& account, const QString& jid) = 0;
    virtual QString subscribe(const QString& account, const QString& jid) = 0;
    virtual QString authorize(const QString& account, const QString& jid, bool askInReturn) = 0;
    virtual QString deny(const QString& account, const QString& jid) = 0;
    virtual QStringList pendingAuthorizations(const QString& account) const = 0;

    virtual QString sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                                const QString& subject) = 0;
    virtual QString resendMessage(qint64 number) = 0;
    virtual QString cancelMessage(qint64 number) = 0;
    virtual QString sendTyping(const QString& account, const QString& to, bool composing) = 0;
    virtual void markRead(const QString& account, const QString& jid) = 0;
    virtual QList<Message> history(const QString& account, const QString& with, int limit,
                                   const QString& search) const = 0;
    // Writes text, or JSON when the path ends in ".json".
    virtual QString exportHistory(const QString& account, const QString& with, const QString& path,
                                  bool replace) const = 0;

    virtual QString answerBox(int number, BoxButton button) = 0;
    virtual QList<MessageBox> openBoxes() const = 0;

    virtual QString sendRaw(const QString& account, const QString& xml) = 0;
    virtual void setConsole(bool on) = 0;
    virtual QString requestInfo(const QString& account, const QString& jid) = 0;
    virtual QString requestServerInfo(const QString& account) = 0;
    virtual QString pinCertificate(const QString& account, const QString& fingerprint) = 0;
};

}  // namespace oku::terminal
