// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/proxy_handshake.h"

namespace oku::net {

QString ProxyTarget::toString() const {
    const bool brackets = host.contains(u':');
    return (brackets ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(host).arg(port);
}

std::unique_ptr<ProxyHandshake> makeHandshake(const Proxy& proxy, const ProxyTarget& target) {
    switch (proxy.type) {
        case ProxyType::Unknown:
        case ProxyType::None:
            return nullptr;
        case ProxyType::Socks4:
        case ProxyType::Socks4A:
            return makeSocks4Handshake(proxy, target);
        case ProxyType::Socks5:
            return makeSocks5Handshake(proxy, target);
        case ProxyType::Http:
            return makeHttpHandshake(proxy, target);
    }
    return nullptr;
}

QByteArray networkPort(quint16 port) {
    QByteArray bytes(2, '\0');
    bytes[0] = static_cast<char>(port >> 8);
    bytes[1] = static_cast<char>(port & 0xff);
    return bytes;
}

}  // namespace oku::net
