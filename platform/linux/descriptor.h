// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the functions for files have in common.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// New files hold passwords' neighbours, talks, contacts and what friends send: they are their owner's alone.
inline constexpr mode_t kNewFileMode = 0600;

/// A file descriptor, closed at the end.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

    /// Closes at once; false when the system only now tells that a write went wrong.
    bool close();

private:
    int number_;
};

/// The path as the system takes it, or nothing when it cannot be a path: behind a NUL the system would not look, and
/// another file would be opened than the one that was named.
std::optional<std::string> systemPath(std::u16string_view path);

/// Opens a plain file; one that it makes is its owner's alone. A pipe or a device of that name is none: reading it
/// could wait for ever.
Descriptor openPlain(const std::string& path, int flags, struct stat& state);

/// False when not all could be written.
bool writeAll(int file, std::string_view content);
