// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The operating system of the unit tests: time, random values and files are the test's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace harness {

/// How many seeds are remembered: a month of connections must not grow by them.
constexpr std::size_t kKeptSeeds = 16;

struct FakeWorld {
    std::int64_t now = 1700000000;      // seconds since the epoch
    std::uint32_t ticks = 1000;         // milliseconds
    std::deque<std::uint32_t> randoms;  // the next values; when empty, a fixed sequence goes on
    std::uint32_t sequence = 1;
    std::vector<std::uint32_t> seeds;  // the last that the generator was seeded with; they change no value here
    std::string modulePath = "/plugins/protoLink.module";
    std::int32_t timeZoneBias = -60;
    std::string operatingSystem = "Linux x86_64 6.1";

    std::map<std::string, std::string> files;  // by path, both UTF-8
    std::set<std::string> folders;             // that were made
    std::set<std::string> unopenable;          // paths that cannot be opened
    std::set<std::string> unwritable;          // paths that open, but take no content

    /// Told of each file that is made ("makes") or replaced ("writes"), and of each new folder ("makes folder").
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
