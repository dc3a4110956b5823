// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What Tab offers.
#include <algorithm>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/talk/typed_path.h"

namespace oku::terminal {
namespace {

// The start of the word under the cursor; inside open quotes the place of the opening one.
qsizetype wordStart(const QString& text, qsizetype cursor) {
    qsizetype start = 0;
    bool inQuotes = false;
    for (qsizetype at = 0; at < cursor; ++at) {
        if (text.at(at) == u'"') {
            if (!inQuotes) start = at;
            inQuotes = !inQuotes;
        } else if (text.at(at).isSpace() && !inQuotes) {
            start = at + 1;
        }
    }
    return start;
}

int wordsBefore(const QString& text, qsizetype start) {
    Arguments arguments(text.left(start));
    int count = 0;
    for (; !arguments.empty(); ++count) arguments.word();
    return count;
}

// Arguments of commands stand in quotes where they have blanks; in a message a name stands as it is.
enum class Quotes { None, WhereNeeded };

Completion matching(const QStringList& candidates, const QString& typed, qsizetype start, Quotes quotes) {
    QString plain = typed;
    if (quotes == Quotes::WhereNeeded) plain.remove(u'"');
    Completion completion{start, {}};
    for (const QString& candidate : candidates)
        if (candidate.startsWith(plain, Qt::CaseInsensitive))
            completion.candidates.append((quotes == Quotes::WhereNeeded ? quoted(candidate) : candidate) + u' ');
    completion.candidates.sort(Qt::CaseInsensitive);
    completion.candidates.removeDuplicates();
    return completion;
}

// A contact by its name, or by its address where that is what was typed or where the name is not the only one.
QStringList contactsFor(const QList<Contact>& contacts, const QString& typed) {
    QString plain = typed;
    plain.remove(u'"');
    QStringList found;
    for (const Contact& contact : contacts) {
        const auto sameName = [&](const Contact& other) { return other.name == contact.name; };
        const bool byName = contact.name.startsWith(plain, Qt::CaseInsensitive) && !contact.name.isEmpty() &&
                            std::count_if(contacts.begin(), contacts.end(), sameName) == 1;
        found.append(byName ? contact.name : contact.jid);
    }
    return found;
}

QStringList candidates(const Session& session, ArgumentKind kind, const QString& typed) {
    const MessengerFace& messenger = session.messenger();
    QStringList found;
    switch (kind) {
        case ArgumentKind::None:
            break;
        case ArgumentKind::Contact:
            found = contactsFor(messenger.roster().contacts(session.chosen().jid()), typed);
            break;
        case ArgumentKind::Request:
            found = messenger.roster().pendingAuthorizations(session.chosen().jid());
            break;
        case ArgumentKind::Group:
            for (const Contact& contact : messenger.roster().contacts(session.chosen().jid())) found << contact.group;
            break;
        case ArgumentKind::Account:
            found << QStringLiteral("add") << QStringLiteral("password") << QStringLiteral("remove");
            for (const Account& one : messenger.accounts().accounts()) found << one.jid;
            break;
        case ArgumentKind::Setting:
            for (const SettingRow& row : settingTable()) found << QString::fromLatin1(row.key);
            break;
        case ArgumentKind::Command:
            for (const CommandRow& row : commandTable()) found << QString::fromLatin1(row.name);
            break;
        case ArgumentKind::Switch:
            found << QStringLiteral("on") << QStringLiteral("off");
            break;
        case ArgumentKind::View:
            found << QStringLiteral("on") << QStringLiteral("off") << QStringLiteral("online") << QStringLiteral("all");
            break;
        case ArgumentKind::CardField:
            for (const char* field : kOwnCardFields) found << QString::fromLatin1(field);
            found << QStringLiteral("store") << QStringLiteral("forget");
            break;
        case ArgumentKind::PictureAct:
            found << QStringLiteral("set") << QStringLiteral("remove") << QStringLiteral("publish")
                  << QStringLiteral("fetch");
            break;
        case ArgumentKind::Dialog:
            for (const int number : messenger.dialogs().windows()) found << QString::number(number);
            break;
        case ArgumentKind::Received:
            for (const Transfer& one : messenger.transfers().transfers())
                if (isReceived(one)) found << QString::number(one.number);
            break;
        case ArgumentKind::File:
        case ArgumentKind::ContactOrFile:
            break;  // completed piece by piece
        case ArgumentKind::Mood:
            found = moodNames() << QStringLiteral("off");
            break;
        case ArgumentKind::Field:
            for (const char* field : kLocationFields) found << QString::fromLatin1(field);
            found << QStringLiteral("off");
            break;
        case ArgumentKind::Off:
            found << QStringLiteral("off");
            break;
        case ArgumentKind::Button:
            found << QStringLiteral("ok") << QStringLiteral("yes") << QStringLiteral("no");
            break;
    }
    found.removeAll(QString());
    return found;
}

// Inside a folder one types on, so its quotes stay open.
Completion matchingPaths(const Session& session, const QString& typed, qsizetype start) {
    QString plain = typed;
    plain.remove(u'"');
    Completion completion{start, {}};
    for (const QString& path : pathsFrom(session.options().startDirectory, plain)) {
        QString written = quoted(path);
        const bool folder = path.endsWith(u'/');
        if (folder && written.endsWith(u'"')) written.chop(1);
        completion.candidates.append(folder ? written : written + u' ');
    }
    return completion;
}

bool isPath(ArgumentKind kind) { return kind == ArgumentKind::File || kind == ArgumentKind::ContactOrFile; }

}  // namespace

Completion Commands::complete(const QString& text, qsizetype cursor) const {
    const qsizetype start = wordStart(text, cursor);
    const QString typed = text.mid(start, cursor - start);
    if (!text.startsWith(u'/') && typed.isEmpty()) return {};
    if (!text.startsWith(u'/'))
        return matching(candidates(session_, ArgumentKind::Contact, typed), typed, start, Quotes::None);
    if (start == 0) {
        QStringList names;
        for (const CommandRow& row : commandTable()) names.append(u'/' + QLatin1String(row.name));
        return matching(names, typed, start, Quotes::None);
    }
    const CommandRow* row = findCommand(text.mid(1).section(u' ', 0, 0));
    if (row == nullptr) return {};
    const int words = wordsBefore(text, start);
    // Fields stand before their values, as many as are wanted.
    const bool first = words == 1 || (row->first == ArgumentKind::Field && words % 2 == 1);
    if (words > 2 && !first) return {};
    const ArgumentKind kind = first ? row->first : row->second;
    if (!isPath(kind)) return matching(candidates(session_, kind, typed), typed, start, Quotes::WhereNeeded);
    // In a conversation the file alone is enough.
    Completion completion;
    if (kind == ArgumentKind::File || !session_.windows().partner().none())
        completion = matchingPaths(session_, typed, start);
    if (kind == ArgumentKind::ContactOrFile)
        completion.candidates +=
            matching(candidates(session_, ArgumentKind::Contact, typed), typed, start, Quotes::WhereNeeded).candidates;
    completion.start = start;
    return completion;
}

}  // namespace oku::terminal
