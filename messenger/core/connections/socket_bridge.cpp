// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/connections/socket_bridge.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <QCoreApplication>
#include <QFile>
#include <utility>

#include "host/oku/netlib.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/storage/private_file.h"
#include "messenger/core/storage/settings_format.h"
#include "messenger/core/windows/message_boxes.h"

namespace oku {
namespace {

net::ConnectRequest requestFrom(const NL_CONNECT_RECORD& record, const QString& accountDomain) {
    net::ConnectRequest request;
    request.host = wideText(record.host);
    request.port = record.port;
    request.serviceName = wideText(record.serviceName);
    // The SRV name ends in the domain that is being logged in to, which while an account is being registered is not
    // the one of the settings.
    const QString prefix = QStringLiteral("_xmpp-client._tcp.");
    request.domain = request.serviceName.startsWith(prefix) ? request.serviceName.mid(prefix.size()) : accountDomain;
    if (record.proxyEnabled) {
        const bool known = record.proxyType >= NL_PROXY_SOCKS4 && record.proxyType <= NL_PROXY_HTTP;
        request.proxy.type = known ? static_cast<net::ProxyType>(record.proxyType) : net::ProxyType::Unknown;
        request.proxy.host = wideText(record.proxyHost);
        request.proxy.port = record.proxyPort;
        request.proxy.user = wideText(record.proxyUser);
        request.proxy.password = wideText(record.proxyPassword);
    }
    return request;
}

void copyText(char16_t (&target)[256], const QString& text) {
    const auto length = std::min<qsizetype>(text.size(), 255);
    std::memcpy(target, text.utf16(), static_cast<std::size_t>(length) * sizeof(char16_t));
    target[length] = u'\0';
}

/// A number out of a settings file; what does not fit must not turn into one that means something else.
std::uint32_t unsignedSetting(const QMap<QString, QVariant>& settings, const QString& key, qlonglong fallback) {
    constexpr qlonglong most = std::numeric_limits<std::uint32_t>::max();
    bool ok = false;
    const qlonglong number = settings.value(key).toLongLong(&ok);
    return static_cast<std::uint32_t>(std::clamp<qlonglong>(ok ? number : fallback, 0, most));
}

}  // namespace

SocketBridge::SocketBridge(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, MessageBoxes& boxes,
                           net::SocketSettings settings, std::shared_ptr<net::Resolver> resolver, QObject* parent)
    : QObject(parent),
      accounts_(accounts),
      queue_(queue),
      questions_(accounts, boxes, [this](const net::ConnectionId& waiting, net::CertificateDecision decision) {
          sockets_->decideCertificate(waiting, decision);
      }) {
    connect(&questions_, &CertificateQuestions::refused, this, &SocketBridge::certificateRefused);
    settings.compressed = [&accounts](const QString& name) {
        const auto* account = accounts.bySocket(name);
        return account && account->has(OKU_FLAG_COMPRESSED);
    };
    sockets_ = std::make_unique<net::SocketService>(*this, std::move(settings), std::move(resolver));
    connect(&boxes, &MessageBoxes::pluginHeld, sockets_.get(), &net::SocketService::setPluginBusy);
    provideServices(services);
}

void SocketBridge::provideServices(ServiceRegistry& services) {
    services.provide(u"NetLib/Create", [this](OKU_WORD param, OKU_WORD) { return create(param); });
    services.provide(u"NetLib/ConnectService", [this](OKU_WORD param, OKU_WORD) { return connectService(param); });
    services.provide(u"NetLib/Send", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* record = recordAt<NL_SEND_RECORD>(param);
        if (!record || !record->data) return -1;
        return sockets_->send(wideText(record->socket), QByteArrayView(record->data, record->length));
    });
    services.provide(u"NetLib/InitSSL",
                     [this](OKU_WORD name, OKU_WORD) -> OKU_WORD { return sockets_->initSsl(wideText(name)); });
    services.provide(u"NetLib/Close",
                     [this](OKU_WORD name, OKU_WORD) -> OKU_WORD { return sockets_->close(wideText(name)); });
    services.provide(u"NetLib/Destroy",
                     [this](OKU_WORD name, OKU_WORD) -> OKU_WORD { return sockets_->destroy(wideText(name)); });
    services.provide(u"OKU/NL/GetDefaultSettings", [this](OKU_WORD param, OKU_WORD) { return proxyDefaults(param); });
}

OKU_WORD SocketBridge::create(OKU_WORD param) {
    const auto* record = recordAt<NL_CREATE_RECORD>(param);
    const QString name = record ? wideText(record->name) : QString();
    if (name.isEmpty() || !record->callback || !sockets_->create(name)) return 0;
    plugin_[name] = {record->callback, record->context};
    if (auto* account = accounts_.byContext(record->context)) account->socket = name;
    return 1;
}

OKU_WORD SocketBridge::connectService(OKU_WORD param) {
    const auto* record = recordAt<NL_CONNECT_RECORD>(param);
    if (!record) return 0;
    const QString name = wideText(record->socket);
    auto* account = accounts_.bySocket(name);
    const net::ConnectRequest request = requestFrom(*record, account ? account->domain() : QString());
    if (account) {
        account->line = {.domain = request.domain};
        sockets_->setPins(name, account->domain(), CertificateQuestions::accepted(*account));
    }
    return sockets_->connect(name, request).number ? 1 : 0;
}

std::optional<QMap<QString, QVariant>> SocketBridge::proxySettings() {
    QString fault = foreignReason(proxyFile_);
    QFile file(proxyFile_);
    QMap<QString, QVariant> values;
    if (fault.isEmpty() && file.exists()) {
        bool ok = false;
        const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        if (file.error() == QFile::NoError) values = settingsFromBytes(content, ok);
        if (!ok) {
            fault = QCoreApplication::translate("Sockets", "Plik %1 jest uszkodzony albo nie można go odczytać.")
                        .arg(proxyFile_);
        }
    }
    const bool told = std::exchange(proxyFaultTold_, !fault.isEmpty());
    if (fault.isEmpty()) return values;
    if (!told) {
        emit noticed(
            {}, QCoreApplication::translate("Sockets", "Nie wiadomo, przez jaki serwer pośredniczący się łączyć. %1")
                    .arg(fault));
    }
    return std::nullopt;
}

OKU_WORD SocketBridge::proxyDefaults(OKU_WORD param) {
    auto* record = recordAt<NL_PROXY_DEFAULTS>(param);
    if (!record) return 0;
    const auto settings = proxySettings();
    if (!settings) {
        // No kind of proxy that there is, so that nobody dials past the one that the user chose.
        record->enabled = 1;
        return 1;
    }
    copyText(record->host, settings->value(QStringLiteral("OKU/Proxy/Host")).toString());
    copyText(record->user, settings->value(QStringLiteral("OKU/Proxy/User")).toString());
    copyText(record->password, settings->value(QStringLiteral("OKU/Proxy/Pass")).toString());
    record->port = unsignedSetting(*settings, QStringLiteral("OKU/Proxy/Port"), 0);
    record->enabled = settings->value(QStringLiteral("OKU/Proxy/Enable")).toLongLong() != 0 ? 1 : 0;
    record->type = unsignedSetting(*settings, QStringLiteral("OKU/Proxy/Type"), NL_PROXY_SOCKS5);
    record->auth = record->user[0] ? 1 : 0;
    return 1;
}

QString SocketBridge::ownerOf(const QString& name) const {
    const auto* account = accounts_.bySocket(name);
    return account ? account->key : QString();
}

OKU_WORD SocketBridge::callBack(const QString& name, std::uint32_t kind, OKU_WORD data) {
    const auto found = plugin_.find(name);
    if (found == plugin_.end()) return 0;
    const Socket socket = found->second;
    auto event = makeRecord<NL_EVENT>();
    event.kind = kind;
    return socket.callback(wordOf(&event), data, socket.context);
}

void SocketBridge::connected(const net::ConnectionId& id) {
    queue_.post(ownerOf(id.name), [this, id] {
        if (!sockets_->isCurrent(id)) return;
        if (auto* account = accounts_.bySocket(id.name)) account->line = {.domain = account->line.domain};
        callBack(id.name, NL_EVENT_CONNECTED, 0);
    });
}

void SocketBridge::closed(const net::ConnectionId& id, const net::End& end) {
    queue_.post(ownerOf(id.name), [this, id, end] {
        if (!sockets_->isCurrent(id)) return;
        auto* account = accounts_.bySocket(id.name);
        if (account) emit ended(account, end, false);
        callBack(id.name, NL_EVENT_CLOSED, end.askedFor ? 0 : 1);
        if (!account) return;
        account->line = {};
        emit ended(account, end, true);
    });
}

void SocketBridge::received(const net::ConnectionId& id, QByteArray bytes) {
    queue_.post(ownerOf(id.name), [this, id, bytes = std::move(bytes), secret = sockets_->tlsStarted(id)]() mutable {
        // What was read in clear is worth nothing once TLS was asked for: anybody may have said it.
        if (!sockets_->isCurrent(id) || secret != sockets_->tlsStarted(id)) return;
        auto record = makeRecord<NL_RECEIVED>();
        record.length = static_cast<std::int32_t>(bytes.size());
        record.data = bytes.data();
        callBack(id.name, NL_EVENT_RECEIVED, wordOf(&record));
    });
}

void SocketBridge::tlsUp(const net::ConnectionId& id) {
    queue_.post(ownerOf(id.name), [this, id] {
        if (!sockets_->isCurrent(id)) return;
        if (auto* account = accounts_.bySocket(id.name)) account->line.encrypted = true;
        auto record = makeRecord<NL_TLS_STATE>();
        record.state = 1;
        callBack(id.name, NL_EVENT_TLS, wordOf(&record));
    });
}

void SocketBridge::certificateCheck(const net::ConnectionId& id) {
    queue_.post(ownerOf(id.name), [this, id] {
        if (!sockets_->isCurrent(id)) return;
        sockets_->answerCertificate(id, callBack(id.name, NL_EVENT_CERTIFICATE, 0) == 1);
    });
}

void SocketBridge::certificateQuestion(const net::ConnectionId& id, const net::BadCertificate& certificate) {
    questions_.ask(ownerOf(id.name), id, certificate);
}

void SocketBridge::certificatePinned(const net::ConnectionId& id, const QString&, const QByteArray& fingerprint) {
    CertificateQuestions::keep(accounts_.bySocket(id.name), fingerprint);
}

void SocketBridge::destroyed(const QString& name) {
    // A plugin that is loaded anew gives its sockets the same names; what was destroyed is not one of those.
    queue_.post(ownerOf(name), [this, name, load = loads_] {
        if (load != loads_) return;
        callBack(name, NL_EVENT_DESTROYED, 0);
        plugin_.erase(name);
    });
}

void SocketBridge::notice(const net::ConnectionId& id, const QString& text) {
    const auto* account = accounts_.bySocket(id.name);
    emit noticed(account ? account->jid() : QString(), text);
}

void SocketBridge::progress(const net::ConnectionId& id, const QString& text) {
    const auto* account = accounts_.bySocket(id.name);
    emit progressed(account ? account->jid() : QString(), text);
}

void SocketBridge::dropPlugin() {
    for (const auto& [name, socket] : plugin_) sockets_->destroy(name);
    plugin_.clear();
    ++loads_;
}

}  // namespace oku
