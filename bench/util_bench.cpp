// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How long the hot path takes: received bytes into a tree, and text into bytes and back.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "host/util/xml_parse.h"

namespace {

/// A chat message of 300 bytes as servers deliver it.
const std::string& chatMessage() {
    static const std::string text = [] {
        std::string message =
            "<message from='romeo@montague.example/orchard' to='juliet@capulet.example/balcony' type='chat' "
            "id='ktx72v49'><body>Art thou not Romeo, and a Montague?";
        const std::string tail = "</body><active xmlns='http://jabber.org/protocol/chatstates'/></message>";
        message.append(300 - message.size() - tail.size(), 'x');
        return message + tail;
    }();
    return text;
}

std::string roster(int items) {
    std::string text = "<iq type='result' id='r1' to='juliet@capulet.example/balcony'><query xmlns='jabber:iq:roster'>";
    for (int i = 0; i < items; ++i) {
        const std::string number = std::to_string(i);
        text += "<item jid='contact" + number + "@example.org' name='Contact " + number +
                "' subscription='both'><group>Group " + std::to_string(i % 20) + "</group></item>";
    }
    return text + "</query></iq>";
}

std::string longBody(std::size_t length) { return "<message><body>" + std::string(length, 'a') + "</body></message>"; }

void parse(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        std::vector<xmlElement> out;
        lutXMLParseA(out, text);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void parseMessage(benchmark::State& state) { parse(state, chatMessage()); }
void parseRoster(benchmark::State& state) { parse(state, roster(10'000)); }
void parseLongBody(benchmark::State& state) { parse(state, longBody(5u << 20)); }

void copyMessage(benchmark::State& state) {
    std::vector<xmlElement> out;
    lutXMLParseA(out, chatMessage());
    for (auto _ : state) benchmark::DoNotOptimize(xmlElement(out.front()));
}

void writeMessage(benchmark::State& state) {
    std::vector<xmlElement> out;
    lutXMLParseA(out, chatMessage());
    for (auto _ : state) benchmark::DoNotOptimize(out.front().GetXML(1));
}

void composeMessage(benchmark::State& state) {
    for (auto _ : state) {
        const std::u16string body = lutCPW(u"body", lutXMLEscapeW(u"Art thou not Romeo, and a Montague?"));
        benchmark::DoNotOptimize(lutCPW(u"message", body, {{u"to", u"juliet@capulet.example"}, {u"id", u"ktx72v49"}}));
    }
}

const std::string kPolish = "Zażółć gęślą jaźń: pchnąć w tę łódź jeża lub ośm skrzyń fig. ";

std::string repeated(const std::string& text, std::size_t length) {
    std::string result;
    while (result.size() < length) result += text;
    return result;
}

void toWide(benchmark::State& state, const std::string& text) {
    for (auto _ : state) benchmark::DoNotOptimize(utow(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void toUtf8(benchmark::State& state, const std::string& text) {
    const std::u16string wide = utow(text);
    for (auto _ : state) benchmark::DoNotOptimize(wtou(wide));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void utowAscii300(benchmark::State& state) { toWide(state, std::string(300, 'a')); }
void utowAscii1M(benchmark::State& state) { toWide(state, std::string(1u << 20, 'a')); }
void utowPolish1M(benchmark::State& state) { toWide(state, repeated(kPolish, 1u << 20)); }
void wtouAscii300(benchmark::State& state) { toUtf8(state, std::string(300, 'a')); }
void wtouAscii1M(benchmark::State& state) { toUtf8(state, std::string(1u << 20, 'a')); }
void wtouPolish1M(benchmark::State& state) { toUtf8(state, repeated(kPolish, 1u << 20)); }

}  // namespace

BENCHMARK(parseMessage);
BENCHMARK(parseRoster)->Unit(benchmark::kMillisecond);
BENCHMARK(parseLongBody)->Unit(benchmark::kMillisecond);
BENCHMARK(copyMessage);
BENCHMARK(writeMessage);
BENCHMARK(composeMessage);
BENCHMARK(utowAscii300);
BENCHMARK(utowAscii1M);
BENCHMARK(utowPolish1M);
BENCHMARK(wtouAscii300);
BENCHMARK(wtouAscii1M);
BENCHMARK(wtouPolish1M);

BENCHMARK_MAIN();
