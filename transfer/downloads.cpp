// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/downloads.h"

#include <algorithm>
#include <utility>

#include "host/services/timers.h"
#include "host/util/format.h"
#include "plugin/boundary.h"

namespace protolink {

namespace {

constexpr std::uint32_t kTickMilliseconds = 100;

constexpr char16_t kUserAgent[] =
    u"Mozilla/5.0 (Windows; U; Windows NT 6.1; en-GB; rv:1.9.0.11) Gecko/2009060215 Firefox/3.0.11";

}  // namespace

std::u16string Downloads::timerName() const { return lutCID(u"XMPP/%d/Downloads", client_.netId); }

bool Downloads::start(const std::u16string& url, std::shared_ptr<DownloadJob> job, End onEnd) {
    std::unique_ptr<platform::Download> thread = platform::startDownload(url, kUserAgent, job);
    if (!thread) return false;
    running_.push_back({std::move(job), std::move(thread), std::move(onEnd)});
    if (!ticks_) {
        ticks_ = true;
        Timers(client_.host).create(timerName(), kTickMilliseconds, {tick_, client_.context}, false);
    }
    return true;
}

OKU_WORD Downloads::onTick(OKU_WORD eventRecord) {
    if (!Timers::isTick(eventRecord)) return 0;
    const auto ended = std::stable_partition(running_.begin(), running_.end(),
                                             [](const Running& download) { return !download.job->ended(); });
    std::vector<Running> done(std::make_move_iterator(ended), std::make_move_iterator(running_.end()));
    running_.erase(ended, running_.end());
    if (running_.empty()) stopTicks();
    for (Running& download : done) tolerate([&] { download.onEnd(download.job->received()); });
    return 0;
}

void Downloads::stopTicks() {
    if (!ticks_) return;
    Timers(client_.host).destroy(timerName());
    // Only now: whoever ends the account from inside that call has to take the timer back as well.
    ticks_ = false;
}

void Downloads::stop() {
    for (const Running& download : running_) {
        // A thread that does not end in time outlives the host's windows.
        download.job->muteWindow();
        download.thread->stop();
    }
}

void Downloads::end() {
    stop();
    running_.clear();
    stopTicks();
}

}  // namespace protolink
