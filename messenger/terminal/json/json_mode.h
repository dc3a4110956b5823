// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <optional>
#include <QByteArray>
#include <QObject>
#include <QString>

#include "messenger/core/messenger_face.h"
#include "messenger/terminal/json/json_command.h"
#include "messenger/terminal/json/json_commands.h"
#include "messenger/terminal/json/json_events.h"

namespace oku::terminal {

/// The JSON mode: commands in, events out, one object a line. Gives each command exactly one answer; see
/// docs/json-protocol.md.
class JsonMode : public QObject {
public:
    using Writer = JsonEvents::Writer;

    /// `write` gets each line with its line feed. `account` is the chosen account; empty stands for the first one.
    /// `onFinished` is called after the last line.
    JsonMode(MessengerFace& messenger, Writer write, bool verbose, QString account = {},
             std::function<void()> onFinished = {});

    /// Starts the messenger; gives an empty text, or the reason of the failure after an error event.
    QString start();

    /// Adds the account, or sets its password. No command asked for it, so a refusal is a notice.
    void addAccountAtStart(const QString& jid, const QString& password);
    /// Sets the status of the chosen account; a refusal is a notice as well.
    void setStatusAtStart(Status status);

    /// Bytes of the input, cut anywhere; runs the commands of all complete lines. A command may hold whoever runs it in
    /// an event loop, from which more is fed, or the input ends: lines are run in their order all the same.
    void feed(const QByteArray& bytes);
    /// The input has ended: all lines before that are run, also a last one without a line feed, then the messenger is
    /// told to quit.
    void end();

private:
    void takeLines();
    std::optional<QByteArray> nextLine();
    std::optional<QByteArray> beginningOfTooLong();
    void takeLine(const QByteArray& line);
    void run(const JsonCommand& command);
    void answerWaiting(const QString& account, const QString& jid);
    QString chosenAccount(const JsonCommand& command) const;
    void finish();

    JsonDesk desk_;
    JsonEvents events_;
    QString account_;
    std::function<void()> onFinished_;
    QByteArray input_;
    qsizetype taken_ = 0;     ///< so much at the front of `input_` was run
    qsizetype searched_ = 0;  ///< up to here no line ends behind that
    bool skipping_ = false;   ///< inside a line that is too long
};

}  // namespace oku::terminal
