// What each event of the account's socket does.
#include "host/record.h"
#include "host/services/cards.h"
#include "host/services/protocols.h"
#include "host/services/sockets.h"
#include "platform/platform.h"
#include "plugin/own_status.h"
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
    const bool legacy = client_.settings.get(setting::kTlsFromTheFirstByte);
    const bool tls = client_.settings.get(setting::kTls);
    if (legacy && tls) {
        Sockets(client_.host).startTls(client_.socketName);
    } else {
        sendStreamHeader();
    }
    listener_.onSocketConnected();
    // A server that accepts connections and drops them is retried without end at the quick pace.
    retryCount = 0;
    expectReconnection();
    input_.forgetInvalidTime();
    Protocols(client_.host).setProtocolInfo(client_.netId, client_.jid.bare, client_.jid.node);
}

void Connection::onClosed(OKU_WORD data) {
    client_.log(LogLevel::Debug, tag::kStream, u"Socket disconnected/closed");
    resetState();
    listener_.onSocketClosed();
    input_.freeZInput();
    prevStatus_ = client_.status;
    client_.status = Status::Offline;
    tellOwnStatus(client_, Status::Offline, std::u16string(client_.statusDescription));
    client_.showStatusIcon(Status::Offline);
    disconnect(false);
    client_.flags = 0;
    client_.contactList.setAllOffline(client_.netId);
    decideOnReconnection(data);
    Cards(client_.host).signalBusyness(false);
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
