// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QtEndian>

#include "messenger/core/net/proxy_handshake.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

namespace {

constexpr qsizetype kAnswerSize = 8;
enum : unsigned char { Granted = 0x5a, Rejected = 0x5b, NoIdentd = 0x5c, OtherUser = 0x5d };

class Socks4Handshake : public ProxyHandshake {
public:
    Socks4Handshake(const Proxy& proxy, const ProxyTarget& target) : proxy_(proxy), target_(target) {}

    ProxyStep step(QByteArrayView received) override {
        if (!asked_) {
            asked_ = true;
            return ask();
        }
        if (received.size() < kAnswerSize) return proxyWaits();
        if (received[0] != 0) return proxyFailed(text(Text::ProxyNoSense));
        switch (static_cast<unsigned char>(received[1])) {
            case Granted:
                return proxyDone(kAnswerSize);
            case Rejected:
                return targetFailed(text(Text::ProxyTargetUnreachable, target_.toString()));
            case NoIdentd:
                return proxyFailed(text(Text::ProxyIdentd));
            case OtherUser:
                return proxyFailed(text(Text::ProxyLoginWrong));
            default:
                return proxyFailed(text(Text::ProxyNoSense));
        }
    }

private:
    ProxyStep ask() const {
        const bool byName = proxy_.type == ProxyType::Socks4A;
        const QByteArray user = proxy_.user.toUtf8();
        if (user.contains('\0')) return proxyFailed(text(Text::ProxyLoginUnusable));
        // An address 0.0.0.x, x not 0, says that the name follows behind the user.
        const quint32 address = byName ? 1 : target_.address.toIPv4Address();
        QByteArray request("\x04\x01", 2);
        request += networkPort(target_.port);
        QByteArray four(4, '\0');
        qToBigEndian(address, four.data());
        request += four + user + '\0';
        if (byName) request += target_.host.toLatin1() + '\0';
        return proxyWaits(request);
    }

    Proxy proxy_;
    ProxyTarget target_;
    bool asked_ = false;
};

}  // namespace

std::unique_ptr<ProxyHandshake> makeSocks4Handshake(const Proxy& proxy, const ProxyTarget& target) {
    return std::make_unique<Socks4Handshake>(proxy, target);
}

}  // namespace oku::net
