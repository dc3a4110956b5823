// The timers of a connection: keepalive, dead connection, reconnection.
#include "host/services/timers.h"
#include "host/util/xml_compose.h"
#include "platform/platform.h"
#include "plugin/identifiers.h"
#include "stream/connection.h"

namespace {

constexpr std::int64_t kDeadSeconds = 180;
constexpr OKU_WORD kResetFlagsWord = 33554432;

}  // namespace

OKU_WORD Connection::onKeepaliveTimer(OKU_WORD timerEvent) {
    if (Timers::isTick(timerEvent)) onKeepaliveTick();
    return 0;
}

OKU_WORD Connection::onReconnectTimer(OKU_WORD timerEvent) {
    if (Timers::isTick(timerEvent)) onReconnectTick();
    return 1;
}

void Connection::onKeepaliveTick() {
    if (client_.loggedIn()) sendPing();
    if (platform::now() - input_.lastValidRecv() <= kDeadSeconds) return;
    if (!(client_.flags & FLAG_AUTHORIZED) || client_.status == Status::Offline) return;
    resetDeadConnection();
}

void Connection::sendPing() {
    client_.log(LogLevel::Ping, tag::kGeneral, u"ping <-> pong");
    // The answer is registered nowhere: it only counts as valid input.
    const std::u16string ping = lutCPW(u"ping", {}, {{u"xmlns", u"urn:xmpp:ping"}});
    output_.sendText(lutCPW(u"iq", ping, {{u"to", client_.jid.domain}, {u"id", generateId()}, {u"type", u"get"}}));
}

void Connection::resetDeadConnection() {
    client_.log(LogLevel::Error, tag::kGeneral,
                u"WARNING: Dead connection detected, no _recv_valid performed for 3m\r\n\t\tPerforming reset");
    const Status wanted = client_.status;
    // The first call empties the flags, so the second only cancels and frees, and the last one dials on a socket that
    // may still be open: the host replaces its connection.
    setStatus(Status::Offline, client_.statusDescription, kResetFlagsWord);
    disconnect(true);
    setStatus(wanted, client_.statusDescription, kResetFlagsWord);
}

void Connection::onReconnectTick() {
    reconnectPending_ = false;
    setStatus(prevStatus_, client_.statusDescription, 0);
}
