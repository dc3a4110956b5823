// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the thread of a download has: its own link to the window, its own file, its own account of how it went.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "host/services/transfer_windows.h"
#include "platform/download.h"
#include "platform/file.h"

namespace protolink {

class DownloadJob final : public platform::DownloadListener {
public:
    using Clock = std::chrono::steady_clock;

    /// `size` in bytes is what the peer told; the file's `path` ends in the name that he chose.
    DownloadJob(const TransferWindowLink& window, std::uint64_t size, std::u16string path, std::u16string chosenName);

    void onBegin() override;
    bool onAnswer(int status) override;
    bool onBytes(std::string_view bytes) override;
    void onEnd() noexcept override;

    // For the account.
    bool ended() const { return outcome_ != Outcome::None; }
    /// Whether the server gave the document. One that broke off counts, a file that could not be written does not.
    bool received() const { return outcome_ == Outcome::Received; }
    /// From now on the thread begins no write to the window.
    void muteWindow(Clock::time_point now = Clock::now());
    /// The same, and waits for a write that is under way, but no longer than `patience` from when the window was muted:
    /// whoever mutes many waits for all of them at once. The patience is longer than a host that keeps its word ever
    /// holds a write.
    void detachWindow(Clock::duration patience = std::chrono::seconds(5));

private:
    enum class Outcome { None, Received, Failed };

    /// One update of the window, which nobody else waits for longer than it takes.
    class Write {
    public:
        explicit Write(DownloadJob& job);
        ~Write();
        Write(const Write&) = delete;
        Write& operator=(const Write&) = delete;
        bool allowed() const { return allowed_; }

    private:
        DownloadJob& job_;
        bool allowed_;
    };

    /// Makes one update of the window, while there is one. The host takes what comes from another thread, and returns
    /// at once.
    template <typename Step>
    void tell(Step&& step) {
        const Write write(*this);
        if (write.allowed()) step(window_);
    }

    const TransferWindowLink window_;
    std::atomic<bool> detached_{false};
    Clock::time_point mutedAt_;
    std::mutex mutex_;
    std::condition_variable written_;
    std::thread::id writer_;  // none while nothing is written

    const std::uint64_t size_;
    const std::u16string path_;
    const std::u16string chosenName_;
    std::unique_ptr<platform::File> file_;
    bool whole_ = false;  // so far all that came was written
    std::atomic<Outcome> outcome_{Outcome::None};
};

}  // namespace protolink
