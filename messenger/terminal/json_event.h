// Events of the JSON mode as objects; see docs/json-protocol.md for each.
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include "messenger/core/types.h"

namespace oku::terminal {

QJsonObject jsonReady(const QList<Account>& accounts, const QString& profile);
QJsonObject jsonAccount(const QString& account);
QJsonObject jsonConnection(const QString& account, ConnectionState state, bool encrypted, const QString& reason);
QJsonObject jsonStatus(const QString& account, Status status, const QString& description);
QJsonObject jsonRoster(const QString& account, const QList<Contact>& contacts);
QJsonObject jsonContact(const QString& account, const Contact& contact);
QJsonObject jsonRemoved(const QString& account, const QString& jid);
QJsonObject jsonPresence(const QString& account, const QString& jid, const Resource& resource);
QJsonObject jsonMessage(const QString& account, const Message& message);
// `sent`, `queued`, `unconfirmed` or `failed`: named after the state.
QJsonObject jsonOutgoing(const QString& account, const Message& message);
QJsonObject jsonTyping(const QString& account, const QString& jid, bool composing);
QJsonObject jsonAuthorization(const QString& account, const QString& jid);
QJsonObject jsonQuestion(const MessageBox& box);
QJsonObject jsonNotice(const QString& account, const QString& text);
QJsonObject jsonLog(const LogLine& line);
QJsonObject jsonXml(const QString& account, bool incoming, const QString& data);
QJsonObject jsonHistory(const QString& account, const QString& with, const QList<Message>& messages);
QJsonObject jsonSetting(const QString& account, const QString& key, const QVariant& value);
QJsonObject jsonInfo(const QString& account, const ContactInfo& info);
QJsonObject jsonServer(const QString& account, const ServerInfo& info);
QJsonObject jsonBye();

}  // namespace oku::terminal
