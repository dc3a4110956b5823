// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Awkward received text: what it costs, and that deep and long stanzas come through.
#include <expat.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <ctime>

#include "tests/torture/client.h"
#include "tests/torture/shapes.h"

namespace {
std::size_t g_bytesForExpat = 0;
}

extern "C" {
XML_Status __real_XML_Parse(XML_Parser parser, const char* text, int length, int isFinal);

/// Stands between the plugin and expat, and counts.
XML_Status __wrap_XML_Parse(XML_Parser parser, const char* text, int length, int isFinal) {
    g_bytesForExpat += static_cast<std::size_t>(length);
    return __real_XML_Parse(parser, text, length, isFinal);
}
}

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr std::size_t kPiece = 1460;  // what one packet of Ethernet carries
constexpr std::size_t kShapeLength = 128 * 1024;
constexpr std::size_t kShortBodies = 1024;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double kSlower = 30;  // instrumented, and with each block of memory checked
#else
constexpr double kSlower = 1;
#endif
constexpr double kMostMilliseconds = 50 * kSlower;

void receiveInPieces(Client& client, const std::string& text, std::size_t piece) {
    for (std::size_t at = 0; at < text.size(); at += piece) client.receive(kNet, text.substr(at, piece));
}

/// Processor time of this thread: other programs of the machine do not count.
double milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

class Shapes : public testing::TestWithParam<Shape> {
protected:
    double cost(const std::string& text, std::size_t piece) {
        Client client;
        client.logIn();
        const double begin = milliseconds();
        receiveInPieces(client, text, piece);
        return milliseconds() - begin;
    }
};

TEST_P(Shapes, OneHundredAndTwentyEightKilobytesAreCheap) {
    const std::string text = GetParam().make(kShapeLength);
    for (const std::size_t piece : {text.size(), kPiece}) {
        // The best of many: what a machine does beside the test only adds.
        double least = cost(text, piece);
        for (int attempt = 1; attempt < 20 && least >= kMostMilliseconds; ++attempt)
            least = std::min(least, cost(text, piece));
        EXPECT_LT(least, kMostMilliseconds) << "in pieces of " << piece;
        RecordProperty("milliseconds in pieces of " + std::to_string(piece), std::to_string(least));
    }
}

TEST_P(Shapes, ExpatReadsNoMoreThanAFewTimesWhatCame) {
    const std::string text = GetParam().make(kShapeLength);
    Client client;
    client.logIn();
    g_bytesForExpat = 0;
    receiveInPieces(client, text, kPiece);
    EXPECT_LT(g_bytesForExpat, 4 * text.size() + 65536);
}

INSTANTIATE_TEST_SUITE_P(, Shapes, testing::ValuesIn(shapes()), [](const auto& test) { return test.param.name; });

/// Runs a step on a stack of 256 KiB.
void onSmallStack(void (*step)()) {
    constexpr std::size_t kStack = 256 * 1024;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
    pthread_t thread{};
    const auto run = [](void* function) -> void* {
        reinterpret_cast<void (*)()>(function)();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, reinterpret_cast<void*>(step)), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(Depth, AMillionLevelsOnASmallStackReachTheHost) {
    onSmallStack([] {
        constexpr std::size_t kLevels = 1'000'000;
        std::string text = "<message from='contact0@example.org/r' type='chat'><body>deep</body>";
        for (std::size_t i = 0; i < kLevels; ++i) text += "<a>";
        for (std::size_t i = 0; i < kLevels; ++i) text += "</a>";
        text += "</message>";
        Client client;
        client.logIn();
        int messages = 0;
        client.host.onMessage = [&](const OKU_MESSAGE_DATA& message) { messages += textAt(message.body) == u"deep"; };
        receiveInPieces(client, text, 65536);
        EXPECT_EQ(messages, 1);
    });
}

TEST(Depth, AMillionLevelsInTheAnswersThatAreKeptOnASmallStack) {
    onSmallStack([] {
        constexpr std::size_t kLevels = 1'000'000;
        std::string levels;
        for (std::size_t i = 0; i < kLevels; ++i) levels += "<a>";
        for (std::size_t i = 0; i < kLevels; ++i) levels += "</a>";
        Client client;
        client.logIn();
        // What a client can do is copied into the database, which is written when the plugin goes.
        client.receive(kNet, "<presence from='contact0@example.org/r'/>");
        client.receive(kNet,
                       "<iq type='result' from='contact0@example.org/r' id='x'>"
                       "<query xmlns='http://jabber.org/protocol/disco#info' node='n#deep'>" +
                           levels + "</query></iq>");
        client.unload();
        EXPECT_EQ(client.host.leftovers(), "");
        client.logIn();
        EXPECT_TRUE(client.isReady());
    });
}

TEST(Length, AStanzaOf64MebibytesReachesTheHost) {
    const std::string body(std::size_t{64} * 1024 * 1024, 'b');
    Client client;
    client.logIn();
    std::size_t length = 0;
    client.host.onMessage = [&](const OKU_MESSAGE_DATA& message) {
        length = std::char_traits<char16_t>::length(message.body);
    };
    receiveInPieces(client, "<message from='a@b/c'><body>" + body + "</body></message>", 256 * kShortBodies);
    EXPECT_EQ(length, body.size());
    EXPECT_TRUE(client.isReady());
}

}  // namespace
}  // namespace torture
