// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <QMap>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/connections/certificate_questions.h"
#include "messenger/core/net/socket_service.h"
#include "messenger/core/values/account.h"

namespace oku {

class Accounts;
struct AccountEntry;
class MessageBoxes;
class PluginQueue;
class ServiceRegistry;

/// "NetLib/..." on the socket service, and its events on the queue into the plugin.
class SocketBridge : public QObject, public net::SocketEvents {
    Q_OBJECT

public:
    SocketBridge(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, MessageBoxes& boxes,
                 net::SocketSettings settings, std::shared_ptr<net::Resolver> resolver, QObject* parent = nullptr);

    [[nodiscard]] net::SocketService& sockets() { return *sockets_; }
    /// The host's own proxy, from a settings file (OKU/Proxy/Enable, Type 1 to 4, Host, Port, User, Pass).
    void setProxyFile(const QString& path) { proxyFile_ = path; }
    void dropPlugin();

    void connected(const net::ConnectionId& id) override;
    void closed(const net::ConnectionId& id, const net::End& end) override;
    void received(const net::ConnectionId& id, QByteArray bytes) override;
    void tlsUp(const net::ConnectionId& id) override;
    void certificateCheck(const net::ConnectionId& id) override;
    void certificateQuestion(const net::ConnectionId& id, const net::BadCertificate& certificate) override;
    void certificatePinned(const net::ConnectionId& id, const QString& domain, const QByteArray& fingerprint) override;
    void destroyed(const QString& name) override;
    void notice(const net::ConnectionId& id, const QString& text) override;
    void progress(const net::ConnectionId& id, const QString& text) override;

signals:
    /// The plugin is about to learn of the end (`told` false), or has (true).
    void ended(oku::AccountEntry* account, const oku::net::End& end, bool told);
    void noticed(const QString& account, const QString& text);
    void progressed(const QString& account, const QString& text);
    void certificateRefused(const QString& account, const oku::CertificateProblem& problem);

private:
    struct Socket {
        OKU_HANDLER callback = nullptr;
        OKU_WORD context = 0;
    };

    void provideServices(ServiceRegistry& services);
    OKU_WORD create(OKU_WORD param);
    OKU_WORD connectService(OKU_WORD param);
    OKU_WORD proxyDefaults(OKU_WORD param);
    /// What the host's own file of settings says, which is written by hand and stays as it is. Nothing, told once,
    /// where it cannot be believed.
    std::optional<QMap<QString, QVariant>> proxySettings();
    QString ownerOf(const QString& name) const;
    OKU_WORD callBack(const QString& name, std::uint32_t kind, OKU_WORD data);

    Accounts& accounts_;
    PluginQueue& queue_;
    std::map<QString, Socket> plugin_;  ///< the plugin's side of each socket
    quint64 loads_ = 0;                 ///< how often a plugin has gone
    QString proxyFile_;
    bool proxyFaultTold_ = false;
    CertificateQuestions questions_;
    std::unique_ptr<net::SocketService> sockets_;
};

}  // namespace oku
