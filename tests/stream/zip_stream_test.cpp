// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The two zlib streams of a connection, against streams that the test makes itself.
#include "stream/zip_stream.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>

using namespace protolink;

namespace {

constexpr std::size_t kMost = 400000;  // bytes of one message, compressed or not

/// Both directions of zlib as the other side has them.
class Peer {
public:
    Peer() {
        deflateInit(&out_, 6);
        inflateInit(&in_);
    }
    ~Peer() {
        deflateEnd(&out_);
        inflateEnd(&in_);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    std::string deflated(std::string text, int flush = Z_SYNC_FLUSH) { return run(out_, std::move(text), flush, true); }
    std::string inflated(std::string bytes) { return run(in_, std::move(bytes), Z_SYNC_FLUSH, false); }

private:
    static std::string run(z_stream& stream, std::string input, int flush, bool deflates) {
        std::string output(kMost, '\0');
        stream.next_in = reinterpret_cast<Bytef*>(input.data());
        stream.avail_in = static_cast<uInt>(input.size());
        stream.next_out = reinterpret_cast<Bytef*>(output.data());
        stream.avail_out = static_cast<uInt>(output.size());
        const int code = deflates ? deflate(&stream, flush) : inflate(&stream, flush);
        if (code < 0 && code != Z_BUF_ERROR) throw std::runtime_error("bad bytes");
        output.resize(output.size() - stream.avail_out);
        return output;
    }

    z_stream out_{};
    z_stream in_{};
};

std::string randomBytes(std::size_t count) {
    std::mt19937 generator(7);
    std::string bytes(count, '\0');
    for (char& byte : bytes) byte = static_cast<char>(generator());
    return bytes;
}

/// What one call of zInflate gave.
struct Inflated {
    int code;
    std::size_t size;
    std::string buffer;
};

Inflated inflate(CZipStream& zip, const std::string& bytes, std::size_t room) {
    Inflated result{0, room, std::string(room, '\0')};
    result.code = zip.zInflate(result.buffer.data(), result.size, bytes);
    return result;
}

TEST(ZipStream, EndedBeforeItWasStarted) {
    CZipStream zip;
    EXPECT_EQ(zip.zEnd(), 1);
    EXPECT_EQ(zip.zEnd(), 1);
}

TEST(ZipStream, NotStartedNothingWorks) {
    CZipStream zip;
    std::string bytes;
    EXPECT_FALSE(zip.zDeflate("text", bytes));
    EXPECT_EQ(inflate(zip, "text", 100).code, Z_STREAM_ERROR);
}

TEST(ZipStream, EndedNothingWorksAnyMore) {
    CZipStream zip;
    zip.zStart();
    std::string bytes;
    EXPECT_TRUE(zip.zDeflate("text", bytes));
    EXPECT_EQ(zip.zEnd(), 1);
    EXPECT_FALSE(zip.zDeflate("text", bytes));
    EXPECT_EQ(inflate(zip, "text", 100).code, Z_STREAM_ERROR);
}

TEST(ZipStream, CompressesAtTheHighestLevel) {
    CZipStream zip;
    zip.zStart();
    std::string bytes;
    ASSERT_TRUE(zip.zDeflate("<presence/>", bytes));
    EXPECT_EQ(bytes.substr(0, 2), "\x78\xDA");
}

TEST(ZipStream, EachMessageCanBeReadAtOnce) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    for (const std::string text : {"<presence/>", "x", "<message><body>cze\xC5\x9B\xC4\x87</body></message>"}) {
        std::string bytes;
        ASSERT_TRUE(zip.zDeflate(text, bytes));
        EXPECT_EQ(peer.inflated(bytes), text);
    }
}

TEST(ZipStream, BytesThatCannotBeCompressedFit) {
    const auto random = randomBytes(300000);
    for (const std::size_t size : {1u, 2u, 13u, 100u, 999u, 1000u, 5000u, 65535u, 65536u, 300000u}) {
        CZipStream zip;
        Peer peer;
        zip.zStart();
        std::string bytes;
        ASSERT_TRUE(zip.zDeflate(random.substr(0, size), bytes)) << size;
        EXPECT_EQ(peer.inflated(bytes), random.substr(0, size)) << size;
    }
}

TEST(ZipStream, StartedAgainItBeginsAfresh) {
    CZipStream zip;
    for (int round = 0; round < 3; ++round) {
        Peer peer;
        zip.zStart();
        std::string bytes;
        ASSERT_TRUE(zip.zDeflate("hej", bytes));
        EXPECT_EQ(peer.inflated(bytes), "hej");
        const auto received = inflate(zip, peer.deflated("cze"), 100);
        EXPECT_EQ(received.code, 0);
        EXPECT_EQ(received.buffer.substr(0, received.size), "cze");
        EXPECT_EQ(zip.zEnd(), 1);
    }
}

TEST(ZipStream, StartedTwiceWithoutAnEndItBeginsAfresh) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    std::string bytes;
    ASSERT_TRUE(zip.zDeflate("lost", bytes));
    zip.zStart();
    ASSERT_TRUE(zip.zDeflate("hej", bytes));
    EXPECT_EQ(peer.inflated(bytes), "hej");
}

TEST(ZipStream, InflatesUpToOneByteLessThanItsRoom) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    const auto received = inflate(zip, peer.deflated(std::string(99, 'a')), 100);
    EXPECT_EQ(received.code, 0);
    EXPECT_EQ(received.size, 99u);
    EXPECT_EQ(received.buffer.substr(0, 99), std::string(99, 'a'));
}

TEST(ZipStream, AFullBufferIsNotEnough) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    const auto received = inflate(zip, peer.deflated(std::string(100, 'a')), 100);
    EXPECT_EQ(received.code, Z_BUF_ERROR);
    EXPECT_EQ(received.size, 100u);
}

TEST(ZipStream, EachRoundBeginsAtTheFront) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    const auto received = inflate(zip, peer.deflated(std::string(100, 'a') + std::string(30, 'b')), 100);
    EXPECT_EQ(received.code, Z_BUF_ERROR);
    EXPECT_EQ(received.size, 130u);
    EXPECT_EQ(received.buffer, std::string(30, 'b') + std::string(70, 'a'));
}

TEST(ZipStream, WithoutRoomItEndsAtOnce) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    EXPECT_EQ(inflate(zip, peer.deflated("text"), 0).code, Z_BUF_ERROR);
}

TEST(ZipStream, BytesOfNoStreamAreADataError) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    EXPECT_EQ(inflate(zip, "<presence/>", 100).code, Z_DATA_ERROR);
    // It is not mended by what comes later.
    EXPECT_EQ(inflate(zip, peer.deflated("text"), 100).code, Z_DATA_ERROR);
}

TEST(ZipStream, AnEndOfTheStreamIsNoError) {
    CZipStream zip;
    Peer peer;
    zip.zStart();
    const auto received = inflate(zip, peer.deflated("last words", Z_FINISH), 100);
    EXPECT_EQ(received.code, 0);
    EXPECT_EQ(received.buffer.substr(0, received.size), "last words");
}

TEST(ZipStream, AStreamThatWantsADictionaryGivesNothing) {
    CZipStream zip;
    zip.zStart();
    // The header with the bit for a dictionary, and the dictionary's checksum.
    const auto received = inflate(zip, std::string("\x78\xBB\x01\x02\x03\x04", 6), 100);
    EXPECT_EQ(received.code, 0);
    EXPECT_EQ(received.size, 0u);
}

}  // namespace
