// The JSON mode: commands in, events out, one object a line. Gives each command exactly one answer; see
// docs/json-protocol.md.
#pragma once

#include <functional>
#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <vector>

#include "messenger/core/messenger_face.h"
#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/info.h"
#include "messenger/core/values/log_line.h"
#include "messenger/core/values/message.h"
#include "messenger/core/values/windows.h"
#include "messenger/terminal/json/json_command.h"

namespace oku::terminal {

class JsonMode final {
public:
    using Writer = std::function<void(const QByteArray& line)>;

    // `write` gets each line with its line feed. `account` is the chosen account; empty stands for the first one.
    // `onFinished` is called after the last line.
    JsonMode(MessengerFace& messenger, Writer write, bool verbose, QString account = {},
             std::function<void()> onFinished = {});

    // Starts the messenger; gives an empty text, or the reason of the failure after an error event.
    QString start();

    // Sets the status of the chosen account; a refusal is a notice, as no command asked for it.
    void setStatusAtStart(Status status);

    // Bytes of the input, cut anywhere; runs the commands of all complete lines.
    void feed(const QByteArray& bytes);
    // The input has ended: a last line without a line feed counts, then the messenger is told to quit.
    void end();

    void accountChanged(const QString& account);
    void accountRemoved(const QString& account);
    void connectionChanged(const QString& account, ConnectionState state, const QString& reason);
    void ownStatusChanged(const QString& account, Status status, const QString& description);
    void rosterComplete(const QString& account);
    void contactChanged(const QString& account, const Contact& contact);
    void contactRemoved(const QString& account, const QString& jid);
    void presenceReceived(const QString& account, const QString& jid, const Resource& resource);
    void messageReceived(const QString& account, const Message& message);
    void messageSent(const QString& account, const Message& message);
    void messageQueued(const QString& account, const Message& message);
    void messageStateChanged(const QString& account, const Message& message);
    void typingReceived(const QString& account, const QString& jid, bool composing);
    void authorizationRequested(const QString& account, const QString& jid);
    void boxOpened(const MessageBox& box);
    void boxClosed(int number);
    void noticed(const QString& account, const QString& text);
    void logged(const LogLine& line);
    void xmlSeen(const QString& account, bool incoming, const QString& data);
    void infoReceived(const QString& account, const ContactInfo& info);
    void infoComplete(const QString& account, const QString& jid);
    void serverInfoReceived(const QString& account, const ServerInfo& info);
    void certificateRefused(const QString& account, const CertificateProblem& problem);
    void finished();

private:
    // What a command gives: done, refused with a reason, or answered later.
    struct Outcome {
        QString reason;
        bool later = false;
    };
    using Handler = Outcome (JsonMode::*)(const QString& account, const JsonCommand& command);
    struct Row;
    static const Row kRows[];

    // A command whose answer comes when what it asked for has come. An empty `jid` is the server.
    struct Waiting {
        JsonCommand command;
        QString account;
        QString jid;
    };

    void takeLine(const QByteArray& line);
    void run(const JsonCommand& command);
    void emitEvent(const QByteArray& line) { write_(line); }
    void answerWaiting(const QString& account, const QString& jid);
    QString chosenAccount(const JsonCommand& command) const;

    Outcome onAccount(const QString& account, const JsonCommand& command);
    Outcome onStatus(const QString& account, const JsonCommand& command);
    Outcome onMessage(const QString& account, const JsonCommand& command);
    Outcome onResend(const QString& account, const JsonCommand& command);
    Outcome onCancel(const QString& account, const JsonCommand& command);
    Outcome onRemoveAccount(const QString& account, const JsonCommand& command);
    Outcome onTyping(const QString& account, const JsonCommand& command);
    Outcome onAdd(const QString& account, const JsonCommand& command);
    Outcome onRename(const QString& account, const JsonCommand& command);
    Outcome onGroup(const QString& account, const JsonCommand& command);
    Outcome onRemove(const QString& account, const JsonCommand& command);
    Outcome onSubscribe(const QString& account, const JsonCommand& command);
    Outcome onAuthorize(const QString& account, const JsonCommand& command);
    Outcome onDeny(const QString& account, const JsonCommand& command);
    Outcome onAnswer(const QString& account, const JsonCommand& command);
    Outcome onRoster(const QString& account, const JsonCommand& command);
    Outcome onHistory(const QString& account, const JsonCommand& command);
    Outcome onSet(const QString& account, const JsonCommand& command);
    Outcome onGet(const QString& account, const JsonCommand& command);
    Outcome onRaw(const QString& account, const JsonCommand& command);
    Outcome onConsole(const QString& account, const JsonCommand& command);
    Outcome onInfo(const QString& account, const JsonCommand& command);
    Outcome onServer(const QString& account, const JsonCommand& command);
    Outcome onQuit(const QString& account, const JsonCommand& command);

    MessengerFace& messenger_;
    Writer write_;
    bool verbose_;
    QString account_;
    std::function<void()> onFinished_;
    QByteArray input_;
    bool skipping_ = false;  // inside a line that is too long
    bool ending_ = false;
    std::vector<Waiting> waiting_;
    QObject context_;  // of what is heard: gone with the mode
};

}  // namespace oku::terminal
