// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/download_job.h"

#include <algorithm>
#include <utility>

#include "transfer/transfer_base.h"

namespace protolink {

namespace {

constexpr int kOk = 200;
/// The window hears of a file's progress in blocks of so many bytes.
constexpr std::size_t kBlock = 8191;

}  // namespace

DownloadJob::DownloadJob(const TransferWindowLink& window, std::uint64_t size, std::u16string path,
                         std::u16string chosenName)
    : window_(window), size_(size), path_(std::move(path)), chosenName_(std::move(chosenName)) {}

DownloadJob::Write::Write(DownloadJob& job) : job_(job) {
    const std::lock_guard lock(job_.mutex_);
    allowed_ = !job_.detached_;
    if (allowed_) job_.writer_ = std::this_thread::get_id();
}

DownloadJob::Write::~Write() {
    const std::lock_guard lock(job_.mutex_);
    job_.writer_ = {};
    job_.written_.notify_all();
}

void DownloadJob::onBegin() {
    tell([](const TransferWindowLink& window) { window.setCancelEnabled(false); });
    tell([](const TransferWindowLink& window) { window.setStatusText(u"Łączenie..."); });
    tell([&](const TransferWindowLink& window) { window.setTotalSize(size_); });
}

bool DownloadJob::onAnswer(int status) {
    file_ = openReceived(path_, chosenName_);
    whole_ = file_ && status == kOk;
    if (!whole_) return false;
    tell([](const TransferWindowLink& window) { window.setState(OKU_FT_RUNNING); });
    tell([](const TransferWindowLink& window) { window.setStatusText(u"Przesyłanie..."); });
    tell([&](const TransferWindowLink& window) { window.setTotalSize(size_); });
    return true;
}

bool DownloadJob::onBytes(std::string_view bytes) {
    whole_ = false;
    if (!file_->write(bytes)) return false;
    whole_ = true;
    const std::uint64_t before = file_->position() - bytes.size();
    for (std::size_t told = 0; told < bytes.size();) {
        told += std::min(kBlock, bytes.size() - told);
        tell([&](const TransferWindowLink& window) { window.setProgress(before + told); });
    }
    return true;
}

void DownloadJob::onEnd() noexcept {
    const bool closed = file_ && file_->close();
    file_.reset();
    outcome_ = whole_ && closed ? Outcome::Received : Outcome::Failed;
}

void DownloadJob::muteWindow(Clock::time_point now) {
    if (!detached_.exchange(true)) mutedAt_ = now;
}

void DownloadJob::detachWindow(Clock::duration patience) {
    muteWindow();
    std::unique_lock lock(mutex_);
    // A host that calls back from inside an update would wait for itself.
    const std::thread::id self = std::this_thread::get_id();
    written_.wait_until(lock, mutedAt_ + patience, [&] { return writer_ == std::thread::id() || writer_ == self; });
}

}  // namespace protolink
