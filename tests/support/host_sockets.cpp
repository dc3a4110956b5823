// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The sockets that the plugin uses.
#include <algorithm>

#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

OKU_WORD socketCreate(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.sockets[textAt(param, 56)] = callbackAt(param, 32, 40);
    return 1;
}

OKU_WORD socketConnect(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto name = textAt(param, 32);
    if (!host.sockets.count(name)) host.complainDead("NetLib/ConnectService on the dead socket " + name);
    return 1;
}

OKU_WORD socketUse(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto name = copyText(recordAt(param));
    if (!host.sockets.count(name)) host.complainDead("a call on the dead socket " + name);
    return 1;
}

OKU_WORD socketDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto name = copyText(recordAt(param));
    if (host.sockets.erase(name) == 0) host.complainDead("NetLib/Destroy of the dead socket " + name);
    return 1;
}

OKU_WORD giveProxyDefaults(RecordingHost& host, char* out) {
    if (std::any_of(out + 4, out + 1556, [](char c) { return c != 0; })) {
        host.complain("NL_PROXY_DEFAULTS is not zeroed");
    }
    copyWide(out + 4, host.proxy.host, 256);
    copyWide(out + 516, host.proxy.user, 256);
    copyWide(out + 1028, host.proxy.password, 256);
    poke(out, 1540, host.proxy.port);
    poke(out, 1544, host.proxy.enabled);
    poke(out, 1548, host.proxy.type);
    poke(out, 1552, host.proxy.auth);
    return 1;
}

OKU_WORD proxyDefaults(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    constexpr const char* kName = "OKU/NL/GetDefaultSettings";
    if (peek<std::uint32_t>(recordAt(param), 0) != 1556) host.complain("NL_PROXY_DEFAULTS has another size");
    Line line{std::string("call ") + kName, {}, {}, {}};
    if (extra != 0) line.field("extra", extra);
    const auto answer = host.scripted(kName);
    host.plain(std::move(line));
    return answer ? *answer : giveProxyDefaults(host, reinterpret_cast<char*>(param));
}

OKU_WORD send(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto* record = reinterpret_cast<const void*>(param);
    const auto fields = readRecord(layouts::kSocketSend, record, host.context());
    const auto* data = peek<const char*>(record, 8);
    const auto length = peek<std::uint32_t>(record, 16);
    const auto socket = copyText(peek<const void*>(record, 24));
    if (!host.sockets.count(socket)) host.complainDead("NetLib/Send on the dead socket " + socket);
    const auto number = socket.substr(socket.rfind('/') + 1);
    Event event{Event::Category::Sent, {}, std::string(data, length)};
    event.line.head = number == "1" ? "C:" : "C@" + number + ":";
    const auto net = static_cast<std::uint32_t>(std::atoi(number.c_str()));
    const auto protocol = host.protocols.find(net);
    const bool compressed = protocol != host.protocols.end() && (*protocol->second.flags & 16) != 0;
    if (compressed) {
        event.data = host.compression[net].inflate(event.data);
    } else {
        host.compression.erase(net);
    }
    const auto clear = event.data.substr(0, event.data.find('\0'));
    for (const auto& told : host.lastOut) {
        if (told != clear && !host.failingCall) host.complain("a send without its two stream hooks: " + clear);
    }
    for (auto& told : host.lastOut) told.clear();
    const auto answer = host.scripted("NetLib/Send");
    host.record(std::move(event));
    return answer.value_or(static_cast<OKU_WORD>(length));
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"NetLib/Create", {K::Record, "", &layouts::kSocketCreate}, {}, socketCreate},
    {"NetLib/ConnectService", {K::Record, "", &layouts::kSocketConnect}, {}, socketConnect},
    {"NetLib/InitSSL", {K::Text, "socket"}, {}, socketUse},
    {"NetLib/Close", {K::Text, "socket"}, {}, socketUse},
    {"NetLib/Destroy", {K::Text, "socket"}, {}, socketDestroy},
    {.name = "OKU/NL/GetDefaultSettings", .tellAndAct = proxyDefaults},
    {.name = "NetLib/Send", .tellAndAct = send},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> socketServices() { return kRows; }

}  // namespace harness
