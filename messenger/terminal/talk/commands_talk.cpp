// Commands about conversations and their history.
#include <algorithm>
#include <QDir>
#include <QFileInfo>
#include <utility>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/commands.h"
#include "messenger/terminal/talk/session.h"

namespace oku::terminal {
namespace {

constexpr int kUsualHistory = 20;
constexpr int kFoundMessages = 100;

QString historyLine(const Session& session, const Message& message) {
    const Peer peer{message.account, message.contact};
    const QString name = session.nameOf(peer);
    QString line = message.time.toLocalTime().toString(QStringLiteral("d.MM.yyyy HH:mm "));
    line += message.failed                       ? u'!' + QStringLiteral(" ") + name
            : message.direction == Direction::in ? name
                                                 : u'→' + name;
    line += QStringLiteral(": ") + oneLine(message.body);
    switch (message.state) {
        case DeliveryState::queued:
        case DeliveryState::unconfirmed:
        case DeliveryState::failed:
            return line + QStringLiteral(" (%1)").arg(deliveryText(message, name));
        case DeliveryState::received:
        case DeliveryState::cancelled:
        case DeliveryState::sent:
            break;
    }
    return line;
}

}  // namespace

QString Commands::message(Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    if (arguments.empty()) return say(Text::Usage);
    return session_.send(peer, arguments.verbatim());
}

QString Commands::me(Arguments& arguments) {
    const Peer peer = session_.windows().partner();
    if (peer.none()) return say(Text::NoConversation);
    if (arguments.empty()) return say(Text::Usage);
    return session_.send(peer, QStringLiteral("/me ") + arguments.verbatim());
}

QString Commands::chatWith(Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    session_.openConversation(peer);
    return arguments.empty() ? QString() : session_.send(peer, arguments.verbatim());
}

QString Commands::close(Arguments&) {
    if (session_.windows().current().none()) return say(Text::NoConversation);
    session_.closeConversation();
    return {};
}

QString Commands::window(Arguments& arguments) {
    const QString word = arguments.word();
    if (word.isEmpty()) {
        const int next = session_.windows().nextUnread();
        if (next < 0) return say(Text::NothingUnread);
        session_.showWindow(next);
        return {};
    }
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    return isNumber && session_.showWindow(number) ? QString() : say(Text::NoSuchWindow, word);
}

// In a conversation the first word is a number or part of the text that is looked for, elsewhere the contact.
QString Commands::history(Arguments& arguments) {
    Peer peer = session_.windows().partner();
    if (peer.none()) {
        if (arguments.empty()) return say(Text::Usage);
        if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    }
    const QString rest = arguments.rest();
    bool isNumber = false;
    const int number = rest.toInt(&isNumber);
    if (isNumber && number < 1) return say(Text::BadLimit);
    const QString search = isNumber ? QString() : rest;
    const int limit = isNumber ? number : search.isEmpty() ? kUsualHistory : kFoundMessages;
    const QList<Message> found = session_.messenger().talk().history(peer.account, peer.jid, limit, search);
    if (found.isEmpty()) session_.tell(say(Text::HistoryEmpty));
    for (const Message& message : found) session_.list(historyLine(session_, message));
    return {};
}

QString Commands::exportTo(Arguments& arguments) {
    const QString file = arguments.word();
    if (file.isEmpty()) return say(Text::Usage);
    Peer peer = session_.windows().partner();
    if (!arguments.empty())
        if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    const QString path = QDir(session_.startDirectory()).absoluteFilePath(file);
    const QString account = peer.none() ? session_.account() : peer.account;
    const bool agreed = std::exchange(offeredFile_, {}) == path;
    if (!agreed && QFileInfo::exists(path)) {
        offeredFile_ = path;
        return say(Text::ExportExists, path);
    }
    const QString reason = session_.messenger().talk().exportHistory(account, peer.jid, path, agreed);
    if (reason.isEmpty()) session_.tell(say(Text::Exported, path));
    return reason;
}

// In a conversation, without a number: the last one that waits.
QString Commands::cancel(Arguments& arguments) {
    const QString word = arguments.word();
    bool isNumber = false;
    const qint64 number = word.toLongLong(&isNumber);
    if (isNumber) return session_.messenger().talk().cancelMessage(number);
    const Peer peer = session_.windows().current();
    if (!word.isEmpty()) return say(Text::BadNumber, word);
    if (peer.none()) return say(Text::Usage);
    const QList<Message> recent = session_.messenger().talk().history(peer.account, peer.jid, kFoundMessages, {});
    const auto waiting = std::find_if(recent.rbegin(), recent.rend(),
                                      [](const Message& message) { return message.state == DeliveryState::queued; });
    return waiting == recent.rend() ? say(Text::NothingWaits)
                                    : session_.messenger().talk().cancelMessage(waiting->number);
}

QString Commands::resend(Arguments& arguments) {
    const QString word = arguments.word();
    bool isNumber = false;
    const qint64 number = word.toLongLong(&isNumber);
    if (!isNumber) return word.isEmpty() ? say(Text::Usage) : say(Text::BadNumber, word);
    return session_.messenger().talk().resendMessage(number);
}

}  // namespace oku::terminal
