// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <QByteArray>
#include <QObject>
#include <vector>

#include "host/oku/protocol.h"
#include "messenger/core/accounts/authorization_requests.h"
#include "messenger/core/storage/settings_file.h"
#include "messenger/core/values/account.h"
#include "messenger/core/values/status.h"

namespace oku {

class ServiceRegistry;
class SettingsService;

/// A login by DIGEST-MD5 that is under way.
struct DigestLogin {
    std::optional<QByteArray> expected = {};  ///< nothing before the response, and for an unknown password
    bool proven = false;
};

/// What the host itself knows of the line that an account speaks on. The flags word tells what the plugin believes, and
/// that is empty as soon as the plugin has ended its stream.
struct LineState {
    QString domain = {};  ///< whose server it leads to: while an account is registered, not the one of the settings
    bool encrypted = false;
    bool bound = false;    ///< the session is
    bool told = false;     ///< that something was taken out of what came
    bool refused = false;  ///< the connection cannot go on and is being ended: nothing more is exchanged on it
    std::optional<DigestLogin> digest = {};
    QByteArray registered = {};  ///< the password that an account is registered with on it, not in its settings yet
};

/// What the messenger keeps of one account. Its key is the path of its settings: numbers change when the plugin is
/// loaded anew, the file does not.
struct AccountEntry {
    QString key;
    std::shared_ptr<SettingsFile> settings;

    // From "OKU/ProtocolAdd", while the plugin has it.
    bool registered = false;
    std::uint32_t netId = 0;
    QString pfClass;
    OKU_HANDLER authorizationHandler = nullptr;
    OKU_HANDLER deleteHandler = nullptr;
    OKU_WORD context = 0;
    const std::uint32_t* flags = nullptr;
    QString socket;

    // The connection.
    LineState line;
    ConnectionState connection = ConnectionState::offline;
    Status status = Status::offline;
    QString description;
    bool rosterComplete = false;
    QString reason;  ///< why the last connection ended

    AuthorizationRequests authorizations;

    /// The bare JID of the settings; empty while there is none.
    [[nodiscard]] QString jid() const;
    [[nodiscard]] QString domain() const;
    [[nodiscard]] std::uint32_t flagsWord() const { return registered && flags ? *flags : 0; }
    [[nodiscard]] bool has(std::uint32_t flag) const { return (flagsWord() & flag) != 0; }
    /// Connected and authorized, as the plugin tests it.
    [[nodiscard]] bool loggedIn() const { return has(OKU_FLAG_CONNECTED) && has(OKU_FLAG_AUTHORIZED); }
    /// Logged in with the roster complete: what the user calls online.
    [[nodiscard]] bool ready() const { return loggedIn() && rosterComplete; }
    /// A connection is being made, or its login is not complete.
    [[nodiscard]] bool loggingIn() const { return (has(OKU_FLAG_CONNECTED) || has(OKU_FLAG_CONNECTING)) && !ready(); }
    /// The user allowed this account to log in and to talk without TLS.
    [[nodiscard]] bool clearTextAllowed() const;
    /// Connected, and by TLS.
    [[nodiscard]] bool encrypted() const { return has(OKU_FLAG_CONNECTED) && line.encrypted; }
    /// The full name of one of the account's own services.
    [[nodiscard]] std::u16string service(const char16_t* shortName) const;
    /// As the flags word tells it now.
    [[nodiscard]] ConnectionState currentState() const;

private:
    mutable QString user_;  ///< of the settings, when jid_ was made of it
    mutable QString jid_;
};

/// The accounts, in the order in which the plugin opened their settings, and "OKU/ProtocolAdd", "OKU/ProtocolDel" and
/// "OKU/PFSetInfo".
class Accounts : public QObject {
    Q_OBJECT

public:
    Accounts(ServiceRegistry& services, SettingsService& settings, QObject* parent = nullptr);

    [[nodiscard]] const std::vector<std::unique_ptr<AccountEntry>>& all() const { return entries_; }
    /// Null when there is none.
    AccountEntry* byKey(const QString& key) const;
    AccountEntry* byJid(const QString& jid) const;
    AccountEntry* byNetId(std::uint32_t netId) const;
    AccountEntry* byContext(OKU_WORD context) const;
    AccountEntry* bySocket(const QString& socket) const;
    /// The one with this address while the plugin has it; null otherwise.
    AccountEntry* inPlugin(const QString& jid) const;
    /// Runs `command` for that account and gives its reason, or tells that there is no such account.
    template <typename Command>
    QString with(const QString& jid, Command command) const {
        auto* account = inPlugin(jid);
        return account ? command(*account) : noAccount(jid);
    }
    /// The plugin is gone: nothing is registered any more.
    void dropPlugin();

signals:
    void registered(oku::AccountEntry* account);
    void unregistered(oku::AccountEntry* account);

private:
    OKU_WORD add(OKU_WORD param);
    OKU_WORD remove(OKU_WORD netId);
    static QString noAccount(const QString& jid);
    AccountEntry* ownerOf(const OKU_PROTOCOL_RECORD& record) const;
    template <typename Test>
    AccountEntry* first(Test test) const;

    SettingsService& settings_;
    std::vector<std::unique_ptr<AccountEntry>> entries_;
};

}  // namespace oku
