// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/zip_stream.h"

#include <algorithm>
#include <cstring>

namespace protolink {

namespace {

constexpr char kZlibVersion[] = "1.2.3";

Bytef* bytes(const char* text) { return reinterpret_cast<Bytef*>(const_cast<char*>(text)); }

}  // namespace

CZipStream::CZipStream() : inflateStream_{}, deflateStream_{} {}

CZipStream::~CZipStream() { zEnd(); }

void CZipStream::zStart() {
    zEnd();
    deflateInit_(&deflateStream_, 9, kZlibVersion, static_cast<int>(sizeof(z_stream)));
    inflateInit_(&inflateStream_, kZlibVersion, static_cast<int>(sizeof(z_stream)));
}

int CZipStream::zInflate(char* buffer, std::size_t& size, std::string_view input) {
    if (size == 0) return Z_BUF_ERROR;
    const uLong before = inflateStream_.total_out;
    inflateStream_.next_in = bytes(input.data());
    inflateStream_.avail_in = static_cast<uInt>(input.size());
    int code = Z_OK;
    int rounds = 0;
    do {
        inflateStream_.next_out = bytes(buffer);
        inflateStream_.avail_out = static_cast<uInt>(size);
        code = inflate(&inflateStream_, Z_SYNC_FLUSH);
        ++rounds;
    } while (inflateStream_.avail_out == 0);
    size = inflateStream_.total_out - before;
    if (rounds > 1) code = Z_BUF_ERROR;
    return std::min(code, 0);
}

bool CZipStream::zDeflate(std::string_view data, std::string& compressed) {
    compressed.assign(data.size() + (data.size() + 1) / 1000 + 14, '\0');
    const uLong before = deflateStream_.total_out;
    deflateStream_.next_in = bytes(data.data());
    deflateStream_.avail_in = static_cast<uInt>(data.size());
    deflateStream_.next_out = bytes(compressed.data());
    deflateStream_.avail_out = static_cast<uInt>(compressed.size());
    int code = Z_OK;
    do {
        code = deflate(&deflateStream_, Z_SYNC_FLUSH);
        if (code == Z_STREAM_END) code = Z_OK;
    } while (code == Z_OK && deflateStream_.avail_out == 0);
    if (code < 0) return false;
    compressed.resize(deflateStream_.total_out - before);
    return true;
}

int CZipStream::zEnd() {
    deflateEnd(&deflateStream_);
    inflateEnd(&inflateStream_);
    std::memset(&inflateStream_, 0, sizeof inflateStream_);
    std::memset(&deflateStream_, 0, sizeof deflateStream_);
    return 1;
}

}  // namespace protolink
