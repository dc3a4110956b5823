// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The operating system of the unit tests: time, random values and files are the test's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace platform {
class DownloadListener;
}

namespace harness {

/// How many seeds are remembered: a month of connections must not grow by them.
constexpr std::size_t kKeptSeeds = 16;

/// A download, whose thread is the test's own.
class FakeDownload {
public:
    FakeDownload(std::string url, std::shared_ptr<platform::DownloadListener> listener)
        : url_(std::move(url)), listener_(std::move(listener)) {}

    void begin();
    void answer(int status);
    void block(const std::string& bytes);
    void end();
    void stop();
    bool stopped() const { return stopped_; }

private:
    /// A step on the download's thread; one that gives false, or throws, ends it.
    void act(const std::function<bool()>& step);

    std::string url_;
    std::shared_ptr<platform::DownloadListener> listener_;
    bool begun_ = false;
    bool answered_ = false;
    bool ended_ = false;
    bool stopped_ = false;
};

struct FakeWorld {
    std::int64_t now = 1700000000;      // seconds since the epoch
    std::uint32_t ticks = 1000;         // milliseconds
    std::deque<std::uint32_t> randoms;  // the next values; when empty, a fixed sequence goes on
    std::uint32_t sequence = 1;
    std::vector<std::uint32_t> seeds;  // the last that the generator was seeded with; they change no value here
    std::string modulePath = "/plugins/protoLink.module";
    std::int32_t timeZoneBias = -60;
    std::string operatingSystem = "Linux x86_64 6.1";

    std::map<std::string, std::string> files;    // by path, both UTF-8
    std::set<std::string> folders;               // that were made
    std::set<std::string> unopenable;            // paths that cannot be opened
    std::set<std::string> unreadable;            // paths that open, but cannot be read
    std::map<std::string, std::uint64_t> sizes;  // of files that are larger than a test wants to hold
    std::set<std::string> unwritable;            // paths that open, but take no content

    bool threads = true;                                   // can be started
    std::vector<std::shared_ptr<FakeDownload>> downloads;  // in the order of their beginning

    /// Told of each file that is made ("makes") or replaced ("writes"), of each new folder ("makes folder"),
    /// of each whose files are deleted ("empties"), and of each address that is fetched ("downloads") or given up
    /// ("gives up").
    std::function<void(const std::string& verb, const std::string& path, const std::string& content)> onFile;
    /// Told of each icon that is destroyed.
    std::function<void(std::uint64_t icon)> onIconDestroyed;

    void advance(std::int64_t milliseconds);

private:
    std::int64_t fraction_ = 0;
};

/// The world that the platform's functions act on.
FakeWorld& world();

}  // namespace harness
