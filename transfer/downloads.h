// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The downloads of one account: each in a thread of its own, which touches nothing but its job.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "plugin/client_class.h"
#include "transfer/download_job.h"

namespace protolink {

/// A timer of the host looks for downloads that have ended, so that their ends are told where all else of the account
/// happens. It runs while there is one.
class Downloads {
public:
    using End = std::function<void(bool received)>;

    Downloads(const CClientClass& client, OKU_HANDLER tick) : client_(client), tick_(tick) {}

    /// False when no thread can be started; `onEnd` is then never called.
    bool start(const std::u16string& url, std::shared_ptr<DownloadJob> job, End onEnd);
    OKU_WORD onTick(OKU_WORD eventRecord);
    /// Tells the threads to end, and waits for none.
    void stop();
    /// Ends and forgets all downloads without a word to anybody.
    void end();

private:
    struct Running {
        std::shared_ptr<DownloadJob> job;
        std::unique_ptr<platform::Download> thread;
        End onEnd;
    };

    std::u16string timerName() const;
    void stopTicks();

    const CClientClass& client_;
    OKU_HANDLER tick_;
    std::vector<Running> running_;
    bool ticks_ = false;
};

}  // namespace protolink
