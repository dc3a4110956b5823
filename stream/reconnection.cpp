// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/reconnection.h"

#include "host/services/timers.h"
#include "host/util/format.h"

namespace protolink {

namespace {

constexpr std::uint32_t kQuickRetries = 10;
constexpr std::uint32_t kQuickRetryMilliseconds = 3000;
constexpr std::uint32_t kSlowRetryMilliseconds = 30000;

}  // namespace

void Reconnection::decide(OKU_WORD reason) {
    if ((reason != 0 || !noReconnect) && retryCount < kQuickRetries) {
        client_.log(LogLevel::Reconnect, tag::kStream, u"\tConnection error, reconnecting in 3s...");
        ++retryCount;
        start(kQuickRetryMilliseconds);
    } else if (retryCount >= kQuickRetries) {
        client_.log(LogLevel::Reconnect, tag::kStream, u"\tConnection error, reconnecting in 30s...");
        start(kSlowRetryMilliseconds);
    }
}

Status Reconnection::fired() {
    pending_ = false;
    return prevStatus_;
}

std::u16string Reconnection::timerName() const { return lutCID(u"XMPP/%d/Reconn", client_.netId); }

void Reconnection::start(std::uint32_t milliseconds) {
    pending_ = true;
    Timers(client_.host).create(timerName(), milliseconds, {tick_, client_.context}, true);
}

void Reconnection::cancel() {
    pending_ = false;
    Timers(client_.host).destroyByReference(timerName());
}

void Reconnection::drop() {
    if (pending_) cancel();
}

}  // namespace protolink
