// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Received bytes in any pieces on their way to the plugin: none is changed or moved, none is lost that counts, and what
// is handed out does not depend on the pieces.
#include <QByteArray>

#include "fuzz/input.h"
#include "messenger/core/net/stream_reader.h"

namespace {

struct Handed {
    QByteArray bytes;
    QByteArray fault;    // the last one, as only the last of a piece is told
    qsizetype end = -1;  // where the stream's end was told
    bool proceed = false;
    qsizetype held = 0;
};

Handed handedOut(const QByteArray& stream, std::string_view lengths, bool inClear) {
    constexpr qsizetype kNoLimit = 1 << 30;
    oku::net::StreamReader reader(kNoLimit, inClear);
    Handed handed;
    std::size_t piece = 0;
    for (qsizetype at = 0; at < stream.size(); ++piece) {
        const qsizetype length =
            piece < lengths.size() ? static_cast<unsigned char>(lengths[piece]) + 1 : stream.size();
        for (const oku::net::Piece& part : reader.add(stream.mid(at, length))) {
            fuzz::require(!part.bytes.isEmpty(), "an empty piece");
            if (part.ends) handed.end = handed.bytes.size();
            if (part.fault) handed.fault = part.fault->toString().toUtf8();
            handed.bytes += part.bytes;
        }
        at += length;
        fuzz::require(stream.startsWith(handed.bytes), "other bytes than those received");
        // In clear nothing counts behind the answer to STARTTLS, nor behind the stream's end.
        if (!reader.proceedSeen() && (!inClear || handed.end < 0))
            fuzz::require(handed.bytes.size() + reader.held() == std::min(at, stream.size()), "bytes are lost");
    }
    handed.proceed = reader.proceedSeen();
    handed.held = reader.held();
    return handed;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const bool inClear = input.byte() & 1;
    const std::string_view lengths = input.text();
    const std::string_view rest = input.rest();
    const QByteArray stream(rest.data(), static_cast<qsizetype>(rest.size()));
    const Handed one = handedOut(stream, {}, inClear);
    const Handed other = handedOut(stream, lengths, inClear);
    fuzz::require(one.bytes == other.bytes, "the pieces change what is handed out");
    fuzz::require(one.fault == other.fault, "the pieces change what is told of a fault");
    fuzz::require(one.end == other.end, "the pieces change where the stream ends");
    fuzz::require(one.proceed == other.proceed, "the pieces hide the answer to STARTTLS");
    return 0;
}
