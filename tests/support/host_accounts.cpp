// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Accounts of the plugin towards the host, and the log.
#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

OKU_WORD protocolAdd(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto net = host.nextNet++;
    host.protocols[net] = {callbackAt(param, 72, 88), callbackAt(param, 80, 88),
                           peek<const std::uint32_t*>(recordAt(param), 96)};
    poke(reinterpret_cast<void*>(param), 32, net);
    return 1;
}

OKU_WORD protocolDel(RecordingHost& host, OKU_WORD, OKU_WORD extra) {
    if (host.protocols.erase(static_cast<std::uint32_t>(extra)) == 0 && extra != 0) {
        host.complainDead("OKU/ProtocolDel of the dead account " + std::to_string(extra));
    }
    return 0;
}

OKU_WORD log(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto* record = reinterpret_cast<const void*>(param);
    if (!record) return host.complain("OKU/Log without a record"), 0;
    readRecord(layouts::kLog, record, host.context());
    const auto level = peek<std::int32_t>(record, 4);
    const auto* tag = peek<const void*>(record, 8);
    Line line;
    line.head = level == -2 && !tag ? "user" : "log " + std::to_string(level) + " " + (tag ? copyText(tag) : "none");
    line.text(copyText(peek<const void*>(record, 16)));
    host.plain(std::move(line));
    return 0;
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"OKU/ProtocolAdd", {K::Record, "", &layouts::kProtocol}, {}, protocolAdd},
    {"OKU/ProtocolDel", {K::Class, "class"}, {K::Net, "net"}, protocolDel},
    {"OKU/PFSetInfo", {K::Record, "", &layouts::kInfo}, {}, nothing},
    {.name = "OKU/Log", .tellAndAct = log},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> accountServices() { return kRows; }

}  // namespace harness
