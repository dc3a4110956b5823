// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Received bytes while the stream is compressed.
#include "stream/stream_input.h"

namespace protolink {

namespace {

/// What one piece may inflate to. A piece that gives more does not come through whole, and the bytes are given to the
/// stream a second time: servers and hosts keep their pieces below this.
constexpr std::size_t kInflatedCapacity = 32768;

}  // namespace

void StreamInput::freeZInput() { std::string().swap(zInput_); }

bool StreamInput::inflatePiece(std::string_view piece, std::string& text) {
    if (piece.empty()) return false;
    zInput_.append(piece);
    std::size_t size = kInflatedCapacity;
    text.assign(size + 1, '\0');
    int code = zip_.zInflate(text.data(), size, zInput_);
    if (code == Z_BUF_ERROR) {
        text.assign(size + 1, '\0');
        code = zip_.zInflate(text.data(), size, zInput_);
    }
    if (code == Z_OK) {
        zInput_.clear();
        text.resize(size);
        return true;
    }
    // A data error is taken for input that is not complete: the bytes stay and the next piece is added behind them.
    if (code == Z_DATA_ERROR) return false;
    client_.log(LogLevel::Error, tag::kStream, u"ERROR: Decompression fault!");
    connection_.disconnect(true);
    return false;
}

}  // namespace protolink
