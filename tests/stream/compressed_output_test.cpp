// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What is sent while the stream is compressed, as the server's own zlib stream reads it.
#include <gtest/gtest.h>

#include "tests/stream/compressed_stream.h"

using namespace protolink;

namespace {

using compressed::CompressedStream;
using compressed::Texts;

TEST(CompressedOutput, IsReadByTheServer) {
    CompressedStream stream;
    EXPECT_GT(stream.output.sendText(u"<presence/>"), 0);
    EXPECT_GT(stream.output.sendText(u"<message><body>cześć</body></message>"), 0);
    EXPECT_EQ(stream.sent, (Texts{"<presence/>", "<message><body>cze\xC5\x9B\xC4\x87</body></message>"}));
    EXPECT_TRUE(stream.host.complaints.empty()) << stream.host.complaints.front();
}

TEST(CompressedOutput, TheListenersHearItInClear) {
    CompressedStream stream;
    Texts heard;
    stream.host.onEvent = [&](const harness::Event& event) {
        if (event.category == harness::Event::Category::StreamHook) heard.push_back(harness::render(event.line));
    };
    stream.output.sendText(u"<a/>");
    EXPECT_EQ(heard, (Texts{"hook stream-out before \"<a/>\"", "hook stream-out after \"<a/>\""}));
}

TEST(CompressedOutput, WhatAListenerTakesDoesNotReachTheCompressor) {
    CompressedStream stream;
    stream.host.vetoes.insert(2);
    EXPECT_EQ(stream.output.sendText(u"<taken/>"), 0);
    EXPECT_GT(stream.output.sendText(u"<sent/>"), 0);
    EXPECT_EQ(stream.sent, Texts{"<sent/>"});
}

TEST(CompressedOutput, RawBytesWithANulGoOutWhole) {
    CompressedStream stream;
    EXPECT_GT(stream.output.sendBytes(std::string_view("a\0b", 3), true), 0);
    EXPECT_EQ(stream.sent, Texts{std::string("a\0b", 3)});
}

TEST(CompressedOutput, ATextEndsAtItsFirstNul) {
    CompressedStream stream;
    EXPECT_GT(stream.output.sendText(std::u16string_view(u"a\0b", 3)), 0);
    EXPECT_EQ(stream.sent, Texts{"a"});
}

TEST(CompressedOutput, AFaultEndsTheConnection) {
    CompressedStream stream(false);
    EXPECT_EQ(stream.output.sendText(u"<a/>"), -1);
    EXPECT_EQ(stream.logs, Texts{"log 0 XMSC \"ERROR: Compression fault!\""});
    EXPECT_EQ(stream.control.ends, std::vector<bool>{true});
    EXPECT_TRUE(stream.sent.empty());
}

TEST(CompressedOutput, TheSocketsResultIsPassedOn) {
    CompressedStream stream;
    stream.host.answersOnce["NetLib/Send"].push_back(-7);
    EXPECT_EQ(stream.output.sendText(u"<a/>"), -7);
}

TEST(CompressedOutput, AfterTheEndTheNextStreamBeginsAfresh) {
    CompressedStream stream;
    stream.output.sendText(u"<a/>");
    stream.reconnect();
    stream.output.sendText(u"<b/>");
    EXPECT_EQ(stream.sent, (Texts{"<a/>", "<b/>"}));
}

}  // namespace
