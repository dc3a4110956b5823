// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Files that are sent and received: the commands and the lines of the JSON mode.
#pragma once

#include <array>
#include <QByteArray>

#include "messenger/core/values/transfer.h"
#include "messenger/terminal/json/json_commands.h"

namespace oku::terminal {

QByteArray jsonTransfer(const Transfer& transfer);
QByteArray jsonFileOffer(const FileOffer& offer);
QByteArray jsonFileOfferClosed(int number, OfferReply reply);
QByteArray jsonFileQuestion(const FileQuestion& question);
QByteArray jsonFileQuestionClosed(int number);

JsonOutcome sendFile(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome answerFile(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome cancelFile(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome openFile(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome chooseFile(JsonDesk& desk, const QString& account, const JsonCommand& command);
JsonOutcome listFiles(JsonDesk& desk, const QString& account, const JsonCommand& command);

inline constexpr std::array kSendFile = {JsonField{"to", JsonType::Text, true},
                                         JsonField{"path", JsonType::Text, true}};
inline constexpr std::array kAnswerFile = {JsonField{"offer", JsonType::Whole, true},
                                           JsonField{"answer", JsonType::Text, true}};
inline constexpr std::array kCancelFile = {JsonField{"transfer", JsonType::Whole, true}};
inline constexpr std::array kChooseFile = {JsonField{"file", JsonType::Whole, true},
                                           JsonField{"path", JsonType::Text, false}};

}  // namespace oku::terminal
