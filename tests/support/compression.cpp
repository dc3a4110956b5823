// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/compression.h"

#include <zlib.h>

#include <array>
#include <stdexcept>

namespace harness {

struct Compression::Streams {
    z_stream out{};
    z_stream in{};
    Streams() {
        deflateInit(&out, Z_DEFAULT_COMPRESSION);
        inflateInit(&in);
    }
    ~Streams() {
        deflateEnd(&out);
        inflateEnd(&in);
    }
};

namespace {

/// Runs all of `input` through one direction of a stream.
template <typename Step>
std::string pump(z_stream& stream, const std::string& input, Step step) {
    std::string output;
    std::array<Bytef, 4096> buffer{};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    stream.avail_in = static_cast<uInt>(input.size());
    do {
        stream.next_out = buffer.data();
        stream.avail_out = static_cast<uInt>(buffer.size());
        const int code = step(&stream);
        if (code != Z_OK && code != Z_BUF_ERROR) throw std::runtime_error("not the bytes of a compressed stream");
        output.append(reinterpret_cast<char*>(buffer.data()), buffer.size() - stream.avail_out);
    } while (stream.avail_out == 0);
    return output;
}

}  // namespace

Compression::Compression() : streams_(std::make_unique<Streams>()) {}
Compression::~Compression() = default;
Compression::Compression(Compression&&) noexcept = default;
Compression& Compression::operator=(Compression&&) noexcept = default;

std::string Compression::deflate(const std::string& text) {
    return pump(streams_->out, text, [](z_stream* stream) { return ::deflate(stream, Z_SYNC_FLUSH); });
}

std::string Compression::inflate(const std::string& bytes) {
    return pump(streams_->in, bytes, [](z_stream* stream) { return ::inflate(stream, Z_SYNC_FLUSH); });
}

}  // namespace harness
