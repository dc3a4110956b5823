// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "platform/download.h"

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

#include "host/util/utf.h"
#include "platform/linux/curl_library.h"
#include "platform/linux/download_address.h"

namespace {

constexpr std::chrono::seconds kPatience{5};
/// A server that neither connects nor says anything for so long is given up.
constexpr long kSilentSeconds = 60;
/// So many bytes are read at once. What a read gave goes to the listener as one: the library cuts it up, and many small
/// writes to a file cost more than all the rest of a download.
constexpr std::size_t kReadBytes = 128 * 1024;

/// Keeps the library that `address` lies in mapped for good.
void keepMapped(const void* address) {
    Dl_info info{};
    if (!dladdr(address, &info) || !info.dli_fname) return;
    if (void* const library = dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE)) dlclose(library);
}

/// Something in this library, by whose address the loader finds it.
const char kOwnAddress = 0;

struct CloseMulti {
    void operator()(CURLM* multi) const { curl().multiCleanup(multi); }
};
struct CloseEasy {
    void operator()(CURL* easy) const { curl().easyCleanup(easy); }
};
struct FreeList {
    void operator()(curl_slist* list) const { curl().listFree(list); }
};

/// What the thread and its owner share. Both keep it, so that a thread which was given up has all that it needs.
struct Shared {
    std::u16string url;
    std::string userAgent;
    std::shared_ptr<platform::DownloadListener> listener;
    std::unique_ptr<CURLM, CloseMulti> multi;
    std::atomic<bool> stopped{false};

    std::mutex mutex;
    std::condition_variable endedChanged;
    bool ended = false;
};

/// One request, on the download's thread.
class Request {
public:
    explicit Request(Shared& shared) : shared_(shared), easy_(curl().easyInit()) {}

    void run(const DownloadAddress& address) {
        if (!easy_ || !prepare(address) || curl().multiAdd(shared_.multi.get(), easy_.get()) != CURLM_OK) return;
        int running = 1;
        while (running && !shared_.stopped) {
            if (curl().multiPerform(shared_.multi.get(), &running) != CURLM_OK) break;
            if (guarded(1, [this] { return handOver(); }) == 0) break;
            if (running) curl().multiPoll(shared_.multi.get(), nullptr, 0, 1000, nullptr);
        }
        curl().multiRemove(shared_.multi.get(), easy_.get());
    }

private:
    template <typename Value>
    bool set(CURLoption option, Value value) {
        return curl().easySet(easy_.get(), option, value) == CURLE_OK;
    }

    bool prepare(const DownloadAddress& address) {
        // The origin's copy is wanted, and nothing is said of what is accepted.
        for (const char* line : {"Accept:", "Cache-Control: no-cache", "Pragma: no-cache"}) {
            curl_slist* const longer = curl().listAppend(headers_.get(), line);
            if (!longer) return false;
            (void)headers_.release();
            headers_.reset(longer);
        }
        return set(CURLOPT_URL, address.url.c_str()) && set(CURLOPT_PATH_AS_IS, 1L) &&
               set(CURLOPT_PROTOCOLS_STR, "http") && set(CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1}) &&
               set(CURLOPT_USERAGENT, shared_.userAgent.c_str()) && set(CURLOPT_HTTPHEADER, headers_.get()) &&
               set(CURLOPT_NOSIGNAL, 1L) && set(CURLOPT_CONNECTTIMEOUT, kSilentSeconds) &&
               set(CURLOPT_LOW_SPEED_LIMIT, 1L) && set(CURLOPT_LOW_SPEED_TIME, kSilentSeconds) &&
               // A look-up of a name cannot be interrupted: whoever stops does not wait for its end.
               set(CURLOPT_QUICK_EXIT, 1L) && set(CURLOPT_BUFFERSIZE, long{kReadBytes}) &&
               set(CURLOPT_HEADERFUNCTION, &Request::onHeader) && set(CURLOPT_HEADERDATA, this) &&
               set(CURLOPT_WRITEFUNCTION, &Request::onBody) && set(CURLOPT_WRITEDATA, this);
    }

    /// What is thrown ends the request here, as whoever stops it does. The library is C.
    template <typename Step>
    std::size_t guarded(std::size_t length, Step&& step) noexcept {
        try {
            return !shared_.stopped && step() ? length : 0;
        } catch (...) {
            return 0;
        }
    }

    static std::size_t onHeader(const char* text, std::size_t, std::size_t length, void* self) noexcept {
        auto& request = *static_cast<Request*>(self);
        return request.guarded(length, [&] { return request.takeHeader({text, length}); });
    }

    bool takeHeader(std::string_view line) {
        constexpr long kFirstFinal = 200;
        long status = 0;
        curl().easyGet(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
        const bool complete = line == "\r\n" || line == "\n";
        if (!complete || answered_ || status < kFirstFinal) return true;
        answered_ = true;
        return shared_.listener->onAnswer(static_cast<int>(status));
    }

    static std::size_t onBody(const char* bytes, std::size_t, std::size_t length, void* self) noexcept {
        auto& request = *static_cast<Request*>(self);
        return request.guarded(length, [&] { return request.takeBody({bytes, length}); });
    }

    bool takeBody(std::string_view bytes) {
        if (received_.size() + bytes.size() > kReadBytes && !handOver()) return false;
        received_ += bytes;
        return true;
    }

    bool handOver() {
        const bool goesOn = received_.empty() || shared_.listener->onBytes(received_);
        received_.clear();
        return goesOn;
    }

    Shared& shared_;
    std::unique_ptr<CURL, CloseEasy> easy_;
    std::unique_ptr<curl_slist, FreeList> headers_;
    bool answered_ = false;
    std::string received_;  // by the last read
};

void fetch(Shared& shared) {
    shared.listener->onBegin();
    if (const std::optional<DownloadAddress> address = downloadAddress(shared.url)) Request(shared).run(*address);
}

void work(const std::shared_ptr<Shared>& shared) noexcept {
    try {
        fetch(*shared);
    } catch (...) {
        // The listener has not heard of an end yet: to it this one is like any other.
        shared->stopped = true;
    }
    shared->listener->onEnd();
    const std::lock_guard lock(shared->mutex);
    shared->ended = true;
    shared->endedChanged.notify_all();
}

class CurlDownload final : public platform::Download {
public:
    explicit CurlDownload(std::shared_ptr<Shared> shared)
        : shared_(std::move(shared)), thread_([own = shared_] { work(own); }) {}
    ~CurlDownload() override {
        stop();
        if (endedInTime()) {
            thread_.join();
        } else {
            // Its code and what it calls must stay where they are, and it keeps its own data.
            keepMapped(&kOwnAddress);
            thread_.detach();
        }
    }

    void stop() noexcept override {
        if (shared_->stopped.exchange(true)) return;
        toldAt_ = std::chrono::steady_clock::now();
        curl().multiWakeup(shared_->multi.get());
    }

private:
    bool endedInTime() {
        std::unique_lock lock(shared_->mutex);
        return shared_->endedChanged.wait_until(lock, toldAt_ + kPatience, [this] { return shared_->ended; });
    }

    std::shared_ptr<Shared> shared_;
    std::chrono::steady_clock::time_point toldAt_ = std::chrono::steady_clock::now();
    std::thread thread_;
};

}  // namespace

namespace platform {

std::unique_ptr<Download> startDownload(const std::u16string& url, const std::u16string& userAgent,
                                        std::shared_ptr<DownloadListener> listener) {
    if (!CurlLibrary::get()) return nullptr;
    const auto shared = std::make_shared<Shared>();
    shared->url = url;
    shared->userAgent = wtou(userAgent);
    shared->listener = std::move(listener);
    shared->multi.reset(curl().multiInit());
    if (!shared->multi) return nullptr;
    try {
        return std::make_unique<CurlDownload>(shared);
    } catch (const std::system_error&) {
        return nullptr;
    }
}

}  // namespace platform
