// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A scripted messenger: keeps what it was told, answers with what the test has laid ready, and tells what the test
// says. Its small life of its own (an account, a list) is enough to run the program on.
#pragma once

#include <functional>
#include <memory>
#include <QMap>
#include <QStringList>
#include <utility>

#include "messenger/core/messenger_face.h"

namespace oku::terminal::test {

// What all faces share.
struct Script {
    // Each command as one line: its name and its values, with a bar between. Queries are written down as well.
    mutable QStringList calls;
    // The reason that the commands of this name are refused with.
    QMap<QString, QString> refusals;
    // What happens from within the next command of this name, as when a question holds it.
    mutable QMap<QString, std::function<void()>> within;

    QList<Account> accountList;
    QMap<QString, QList<Contact>> contactLists;                // by account
    QMap<QString, QVariant> settings{{"XMPP/Pass", "znane"}};  // by key
    QList<Message> messages;
    QStringList requests;
    QList<MessageBox> boxes;
    QMap<QString, QList<MenuItem>> menus;  // by parent
    OwnPicture ownPicture;
    QList<Transfer> transferList;
    QList<FileOffer> offers;
    QList<FileQuestion> fileQuestions;
    QList<Popup> popupList;
    bool finishAtOnce = true;

    // The calls since the last time.
    QStringList takeCalls() { return std::exchange(calls, {}); }
    // Keeps the call; gives the reason laid ready for it.
    QString note(const char* name, const QStringList& values) const;
};

class FakeAccounts : public AccountsFace {
public:
    explicit FakeAccounts(Script& script) : script_(script) {}

    QList<Account> accounts() const override { return script_.accountList; }
    std::optional<Account> account(const QString& jid) const override;
    QString addAccount(const QString& jid, const QString& password, const QVariantMap& given) override;
    QString removeAccount(const QString& jid, bool withHistory) override {
        return script_.note("removeAccount", {jid, withHistory ? "history" : ""});
    }
    QString setStatus(const QString& account, Status status, const QString& description) override;
    QVariant settingValue(const QString& account, const QString& key) const override;
    QString setSetting(const QString& account, const QString& key, const QVariant& value) override;
    QString pinCertificate(const QString& account, const QString& fingerprint) override {
        return script_.note("pinCertificate", {account, fingerprint});
    }

protected:
    Script& script_;
};

class FakeRoster : public RosterFace {
public:
    explicit FakeRoster(Script& script) : script_(script) {}

    QList<Contact> contacts(const QString& account) const override { return script_.contactLists.value(account); }
    std::optional<Contact> contact(const QString& account, const QString& jid) const override;
    QString addContact(const QString& account, const QString& jid, const QString& name, const QString& group) override {
        return script_.note("addContact", {account, jid, name, group});
    }
    QString renameContact(const QString& account, const QString& jid, const QString& name) override {
        return script_.note("renameContact", {account, jid, name});
    }
    QString moveContact(const QString& account, const QString& jid, const QString& group) override {
        return script_.note("moveContact", {account, jid, group});
    }
    QString removeContact(const QString& account, const QString& jid) override {
        return script_.note("removeContact", {account, jid});
    }
    QString subscribe(const QString& account, const QString& jid) override {
        return script_.note("subscribe", {account, jid});
    }
    QString authorize(const QString& account, const QString& jid, bool ask) override {
        return script_.note("authorize", {account, jid, ask ? "ask" : ""});
    }
    QString deny(const QString& account, const QString& jid) override { return script_.note("deny", {account, jid}); }
    QStringList pendingAuthorizations(const QString&) const override { return script_.requests; }
    QString requestInfo(const QString& account, const QString& jid) override {
        return script_.note("requestInfo", {account, jid});
    }
    QString requestServerInfo(const QString& account) override { return script_.note("requestServerInfo", {account}); }

private:
    Script& script_;
};

class FakeTalk : public TalkFace {
public:
    explicit FakeTalk(Script& script) : script_(script) {}

    QString sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                        const QString& subject, qint64* number) override;
    QString cancelMessage(qint64 number) override { return script_.note("cancelMessage", {QString::number(number)}); }
    QString resendMessage(qint64 number) override { return script_.note("resendMessage", {QString::number(number)}); }
    QString sendTyping(const QString& account, const QString& to, bool composing) override {
        return script_.note("sendTyping", {account, to, composing ? "composing" : "paused"});
    }
    void markRead(const QString& account, const QString& jid) override { script_.note("markRead", {account, jid}); }
    QList<Message> history(const QString& account, const QString& with, int limit,
                           const QString& search) const override;
    QString exportHistory(const QString& account, const QString& with, const QString& path,
                          bool replace) const override;

protected:
    Script& script_;
};

class FakeNews : public NewsFace {
public:
    explicit FakeNews(Script& script) : script_(script) {}

    QString publishTune(const QString& account, const Tune& tune) override {
        return script_.note("publishTune",
                            {account, tune.artist, tune.title, tune.source, tune.track, tune.uri, tune.length});
    }
    QString publishMood(const QString& account, const Mood& mood) override {
        return script_.note("publishMood", {account, mood.name, mood.text});
    }
    QString publishLocation(const QString& account, const Location& location) override;
    QList<Popup> popups() const override { return script_.popupList; }
    QString openPopup(int number) override { return script_.note("openPopup", {QString::number(number)}); }
    QString closePopup(int number) override { return script_.note("closePopup", {QString::number(number)}); }

private:
    Script& script_;
};

class FakeWindows : public WindowsFace {
public:
    explicit FakeWindows(Script& script) : script_(script) {}

    QString answerBox(int number, BoxButton button) override;
    QList<MessageBox> openBoxes() const override { return script_.boxes; }
    QList<MenuItem> menu(const QString& parent) const override { return script_.menus.value(parent); }
    QString askContactMenu(const QString& account, const QString& jid, bool inChat) override {
        return script_.note("askContactMenu", {account, jid, inChat ? "chat" : "list"});
    }
    QString statusMenu(const QString&) const override { return {}; }
    QString activateMenu(const QString& id) override { return script_.note("activateMenu", {id}); }
    QString confirmStatusWindow(const QString& account, Status status, const QString& description, bool) override {
        return script_.note("confirmStatusWindow", {account, statusWord(status), description});
    }

private:
    Script& script_;
};

class FakeCards : public CardsFace {
public:
    explicit FakeCards(Script& script) : script_(script) {}

    QString requestCard(const QString& account, const QString& jid) override {
        return script_.note("requestCard", {account, jid});
    }
    QString requestOwnCard(const QString& account) override { return script_.note("requestOwnCard", {account}); }
    QString storeOwnCard(const QString& account, const CardFields& changes, bool agreed) override;
    OwnPicture ownPicture() const override { return script_.ownPicture; }
    QString setOwnPicture(const QString& path) override { return script_.note("setOwnPicture", {path}); }
    QString removeOwnPicture() override { return script_.note("removeOwnPicture", {}); }
    QString publishOwnPicture(const QString& account) override { return script_.note("publishOwnPicture", {account}); }
    QString fetchOwnPicture(const QString& account) override { return script_.note("fetchOwnPicture", {account}); }
    ContactPicture picture(const QString&, const QString&) const override { return {}; }

private:
    Script& script_;
};

class FakeDialogs : public DialogsFace {
public:
    explicit FakeDialogs(Script& script) : script_(script) {}

    // What the plugin would do: the test changes what is open, and emits the signal.
    QMap<int, DialogWindow> open;
    QMap<QPair<int, quint32>, QList<DialogRow>> lists;
    QList<DialogPage> options;
    QList<DialogPage> properties;

    QList<int> windows() const override { return open.keys(); }
    std::optional<DialogWindow> window(int number) const override;
    std::optional<DialogControl> control(int window, quint32 id) const override;
    qsizetype rowCount(int window, quint32 list) const override { return lists.value({window, list}).size(); }
    QList<DialogRow> rows(int window, quint32 list, qsizetype from, qsizetype count) const override {
        return lists.value({window, list}).mid(from, count);
    }
    QString fill(int window, quint32 control, const QString& text) override {
        return note("fill", window, control, text);
    }
    QString choose(int window, quint32 control, qint64 item) override {
        return note("choose", window, control, QString::number(item));
    }
    QString setChecked(int window, quint32 control, bool checked) override {
        return note("setChecked", window, control, checked ? "on" : "off");
    }
    QString press(int window, quint32 button) override { return note("press", window, button); }
    QString pressReturn(int window, quint32 control) override { return note("pressReturn", window, control); }
    QString activateRow(int window, quint32 list, qint64 row) override {
        return note("activateRow", window, list, QString::number(row));
    }
    QString openRowMenu(int window, quint32 list, qint64 row) override {
        return note("openRowMenu", window, list, QString::number(row));
    }
    QString takeFromMenu(int window, quint32 command) override { return note("takeFromMenu", window, command); }
    QString close(int window) override { return script_.note("closeWindow", {QString::number(window)}); }
    QList<DialogPage> optionPages() const override { return options; }
    QList<DialogPage> propertyPages(const QString&) const override { return properties; }
    QString askPropertyPages(const QString& account, const QString& jid) override {
        return script_.note("askPropertyPages", {account, jid});
    }
    QString openOptions(const QString& id) override { return script_.note("openOptions", {id}); }
    QString openProperties(const QString& account, const QString& jid, const QString& id) override {
        return script_.note("openProperties", {account, jid, id});
    }
    QString apply(int page) override { return script_.note("apply", {QString::number(page)}); }
    QString confirm(int page) override { return script_.note("confirm", {QString::number(page)}); }

private:
    QString note(const char* name, int window, quint32 control, const QString& value = {}) const {
        return script_.note(name, {QString::number(window), QString::number(control), value});
    }

    Script& script_;
};

class FakeWire : public WireFace {
public:
    explicit FakeWire(Script& script) : script_(script) {}

    QString sendRaw(const QString& account, const QString& xml) override {
        return script_.note("sendRaw", {account, xml});
    }
    void setConsole(bool on) override { script_.note("setConsole", {on ? "on" : "off"}); }
    bool console() const override { return false; }

private:
    Script& script_;
};

class FakeTransfers : public TransfersFace {
public:
    explicit FakeTransfers(Script& script) : script_(script) {}

    QString sendFile(const QString& account, const QString& to, const QString& path) override {
        return script_.note("sendFile", {account, to, path});
    }
    QList<Transfer> transfers() const override { return script_.transferList; }
    QString cancelTransfer(int number) override { return script_.note("cancelTransfer", {QString::number(number)}); }
    QString openFile(int number) override { return script_.note("openFile", {QString::number(number)}); }
    QString answerOffer(int number, OfferReply reply) override {
        return script_.note("answerOffer", {QString::number(number), offerReplyWord(reply)});
    }
    QList<FileOffer> openOffers() const override { return script_.offers; }
    QString chooseFile(int number, const QString& path) override {
        return script_.note("chooseFile", {QString::number(number), path});
    }
    QList<FileQuestion> openFileQuestions() const override { return script_.fileQuestions; }

private:
    Script& script_;
};

class FakeMessenger : public MessengerFace, public Script {
public:
    QString start() override { return note("start", {}); }
    void shutdown() override;
    bool running() const override { return true; }
    QString profileDir() const override { return QStringLiteral("profile/"); }

    AccountsFace& accounts() const override { return *accounts_; }
    RosterFace& roster() const override { return *roster_; }
    TalkFace& talk() const override { return *talk_; }
    CardsFace& cards() const override { return *cards_; }
    NewsFace& news() const override { return *news_; }
    WindowsFace& windows() const override { return *windows_; }
    DialogsFace& dialogs() const override { return *dialogs_; }
    FakeDialogs& fakeDialogs() const { return *dialogs_; }
    WireFace& wire() const override { return *wire_; }
    TransfersFace& transfers() const override { return *transfers_; }

protected:
    // A livelier messenger puts its own in their place.
    std::unique_ptr<AccountsFace> accounts_ = std::make_unique<FakeAccounts>(*this);
    std::unique_ptr<RosterFace> roster_ = std::make_unique<FakeRoster>(*this);
    std::unique_ptr<TalkFace> talk_ = std::make_unique<FakeTalk>(*this);
    std::unique_ptr<CardsFace> cards_ = std::make_unique<FakeCards>(*this);
    std::unique_ptr<NewsFace> news_ = std::make_unique<FakeNews>(*this);
    std::unique_ptr<WindowsFace> windows_ = std::make_unique<FakeWindows>(*this);
    std::unique_ptr<FakeDialogs> dialogs_ = std::make_unique<FakeDialogs>(*this);
    std::unique_ptr<WireFace> wire_ = std::make_unique<FakeWire>(*this);
    std::unique_ptr<TransfersFace> transfers_ = std::make_unique<FakeTransfers>(*this);
};

// Values for tests.
Account account(const char* jid);
Contact contact(const char* jid, const char* name, const char* group, Status status = Status::offline);
Resource resource(const char* name, Status status, int priority = 0, const char* description = "");
Message incoming(const char* account, const char* from, const char* body);
Message outgoing(const char* account, const char* to, const char* body, qint64 number);

}  // namespace oku::terminal::test
