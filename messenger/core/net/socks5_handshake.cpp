// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QtEndian>

#include "messenger/core/net/proxy_handshake.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

namespace {

constexpr qsizetype kLongestField = 255;
enum : unsigned char { NoLogin = 0, PasswordLogin = 2, NoneFits = 0xff };
enum : unsigned char { ByIpv4 = 1, ByName = 3, ByIpv6 = 4 };

QByteArray field(const QByteArray& bytes) { return QByteArray(1, static_cast<char>(bytes.size())) + bytes; }

class Socks5Handshake : public ProxyHandshake {
public:
    Socks5Handshake(const Proxy& proxy, const ProxyTarget& target)
        : user_(proxy.user.toUtf8()), password_(proxy.password.toUtf8()), target_(target) {}

    ProxyStep step(QByteArrayView received) override {
        switch (stage_) {
            case Stage::Greeting:
                return greet();
            case Stage::Method:
                return received.size() < 2 ? proxyWaits() : chooseMethod(received);
            case Stage::Login:
                return received.size() < 2 ? proxyWaits() : readLogin(received);
            case Stage::Answer:
                return received.size() < 5 ? proxyWaits() : readAnswer(received);
        }
        return proxyFailed(text(Text::ProxyNoSense));
    }

private:
    enum class Stage { Greeting, Method, Login, Answer };

    ProxyStep greet() {
        if (user_.size() > kLongestField || password_.size() > kLongestField)
            return proxyFailed(text(Text::ProxyLoginUnusable));
        if (target_.host.size() > kLongestField) return targetFailed(text(Text::ProxyHostUnusable, target_.host));
        stage_ = Stage::Method;
        return proxyWaits(user_.isEmpty() ? QByteArray("\x05\x01\x00", 3) : QByteArray("\x05\x02\x00\x02", 4));
    }

    ProxyStep chooseMethod(QByteArrayView received) {
        if (received[0] != 5) return proxyFailed(text(Text::ProxyNoSense));
        switch (static_cast<unsigned char>(received[1])) {
            case NoLogin:
                return request();
            case PasswordLogin:
                if (user_.isEmpty()) return proxyFailed(text(Text::ProxyWantsLogin));
                stage_ = Stage::Login;
                return proxyWaits('\x01' + field(user_) + field(password_), 2);
            case NoneFits:
                return proxyFailed(text(Text::ProxyWantsLogin));
            default:
                return proxyFailed(text(Text::ProxyNoSense));
        }
    }

    ProxyStep readLogin(QByteArrayView received) {
        if (received[1] != 0) return proxyFailed(text(Text::ProxyLoginWrong));
        return request();
    }

    ProxyStep request() {
        stage_ = Stage::Answer;
        QByteArray bytes("\x05\x01\x00", 3);
        const QHostAddress literal(target_.host);
        if (literal.protocol() == QAbstractSocket::IPv4Protocol) {
            QByteArray four(4, '\0');
            qToBigEndian(literal.toIPv4Address(), four.data());
            bytes += char(ByIpv4) + four;
        } else if (literal.protocol() == QAbstractSocket::IPv6Protocol) {
            const Q_IPV6ADDR six = literal.toIPv6Address();
            bytes += char(ByIpv6) + QByteArray(reinterpret_cast<const char*>(six.c), 16);
        } else {
            bytes += char(ByName) + field(target_.host.toLatin1());
        }
        return proxyWaits(bytes + networkPort(target_.port), 2);
    }

    ProxyStep readAnswer(QByteArrayView received) {
        if (received[0] != 5) return proxyFailed(text(Text::ProxyNoSense));
        if (const auto code = static_cast<unsigned char>(received[1]); code != 0) return refused(code);
        qsizetype size = 0;
        switch (static_cast<unsigned char>(received[3])) {
            case ByIpv4:
                size = 4 + 4 + 2;
                break;
            case ByIpv6:
                size = 4 + 16 + 2;
                break;
            case ByName:
                size = 4 + 1 + static_cast<unsigned char>(received[4]) + 2;
                break;
            default:
                return proxyFailed(text(Text::ProxyNoSense));
        }
        return received.size() < size ? proxyWaits() : proxyDone(size);
    }

    ProxyStep refused(unsigned char code) const {
        const QString target = target_.toString();
        switch (code) {
            case 2:
                return targetFailed(text(Text::ProxyRuleset, target));
            case 3:
            case 4:
            case 6:
                return targetFailed(text(Text::ProxyTargetUnreachable, target));
            case 5:
                return targetFailed(text(Text::ProxyTargetRefused, target));
            default:
                return targetFailed(text(Text::ProxyRefused, target, QString::number(code)));
        }
    }

    QByteArray user_;
    QByteArray password_;
    ProxyTarget target_;
    Stage stage_ = Stage::Greeting;
};

}  // namespace

std::unique_ptr<ProxyHandshake> makeSocks5Handshake(const Proxy& proxy, const ProxyTarget& target) {
    return std::make_unique<Socks5Handshake>(proxy, target);
}

}  // namespace oku::net
