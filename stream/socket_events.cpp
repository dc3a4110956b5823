// What each event of the account's socket does.
#include "host/record.h"
#include "platform/platform.h"
#include "stream/connection.h"

namespace {

constexpr std::uint32_t kQuickRetries = 10;
constexpr std::uint32_t kQuickRetryMilliseconds = 3000;
constexpr std::uint32_t kSlowRetryMilliseconds = 30000;

}  // namespace

OKU_WORD Connection::onSocketEvent(OKU_WORD eventRecord, OKU_WORD data) {
    const auto* event = readRecord<NL_EVENT>(eventRecord);
    if (!event) return -1;
    switch (event->kind) {
        case NL_EVENT_DESTROYED:
            onDestroyed();
            return 0;
        case NL_EVENT_CONNECTED:
            onConnected();
            return 0;
        case NL_EVENT_CLOSED:
        case NL_EVENT_CLOSED_TOO:
            onClosed(data);
            return 0;
        case NL_EVENT_RECEIVED:
            return onReceived(data);
        case NL_EVENT_TLS:
            onTlsState(data);
            return 0;
        case NL_EVENT_CERTIFICATE:
            return onCertificateCheck();
        default:
            return 0;
    }
}

void Connection::onDestroyed() {
    client_.log(LogLevel::Debug, tag::kStream, u"Socket destroyed");
    resetState();
}

void Connection::onConnected() {
    client_.log(LogLevel::Debug, tag::kStream, u"Socket connected");
    resetState();
    input_.freeZInput();
    client_.flags |= FLAG_CONNECTED | FLAG_CONNECTING;
    platform::seedRandom(static_cast<std::uint32_t>(platform::now()));
    const bool legacy = client_.settings.isOn(u"XMPP/Serv/SSL/Legacy", false);
    const bool tls = client_.settings.isOn(u"XMPP/Serv/SSL", true);
    if (legacy && tls) {
        client_.host.socketStartTls(client_.socketName);
    } else {
        sendStreamHeader();
    }
    listener_.onSocketConnected();
    // A server that accepts connections and drops them is retried without end at the quick pace.
    retryCount = 0;
    expectReconnection();
    input_.forgetInvalidTime();
    client_.host.setProtocolInfo(client_.netId, client_.jid.bare, client_.jid.node);
}

void Connection::onClosed(OKU_WORD data) {
    client_.log(LogLevel::Debug, tag::kStream, u"Socket disconnected/closed");
    resetState();
    listener_.onSocketClosed();
    input_.freeZInput();
    prevStatus_ = client_.status;
    client_.status = Status::Offline;
    tellOwnStatus(Status::Offline);
    client_.showStatusIcon(Status::Offline);
    disconnect(false);
    client_.flags = 0;
    client_.host.setAllOffline(client_.netId);
    decideOnReconnection(data);
    client_.host.signalBusyness(false);
}

void Connection::tellOwnStatus(Status status) {
    const std::u16string description = client_.statusDescription;
    auto data = makeRecord<OKU_STATUS_DATA>();
    data.status = static_cast<std::uint32_t>(status);
    data.description = description.c_str();
    data.time = platform::now();
    client_.host.callProtocolHooks(client_.netId, HookKind::OwnStatus, HookPhase::Before, toWord(&data));
    client_.host.callProtocolHooks(client_.netId, HookKind::OwnStatus, HookPhase::After, toWord(&data));
}

void Connection::decideOnReconnection(OKU_WORD data) {
    if ((data != 0 || !noReconnect) && retryCount < kQuickRetries) {
        client_.log(LogLevel::Reconnect, tag::kStream, u"\tConnection error, reconnecting in 3s...");
        ++retryCount;
        startReconnectTimer(kQuickRetryMilliseconds);
    } else if (retryCount >= kQuickRetries) {
        client_.log(LogLevel::Reconnect, tag::kStream, u"\tConnection error, reconnecting in 30s...");
        startReconnectTimer(kSlowRetryMilliseconds);
    }
}

OKU_WORD Connection::onReceived(OKU_WORD data) {
    const auto* piece = readRecord<NL_RECEIVED>(data);
    if (!piece) return -1;
    input_.onReceive(*piece);
    return 0;
}

void Connection::onTlsState(OKU_WORD data) {
    const auto* tls = readRecord<NL_TLS_STATE>(data);
    if (!tls || tls->state != 1) return;
    client_.log(LogLevel::Debug, tag::kStream, u"Socket SSL INIT");
    client_.flags |= FLAG_ENCRYPTION_ACTIVATED;
    sendStreamHeader();
}

OKU_WORD Connection::onCertificateCheck() {
    if (registerMode) client_.log(LogLevel::Debug, tag::kStream, u"Overriding SSL Cert Verification");
    return static_cast<OKU_WORD>(registerMode);
}
