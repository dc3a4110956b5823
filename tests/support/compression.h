// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The server's side of a compressed stream.
#pragma once

#include <memory>
#include <string>

namespace harness {

class Compression {
public:
    Compression();
    ~Compression();
    Compression(Compression&&) noexcept;
    Compression& operator=(Compression&&) noexcept;

    /// What the server sends for this text, flushed.
    std::string deflate(const std::string& text);
    /// The text that the client's bytes stand for. Throws std::runtime_error when they are not of its stream.
    std::string inflate(const std::string& bytes);

private:
    struct Streams;
    std::unique_ptr<Streams> streams_;
};

}  // namespace harness
