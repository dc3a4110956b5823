// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/chosen_account.h"

#include <algorithm>
#include <utility>

#include "messenger/core/values/setting_keys.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

ChosenAccount::ChosenAccount(const Desk& desk, SecretPrompt& secret)
    : desk_(desk), secret_(secret), jid_(bareJid(desk.options.account)), status_(desk.options.status) {}

void ChosenAccount::start() {
    const QString& wanted = desk_.options.account;
    const QList<Account> accounts = desk_.messenger.accounts().accounts();
    const auto isWanted = [this](const Account& one) { return one.jid == jid_; };
    bool stored = true;
    if (!wanted.isEmpty() && !desk_.options.password.isEmpty())
        stored = store(wanted, desk_.options.password, {});
    else if (!wanted.isEmpty() && std::none_of(accounts.begin(), accounts.end(), isWanted))
        add(wanted, {});
    else if (accounts.isEmpty())
        desk_.log.tell(say(Text::NoAccountYet));
    else
        desk_.log.tell(say(Text::AccountChosen, jid()));
    if (stored && !secret_.wanted()) connectAtStart();
}

QString ChosenAccount::jid() const {
    if (!jid_.isEmpty()) return jid_;
    const QList<Account> accounts = desk_.messenger.accounts().accounts();
    return accounts.isEmpty() ? QString() : accounts.first().jid;
}

QString ChosenAccount::setStatus(Status status, const QString& description) {
    const QString chosen = jid();
    if (status == Status::offline || hasPassword(chosen))
        return desk_.messenger.accounts().setStatus(chosen, status, description);
    secret_.ask(say(Text::PasswordQuestion, chosen), [this, chosen, status, description](const QString& password) {
        if (!store(chosen, password, {})) return;
        if (const QString reason = desk_.messenger.accounts().setStatus(chosen, status, description); !reason.isEmpty())
            desk_.log.tellError(reason);
    });
    return {};
}

void ChosenAccount::add(const QString& jid, const QString& server) {
    QVariantMap settings;
    if (!server.isEmpty()) {
        settings.insert(QStringLiteral("XMPP/Serv/Enable"), 1);
        settings.insert(QStringLiteral("XMPP/Serv/Host"), server);
    }
    secret_.ask(say(Text::PasswordQuestion, jid), [this, jid, settings](const QString& password) {
        if (store(jid, password, settings)) connectAtStart();
    });
}

void ChosenAccount::connectAtStart() {
    const QString word = std::exchange(status_, {});
    if (word.isEmpty() || jid().isEmpty()) return;
    if (const QString reason = setStatus(statusFromWord(word), {}); !reason.isEmpty()) desk_.log.tellError(reason);
}

bool ChosenAccount::hasPassword(const QString& account) const {
    // What lies in the key ring is fetched before the login.
    return desk_.messenger.accounts().settingValue(account, QString::fromUtf16(setting::passwordInRing)).toInt() == 1 ||
           !desk_.messenger.accounts().settingValue(account, QStringLiteral("XMPP/Pass")).toString().isEmpty();
}

bool ChosenAccount::store(const QString& jid, const QString& password, const QVariantMap& settings) {
    const bool known = desk_.messenger.accounts().account(bareJid(jid)).has_value();
    const QString before = this->jid();
    if (const QString reason = desk_.messenger.accounts().addAccount(jid, password, settings); !reason.isEmpty()) {
        desk_.log.tellError(say(Text::AccountRefused, jid, reason));
        return false;
    }
    jid_ = bareJid(jid);
    if (known) desk_.log.tell(say(Text::PasswordTaken, jid_));
    if (!known || jid_ != before) desk_.log.tell(say(Text::AccountChosen, jid_));
    return true;
}

}  // namespace oku::terminal
