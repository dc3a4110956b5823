// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/accounts_on_host.h"

#include "messenger/core/accounts/account_setup.h"
#include "messenger/core/accounts/certificate_pins.h"
#include "messenger/core/accounts/setting_rules.h"
#include "messenger/core/host_core.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {
namespace {

QString key(const char16_t* name) { return QString::fromUtf16(name); }

class AccountsOnHost final : public AccountsFace {
public:
    explicit AccountsOnHost(HostCore& core) : core_(core) {
        connect(&core_.reload, &PluginReload::accountAdded, this, &AccountsFace::accountChanged);
        connect(&core_.reload, &PluginReload::accountRemoved, this, &AccountsFace::accountRemoved);
        connect(&core_.sessions, &Sessions::connectionChanged, this, &AccountsFace::connectionChanged);
        connect(&core_.sessions, &Sessions::ownStatusChanged, this, &AccountsFace::ownStatusChanged);
        connect(&core_.sockets, &SocketBridge::certificateRefused, this, &AccountsFace::certificateRefused);
    }

    QList<Account> accounts() const override {
        QList<Account> list;
        for (const auto& entry : core_.accounts.all()) {
            if (!entry->registered || entry->jid().isEmpty()) continue;
            list.append(
                {entry->jid(), entry->key, entry->connection, entry->status, entry->description, entry->encrypted()});
        }
        return list;
    }

    std::optional<Account> account(const QString& jid) const override {
        const QString bare = bareJid(jid);
        for (const Account& candidate : accounts()) {
            if (candidate.jid == bare) return candidate;
        }
        return std::nullopt;
    }

    QString addAccount(const QString& jid, const QString& password, const QVariantMap& settings) override {
        if (!core_.running()) return QCoreApplication::translate("Messenger", "Wtyczka nie jest wczytana.");
        if (!looksLikeJid(jid)) return QCoreApplication::translate("Messenger", "To nie jest adres konta: %1").arg(jid);
        for (auto at = settings.begin(); at != settings.end(); ++at) {
            if (QString fault = settingFault(at.key(), at.value()); !fault.isEmpty()) return fault;
        }
        if (auto* known = core_.accounts.inPlugin(jid)) {
            changeAccount(*known->settings, jid, password, settings);
            core_.sockets.sockets().forgetFailures(known->socket);
            return writeAccount(*known);
        }
        for (const auto& entry : core_.accounts.all()) {
            if (!entry->registered || !entry->jid().isEmpty()) continue;
            setUpAccount(*entry->settings, jid, password, settings);
            return writeAccount(*entry);
        }
        const QString path = newAccountPath(core_.profile.directory(), moduleBaseName(core_.options.modulePath), jid);
        const auto file = core_.settings.store(path);
        setUpAccount(*file, jid, password, settings);
        if (!file->write()) {
            file->remove();  // or it would be tried again, and the account come up at a later start
            return QCoreApplication::translate("Messenger", "Nie można zapisać konta w pliku %1.").arg(path);
        }
        core_.reload.addAccount(bareJid(jid), path);
        return {};
    }

    QString removeAccount(const QString& jid, bool withHistory) override {
        return core_.accounts.with(jid, [&](AccountEntry& entry) {
            core_.reload.removeAccount(entry, withHistory);
            return QString();
        });
    }

    QString setStatus(const QString& account, Status status, const QString& description) override {
        if (core_.reload.setStatusOfNew(account, status, description)) return {};
        return core_.accounts.with(account, [&](AccountEntry& entry) {
            core_.passwords.whenLoaded(
                entry.key, [this, &entry, status, description] { core_.reload.setStatus(entry, status, description); });
            return QString();
        });
    }

    QVariant settingValue(const QString& account, const QString& name) const override {
        const auto* entry = core_.accounts.inPlugin(account);
        return entry ? entry->settings->value(name) : QVariant();
    }

    QString setSetting(const QString& account, const QString& name, const QVariant& value) override {
        return core_.accounts.with(account, [&](AccountEntry& entry) {
            if (QString fault = settingFault(name, value); !fault.isEmpty()) return fault;
            entry.settings->set(name, value);
            reconsider();
            return writeSettings(entry);
        });
    }

    QString pinCertificate(const QString& account, const QString& fingerprint) override {
        return core_.accounts.with(account, [&](AccountEntry& entry) {
            const QString name = key(setting::pinnedCertificate);
            const auto pins = fingerprint.isEmpty() ? QString() : withPin(entry.settings->text(name), fingerprint);
            if (!pins)
                return QCoreApplication::translate("Messenger", "To nie jest odcisk SHA-256: %1").arg(fingerprint);
            entry.settings->set(name, pins->isEmpty() ? QVariant() : QVariant(*pins));
            return writeSettings(entry);
        });
    }

private:
    /// What goes by settings of the messenger's own.
    void reconsider() {
        core_.companion.reconsider();
        core_.publisher.reconsider();
    }

    /// Writes what was changed, so that whoever changed it knows whether it lasts.
    static QString writeSettings(const AccountEntry& account) {
        if (account.settings->write()) return {};
        return QCoreApplication::translate("Messenger", "Zmiana działa, ale nie można jej zapisać w pliku %1.")
            .arg(account.settings->path());
    }

    /// Writes the settings of an account that was set up or changed, and tells of it.
    QString writeAccount(const AccountEntry& account) {
        if (QString reason = writeSettings(account); !reason.isEmpty()) return reason;
        reconsider();
        emit accountChanged(account.jid());
        return {};
    }

    HostCore& core_;
};

}  // namespace

std::unique_ptr<AccountsFace> accountsOnHost(HostCore& core) { return std::make_unique<AccountsOnHost>(core); }

}  // namespace oku
