// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/roster/roster_on_host.h"

#include "host/oku/contact.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/roster/authorizations.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/roster/info_requests.h"
#include "messenger/core/roster/roster_commands.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

class RosterOnHost final : public RosterFace {
public:
    explicit RosterOnHost(const RosterParts& parts) : parts_(parts) {
        connect(&parts_.contacts, &ContactService::changed, this, &RosterFace::contactChanged);
        connect(&parts_.contacts, &ContactService::unreadChanged, this, &RosterFace::unreadChanged);
        connect(&parts_.contacts, &ContactService::removed, this, &RosterFace::contactRemoved);
        connect(&parts_.contacts, &ContactService::presence, this, &RosterFace::presenceReceived);
        connect(&parts_.authorizations, &Authorizations::requested, this, &RosterFace::authorizationRequested);
        connect(&parts_.info, &InfoRequests::contactAnswered, this, &RosterFace::infoReceived);
        connect(&parts_.info, &InfoRequests::contactComplete, this, &RosterFace::infoComplete);
        connect(&parts_.info, &InfoRequests::serverAnswered, this, &RosterFace::serverInfoReceived);
    }

    QList<Contact> contacts(const QString& account) const override {
        const auto* entry = parts_.accounts.inPlugin(account);
        return entry ? parts_.contacts.list(*entry).contacts() : QList<Contact>();
    }

    std::optional<Contact> contact(const QString& account, const QString& jid) const override {
        const auto* entry = parts_.accounts.inPlugin(account);
        return entry ? parts_.contacts.list(*entry).contact(bareJid(jid)) : std::nullopt;
    }

    QString addContact(const QString& account, const QString& jid, const QString& name, const QString& group) override {
        return parts_.accounts.with(account,
                                    [&](AccountEntry& entry) { return parts_.commands.add(entry, jid, name, group); });
    }

    QString renameContact(const QString& account, const QString& jid, const QString& name) override {
        return parts_.accounts.with(account,
                                    [&](AccountEntry& entry) { return parts_.commands.rename(entry, jid, name); });
    }

    QString moveContact(const QString& account, const QString& jid, const QString& group) override {
        return parts_.accounts.with(account,
                                    [&](AccountEntry& entry) { return parts_.commands.move(entry, jid, group); });
    }

    QString removeContact(const QString& account, const QString& jid) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) { return parts_.commands.remove(entry, jid); });
    }

    QString subscribe(const QString& account, const QString& jid) override {
        return parts_.accounts.with(account,
                                    [&](AccountEntry& entry) { return parts_.commands.subscribe(entry, jid); });
    }

    QString authorize(const QString& account, const QString& jid, bool askInReturn) override {
        const int bits = OKU_AUTH_ACCEPT | (askInReturn ? OKU_AUTH_ASK_IN_RETURN : 0);
        return parts_.accounts.with(account,
                                    [&](AccountEntry& entry) { return parts_.commands.answer(entry, jid, bits); });
    }

    QString deny(const QString& account, const QString& jid) override {
        return parts_.accounts.with(
            account, [&](AccountEntry& entry) { return parts_.commands.answer(entry, jid, OKU_AUTH_REFUSE); });
    }

    QStringList pendingAuthorizations(const QString& account) const override {
        const auto* entry = parts_.accounts.inPlugin(account);
        return entry ? entry->authorizations.list() : QStringList();
    }

    QString requestInfo(const QString& account, const QString& jid) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) { return parts_.info.askContact(entry, jid); });
    }

    QString requestServerInfo(const QString& account) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) { return parts_.info.askServer(entry); });
    }

private:
    RosterParts parts_;
};

}  // namespace

std::unique_ptr<RosterFace> rosterOnHost(const RosterParts& parts) { return std::make_unique<RosterOnHost>(parts); }

}  // namespace oku
