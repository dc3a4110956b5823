// Commands about accounts, the own status and settings.
#include <algorithm>

#include "messenger/core/values/setting_keys.h"
#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/commands.h"
#include "messenger/terminal/talk/session.h"

namespace oku::terminal {
namespace {

constexpr int kKeyColumns = 24;

const SettingRow* findSetting(const QString& key) {
    for (const SettingRow& row : settingTable())
        if (key.compare(QLatin1String(row.key), Qt::CaseInsensitive) == 0) return &row;
    return nullptr;
}

QString shownValue(const SettingRow& row, const QVariant& value) {
    if (!value.isValid()) return say(Text::SettingUnset);
    return oneLine(shownSetting(QLatin1String(row.key), value).toString());
}

}  // namespace

QString Commands::account(Arguments& arguments) {
    const QString word = arguments.word();
    if (word.isEmpty() || word == QLatin1String("list")) {
        listAccounts();
        return {};
    }
    if (word == QLatin1String("add")) {
        const QString jid = arguments.word();
        if (jid.indexOf(u'@') < 1) return jid.isEmpty() ? say(Text::Usage) : say(Text::NotJid, jid);
        session_.addAccount(jid, arguments.word());
        return {};
    }
    if (word == QLatin1String("password")) {
        if (session_.account().isEmpty()) return say(Text::NoAccountYet);
        session_.addAccount(session_.account(), {});
        return {};
    }
    if (word == QLatin1String("remove")) return removeAccount(arguments);
    return pickAccount(word);
}

// The whole address is asked for, so that nothing goes by a slip.
QString Commands::removeAccount(Arguments& arguments) {
    const QString jid = arguments.word();
    const QString more = arguments.word();
    const bool withHistory = more == QLatin1String("history");
    if (jid.isEmpty() || (!more.isEmpty() && !withHistory)) return say(Text::Usage);
    return session_.messenger().accounts().removeAccount(jid, withHistory);
}

void Commands::listAccounts() {
    const QList<Account> accounts = session_.messenger().accounts().accounts();
    if (accounts.isEmpty()) session_.tell(say(Text::NoAccountYet));
    int number = 0;
    for (const Account& one : accounts) {
        const QChar mark = one.jid == session_.account() ? u'>' : u' ';
        session_.list(QStringLiteral("%1 %2. %3 %4 %5, %6")
                          .arg(mark)
                          .arg(++number)
                          .arg(statusMark(one.status))
                          .arg(oneLine(one.jid), statusText(one.status), connectionText(one.connection, one.encrypted)),
                      statusStyle(one.status));
    }
}

QString Commands::pickAccount(const QString& text) {
    const QList<Account> accounts = session_.messenger().accounts().accounts();
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    for (qsizetype at = 0; at < accounts.size(); ++at) {
        if (isNumber ? number != at + 1 : accounts.at(at).jid != bareJid(text)) continue;
        session_.chooseAccount(accounts.at(at).jid);
        session_.tell(say(Text::AccountChosen, accounts.at(at).jid));
        return {};
    }
    return say(Text::NoSuchAccount, text);
}

QString Commands::setStatus(Status status, Arguments& arguments) {
    return session_.setStatus(status, arguments.verbatim());
}

QString Commands::online(Arguments& arguments) { return setStatus(Status::online, arguments); }
QString Commands::chat(Arguments& arguments) { return setStatus(Status::chat, arguments); }
QString Commands::away(Arguments& arguments) { return setStatus(Status::away, arguments); }
QString Commands::xa(Arguments& arguments) { return setStatus(Status::xa, arguments); }
QString Commands::dnd(Arguments& arguments) { return setStatus(Status::dnd, arguments); }
QString Commands::invisible(Arguments& arguments) { return setStatus(Status::invisible, arguments); }
QString Commands::offline(Arguments& arguments) { return setStatus(Status::offline, arguments); }

QString Commands::set(Arguments& arguments) {
    const QString key = arguments.word();
    if (key.isEmpty() || arguments.empty()) return say(Text::Usage);
    const SettingRow* row = findSetting(key);
    if (row == nullptr) return say(Text::UnknownSetting, key);
    const QString text = arguments.rest();
    QVariant value = text;
    if (row->number) {
        bool whole = false;
        value = text.toInt(&whole);
        if (!whole) return say(Text::BadNumber, text);
    }
    const QString name = QString::fromLatin1(row->key);
    const QString reason = session_.messenger().accounts().setSetting(session_.account(), name, value);
    if (reason.isEmpty()) session_.tell(QStringLiteral("%1 = %2").arg(name, shownValue(*row, value)));
    return reason;
}

// Without a word those that were changed, a line each: all of them would push away what is read.
QString Commands::get(Arguments& arguments) {
    const QString part = arguments.word();
    const bool all = part == QLatin1String("all");
    int listed = 0;
    int left = 0;
    for (const SettingRow& row : settingTable()) {
        const QString name = QString::fromLatin1(row.key);
        const QVariant value = session_.messenger().accounts().settingValue(session_.account(), name);
        const bool wanted = part.isEmpty() ? value.isValid() : all || name.contains(part, Qt::CaseInsensitive);
        ++(wanted ? listed : left);
        if (!wanted) continue;
        const QString line = fitToWidth(name, kKeyColumns) + QStringLiteral("= ") + shownValue(row, value);
        const QString help = QStringLiteral("  (%1)").arg(QCoreApplication::translate("SettingKeys", row.help));
        const bool brief = displayWidth(line + help) > session_.columns() && part.isEmpty();
        session_.list(brief ? line : line + help);
    }
    if (listed == 0 && !part.isEmpty()) return say(Text::UnknownSetting, part);
    if (part.isEmpty()) session_.list(sayCounted(Text::SettingsLeft, left), Style::Faint);
    return {};
}

QString Commands::typing(Arguments& arguments) {
    const QString word = arguments.word();
    const QString key = QString::fromUtf16(setting::sendTyping);
    if (word != QLatin1String("on") && word != QLatin1String("off")) return say(Text::Usage);
    const bool on = word == QLatin1String("on");
    const QString reason = session_.messenger().accounts().setSetting(session_.account(), key, on ? 1 : 0);
    if (reason.isEmpty()) session_.tell(say(on ? Text::TypingOn : Text::TypingOff));
    return reason;
}

QString Commands::pin(Arguments& arguments) {
    const QString word = arguments.word();
    const QString account = session_.account();
    const bool off = word == QLatin1String("off");
    const QString fingerprint = off ? QString() : word.isEmpty() ? session_.refusedCertificate(account) : word;
    if (!off && fingerprint.isEmpty()) return say(Text::NoCertificate);
    const QString reason = session_.messenger().accounts().pinCertificate(account, fingerprint);
    if (reason.isEmpty()) session_.tell(off ? say(Text::PinTakenBack) : say(Text::Pinned, fingerprint));
    return reason;
}

}  // namespace oku::terminal
