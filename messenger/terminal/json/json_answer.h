// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Lines that answer a command, or that are told without an event of the messenger, each with its line feed; see
/// docs/json-protocol.md for each.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>

#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/message.h"
#include "messenger/terminal/json/json_line.h"

namespace oku::terminal {

QByteArray jsonReady(const QList<Account>& accounts, const QString& profile);
QByteArray jsonRoster(const QString& account, const QList<Contact>& contacts);
QByteArray jsonHistory(const QString& account, const QString& with, const QList<Message>& messages);
QByteArray jsonSetting(const QString& account, const QString& key, const QVariant& value);
QByteArray jsonNotice(const QString& account, const QString& text);
QByteArray jsonBye();

/// The fields of a contact and of its resource, as they stand in lists and in events.
void putContact(JsonLine& line, const Contact& contact);
void putResource(JsonLine& line, const Resource& resource);
QStringView directionWord(bool incoming);

}  // namespace oku::terminal
