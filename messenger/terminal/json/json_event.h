// Events of the JSON mode as lines, each with its line feed; see docs/json-protocol.md for each.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/info.h"
#include "messenger/core/values/log_line.h"
#include "messenger/core/values/message.h"
#include "messenger/core/values/windows.h"

namespace oku::terminal {

QByteArray jsonReady(const QList<Account>& accounts, const QString& profile);
QByteArray jsonAccount(const QString& account);
QByteArray jsonAccountRemoved(const QString& account);
QByteArray jsonConnection(const QString& account, ConnectionState state, bool encrypted, const QString& reason);
QByteArray jsonStatus(const QString& account, Status status, const QString& description);
QByteArray jsonRoster(const QString& account, const QList<Contact>& contacts);
QByteArray jsonContact(const QString& account, const Contact& contact);
QByteArray jsonRemoved(const QString& account, const QString& jid);
QByteArray jsonPresence(const QString& account, const QString& jid, const Resource& resource);
QByteArray jsonMessage(const QString& account, const Message& message);
// `sent`, `queued`, `unconfirmed` or `failed`: named after the state.
QByteArray jsonOutgoing(const QString& account, const Message& message);
QByteArray jsonTyping(const QString& account, const QString& jid, bool composing);
QByteArray jsonAuthorization(const QString& account, const QString& jid);
QByteArray jsonQuestion(const MessageBox& box);
QByteArray jsonNotice(const QString& account, const QString& text);
QByteArray jsonLog(const LogLine& logged);
QByteArray jsonXml(const QString& account, bool incoming, const QString& data);
QByteArray jsonHistory(const QString& account, const QString& with, const QList<Message>& messages);
QByteArray jsonSetting(const QString& account, const QString& key, const QVariant& value);
QByteArray jsonInfo(const QString& account, const ContactInfo& info);
QByteArray jsonServer(const QString& account, const ServerInfo& info);
QByteArray jsonBye();

}  // namespace oku::terminal
