// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/connections/line_guards.h"

#include "messenger/core/connections/status_choices.h"
#include "messenger/core/storage/settings_service.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {
namespace {

QString notEncrypted(bool loggedIn) {
    return loggedIn
               ? QCoreApplication::translate("HostCore",
                                             "Połączenie nie jest szyfrowane, a na tym koncie już takie być nie może. "
                                             "Zostało zakończone.")
               : QCoreApplication::translate(
                     "HostCore", "Połączenie nie jest szyfrowane, więc zostało zakończone, zanim cokolwiek wysłano.");
}

QString notProven(bool sent) {
    return sent ? QCoreApplication::translate(
                      "HostCore", "Serwer nie dowiódł, że zna hasło tego konta: jego odpowiedź jest błędna.")
                : QCoreApplication::translate("HostCore",
                                              "Serwer nie dowiódł, że zna hasło tego konta, "
                                              "a połączenie nie jest szyfrowane.");
}

QString takenOut(bool encrypted) {
    return encrypted
               ? QCoreApplication::translate("HostCore",
                                             "Zanim logowanie się skończyło, przyszły dane, o które nikt nie prosił. "
                                             "Zostały odrzucone.")
               : QCoreApplication::translate("HostCore",
                                             "Zanim połączenie było szyfrowane, przyszły dane, którym nie można ufać. "
                                             "Zostały odrzucone.");
}

}  // namespace

LineGuards::LineGuards(SettingsService& settings, Accounts& accounts, StatusChoices& choices, QObject* parent)
    : QObject(parent), choices_(choices) {
    connect(&clearTextGuard_, &ClearTextGuard::refused, this,
            [this](AccountEntry* account) { endUntrusted(*account, notEncrypted(account->loggedIn())); });
    connect(&settings, &SettingsService::changed, this, [this, &accounts](const QString& path, const QString& key) {
        auto* account = accounts.byKey(path);
        if (account && key == QString::fromUtf16(setting::allowClearText)) clearTextGuard_.permissionChanged(*account);
    });
    connect(&digestCheck_, &DigestCheck::refused, this,
            [this](AccountEntry* account, bool sent) { endUntrusted(*account, notProven(sent)); });
    connect(&guard_, &StanzaGuard::sessionRefused, this, [](AccountEntry* account, const QString& condition) {
        account->reason = QCoreApplication::translate("HostCore", "Serwer odmówił otwarcia sesji.");
        if (!condition.isEmpty()) account->reason += QStringLiteral(" (%1)").arg(condition);
    });
    connect(&guard_, &StanzaGuard::distrusted, this,
            [this](AccountEntry* account) { emit noticed(account->jid(), takenOut(account->line.encrypted)); });
}

void LineGuards::addTo(HookChain& hooks, bool stanzas) {
    hooks.add(clearTextGuard_);
    if (stanzas) hooks.add(guard_);
    hooks.add(digestCheck_);
}

void LineGuards::endUntrusted(AccountEntry& account, const QString& reason) {
    account.reason = reason;
    emit noticed(account.jid(), reason);
    choices_.set(account, Status::offline, account.description);
}

}  // namespace oku
