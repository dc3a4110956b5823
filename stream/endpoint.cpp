#include "stream/endpoint.h"

#include "host/util/format.h"
#include "host/util/numbers.h"
#include "plugin/deployment.h"

namespace {

/// The host's own proxy counts as soon as the account says so, also when the host has none.
void readHostProxy(const Host& host, Endpoint& endpoint) {
    const NL_PROXY_DEFAULTS defaults = host.proxyDefaults();
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
    endpoint.proxyHost = settings.getString(u"XMPP/Proxy/Host", deployment::kProxyHost);
    endpoint.proxyPort = parseUInt32(settings.getString(u"XMPP/Proxy/Port", u"8080"));
    if (login) {
        endpoint.proxyLogin = true;
        endpoint.proxyUser = settings.getString(u"XMPP/Proxy/User");
        endpoint.proxyPassword = settings.getString(u"XMPP/Proxy/Pass");
    }
    endpoint.proxyType = static_cast<std::uint32_t>(settings.getInt(u"XMPP/Proxy/Type", 3)) + 1;
}

void readOwnServer(const AccountSettings& settings, Endpoint& endpoint) {
    const std::u16string server = settings.getString(u"XMPP/Serv/Host");
    const std::size_t colon = server.find(u':');
    endpoint.host = server.substr(0, colon);
    if (colon != std::u16string::npos) endpoint.port = parseUInt32(std::u16string_view(server).substr(colon + 1));
}

}  // namespace

ConnectSwitches readConnectSwitches(const AccountSettings& settings) {
    ConnectSwitches switches;
    switches.ownProxy = settings.isOn(u"XMPP/Proxy/Enable", false);
    switches.ownServer = settings.isOn(u"XMPP/Serv/Enable", false);
    switches.proxyLogin = settings.isOn(u"XMPP/Proxy/Auth", false);
    switches.avatars = settings.isOn(u"XMPP/Avatar/Enable", true);
    switches.hostProxy = settings.isOn(u"XMPP/Proxy/OKU", true);
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
