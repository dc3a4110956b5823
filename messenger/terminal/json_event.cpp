#include "messenger/terminal/json_event.h"

#include <QJsonArray>

namespace oku::terminal {
namespace {

QString key(const char* name) { return QString::fromLatin1(name); }

QJsonObject event(const QString& name, const QString& account = {}) {
    QJsonObject object{{key("event"), name}};
    if (!account.isEmpty()) object.insert(key("account"), account);
    return object;
}

QJsonObject event(const char* name, const QString& account = {}) { return event(key(name), account); }

// RFC 3339 in UTC with milliseconds; null for a time that is not known.
QJsonValue timeValue(const QDateTime& time) {
    if (!time.isValid()) return QJsonValue::Null;
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QString kindWord(MessageKind kind) { return key(kind == MessageKind::chat ? "chat" : "normal"); }

void insertResource(QJsonObject& object, const Resource& resource) {
    object.insert(key("resource"), resource.name);
    object.insert(key("status"), statusWord(resource.status));
    object.insert(key("priority"), resource.priority);
    object.insert(key("description"), resource.description);
}

void insertContact(QJsonObject& object, const Contact& contact) {
    object.insert(key("jid"), contact.jid);
    object.insert(key("name"), contact.name);
    object.insert(key("group"), contact.group);
    object.insert(key("subscription"), contact.subscription);
    object.insert(key("waiting"), contact.waiting);
    object.insert(key("status"), statusWord(contact.status));
    object.insert(key("description"), contact.description);
    QJsonArray resources;
    for (const Resource& resource : contact.resources) {
        QJsonObject entry;
        insertResource(entry, resource);
        resources.append(entry);
    }
    object.insert(key("resources"), resources);
}

}  // namespace

QJsonObject jsonReady(const QList<Account>& accounts, const QString& profile) {
    QJsonArray jids;
    for (const Account& account : accounts) jids.append(account.jid);
    QJsonObject object = event("ready");
    object.insert(key("accounts"), jids);
    object.insert(key("profile"), profile);
    return object;
}

QJsonObject jsonAccount(const QString& account) {
    QJsonObject object = event("account", account);
    object.insert(key("jid"), account);
    return object;
}

QJsonObject jsonConnection(const QString& account, ConnectionState state, bool encrypted, const QString& reason) {
    QJsonObject object = event("connection", account);
    object.insert(key("state"), connectionStateWord(state));
    object.insert(key("encrypted"), encrypted);
    object.insert(key("reason"), reason);
    return object;
}

QJsonObject jsonStatus(const QString& account, Status status, const QString& description) {
    QJsonObject object = event("status", account);
    object.insert(key("status"), statusWord(status));
    object.insert(key("description"), description);
    return object;
}

QJsonObject jsonRoster(const QString& account, const QList<Contact>& contacts) {
    QJsonArray list;
    for (const Contact& contact : contacts) {
        QJsonObject entry;
        insertContact(entry, contact);
        list.append(entry);
    }
    QJsonObject object = event("roster", account);
    object.insert(key("contacts"), list);
    return object;
}

QJsonObject jsonContact(const QString& account, const Contact& contact) {
    QJsonObject object = event("contact", account);
    insertContact(object, contact);
    return object;
}

QJsonObject jsonRemoved(const QString& account, const QString& jid) {
    QJsonObject object = event("removed", account);
    object.insert(key("jid"), jid);
    return object;
}

QJsonObject jsonPresence(const QString& account, const QString& jid, const Resource& resource) {
    QJsonObject object = event("presence", account);
    object.insert(key("jid"), jid);
    insertResource(object, resource);
    return object;
}

QJsonObject jsonMessage(const QString& account, const Message& message) {
    QJsonObject object = event("message", account);
    object.insert(key("from"), message.contact);
    object.insert(key("resource"), message.resource);
    object.insert(key("body"), message.body);
    object.insert(key("subject"), message.subject);
    object.insert(key("kind"), kindWord(message.kind));
    object.insert(key("time"), timeValue(message.time));
    object.insert(key("delayed"), timeValue(message.delayed));
    object.insert(key("failed"), message.failed);
    return object;
}

QJsonObject jsonOutgoing(const QString& account, const Message& message) {
    QJsonObject object = event(deliveryStateWord(message.state), account);
    object.insert(key("to"), message.contact);
    object.insert(key("body"), message.body);
    object.insert(key("message"), message.number);
    return object;
}

QJsonObject jsonTyping(const QString& account, const QString& jid, bool composing) {
    QJsonObject object = event("typing", account);
    object.insert(key("from"), jid);
    object.insert(key("composing"), composing);
    return object;
}

QJsonObject jsonAuthorization(const QString& account, const QString& jid) {
    QJsonObject object = event("authorization", account);
    object.insert(key("jid"), jid);
    return object;
}

QJsonObject jsonQuestion(const MessageBox& box) {
    QJsonObject object = event("question");
    object.insert(key("box"), box.number);
    object.insert(key("text"), box.text);
    object.insert(key("title"), box.title);
    object.insert(key("style"), boxStyleWord(box.style));
    return object;
}

QJsonObject jsonNotice(const QString& account, const QString& text) {
    QJsonObject object = event("notice", account);
    object.insert(key("text"), text);
    return object;
}

QJsonObject jsonLog(const LogLine& line) {
    QJsonObject object = event("log");
    object.insert(key("level"), line.level);
    object.insert(key("tag"), line.tag);
    object.insert(key("text"), line.text);
    return object;
}

QJsonObject jsonXml(const QString& account, bool incoming, const QString& data) {
    QJsonObject object = event("xml", account);
    object.insert(key("direction"), key(incoming ? "in" : "out"));
    object.insert(key("data"), data);
    return object;
}

QJsonObject jsonHistory(const QString& account, const QString& with, const QList<Message>& messages) {
    QJsonArray list;
    for (const Message& message : messages) {
        list.append(QJsonObject{{key("message"), message.number},
                                {key("with"), message.contact},
                                {key("direction"), key(message.direction == Direction::in ? "in" : "out")},
                                {key("body"), message.body},
                                {key("subject"), message.subject},
                                {key("time"), timeValue(message.time)},
                                {key("delayed"), timeValue(message.delayed)},
                                {key("state"), deliveryStateWord(message.state)}});
    }
    QJsonObject object = event("history", account);
    object.insert(key("with"), with);
    object.insert(key("messages"), list);
    return object;
}

QJsonObject jsonSetting(const QString& account, const QString& name, const QVariant& value) {
    QJsonObject object = event("setting", account);
    object.insert(key("key"), name);
    object.insert(key("value"), QJsonValue::fromVariant(value));
    return object;
}

QJsonObject jsonInfo(const QString& account, const ContactInfo& info) {
    QJsonObject object = event("info", account);
    object.insert(key("jid"), info.jid);
    insertResource(object, info.resource);
    object.insert(key("changed"), timeValue(info.resource.changed));
    object.insert(key("client"), info.client);
    object.insert(key("version"), info.version);
    object.insert(key("os"), info.os);
    object.insert(key("features"), QJsonArray::fromStringList(info.features));
    return object;
}

QJsonObject jsonServer(const QString& account, const ServerInfo& info) {
    QJsonObject object = event("server", account);
    object.insert(key("domain"), info.domain);
    object.insert(key("identities"), QJsonArray::fromStringList(info.identities));
    object.insert(key("features"), QJsonArray::fromStringList(info.features));
    return object;
}

QJsonObject jsonBye() { return event("bye"); }

}  // namespace oku::terminal
