// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Where the elements of a stream end, against expat; and the same whatever the pieces.
#include <vector>

#include "fuzz/expat_events.h"
#include "fuzz/input.h"
#include "messenger/core/net/element_scanner.h"

namespace {

constexpr std::string_view kHeader = "<stream:stream>";

/// The ends of the top-level elements, up to where expat finds the text wrong.
std::vector<std::size_t> endsByExpat(const std::string& stream) {
    std::vector<std::size_t> ends;
    int depth = 0;
    fuzz::ExpatEvents events;
    events.start = [&](const char*, const char**) { ++depth; };
    events.end = [&](const char*, std::size_t end) {
        if (--depth == 1) ends.push_back(end);
    };
    fuzz::parseWithExpat(stream, events);
    return ends;
}

std::vector<std::size_t> endsByScanner(const std::string& stream, std::size_t piece) {
    using Mark = oku::net::ElementScanner::Mark;
    oku::net::ElementScanner scanner;
    std::vector<std::size_t> ends;
    qsizetype position = 0;
    for (std::size_t size = 0; size < stream.size();) {
        size = std::min(size + piece, stream.size());
        const QByteArrayView bytes(stream.data(), static_cast<qsizetype>(size));
        for (Mark mark = scanner.next(bytes, position); mark != Mark::None; mark = scanner.next(bytes, position))
            if (mark == Mark::Element) ends.push_back(static_cast<std::size_t>(position));
        fuzz::require(position == bytes.size(), "bytes are left unread");
    }
    return ends;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t piece = input.byte() + 1u;
    const std::string stream = std::string(kHeader) + std::string(input.rest());
    // A second header inside is one for the scanner and an element for expat.
    if (stream.find("stream:stream", kHeader.size()) != std::string::npos) return 0;
    const auto found = endsByScanner(stream, piece);
    fuzz::require(found == endsByScanner(stream, stream.size()), "the pieces make a difference");
    const auto wanted = endsByExpat(stream);
    fuzz::require(found.size() >= wanted.size(), "an element is not seen");
    fuzz::require(std::equal(wanted.begin(), wanted.end(), found.begin()), "an element ends elsewhere");
    return 0;
}
