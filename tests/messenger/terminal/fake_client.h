// A scripted messenger: keeps what it was told, answers with what the test has laid ready, and tells what the test
// says. Its small life of its own (an account, a list) is enough to run the program on.
#pragma once

#include <QMap>
#include <QStringList>

#include "messenger/terminal/client.h"

namespace oku::terminal::test {

class FakeClient : public Client {
public:
    // Each command as one line: its name and its values, with a bar between. Queries are written down as well.
    mutable QStringList calls;
    // The reason that the commands of this name are refused with.
    QMap<QString, QString> refusals;

    QList<Account> accountList;
    QMap<QString, QList<Contact>> contactLists;                // by account
    QMap<QString, QVariant> settings{{"XMPP/Pass", "znane"}};  // by key
    QList<Message> messages;
    QStringList requests;
    QList<MessageBox> boxes;
    ClientListener* listener = nullptr;
    bool finishAtOnce = true;

    // The calls since the last time.
    QStringList takeCalls() { return std::exchange(calls, {}); }

    void setListener(ClientListener* who) override { listener = who; }
    QString start() override { return note("start", {}); }
    void shutdown() override;
    QString profileDir() const override { return QStringLiteral("profile/"); }
    QList<Account> accounts() const override { return accountList; }
    QString addAccount(const QString& jid, const QString& password, const QVariantMap& given) override;
    QString removeAccount(const QString& jid, bool withHistory) override {
        return note("removeAccount", {jid, withHistory ? "history" : ""});
    }
    QString setStatus(const QString& account, Status status, const QString& description) override;
    QVariant settingValue(const QString& account, const QString& key) const override;
    QString setSetting(const QString& account, const QString& key, const QVariant& value) override;
    QList<Contact> contacts(const QString& account) const override { return contactLists.value(account); }
    std::optional<Contact> contact(const QString& account, const QString& jid) const override;
    QString addContact(const QString& account, const QString& jid, const QString& name, const QString& group) override {
        return note("addContact", {account, jid, name, group});
    }
    QString renameContact(const QString& account, const QString& jid, const QString& name) override {
        return note("renameContact", {account, jid, name});
    }
    QString moveContact(const QString& account, const QString& jid, const QString& group) override {
        return note("moveContact", {account, jid, group});
    }
    QString removeContact(const QString& account, const QString& jid) override {
        return note("removeContact", {account, jid});
    }
    QString subscribe(const QString& account, const QString& jid) override { return note("subscribe", {account, jid}); }
    QString authorize(const QString& account, const QString& jid, bool ask) override {
        return note("authorize", {account, jid, ask ? "ask" : ""});
    }
    QString deny(const QString& account, const QString& jid) override { return note("deny", {account, jid}); }
    QStringList pendingAuthorizations(const QString&) const override { return requests; }
    QString sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                        const QString& subject) override;
    QString cancelMessage(qint64 number) override { return note("cancelMessage", {QString::number(number)}); }
    QString resendMessage(qint64 number) override { return note("resendMessage", {QString::number(number)}); }
    QString sendTyping(const QString& account, const QString& to, bool composing) override {
        return note("sendTyping", {account, to, composing ? "composing" : "paused"});
    }
    void markRead(const QString& account, const QString& jid) override { note("markRead", {account, jid}); }
    QList<Message> history(const QString& account, const QString& with, int limit,
                           const QString& search) const override;
    QString exportHistory(const QString& account, const QString& with, const QString& path,
                          bool replace) const override;
    QString answerBox(int number, BoxButton button) override;
    QList<MessageBox> openBoxes() const override { return boxes; }
    QString sendRaw(const QString& account, const QString& xml) override { return note("sendRaw", {account, xml}); }
    void setConsole(bool on) override { note("setConsole", {on ? "on" : "off"}); }
    QString requestInfo(const QString& account, const QString& jid) override {
        return note("requestInfo", {account, jid});
    }
    QString requestServerInfo(const QString& account) override { return note("requestServerInfo", {account}); }
    QString pinCertificate(const QString& account, const QString& fingerprint) override {
        return note("pinCertificate", {account, fingerprint});
    }

private:
    // Keeps the call; gives the reason laid ready for it.
    QString note(const char* name, const QStringList& values) const;
};

// Values for tests.
Account account(const char* jid);
Contact contact(const char* jid, const char* name, const char* group, Status status = Status::offline);
Resource resource(const char* name, Status status, int priority = 0, const char* description = "");
Message incoming(const char* account, const char* from, const char* body);
Message outgoing(const char* account, const char* to, const char* body, qint64 number);

}  // namespace oku::terminal::test
