// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/proxy_handshake.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

namespace {

constexpr qsizetype kLongestHead = 64 * 1024;
constexpr qsizetype kLongestReason = 100;

class HttpHandshake : public ProxyHandshake {
public:
    HttpHandshake(const Proxy& proxy, const ProxyTarget& target) : proxy_(proxy), target_(target) {}

    ProxyStep step(QByteArrayView received) override {
        if (!asked_) {
            asked_ = true;
            return ask();
        }
        const QByteArrayView start("HTTP/1.");
        const qsizetype common = qMin(received.size(), start.size());
        if (received.first(common) != start.first(common)) return proxyFailed(text(Text::ProxyNoSense));
        const QByteArray head = received.toByteArray();
        const qsizetype end = head.indexOf("\r\n\r\n");
        if (end < 0) return head.size() < kLongestHead ? proxyWaits() : proxyFailed(text(Text::ProxyNoSense));
        return judge(head.left(head.indexOf("\r\n")), end + 4);
    }

private:
    /// The login goes along at once: without TLS to the proxy an extra round would hide nothing.
    ProxyStep ask() const {
        if (proxy_.user.contains(u':')) return proxyFailed(text(Text::ProxyLoginUnusable));
        const QByteArray target = target_.toString().toLatin1();
        QByteArray request = "CONNECT " + target + " HTTP/1.1\r\nHost: " + target + "\r\n";
        if (!proxy_.user.isEmpty()) {
            const QByteArray login = proxy_.user.toUtf8() + ':' + proxy_.password.toUtf8();
            request += "Proxy-Authorization: Basic " + login.toBase64() + "\r\n";
        }
        return proxyWaits(request + "\r\n");
    }

    ProxyStep judge(const QByteArray& statusLine, qsizetype headSize) const {
        const QByteArray code = statusLine.mid(9, 3);
        const QString target = target_.toString();
        if (code.size() == 3 && code[0] == '2') return proxyDone(headSize);
        // Some proxies answer a wrong login with 401, which is meant for servers.
        if (code == "407" || code == "401")
            return proxyFailed(text(proxy_.user.isEmpty() ? Text::ProxyWantsLogin : Text::ProxyLoginWrong));
        if (code == "403" || code == "405") return targetFailed(text(Text::ProxyRuleset, target));
        if (code == "502" || code == "503" || code == "504")
            return targetFailed(text(Text::ProxyTargetUnreachable, target));
        const QString reason = QString::fromLatin1(statusLine.mid(9)).simplified().left(kLongestReason);
        return targetFailed(text(Text::ProxyRefused, target, reason));
    }

    Proxy proxy_;
    ProxyTarget target_;
    bool asked_ = false;
};

}  // namespace

std::unique_ptr<ProxyHandshake> makeHttpHandshake(const Proxy& proxy, const ProxyTarget& target) {
    return std::make_unique<HttpHandshake>(proxy, target);
}

}  // namespace oku::net
