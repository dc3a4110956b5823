// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What is received while the stream is compressed, against a server's zlib streams made by the test.
#include <gtest/gtest.h>
#include <zlib.h>

#include "plugin/module.h"
#include "tests/stream/compressed_stream.h"
#include "tests/support/player.h"

using namespace protolink;

namespace {

using compressed::CompressedStream;
using compressed::Texts;

constexpr std::size_t kOnePiece = 32768;  // what a piece may not inflate to

/// An element that makes exactly `size` bytes.
std::string elementOf(std::size_t size) { return "<a>" + std::string(size - 7, 'x') + "</a>"; }

TEST(CompressedInput, ComesThrough) {
    CompressedStream stream;
    stream.receive(stream.server.deflate("<a>jeden</a><b/>"));
    stream.receive(stream.server.deflate("<c>\xC5\x9B</c>"));
    EXPECT_EQ(stream.listener.elements, (Texts{"<a>jeden</a>", "<b/>", "<c>\xC5\x9B</c>"}));
    EXPECT_TRUE(stream.logs.empty());
}

TEST(CompressedInput, CutAtEveryByteComesThrough) {
    harness::Compression server;
    auto bytes = server.deflate("<a>jeden</a>");
    bytes += server.deflate("<b x='\xC5\xBC'>dwa</b><c/>");
    for (std::size_t cut = 1; cut < bytes.size(); ++cut) {
        CompressedStream stream;
        stream.receive(bytes.substr(0, cut));
        stream.receive(bytes.substr(cut));
        EXPECT_EQ(stream.listener.elements, (Texts{"<a>jeden</a>", "<b x=\"\xC5\xBC\">dwa</b>", "<c/>"})) << cut;
        EXPECT_TRUE(stream.logs.empty()) << stream.logs.front();
        EXPECT_TRUE(stream.control.ends.empty());
    }
}

TEST(CompressedInput, ByteByByteComesThrough) {
    CompressedStream stream;
    auto bytes = stream.server.deflate("<a>jeden</a>");
    bytes += stream.server.deflate("<b>dwa</b>");
    for (const char byte : bytes) stream.receive(std::string(1, byte));
    EXPECT_EQ(stream.listener.elements, (Texts{"<a>jeden</a>", "<b>dwa</b>"}));
    EXPECT_TRUE(stream.logs.empty());
}

TEST(CompressedInput, APieceOfNoBytesGivesNoText) {
    CompressedStream stream;
    stream.receive("");
    EXPECT_EQ(stream.listener.batches, 0u);
    EXPECT_EQ(stream.input.lastValidRecv(), 0);
    EXPECT_TRUE(stream.logs.empty());
}

TEST(CompressedInput, AnEmptyTextCountsAsValidInput) {
    CompressedStream stream;
    // The header alone: bytes without text.
    stream.receive(stream.server.deflate("").substr(0, 2));
    EXPECT_EQ(stream.listener.batches, 1u);
    EXPECT_EQ(stream.input.lastValidRecv(), harness::world().now);
}

TEST(CompressedInput, TheTextEndsAtANul) {
    CompressedStream stream;
    stream.receive(stream.server.deflate(std::string("<a/>\0<b/>", 9)));
    EXPECT_EQ(stream.listener.elements, Texts{"<a/>"});
}

TEST(CompressedInput, OneByteLessThanTheBufferComesThrough) {
    CompressedStream stream;
    stream.receive(stream.server.deflate("<first/>"));
    stream.receive(stream.server.deflate(elementOf(kOnePiece - 1)));
    ASSERT_EQ(stream.listener.elements.size(), 2u);
    EXPECT_EQ(stream.listener.elements[1], elementOf(kOnePiece - 1));
    stream.receive(stream.server.deflate("<last/>"));
    EXPECT_EQ(stream.listener.elements.back(), "<last/>");
}

/// The buffer is full, the bytes are read a second time, and fill the second buffer as they filled the first.
void expectFault(std::size_t size) {
    CompressedStream stream;
    stream.receive(stream.server.deflate("<first/>"));
    stream.receive(stream.server.deflate(elementOf(size)));
    EXPECT_EQ(stream.listener.elements, Texts{"<first/>"}) << size;
    EXPECT_EQ(stream.logs, Texts{"log 0 XMSC \"ERROR: Decompression fault!\""}) << size;
    EXPECT_EQ(stream.control.ends, std::vector<bool>{true}) << size;
}

TEST(CompressedInput, ExactlyTheBufferIsAFault) { expectFault(kOnePiece); }

TEST(CompressedInput, MoreThanTheBufferIsAFault) {
    expectFault(kOnePiece + 1);
    expectFault(2 * kOnePiece);
    expectFault(5 * kOnePiece + 123);
}

TEST(CompressedInput, TooMuchInTheVeryFirstPieceIsTakenForIncompleteInput) {
    // Read a second time, the header of the stream is no beginning of a block.
    CompressedStream stream;
    stream.receive(stream.server.deflate(elementOf(kOnePiece)));
    stream.receive(stream.server.deflate("<last/>"));
    EXPECT_TRUE(stream.listener.elements.empty());
    EXPECT_TRUE(stream.logs.empty());
    EXPECT_TRUE(stream.control.ends.empty());
}

/// Deflated bytes without a header, flushed, as they stand in the middle of a stream.
std::string middleOf(std::string text) {
    z_stream stream{};
    deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string bytes(text.size() + 100, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    deflate(&stream, Z_SYNC_FLUSH);
    bytes.resize(bytes.size() - stream.avail_out);
    deflateEnd(&stream);
    return bytes;
}

TEST(CompressedInput, BytesGivenTwiceAreReadOnFromWhereTheFirstTimeEnded) {
    CompressedStream stream;
    stream.receive(stream.server.deflate("<first/>"));
    // The piece ends inside a block that is not compressed. Read again it is the data of that block, so that bytes come
    // out, and no fault, though not what the server said.
    const std::string opensStored("\x00\xFF\xFF\x00\x00", 5);
    stream.receive(middleOf(std::string(kOnePiece, 'x')) + opensStored + "0123456789");
    EXPECT_EQ(stream.waitings.size(), 1u);
    // Nothing of the piece is kept: the next one is read alone.
    stream.receive("more");
    EXPECT_EQ(stream.waitings.size(), 2u);
    EXPECT_EQ(stream.listener.elements, Texts{"<first/>"});
    EXPECT_TRUE(stream.logs.empty());
    EXPECT_TRUE(stream.control.ends.empty());
}

TEST(CompressedInput, ABombOfSomeMegabytesIsAFault) { expectFault(4 * 1024 * 1024); }

TEST(CompressedInput, AfterAFaultNothingOfThePieceIsLeft) {
    CompressedStream stream;
    stream.receive(stream.server.deflate("<first/>"));
    stream.receive(stream.server.deflate(elementOf(kOnePiece)));
    stream.reconnect();
    stream.receive(stream.server.deflate("<again/>"));
    EXPECT_EQ(stream.listener.elements, (Texts{"<first/>", "<again/>"}));
}

TEST(CompressedInput, ADataErrorIsTakenForIncompleteInput) {
    CompressedStream stream;
    stream.receive(stream.server.deflate("<first/>"));
    stream.receive("\xFF\xFF\xFF\xFF");
    stream.receive(stream.server.deflate("<second/>"));
    EXPECT_EQ(stream.listener.elements, Texts{"<first/>"});
    EXPECT_TRUE(stream.logs.empty());
    EXPECT_TRUE(stream.control.ends.empty());
    stream.reconnect();
    stream.receive(stream.server.deflate("<third/>"));
    EXPECT_EQ(stream.listener.elements, (Texts{"<first/>", "<third/>"}));
}

TEST(CompressedInput, WhatStandsBeforeADataErrorInItsPieceIsNotTaken) {
    CompressedStream stream;
    stream.receive(stream.server.deflate("<first/>"));
    stream.receive(stream.server.deflate("<second/>") + "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(stream.listener.elements, Texts{"<first/>"});
    EXPECT_EQ(stream.listener.batches, 1u);
    EXPECT_TRUE(stream.control.ends.empty());
}

TEST(CompressedInput, ClearTextIsADataError) {
    CompressedStream stream;
    stream.receive("<message><body>not compressed</body></message>");
    EXPECT_TRUE(stream.listener.elements.empty());
    EXPECT_TRUE(stream.logs.empty());
    EXPECT_TRUE(stream.control.ends.empty());
}

TEST(CompressedInput, WithoutAStartedStreamIsAFault) {
    CompressedStream stream(false);
    stream.receive(stream.server.deflate("<a/>"));
    EXPECT_EQ(stream.logs, Texts{"log 0 XMSC \"ERROR: Decompression fault!\""});
    EXPECT_EQ(stream.control.ends, std::vector<bool>{true});
    EXPECT_TRUE(stream.listener.elements.empty());
}

TEST(CompressedInput, AnElementOverSeveralPiecesComesThrough) {
    CompressedStream stream;
    const auto element = elementOf(100000);
    for (std::size_t at = 0; at < element.size(); at += 30000)
        stream.receive(stream.server.deflate(element.substr(at, 30000)));
    EXPECT_EQ(stream.listener.elements, Texts{element});
    EXPECT_TRUE(stream.logs.empty());
}

TEST(CompressedAccount, ThatReceivesTooMuchAtOnceEndsItsConnection) {
    const std::string text =
        "authorized as alice@example.org/home\n"
        "compression is asked for\n"
        "S: <compressed xmlns='http://jabber.org/protocol/compress'/>\n"
        "log 5 XMCM \"Compression enabled @ alice@example.org\"\n"
        "the stream opens to example.org\n"
        "example.org opens its stream\n"
        "S: <message><body>" +
        std::string(kOnePiece, 'x') +
        "</body></message>\n"
        "log 0 XMSC \"ERROR: Decompression fault!\"\n"
        "the stream is ended and the socket closed\n"
        "nothing\n";
    constexpr harness::PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};
    const auto outcome = harness::play(kExports, harness::FoldBook(PROTOLINK_FOLDS).readText("too much", text), {});
    EXPECT_TRUE(outcome.passed) << outcome.report;
}

}  // namespace
