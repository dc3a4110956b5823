// Accounts, and the passwords that are asked for.
#include <utility>

#include "messenger/core/values/setting_keys.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

void Session::connectAtStart() {
    const QString word = std::exchange(options_.status, {});
    if (word.isEmpty() || account().isEmpty()) return;
    if (const QString reason = setStatus(statusFromWord(word), {}); !reason.isEmpty()) tellError(reason);
}

bool Session::hasPassword(const QString& account) const {
    // What lies in the key ring is fetched before the login.
    return messenger_.accounts().settingValue(account, QString::fromUtf16(setting::passwordInRing)).toInt() == 1 ||
           !messenger_.accounts().settingValue(account, QStringLiteral("XMPP/Pass")).toString().isEmpty();
}

QString Session::setStatus(Status status, const QString& description) {
    const QString chosen = account();
    if (status == Status::offline || hasPassword(chosen))
        return messenger_.accounts().setStatus(chosen, status, description);
    askSecret(say(Text::PasswordQuestion, chosen), [this, chosen, status, description](const QString& password) {
        if (!storeAccount(chosen, password, {})) return;
        if (const QString reason = messenger_.accounts().setStatus(chosen, status, description); !reason.isEmpty())
            tellError(reason);
    });
    return {};
}

void Session::askSecret(const QString& question, std::function<void(const QString&)> use) {
    secret_ = std::make_unique<SecretRequest>(SecretRequest{question, std::move(use)});
    display_.changed();
}

void Session::cancelSecret() {
    if (!secret_) return;
    secret_.reset();
    tell(say(Text::SecretCancelled));
}

void Session::addAccount(const QString& jid, const QString& server) {
    QVariantMap settings;
    if (!server.isEmpty()) {
        settings.insert(QStringLiteral("XMPP/Serv/Enable"), 1);
        settings.insert(QStringLiteral("XMPP/Serv/Host"), server);
    }
    askSecret(say(Text::PasswordQuestion, jid), [this, jid, settings](const QString& password) {
        if (storeAccount(jid, password, settings)) connectAtStart();
    });
}

bool Session::storeAccount(const QString& jid, const QString& password, const QVariantMap& settings) {
    const bool known = toldAccounts_.contains(bareJid(jid));
    const QString before = account();
    if (const QString reason = messenger_.accounts().addAccount(jid, password, settings); !reason.isEmpty()) {
        tellError(say(Text::AccountRefused, jid, reason));
        return false;
    }
    options_.account = bareJid(jid);
    if (known) tell(say(Text::PasswordTaken, options_.account));
    if (!known || options_.account != before) tell(say(Text::AccountChosen, options_.account));
    return true;
}

}  // namespace oku::terminal
