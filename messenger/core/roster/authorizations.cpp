// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/roster/authorizations.h"

#include "host/oku/contact.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/values/jid_text.h"

namespace oku {

Authorizations::Authorizations(ServiceRegistry& services, Accounts& accounts, QObject* parent) : QObject(parent) {
    services.provide(u"OKU/PFAskForAuth", [this, &accounts](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* contact = recordAt<OKU_CONTACT_RECORD>(param);
        auto* account = contact ? accounts.byNetId(contact->netId) : nullptr;
        if (!account) return 0;
        ask(*account, bareJid(wideText(contact->id)));
        return 1;
    });
}

void Authorizations::ask(AccountEntry& account, const QString& jid) {
    switch (account.authorizations.add(jid)) {
        case AuthorizationRequests::Taken::yes:
            emit requested(account.jid(), jid);
            break;
        case AuthorizationRequests::Taken::first:
            emit noticed(
                account.jid(),
                QCoreApplication::translate(
                    "Contacts", "Na odpowiedź czeka tak wiele próśb o autoryzację, że dalsze nie są pokazywane."));
            break;
        case AuthorizationRequests::Taken::further:
            break;
    }
}

}  // namespace oku
