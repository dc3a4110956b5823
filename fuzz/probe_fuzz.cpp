// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The quick balance check against the check by the letter, over any text in any pieces: no difference is allowed.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "stream/received_text.h"
#include "tests/support/plain_probe.h"

using namespace protolink;

namespace {

/// By the letter: the whole text is rewritten again with each piece, and a fresh parser judges all of it.
std::string rewritePlainly(std::string text) {
    constexpr std::string_view kOpenTag = "<stream:stream ";
    if (const std::size_t start = text.find(kOpenTag); start != std::string::npos) {
        const std::size_t end = text.find('>', start);
        if (end != std::string::npos && text[end - 1] != '/') text.insert(end, 1, '/');
    }
    if (text.find("<?") == std::string::npos || text.find("?>") == std::string::npos) return text;
    std::string kept;
    for (std::size_t i = 0; i < text.size();) {
        if (text.compare(i, 2, "<?") == 0) {
            i += 2;
        } else {
            kept += text[i++];
        }
    }
    return kept;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    ReceivedText received;
    XmlProbe probe;
    std::string plain;
    std::size_t settled = 0;
    while (!input.empty()) {
        // The first byte of each piece tells its length.
        const std::size_t length = static_cast<unsigned char>(input.front()) % 48 + 1;
        std::string_view piece = input.substr(1, length);
        input.remove_prefix(std::min(input.size(), length + 1));
        piece = piece.substr(0, piece.find('\0'));
        const std::size_t from = received.append(piece);
        fuzz::require(from >= settled, "what was settled changes");
        settled = received.settled();
        probe.changed(from);
        plain = rewritePlainly(plain + std::string(piece));
        fuzz::require(received.view() == plain, "another text than by the letter");
        const ProbeResult quick = probe.probeXml(received.view(), settled);
        const ProbeResult wanted = probePlainly(plain);
        fuzz::require(quick.balanced == wanted.balanced, "balanced for one of the two");
        if (quick.balanced) {
            received.clear();
            probe.reset();
            plain.clear();
            settled = 0;
        } else {
            fuzz::require(quick.errorCode == wanted.errorCode, "another error than expat's");
            fuzz::require(quick.line == wanted.line && quick.column == wanted.column, "another place than expat's");
        }
    }
    return 0;
}
