// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How long it takes to know that received text is whole: in one piece, and in the pieces that a network makes of it.
#include <benchmark/benchmark.h>

#include <string>

#include "stream/received_text.h"
#include "tests/support/plain_probe.h"

using namespace protolink;

namespace {

constexpr std::size_t kReadPiece = 4096;
constexpr std::size_t kPacketPiece = 1460;

std::string longStanza() {
    constexpr std::size_t kLength = std::size_t{5} * 1024 * 1024;
    return "<message from='a@example.org/b' type='chat'><body>" + std::string(kLength, 'a') + "</body></message>";
}

std::string roster() {
    constexpr int kContacts = 10'000;
    std::string text = "<iq type='result' id='r1'><query xmlns='jabber:iq:roster'>";
    for (int i = 0; i < kContacts; ++i) {
        const std::string number = std::to_string(i);
        text += "<item jid='contact" + number + "@example.org' name='Contact " + number +
                "' subscription='both'><group>Group " + std::to_string(i % 20) + "</group></item>";
    }
    return text + "</query></iq>";
}

std::string message() {
    return "<message from='a@example.org/b' type='chat'><body>" + std::string(200, 'a') + "</body></message>";
}

/// Collects the text and checks it after each piece, as a received stream is.
void receive(benchmark::State& state, const std::string& text, std::size_t piece) {
    for (auto _ : state) {
        ReceivedText received;
        XmlProbe probe;
        bool balanced = false;
        for (std::size_t at = 0; at < text.size(); at += piece) {
            probe.changed(received.append(std::string_view(text).substr(at, piece)));
            balanced = probe.probeXml(received.view(), received.settled()).balanced;
        }
        if (!balanced) state.SkipWithError("the text is not whole");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void messageInOnePiece(benchmark::State& state) { receive(state, message(), message().size()); }
void longStanzaInOnePiece(benchmark::State& state) { receive(state, longStanza(), longStanza().size()); }
void longStanzaInPiecesOf4096(benchmark::State& state) { receive(state, longStanza(), kReadPiece); }
void rosterInOnePiece(benchmark::State& state) { receive(state, roster(), roster().size()); }
void rosterInPiecesOf1460(benchmark::State& state) { receive(state, roster(), kPacketPiece); }

void messageByExpatAlone(benchmark::State& state) {
    const std::string text = message();
    for (auto _ : state) benchmark::DoNotOptimize(probePlainly(text).balanced);
}

}  // namespace

BENCHMARK(messageInOnePiece);
BENCHMARK(messageByExpatAlone);
BENCHMARK(longStanzaInOnePiece)->Unit(benchmark::kMillisecond);
BENCHMARK(longStanzaInPiecesOf4096)->Unit(benchmark::kMillisecond);
BENCHMARK(rosterInOnePiece)->Unit(benchmark::kMillisecond);
BENCHMARK(rosterInPiecesOf1460)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
