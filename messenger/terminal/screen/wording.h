// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Small words that several places share: names of statuses and states, buttons, addresses.
#pragma once

#include <optional>
#include <QDateTime>
#include <QString>

#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/message.h"
#include "messenger/core/values/windows.h"
#include "messenger/terminal/screen/style.h"

namespace oku::terminal {

/// Lower case, without the resource and blanks around.
QString bareJid(const QString& jid);

/// `ok` `yes` `no`, and the Polish `tak` `nie`.
std::optional<BoxButton> buttonFromWord(const QString& word);

/// The status in words for a person.
QString statusText(Status status);
/// One character that marks the status, for lists.
QChar statusMark(Status status);
Style statusStyle(Status status);

QString connectionText(ConnectionState state);
/// Of a session that has come to its login, and says so where it is not encrypted.
QString connectionText(ConnectionState state, bool encrypted);

/// The text of a message with what belongs to it: its subject, and when it was written where it came late.
QString withSubjectAndDelay(const Message& message, const QString& text);

/// What became of a message that was written earlier; `to` names its receiver.
QString deliveryText(const Message& message, const QString& to);

/// A setting's value as it may be shown: a password is masked.
QVariant shownSetting(const QString& key, const QVariant& value);

/// Why a certificate was refused, and its fingerprint.
QString certificateText(const CertificateProblem& problem);

/// What each side sees of the other.
QString subscriptionText(const Contact& contact);

/// Lines, parted by commas.
QString inOneLine(const QString& lines);

/// Behind a dash, where there is one; in one line.
QString withDescription(const QString& text, const QString& description);

/// A line feed and anything that could drive a terminal taken out of a text for one line.
QString oneLine(const QString& text);

}  // namespace oku::terminal
