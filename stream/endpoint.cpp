// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/endpoint.h"

#include "host/services/sockets.h"
#include "host/util/format.h"
#include "host/util/numbers.h"

namespace protolink {

namespace {

/// The host's own proxy counts as soon as the account says so, also when the host has none.
void readHostProxy(const Host& host, Endpoint& endpoint) {
    const NL_PROXY_DEFAULTS defaults = Sockets(host).proxyDefaults();
    if (!defaults.enabled) return;
    endpoint.proxyEnabled = true;
    endpoint.proxyHost = defaults.host;
    endpoint.proxyPort = defaults.port;
    endpoint.proxyType = defaults.type;
    if (!defaults.auth) return;
    endpoint.proxyLogin = true;
    endpoint.proxyUser = defaults.user;
    endpoint.proxyPassword = defaults.password;
}

void readOwnProxy(const AccountSettings& settings, bool login, Endpoint& endpoint) {
    endpoint.proxyEnabled = true;
    endpoint.proxyHost = settings.get(setting::kProxyHost);
    endpoint.proxyPort = parseUInt32(settings.get(setting::kProxyPort));
    if (login) {
        endpoint.proxyLogin = true;
        endpoint.proxyUser = settings.get(setting::kProxyUser);
        endpoint.proxyPassword = settings.get(setting::kProxyPassword);
    }
    endpoint.proxyType = static_cast<std::uint32_t>(settings.get(setting::kProxyType)) + 1;
}

void readOwnServer(const AccountSettings& settings, Endpoint& endpoint) {
    const std::u16string server = settings.get(setting::kServer);
    const std::size_t colon = server.find(u':');
    endpoint.host = server.substr(0, colon);
    if (colon != std::u16string::npos) endpoint.port = parseUInt32(std::u16string_view(server).substr(colon + 1));
}

}  // namespace

ConnectSwitches readConnectSwitches(const AccountSettings& settings) {
    ConnectSwitches switches;
    switches.ownProxy = settings.get(setting::kOwnProxy);
    switches.ownServer = settings.get(setting::kOwnServer);
    switches.proxyLogin = settings.get(setting::kProxyLogin);
    switches.avatars = settings.get(setting::kAvatars);
    switches.hostProxy = settings.get(setting::kHostProxy);
    return switches;
}

Endpoint readEndpoint(const CClientClass& client, const ConnectSwitches& switches) {
    Endpoint endpoint;
    endpoint.host = client.jid.domain;
    if (switches.hostProxy) {
        readHostProxy(client.host, endpoint);
    } else if (switches.ownProxy) {
        readOwnProxy(client.settings, switches.proxyLogin, endpoint);
    }
    if (switches.ownServer) {
        readOwnServer(client.settings, endpoint);
    } else {
        endpoint.serviceName = formatText(u"_%s._%s.%s", u"xmpp-client", u"tcp", client.jid.domain);
    }
    return endpoint;
}

}  // namespace protolink
