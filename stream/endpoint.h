// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Where an account connects to, and through which proxy.
#pragma once

#include <cstdint>
#include <string>

#include "plugin/client_class.h"

namespace protolink {

/// Endpoint and proxy of one connection attempt, out of the account's settings and the host's.
struct Endpoint {
    std::u16string host;
    std::uint32_t port = 5222;
    std::u16string serviceName;  // the SRV name; empty when the server is named in the account
    bool proxyEnabled = false;
    std::u16string proxyHost;
    std::uint32_t proxyType = 0;
    std::uint32_t proxyPort = 0;
    bool proxyLogin = false;
    std::u16string proxyUser;
    std::u16string proxyPassword;
};

/// The switches that a connection attempt reads before anything else.
struct ConnectSwitches {
    bool ownProxy = false;
    bool ownServer = false;
    bool proxyLogin = false;
    bool avatars = true;
    bool hostProxy = true;
};

ConnectSwitches readConnectSwitches(const AccountSettings& settings);
Endpoint readEndpoint(const CClientClass& client, const ConnectSwitches& switches);

}  // namespace protolink
