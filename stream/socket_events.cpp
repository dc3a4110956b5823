// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/socket_events.h"

#include "host/oku/netlib.h"
#include "host/record.h"
#include "host/services/cards.h"
#include "host/services/protocols.h"
#include "host/services/sockets.h"
#include "platform/platform.h"
#include "plugin/own_status.h"

namespace protolink {

OKU_WORD SocketEvents::onSocketEvent(OKU_WORD eventRecord, OKU_WORD data) {
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

void SocketEvents::onDestroyed() {
    client_.log(LogLevel::Debug, tag::kStream, u"Socket destroyed");
    connection_.resetState();
}

void SocketEvents::onConnected() {
    client_.log(LogLevel::Debug, tag::kStream, u"Socket connected");
    connection_.resetState();
    connection_.input().freeZInput();
    client_.flags |= FLAG_CONNECTED | FLAG_CONNECTING;
    platform::seedRandom(static_cast<std::uint32_t>(platform::now()));
    const bool legacy = client_.settings.get(setting::kTlsFromTheFirstByte);
    const bool tls = client_.settings.get(setting::kTls);
    if (legacy && tls) {
        Sockets(client_.host).startTls(client_.socketName);
    } else {
        connection_.sendStreamHeader();
    }
    listener_.onSocketConnected();
    // A server that accepts connections and drops them is retried without end at the quick pace.
    reconnection_.forgetRetries();
    reconnection_.expect();
    connection_.input().forgetInvalidTime();
    Protocols(client_.host).setProtocolInfo(client_.netId, client_.jid.bare, client_.jid.node);
}

void SocketEvents::onClosed(OKU_WORD data) {
    client_.log(LogLevel::Debug, tag::kStream, u"Socket disconnected/closed");
    connection_.resetState();
    listener_.onSocketClosed();
    reconnection_.remember(client_.status);
    client_.status = Status::Offline;
    tellOwnStatus(client_, Status::Offline, std::u16string(client_.statusDescription));
    client_.showStatusIcon(Status::Offline);
    connection_.disconnect(false);
    client_.flags = 0;
    client_.contactList.setAllOffline(client_.netId);
    // Where nobody wished to be online but for an account that was given up, no other one comes online in its place.
    if (!connection_.takeEndForNobody()) reconnection_.decide(data);
    OwnCard(client_.host).signalBusyness(false);
}

OKU_WORD SocketEvents::onReceived(OKU_WORD data) {
    const auto* piece = readRecord<NL_RECEIVED>(data);
    if (!piece) return -1;
    connection_.input().onReceive(*piece);
    return 0;
}

void SocketEvents::onTlsState(OKU_WORD data) {
    const auto* tls = readRecord<NL_TLS_STATE>(data);
    if (!tls || tls->state != 1) return;
    client_.log(LogLevel::Debug, tag::kStream, u"Socket SSL INIT");
    client_.flags |= FLAG_ENCRYPTION_ACTIVATED;
    connection_.sendStreamHeader();
}

OKU_WORD SocketEvents::onCertificateCheck() {
    if (connection_.registerMode) client_.log(LogLevel::Debug, tag::kStream, u"Overriding SSL Cert Verification");
    return static_cast<OKU_WORD>(connection_.registerMode);
}

}  // namespace protolink
