// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/connection.h"

#include <utility>

#include "host/record.h"
#include "host/services/sockets.h"
#include "host/services/timers.h"
#include "host/util/format.h"
#include "platform/platform.h"
#include "stream/endpoint.h"

namespace protolink {

Connection::Connection(CClientClass& client, CZipStream& zip, StreamOutput& output, Reconnection& reconnection,
                       StreamListener& listener)
    : client_(client),
      zip_(zip),
      output_(output),
      reconnection_(reconnection),
      listener_(listener),
      input_(client, zip, *this, listener) {
    input_.startInvalidTime(platform::now());
}

OKU_WORD Connection::setStatus(Status status, const std::u16string& description, OKU_WORD) {
    // The description may be the account's own text, which the layers called below may change.
    const std::u16string wanted = description;
    reconnection_.forbid();
    if (client_.loggedIn()) {
        listener_.publishStatus(status, wanted);
        if (status == Status::Offline) {
            disconnect(false);
            reconnection_.cancel();
        }
    } else if ((client_.flags & FLAG_CONNECTED) || status == Status::Offline) {
        // A connection that is still negotiating is dropped by any change, and no new attempt follows from it.
        disconnect(false);
        if (status == Status::Offline) reconnection_.cancel();
    } else {
        connect();
    }
    client_.status = status;
    client_.statusDescription = wanted;
    endForNobody_ = false;  // what was chosen since is the user's own
    return 1;
}

void Connection::connect() {
    reconnection_.expect();
    if (!registerMode && !hasCredentials()) {
        client_.host.logUser(u"Nie ustawiłeś nazwy użykownika lub hasła w protokole XMPP!");
        return;
    }
    listener_.forgetSession();
    if (!registerMode) {
        client_.jid = parseJID(client_.settings.get(setting::kUser));
        client_.password = client_.settings.get(setting::kPassword);
    }
    const ConnectSwitches switches = readConnectSwitches(client_.settings);
    avatarEnabled = switches.avatars;
    dial(readEndpoint(client_, switches));
}

bool Connection::hasCredentials() const {
    // Both are read, also when the first one settles it.
    const bool hasUser = !client_.settings.get(setting::kUser).empty();
    const bool hasPassword = !client_.settings.get(setting::kPassword).empty();
    return hasUser && hasPassword;
}

void Connection::dial(const Endpoint& endpoint) {
    auto record = makeRecord<NL_CONNECT_RECORD>();
    record.host = endpoint.host.c_str();
    record.port = endpoint.port;
    record.socket = client_.socketName.c_str();
    record.serviceName = endpoint.serviceName.c_str();
    if (endpoint.proxyEnabled) {
        record.proxyEnabled = 1;
        record.proxyHost = endpoint.proxyHost.c_str();
        record.proxyType = endpoint.proxyType;
        record.proxyPort = endpoint.proxyPort;
        record.proxyUser = endpoint.proxyLogin ? endpoint.proxyUser.c_str() : nullptr;
        record.proxyPassword = endpoint.proxyLogin ? endpoint.proxyPassword.c_str() : nullptr;
    }
    client_.flags |= FLAG_CONNECTING;
    client_.log(LogLevel::Debug, tag::kStream,
                formatText(u"Connecting to: %s:%d (%s)", endpoint.host, endpoint.port, client_.jid.bare));
    Sockets(client_.host).connect(record);
}

OKU_WORD Connection::disconnect(bool closeSocket) {
    reconnection_.cancel();
    input_.freeZInput();
    if (client_.flags & FLAG_CONNECTED) {
        output_.sendText(u"</stream:stream>");
        resetState();
        client_.contactList.setAllOffline(client_.netId);
        client_.hooks.notice(HookKind::ConnectionEnded);
        return closeSocket ? Sockets(client_.host).close(client_.socketName) : 1;
    }
    if (client_.flags & FLAG_CONNECTING) {
        resetState();
        return Sockets(client_.host).close(client_.socketName);
    }
    return 0;
}

std::int32_t Connection::sendStreamHeader() {
    listener_.forgetSession();
    return output_.sendText(
        formatText(u"<?xml version=\"1.0\"?>"
                   u"<stream:stream xmlns:stream=\"http://etherx.jabber.org/streams\" version=\"1.0\""
                   u" xmlns=\"jabber:client\" to=\"%s\" xml:lang=\"en\""
                   u" xmlns:xml=\"http://www.w3.org/XML/1998/namespace\" >",
                   client_.jid.domain));
}

void Connection::beginRegistration() {
    registerMode = 1;
    registrationLeft_ = false;
}

void Connection::leaveRegistration() {
    if (!registerMode) return;
    if (client_.flags & FLAG_CONNECTED) {
        registrationLeft_ = true;
        return;
    }
    registerMode = 0;
    reconnection_.forbid();  // the close of a dial that is under way was wished for
    disconnect(false);
}

bool Connection::takeEndForNobody() { return std::exchange(endForNobody_, false); }

void Connection::resetState() {
    if (std::exchange(registrationLeft_, false) && std::exchange(registerMode, 0) != 0) endForNobody_ = true;
    input_.resetPartialInput();
    client_.flags = 0;
    listener_.onStateReset();
    zip_.zEnd();
}

OKU_WORD Connection::onReconnectTimer(OKU_WORD timerEvent) {
    if (Timers::isTick(timerEvent)) setStatus(reconnection_.fired(), client_.statusDescription, 0);
    return 1;
}

}  // namespace protolink
