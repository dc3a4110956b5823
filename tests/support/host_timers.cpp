// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The timers that the plugin makes.
#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

OKU_WORD timerCreate(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    Timer timer{callbackAt(param, 24, 32), 0, peek<std::uint32_t>(recordAt(param), 16),
                peek<std::uint32_t>(recordAt(param), 40) != 0};
    timer.due = host.clock + timer.interval;
    host.timers[textAt(param, 8)] = timer;
    return 1;
}

OKU_WORD timerDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    bool byReference = false;
    const auto name = timerName(param, byReference);
    // The cancellation of a reconnection that is not due is legal, and comes by reference.
    if (host.timers.erase(name) == 0 && !byReference) host.complainDead("OKU/Timer/Destroy of the dead timer " + name);
    return 0;
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"OKU/Timer/Create", {K::Record, "", &layouts::kTimer}, {}, timerCreate},
    {"OKU/Timer/Destroy", {K::TimerName, "id"}, {}, timerDestroy},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> timerServices() { return kRows; }

}  // namespace harness
