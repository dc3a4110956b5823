// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One account: what it is, what it registered with the host, and the facts that all of its parts share.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/host.h"
#include "host/oku/protocol.h"
#include "host/services/contact_list.h"
#include "host/services/protocol_hooks.h"
#include "plugin/account_files.h"
#include "plugin/account_settings.h"
#include "plugin/jid.h"
#include "plugin/status.h"

namespace protolink {

struct OwnPresentation;

/// The bits of an account's connection, in `CClientClass::flags`. The host reads the same word.
enum AccountFlag : std::uint32_t {
    FLAG_CONNECTED = OKU_FLAG_CONNECTED,
    FLAG_ENCRYPTION_ACTIVATED = OKU_FLAG_ENCRYPTION_ACTIVATED,
    FLAG_CONNECTING = OKU_FLAG_CONNECTING,
    FLAG_AUTHORIZED = OKU_FLAG_AUTHORIZED,
    FLAG_COMPRESSED = OKU_FLAG_COMPRESSED,
};

/// What the account's frame asks of its session with the server, which the parts above it make: connection, contacts
/// and transfers.
class AccountSession {
public:
    virtual ~AccountSession() = default;
    virtual void setStatus(Status status, const std::u16string& description, OKU_WORD flagsWord) = 0;
    virtual void forgetRetries() = 0;
    virtual void resetState() = 0;
    virtual void disconnect(bool closeSocket) = 0;
    /// Cancels a reconnection that is under way, as an end of the connection during `shutdown` starts one.
    virtual void dropReconnection() = 0;
    virtual void freeZInput() = 0;
    virtual void rosterLoad() = 0;
    virtual void rosterSave() = 0;
    /// Tells the threads of downloads to end, and waits for none.
    virtual void stopDownloads() = 0;
    /// Closes the plugin's windows that are this account's.
    virtual void closeWindows() = 0;
    /// Ends the file transfers, and what would still call back for one.
    virtual void endTransfers() = 0;
};

/// A service or hook of an account: the name that the host knows and the function behind it.
struct AccountEntry {
    const char16_t* name;
    OKU_HANDLER handler;
};

/// What an account registers with the host, in the order of registration. One set serves all accounts; each handler
/// finds its account by the context word.
struct AccountEntries {
    std::vector<AccountEntry> services;  // by short name
    AccountEntry hintHook;               // attached right after the services
    std::vector<AccountEntry> hooks;     // attached last
    OKU_HANDLER authorization;
    OKU_HANDLER contactDelete;
    OKU_HANDLER statusMenu;
    OKU_HANDLER statusWindow;
    OKU_HANDLER statusResult;
    OKU_HANDLER optionsPage;
    OKU_HANDLER propertiesPage;
    OKU_HANDLER socketEvent;
    OKU_HANDLER keepaliveTick;
};

class CClientClass {
public:
    CClientClass(AccountFiles accountFiles, const Host& accountHost);
    ~CClientClass();
    CClientClass(const CClientClass&) = delete;
    CClientClass& operator=(const CClientClass&) = delete;

    /// Reads the settings and registers everything with the host. The session is made first.
    void init(const AccountEntries& entries, OwnPresentation& own);
    /// Ends the connection, saves, and takes everything back from the host. The object reaches the host no more.
    void shutdown();

    bool loggedIn() const { return (flags & FLAG_CONNECTED) && (flags & FLAG_AUTHORIZED); }

    /// Shows the icon of `shown` on the account's menu.
    void showStatusIcon(Status shown) const;

    void log(LogLevel level, const char16_t* tag, const std::u16string& text) const { host.log(level, tag, text); }

    Host host;
    ProtocolHooks hooks{host, netId};
    ContactList contactList{host};
    AccountSettings settings{host};
    AccountFiles files;
    OKU_WORD context = 0;  // set by the assembly; names this account in the host's callbacks

    std::uint32_t flags = 0;
    std::uint32_t netId = 0;        // the host's number for this account
    std::uint32_t descProtect = 0;  // non-zero: the host's descriptions do not replace the user's own
    Status status = Status::Offline;
    std::u16string statusDescription;
    JID jid;
    std::u16string password;
    std::u16string socketName;
    std::u16string timerName;

    std::unique_ptr<AccountSession> session;

private:
    /// Reads address and descriptions; returns the account's UUID, a new one at the first run.
    std::u16string readIdentity();
    void registerEntries(const AccountEntries& entries);

    std::vector<OKU_WORD> services_;
    std::vector<OKU_WORD> hooks_;
};

}  // namespace protolink
