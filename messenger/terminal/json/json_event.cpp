#include "messenger/terminal/json/json_event.h"

#include <utility>

#include "messenger/terminal/json/json_line.h"

namespace oku::terminal {
namespace {

QStringView kindWord(MessageKind kind) { return kind == MessageKind::chat ? u"chat" : u"normal"; }
QStringView directionWord(bool incoming) { return incoming ? u"in" : u"out"; }

void putResource(JsonLine& line, const Resource& resource) {
    line.put("resource", resource.name);
    line.put("status", statusWord(resource.status));
    line.put("priority", resource.priority);
    line.put("description", resource.description);
}

void putContact(JsonLine& line, const Contact& contact) {
    line.put("jid", contact.jid);
    line.put("name", contact.name);
    line.put("group", contact.group);
    line.put("subscription", contact.subscription);
    line.put("waiting", contact.waiting);
    line.put("status", statusWord(contact.status));
    line.put("description", contact.description);
    line.beginList("resources");
    for (const Resource& resource : contact.resources) {
        line.beginObject();
        putResource(line, resource);
        line.endObject();
    }
    line.endList();
}

}  // namespace

QByteArray jsonReady(const QList<Account>& accounts, const QString& profile) {
    QStringList jids;
    for (const Account& account : accounts) jids.append(account.jid);
    JsonLine line(u"ready");
    line.put("accounts", jids);
    line.put("profile", profile);
    return std::move(line).take();
}

QByteArray jsonAccountRemoved(const QString& account) {
    JsonLine line(u"account-removed", account);
    line.put("jid", account);
    return std::move(line).take();
}

QByteArray jsonAccount(const QString& account) {
    JsonLine line(u"account", account);
    line.put("jid", account);
    return std::move(line).take();
}

QByteArray jsonConnection(const QString& account, ConnectionState state, bool encrypted, const QString& reason) {
    JsonLine line(u"connection", account);
    line.put("state", connectionStateWord(state));
    line.put("encrypted", encrypted);
    line.put("reason", reason);
    return std::move(line).take();
}

QByteArray jsonStatus(const QString& account, Status status, const QString& description) {
    JsonLine line(u"status", account);
    line.put("status", statusWord(status));
    line.put("description", description);
    return std::move(line).take();
}

QByteArray jsonRoster(const QString& account, const QList<Contact>& contacts) {
    JsonLine line(u"roster", account);
    line.beginList("contacts");
    for (const Contact& contact : contacts) {
        line.beginObject();
        putContact(line, contact);
        line.endObject();
    }
    line.endList();
    return std::move(line).take();
}

QByteArray jsonContact(const QString& account, const Contact& contact) {
    JsonLine line(u"contact", account);
    putContact(line, contact);
    return std::move(line).take();
}

QByteArray jsonRemoved(const QString& account, const QString& jid) {
    JsonLine line(u"removed", account);
    line.put("jid", jid);
    return std::move(line).take();
}

QByteArray jsonPresence(const QString& account, const QString& jid, const Resource& resource) {
    JsonLine line(u"presence", account);
    line.put("jid", jid);
    putResource(line, resource);
    return std::move(line).take();
}

QByteArray jsonMessage(const QString& account, const Message& message) {
    JsonLine line(u"message", account);
    line.put("from", message.contact);
    line.put("resource", message.resource);
    line.put("body", message.body);
    line.put("subject", message.subject);
    line.put("kind", kindWord(message.kind));
    line.put("time", message.time);
    line.put("delayed", message.delayed);
    line.put("failed", message.failed);
    return std::move(line).take();
}

QByteArray jsonOutgoing(const QString& account, const Message& message) {
    JsonLine line(deliveryStateWord(message.state), account);
    line.put("to", message.contact);
    line.put("body", message.body);
    line.put("message", message.number);
    return std::move(line).take();
}

QByteArray jsonTyping(const QString& account, const QString& jid, bool composing) {
    JsonLine line(u"typing", account);
    line.put("from", jid);
    line.put("composing", composing);
    return std::move(line).take();
}

QByteArray jsonAuthorization(const QString& account, const QString& jid) {
    JsonLine line(u"authorization", account);
    line.put("jid", jid);
    return std::move(line).take();
}

QByteArray jsonQuestion(const MessageBox& box) {
    JsonLine line(u"question");
    line.put("box", box.number);
    line.put("text", box.text);
    line.put("title", box.title);
    line.put("style", boxStyleWord(box.style));
    return std::move(line).take();
}

QByteArray jsonNotice(const QString& account, const QString& text) {
    JsonLine line(u"notice", account);
    line.put("text", text);
    return std::move(line).take();
}

QByteArray jsonLog(const LogLine& logged) {
    JsonLine line(u"log");
    line.put("level", logged.level);
    line.put("tag", logged.tag);
    line.put("text", logged.text);
    return std::move(line).take();
}

QByteArray jsonXml(const QString& account, bool incoming, const QString& data) {
    JsonLine line(u"xml", account);
    line.put("direction", directionWord(incoming));
    line.put("data", data);
    return std::move(line).take();
}

QByteArray jsonHistory(const QString& account, const QString& with, const QList<Message>& messages) {
    JsonLine line(u"history", account);
    line.put("with", with);
    line.beginList("messages");
    for (const Message& message : messages) {
        line.beginObject();
        line.put("message", message.number);
        line.put("with", message.contact);
        line.put("direction", directionWord(message.direction == Direction::in));
        line.put("body", message.body);
        line.put("subject", message.subject);
        line.put("time", message.time);
        line.put("delayed", message.delayed);
        line.put("state", deliveryStateWord(message.state));
        line.endObject();
    }
    line.endList();
    return std::move(line).take();
}

QByteArray jsonSetting(const QString& account, const QString& name, const QVariant& value) {
    JsonLine line(u"setting", account);
    line.put("key", name);
    line.put("value", QJsonValue::fromVariant(value));
    return std::move(line).take();
}

QByteArray jsonInfo(const QString& account, const ContactInfo& info) {
    JsonLine line(u"info", account);
    line.put("jid", info.jid);
    putResource(line, info.resource);
    line.put("changed", info.resource.changed);
    line.put("client", info.client);
    line.put("version", info.version);
    line.put("os", info.os);
    line.put("features", info.features);
    return std::move(line).take();
}

QByteArray jsonServer(const QString& account, const ServerInfo& info) {
    JsonLine line(u"server", account);
    line.put("domain", info.domain);
    line.put("identities", info.identities);
    line.put("features", info.features);
    return std::move(line).take();
}

QByteArray jsonBye() { return JsonLine(u"bye").take(); }

}  // namespace oku::terminal
