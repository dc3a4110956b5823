// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Received bytes in any pieces through a real account: what reaches the host must not depend on where they were cut.
#include <set>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/netlib.h"
#include "host/oku/protocol.h"
#include "stream/received_text.h"
#include "stream/xml_probe.h"
#include "tests/torture/client.h"

using namespace protolink;

namespace {

constexpr std::uint32_t kNet = 1;
constexpr std::string_view kDeclaration = "<?xml version='1.0'?>";

/// By design a declaration's characters are taken out of whatever text waits at that time, so where the cuts are does
/// matter to them: only the declaration that every server sends stays in the input. A NUL ends a piece.
std::string withoutOtherDeclarations(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        if (bytes.starts_with(kDeclaration)) {
            text += kDeclaration;
            bytes.remove_prefix(kDeclaration.size());
        } else {
            if (bytes.front() != '?' && bytes.front() != '\0') text += bytes.front();
            bytes.remove_prefix(1);
        }
    }
    return text;
}

/// The places where a text read byte by byte is balanced. A piece may hold several elements, but text between them
/// and what follows the last balanced place come by themselves: joined to an element they could make its piece wait.
std::set<std::size_t> neededCuts(const std::string& text) {
    std::set<std::size_t> cuts;
    ReceivedText received;
    XmlProbe probe;
    std::size_t begin = 0, last = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        probe.changed(received.append(std::string_view(text).substr(at, 1)));
        if (!probe.probeXml(received.view(), received.settled()).balanced) continue;
        const std::string_view unit(text.data() + begin, at + 1 - begin);
        // The end of the stream's wrapper is no element, and hides what stands behind it in its piece.
        const bool element = unit.front() == '<' && !unit.starts_with("</") &&
                             unit.find("<stream:stream ") == std::string_view::npos &&
                             unit.find(kDeclaration) == std::string_view::npos;
        if (!element) cuts.insert({begin, at + 1});
        begin = last = at + 1;
        received.clear();
        probe.reset();
    }
    cuts.insert(last);
    return cuts;
}

/// What the host was told, without what is about the pieces themselves.
std::string told(const std::vector<std::string>& pieces, bool loggedIn) {
    torture::Client client;
    client.host.settings[u"/profile/protoLink.config"][u"XMPP/Serv/Compress"] = 0;
    if (loggedIn) {
        client.logIn();
    } else {
        client.load();
        client.setStatus(kNet, OKU_STATUS_ONLINE);
        client.raise(kNet, NL_EVENT_CONNECTED);
    }
    std::string trace;
    client.host.trace = &trace;
    client.host.onSend = [&client](std::uint32_t net, std::string_view bytes) {
        fuzz::requireWhole(client, net, bytes);
    };
    for (const std::string& piece : pieces) {
        client.receive(kNet, piece);
        if (client.flags(kNet) & OKU_FLAG_COMPRESSED) break;
    }
    client.host.trace = nullptr;
    client.host.onSend = nullptr;
    std::string kept;
    for (std::size_t at = 0; at < trace.size();) {
        const std::size_t end = trace.find('\n', at) + 1;
        const std::string_view line = std::string_view(trace).substr(at, end - at);
        if (!line.starts_with("OKU/Log 5 'WARNING: XML not valid") && !line.starts_with("OKU/CallProtolHooks 1 "))
            kept += line;
        at = end;
    }
    return kept;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const bool loggedIn = input.byte() & 1;
    const std::string lengths(input.text());
    const std::string text = withoutOtherDeclarations(input.rest());
    std::set<std::size_t> cuts = neededCuts(text);
    std::vector<std::string> bytes, pieces;
    for (const char byte : text) bytes.emplace_back(1, byte);
    std::size_t place = 0;
    for (const char length : lengths) cuts.insert(place += static_cast<unsigned char>(length) + 1u);
    cuts.insert(text.size());
    std::size_t begin = 0;
    for (const std::size_t cut : cuts) {
        if (cut <= begin || cut > text.size()) continue;
        pieces.push_back(text.substr(begin, cut - begin));
        begin = cut;
    }
    fuzz::require(told(bytes, loggedIn) == told(pieces, loggedIn), "the cuts change what the host is told");
    return 0;
}
