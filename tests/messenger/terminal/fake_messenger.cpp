// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/terminal/fake_messenger.h"

namespace oku::terminal::test {

QString Script::note(const char* name, const QStringList& values) const {
    const QString call = QString::fromLatin1(name);
    calls.append((QStringList{call} + values).join(u'|'));
    if (const auto act = within.take(call)) act();
    return refusals.value(call);
}

void FakeMessenger::shutdown() {
    note("shutdown", {});
    if (finishAtOnce) emit finished();
}

QString FakeAccounts::addAccount(const QString& jid, const QString& password, const QVariantMap& given) {
    QStringList values{jid, password};
    for (auto at = given.begin(); at != given.end(); ++at)
        values.append(QStringLiteral("%1=%2:%3").arg(at.key(), QString::fromLatin1(at->typeName()), at->toString()));
    const QString reason = script_.note("addAccount", values);
    if (!reason.isEmpty()) return reason;
    script_.settings.insert(QStringLiteral("XMPP/Pass"), password);
    Account added;
    added.jid = jid.section(u'/', 0, 0);
    script_.accountList.append(added);
    emit accountChanged(added.jid);
    return {};
}

std::optional<Account> FakeAccounts::account(const QString& jid) const {
    for (const Account& one : script_.accountList)
        if (one.jid == jid) return one;
    return std::nullopt;
}

QString FakeAccounts::setStatus(const QString& account, Status status, const QString& description) {
    return script_.note("setStatus", {account, statusWord(status), description});
}

QVariant FakeAccounts::settingValue(const QString& account, const QString& key) const {
    script_.note("settingValue", {account, key});
    return script_.settings.value(key);
}

QString FakeAccounts::setSetting(const QString& account, const QString& key, const QVariant& value) {
    const QString reason =
        script_.note("setSetting", {account, key, QString::fromLatin1(value.typeName()), value.toString()});
    if (reason.isEmpty()) script_.settings.insert(key, value);
    return reason;
}

std::optional<Contact> FakeRoster::contact(const QString& account, const QString& jid) const {
    for (const Contact& one : script_.contactLists.value(account))
        if (one.jid == jid) return one;
    return std::nullopt;
}

QString FakeTalk::sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                              const QString& subject, qint64*) {
    const QString reason =
        script_.note("sendMessage", {account, to, body, kind == MessageKind::chat ? "chat" : "normal", subject});
    if (!reason.isEmpty()) return reason;
    Message message;
    message.number = script_.calls.size();
    message.account = account;
    message.contact = to;
    message.body = body;
    message.direction = Direction::out;
    message.state = DeliveryState::sent;
    message.time = QDateTime::currentDateTime();
    emit messageSent(account, message);
    return {};
}

QString FakeCards::storeOwnCard(const QString& account, const CardFields& changes, bool agreed) {
    QStringList values{account};
    for (auto at = changes.begin(); at != changes.end(); ++at) values.append(at.key() + u'=' + at.value());
    return script_.note("storeOwnCard", values + QStringList{agreed ? "agreed" : ""});
}

QList<Message> FakeTalk::history(const QString& account, const QString& with, int limit, const QString& search) const {
    script_.note("history", {account, with, QString::number(limit), search});
    return script_.messages;
}

QString FakeTalk::exportHistory(const QString& account, const QString& with, const QString& path, bool replace) const {
    return script_.note("exportHistory", {account, with, replace ? path + QStringLiteral(" (replaced)") : path});
}

QString FakeNews::publishLocation(const QString& account, const Location& location) {
    QStringList values{account};
    for (auto at = location.begin(); at != location.end(); ++at) values.append(at.key() + u'=' + at.value());
    return script_.note("publishLocation", values);
}

QString FakeWindows::answerBox(int number, BoxButton button) {
    const QString reason =
        script_.note("answerBox", {QString::number(number), QString::number(static_cast<int>(button))});
    if (reason.isEmpty()) script_.boxes.removeIf([number](const MessageBox& box) { return box.number == number; });
    return reason;
}

std::optional<DialogWindow> FakeDialogs::window(int number) const {
    const auto found = open.constFind(number);
    return found == open.constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<DialogControl> FakeDialogs::control(int window, quint32 id) const {
    for (const DialogControl& one : open.value(window).controls)
        if (one.id == id) return one;
    return std::nullopt;
}

Account account(const char* jid) {
    Account result;
    result.jid = QString::fromUtf8(jid);
    result.encrypted = true;
    return result;
}

Contact contact(const char* jid, const char* name, const char* group, Status status) {
    Contact result;
    result.jid = QString::fromUtf8(jid);
    result.name = QString::fromUtf8(name);
    result.group = QString::fromUtf8(group);
    result.subscription = QStringLiteral("both");
    result.status = status;
    return result;
}

Resource resource(const char* name, Status status, int priority, const char* description) {
    Resource result;
    result.name = QString::fromUtf8(name);
    result.status = status;
    result.priority = priority;
    result.description = QString::fromUtf8(description);
    return result;
}

Message incoming(const char* account, const char* from, const char* body) {
    Message message;
    message.account = QString::fromUtf8(account);
    message.contact = QString::fromUtf8(from);
    message.body = QString::fromUtf8(body);
    message.time = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7));
    return message;
}

Message outgoing(const char* account, const char* to, const char* body, qint64 number) {
    Message message = incoming(account, to, body);
    message.direction = Direction::out;
    message.state = DeliveryState::sent;
    message.number = number;
    return message;
}

}  // namespace oku::terminal::test
