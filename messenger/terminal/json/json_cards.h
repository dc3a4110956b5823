// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The commands of the JSON mode about cards and pictures, and what is told of them; see docs/json-protocol.md.
#pragma once

#include <QByteArray>
#include <QString>

#include "messenger/core/values/cards.h"
#include "messenger/terminal/json/json_commands.h"

namespace oku::terminal {

JsonOutcome jsonCard(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome jsonOwnCard(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome jsonStoreCard(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome jsonOwnPicture(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome jsonSetPicture(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome jsonRemovePicture(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome jsonPublishPicture(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome jsonFetchPicture(JsonDesk& desk, const QString& account, const JsonCommand& command);

QByteArray cardLine(const QString& account, const ContactCard& card);
QByteArray ownCardLine(const QString& account, const OwnCard& card);
QByteArray cardLossesLine(const QString& account, const QStringList& lost);
QByteArray ownPictureLine(const OwnPicture& picture);
QByteArray cardBusyLine(bool busy);
QByteArray pictureLine(const QString& account, const ContactPicture& picture);

/// Has the commands that wait answered with what comes of them, from now on, for as long as `context` lives.
void answerCards(JsonDesk& desk, QObject* context);

}  // namespace oku::terminal
