// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/keepalive.h"

#include "host/services/timers.h"
#include "host/util/xml_compose.h"
#include "platform/platform.h"
#include "plugin/identifiers.h"

namespace protolink {

namespace {

constexpr std::int64_t kDeadSeconds = 180;
constexpr OKU_WORD kResetFlagsWord = 33554432;

}  // namespace

OKU_WORD Keepalive::onTimer(OKU_WORD timerEvent) {
    if (Timers::isTick(timerEvent)) onTick();
    return 0;
}

void Keepalive::onTick() {
    if (client_.loggedIn()) sendPing();
    if (platform::now() - connection_.input().lastValidRecv() <= kDeadSeconds) return;
    if (!(client_.flags & FLAG_AUTHORIZED) || client_.status == Status::Offline) return;
    resetDeadConnection();
}

void Keepalive::sendPing() {
    client_.log(LogLevel::Ping, tag::kGeneral, u"ping <-> pong");
    // The answer is registered nowhere: it only counts as valid input.
    const std::u16string ping = lutCPW(u"ping", {}, {{u"xmlns", u"urn:xmpp:ping"}});
    output_.sendText(lutCPW(u"iq", ping, {{u"to", client_.jid.domain}, {u"id", generateId()}, {u"type", u"get"}}));
}

void Keepalive::resetDeadConnection() {
    client_.log(LogLevel::Error, tag::kGeneral,
                u"WARNING: Dead connection detected, no _recv_valid performed for 3m\r\n\t\tPerforming reset");
    const Status wanted = client_.status;
    // The first call empties the flags, so the second only cancels and frees, and the last one dials on a socket that
    // may still be open: the host replaces its connection.
    connection_.setStatus(Status::Offline, client_.statusDescription, kResetFlagsWord);
    connection_.disconnect(true);
    connection_.setStatus(wanted, client_.statusDescription, kResetFlagsWord);
}

}  // namespace protolink
