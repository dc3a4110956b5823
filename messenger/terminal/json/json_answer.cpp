// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/json/json_answer.h"

#include <utility>

namespace oku::terminal {

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
    line.put("tune", contact.tune);
    line.put("mood", contact.mood);
    line.beginList("resources");
    for (const Resource& resource : contact.resources) {
        line.beginObject();
        putResource(line, resource);
        line.endObject();
    }
    line.endList();
}

QByteArray jsonReady(const QList<Account>& accounts, const QString& profile) {
    QStringList jids;
    for (const Account& account : accounts) jids.append(account.jid);
    JsonLine line(u"ready");
    line.put("accounts", jids);
    line.put("profile", profile);
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
        line.put("failed", message.failed);
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

QByteArray jsonNotice(const QString& account, const QString& text) {
    JsonLine line(u"notice", account);
    line.put("text", text);
    return std::move(line).take();
}

QByteArray jsonBye() { return JsonLine(u"bye").take(); }

}  // namespace oku::terminal
