// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/wire/clear_text_guard.h"
#include "messenger/core/wire/digest_check.h"
#include "messenger/core/wire/stanza_guard.h"

namespace oku {

class Accounts;
class SettingsService;
class StatusChoices;

/// The guards of the accounts' lines, and what follows where one of them finds that a line cannot be trusted: the
/// connection ends and is not dialled again, and the user is told why.
class LineGuards : public QObject {
    Q_OBJECT

public:
    LineGuards(SettingsService& settings, Accounts& accounts, StatusChoices& choices, QObject* parent = nullptr);

    /// Lets them listen; `stanzas`: the guard of what comes as well.
    void addTo(HookChain& hooks, bool stanzas);

signals:
    void noticed(const QString& account, const QString& text);

private:
    void endUntrusted(AccountEntry& account, const QString& reason);

    StatusChoices& choices_;
    StanzaGuard guard_;
    ClearTextGuard clearTextGuard_;
    DigestCheck digestCheck_;
};

}  // namespace oku
