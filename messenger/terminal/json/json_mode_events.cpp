// What the messenger tells, as events of the JSON mode.
#include "messenger/terminal/json/json_event.h"
#include "messenger/terminal/json/json_mode.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

void JsonMode::accountChanged(const QString& account) { emitEvent(jsonAccount(account)); }

void JsonMode::accountRemoved(const QString& account) {
    if (account_ == account) account_.clear();
    emitEvent(jsonAccountRemoved(account));
}

void JsonMode::connectionChanged(const QString& account, ConnectionState state, const QString& reason) {
    emitEvent(jsonConnection(account, state, messenger_.accounts().encrypted(account), reason));
}

void JsonMode::ownStatusChanged(const QString& account, Status status, const QString& description) {
    emitEvent(jsonStatus(account, status, description));
}

void JsonMode::rosterComplete(const QString& account) {
    emitEvent(jsonRoster(account, messenger_.roster().contacts(account)));
}

void JsonMode::contactChanged(const QString& account, const Contact& contact) {
    emitEvent(jsonContact(account, contact));
}

void JsonMode::contactRemoved(const QString& account, const QString& jid) { emitEvent(jsonRemoved(account, jid)); }

void JsonMode::presenceReceived(const QString& account, const QString& jid, const Resource& resource) {
    emitEvent(jsonPresence(account, jid, resource));
}

void JsonMode::messageReceived(const QString& account, const Message& message) {
    emitEvent(jsonMessage(account, message));
}

void JsonMode::messageSent(const QString& account, const Message& message) {
    emitEvent(jsonOutgoing(account, message));
}

void JsonMode::messageQueued(const QString& account, const Message& message) {
    emitEvent(jsonOutgoing(account, message));
}

// Once for programs, and in words for the people behind them.
void JsonMode::messageStateChanged(const QString& account, const Message& message) {
    emitEvent(jsonOutgoing(account, message));
    emitEvent(jsonNotice(account, deliveryText(message, message.contact)));
}

void JsonMode::typingReceived(const QString& account, const QString& jid, bool composing) {
    emitEvent(jsonTyping(account, jid, composing));
}

void JsonMode::authorizationRequested(const QString& account, const QString& jid) {
    emitEvent(jsonAuthorization(account, jid));
}

void JsonMode::boxOpened(const MessageBox& box) { emitEvent(jsonQuestion(box)); }
void JsonMode::boxClosed(int) {}
void JsonMode::noticed(const QString& account, const QString& text) { emitEvent(jsonNotice(account, text)); }

void JsonMode::logged(const LogLine& line) {
    if (verbose_) emitEvent(jsonLog(line));
}

void JsonMode::xmlSeen(const QString& account, bool incoming, const QString& data) {
    emitEvent(jsonXml(account, incoming, data));
}

void JsonMode::infoReceived(const QString& account, const ContactInfo& info) { emitEvent(jsonInfo(account, info)); }
void JsonMode::infoComplete(const QString& account, const QString& jid) { answerWaiting(account, jid); }

void JsonMode::serverInfoReceived(const QString& account, const ServerInfo& info) {
    emitEvent(jsonServer(account, info));
    answerWaiting(account, {});
}

void JsonMode::certificateRefused(const QString& account, const CertificateProblem& problem) {
    emitEvent(jsonNotice(account, certificateText(problem)));
}

void JsonMode::finished() {
    for (const Waiting& one : waiting_) emitEvent(jsonError(one.command.name, one.command.id, say(Text::JsonEnding)));
    waiting_.clear();
    emitEvent(jsonBye());
    if (onFinished_) onFinished_();
}

}  // namespace oku::terminal
