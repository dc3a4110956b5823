// The terminal's view of the core's messenger: hands commands on and signals back.
#pragma once

#include <memory>

#include "messenger/core/messenger.h"
#include "messenger/core/options.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/message.h"
#include "messenger/core/values/windows.h"
#include "messenger/terminal/client.h"

namespace oku::terminal {

class MessengerClient final : public Client {
public:
    explicit MessengerClient(MessengerOptions options);
    ~MessengerClient() override;

    void setListener(ClientListener* listener) override;

    QString start() override;
    void shutdown() override;
    QString profileDir() const override;
    QList<Account> accounts() const override;
    QString addAccount(const QString& jid, const QString& password, const QVariantMap& settings) override;
    QString removeAccount(const QString& jid, bool withHistory) override;
    QString setStatus(const QString& account, Status status, const QString& description) override;
    QVariant settingValue(const QString& account, const QString& key) const override;
    QString setSetting(const QString& account, const QString& key, const QVariant& value) override;
    QList<Contact> contacts(const QString& account) const override;
    std::optional<Contact> contact(const QString& account, const QString& jid) const override;
    QString addContact(const QString& account, const QString& jid, const QString& name, const QString& group) override;
    QString renameContact(const QString& account, const QString& jid, const QString& name) override;
    QString moveContact(const QString& account, const QString& jid, const QString& group) override;
    QString removeContact(const QString& account, const QString& jid) override;
    QString subscribe(const QString& account, const QString& jid) override;
    QString authorize(const QString& account, const QString& jid, bool askInReturn) override;
    QString deny(const QString& account, const QString& jid) override;
    QStringList pendingAuthorizations(const QString& account) const override;
    QString sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                        const QString& subject) override;
    QString resendMessage(qint64 number) override;
    QString cancelMessage(qint64 number) override;
    QString sendTyping(const QString& account, const QString& to, bool composing) override;
    void markRead(const QString& account, const QString& jid) override;
    QList<Message> history(const QString& account, const QString& with, int limit,
                           const QString& search) const override;
    QString exportHistory(const QString& account, const QString& with, const QString& path,
                          bool replace) const override;
    QString answerBox(int number, BoxButton button) override;
    QList<MessageBox> openBoxes() const override;
    QString sendRaw(const QString& account, const QString& xml) override;
    void setConsole(bool on) override;
    QString requestInfo(const QString& account, const QString& jid) override;
    QString requestServerInfo(const QString& account) override;
    QString pinCertificate(const QString& account, const QString& fingerprint) override;

private:
    Messenger messenger_;
    std::unique_ptr<QObject> connections_;  // context of the connections to the listener: gone, they are gone
};

}  // namespace oku::terminal
