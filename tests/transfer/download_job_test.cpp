// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How an account gets away from the thread of its download.
#include "transfer/download_job.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

namespace protolink {
namespace {

using std::chrono::hours;

/// A host that holds the thread's first write to the window until it is let go.
class HoldingHost {
public:
    HoldingHost() : job(TransferWindowLink(1, &HoldingHost::update, reinterpret_cast<OKU_WORD>(this)), 3, u"/x", u"x") {
        thread_ = std::thread([this] { job.onBegin(); });
        held_.get_future().wait();
    }
    ~HoldingHost() {
        letGo_.set_value();
        thread_.join();
        EXPECT_EQ(writes_, 1) << "no other write was begun";
    }

    DownloadJob job;

private:
    static OKU_WORD update(OKU_WORD, OKU_WORD, OKU_WORD context) {
        auto& self = *reinterpret_cast<HoldingHost*>(context);
        ++self.writes_;
        self.held_.set_value();
        self.letGo_.get_future().wait();
        return 0;
    }

    int writes_ = 0;
    std::promise<void> held_;
    std::promise<void> letGo_;
    std::thread thread_;
};

TEST(DownloadJobTest, ThatIsHeldIsLeftInTheEnd) {
    HoldingHost host;
    host.job.detachWindow(std::chrono::milliseconds(1));
}

/// Else unloading would wait for each of them in turn.
TEST(DownloadJobTest, IsWaitedForFromWhenItWasMuted) {
    HoldingHost host;
    host.job.muteWindow(DownloadJob::Clock::now() - hours(2));
    host.job.detachWindow(hours(1));
}

}  // namespace
}  // namespace protolink
