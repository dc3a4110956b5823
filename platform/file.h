// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Files that are read or written piece by piece. Part of the platform: see platform.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// An open file. It is closed at the end, or earlier by `close`.
class File {
public:
    virtual ~File() = default;
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// The next bytes, at most `most` of them and fewer only before the end; nothing when they cannot be read.
    virtual std::optional<std::string> read(std::size_t most) = 0;
    /// Writes all of it behind what was written before. False when that did not succeed.
    virtual bool write(std::string_view bytes) = 0;
    /// How many bytes the file has now; nothing when that cannot be found out.
    virtual std::optional<std::uint64_t> length() const = 0;
    /// How many bytes were read or written so far.
    virtual std::uint64_t position() const = 0;
    /// False when the system only now tells that a write went wrong.
    virtual bool close() = 0;

protected:
    File() = default;
};

/// Opens a plain file from its beginning; null when it cannot be opened.
std::unique_ptr<File> openForReading(const std::u16string& path);
/// Makes an empty file, also out of one that had content; null when it can be neither made nor opened.
std::unique_ptr<File> openForWriting(const std::u16string& path);

/// The size of a file in bytes; 0 when there is none.
std::uint64_t fileSize(const std::u16string& path);

}  // namespace platform
