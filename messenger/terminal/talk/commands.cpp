#include "messenger/terminal/talk/commands.h"

#include <algorithm>
#include <QCoreApplication>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/session.h"

namespace oku::terminal {
namespace {

constexpr int kColumnsForUsage = 70;  // narrower windows show the commands without their arguments

QString usageOf(const CommandRow& row) {
    return (QStringLiteral("/%1 ").arg(QLatin1String(row.name)) +
            QCoreApplication::translate("Commands", row.arguments))
        .trimmed();
}

}  // namespace

QString Commands::run(const QString& line) {
    const QString text = line.mid(1);
    qsizetype end = 0;
    while (end < text.size() && !text.at(end).isSpace()) ++end;
    const QString name = text.left(end);
    const CommandRow* row = findCommand(name);
    if (row == nullptr) return say(Text::UnknownCommand, name);
    if (row->needsAccount && session_.account().isEmpty()) return say(Text::NoAccountYet);
    Arguments arguments(text.mid(end));
    const QString reason = (this->*row->handler)(arguments);
    return reason == say(Text::Usage) ? reason + u' ' + usageOf(*row) : reason;
}

QString Commands::help(Arguments& arguments) {
    QString name = arguments.word();
    if (name.startsWith(u'/')) name.remove(0, 1);
    if (!name.isEmpty()) {
        const CommandRow* row = findCommand(name);
        if (row == nullptr) return say(Text::UnknownCommand, name);
        session_.list(usageOf(*row), Style::Heading);
        session_.list(QStringLiteral("  ") + QCoreApplication::translate("Commands", row->help));
        return {};
    }
    const bool narrow = session_.columns() < kColumnsForUsage;
    const int left = narrow ? 12 : 34;
    for (const CommandRow& row : commandTable()) {
        const QString help = QCoreApplication::translate("Commands", row.help);
        const QString usage = narrow ? QStringLiteral("/%1").arg(QLatin1String(row.name)) : usageOf(row);
        const bool fits = displayWidth(usage) < left;
        session_.list((fits ? fitToWidth(usage, left) : usage + u'\n') + help, Style::Plain, left);
    }
    for (const QString& line : say(Text::HelpKeys).split(u'\n')) session_.list(line, Style::Faint);
    return {};
}

QString Commands::takeContact(Arguments& arguments, Peer& peer) {
    peer = session_.windows().partner();
    const QString text = arguments.word();
    if (text.isEmpty()) return peer.none() ? say(Text::Usage) : QString();
    peer.account = session_.account();
    return session_.findContact(text, peer.jid);
}

QString Commands::console(Arguments& arguments) {
    const QString word = arguments.word();
    if (word != QLatin1String("on") && word != QLatin1String("off")) return say(Text::Usage);
    session_.messenger().wire().setConsole(word == QLatin1String("on"));
    session_.tell(say(word == QLatin1String("on") ? Text::ConsoleOn : Text::ConsoleOff));
    return {};
}

QString Commands::raw(Arguments& arguments) {
    if (arguments.empty()) return say(Text::Usage);
    return session_.messenger().wire().sendRaw(session_.account(), arguments.verbatim());
}

QString Commands::info(Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    return session_.messenger().roster().requestInfo(peer.account, peer.jid);
}

QString Commands::server(Arguments&) { return session_.messenger().roster().requestServerInfo(session_.account()); }

QString Commands::answer(Arguments& arguments) {
    const QList<MessageBox> boxes = session_.messenger().windows().openBoxes();
    QString word = arguments.word();
    int number = boxes.isEmpty() ? 0 : boxes.first().number;
    bool isNumber = false;
    const int given = word.toInt(&isNumber);
    if (isNumber) {
        number = given;
        word = arguments.word();
    }
    if (word.isEmpty()) return say(Text::Usage);
    const auto button = buttonFromWord(word);
    if (!button) return say(Text::BadButton, word);
    if (boxes.isEmpty()) return say(Text::NoQuestion);
    const QString reason = session_.messenger().windows().answerBox(number, *button);
    if (reason.isEmpty()) session_.tell(say(Text::Answered, number, word));
    return reason;
}

QString Commands::clear(Arguments&) {
    session_.clearWindow();
    return {};
}

QString Commands::quit(Arguments&) {
    session_.quit();
    return {};
}

}  // namespace oku::terminal
