// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// SHA-1, Base64 and UUIDs.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

#include "host/util/base64.h"
#include "host/util/sha1.h"
#include "host/util/uuid.h"

namespace {

using namespace std::string_literals;

TEST(Sha1, TheVectorsOfTheRfc) {
    EXPECT_EQ(lutSHA1("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(lutSHA1("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
    EXPECT_EQ(lutSHA1(std::string(1'000'000, 'a')), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
    EXPECT_EQ(lutSHA1(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

TEST(Sha1, TheBytesAreWhatTheDigitsSay) {
    const std::array<std::uint8_t, 20> bytes = lutSHA1Bin("abc");
    EXPECT_EQ(bytes[0], 0xA9);
    EXPECT_EQ(bytes[4], 0x47);
    EXPECT_EQ(bytes[19], 0x9D);
}

TEST(Sha1, LengthsAroundABlock) {
    EXPECT_EQ(lutSHA1(std::string(55, 'a')), "c1c8bbdc22796e28c0e15163d20899b65621d65a");
    EXPECT_EQ(lutSHA1(std::string(56, 'a')), "c2db330f6083854c99d4b5bfb6e8f29f201be699");
    EXPECT_EQ(lutSHA1(std::string(63, 'a')), "03f09f5b158a7a8cdad920bddc29b81c18a551f5");
    EXPECT_EQ(lutSHA1(std::string(64, 'a')), "0098ba824b5c16427bd7a1122a5a442a25ec644d");
    EXPECT_EQ(lutSHA1(std::string(65, 'a')), "11655326c708d70319be2610e8a57d9a5b959d3b");
}

TEST(Sha1, TheExampleOfEntityCapabilities) {
    // XEP-0115, section 5.2.
    const auto digest = lutSHA1Bin(
        "client/pc//Exodus 0.9.1<http://jabber.org/protocol/caps<http://jabber.org/protocol/disco#info<"
        "http://jabber.org/protocol/disco#items<http://jabber.org/protocol/muc<");
    const std::string bytes(digest.begin(), digest.end());
    EXPECT_EQ(lutBase64Encode(bytes), "QgayPKawpkPSDYmwT/WM94uAlu0=");
}

TEST(Base64, TheVectorsOfTheRfc) {
    const std::pair<const char*, const char*> vectors[] = {{"", ""},
                                                           {"f", "Zg=="},
                                                           {"fo", "Zm8="},
                                                           {"foo", "Zm9v"},
                                                           {"foob", "Zm9vYg=="},
                                                           {"fooba", "Zm9vYmE="},
                                                           {"foobar", "Zm9vYmFy"}};
    for (const auto& [plain, coded] : vectors) {
        EXPECT_EQ(lutBase64Encode(plain), coded);
        EXPECT_EQ(lutBase64Decode(coded), plain);
    }
}

TEST(Base64, ElevenBytesGiveSixteenCharactersThatEndInOneSign) {
    const std::string coded = lutBase64Encode("12345678901");
    EXPECT_EQ(coded.size(), 16u);
    EXPECT_EQ(coded.find('='), 15u);
}

TEST(Base64, NothingIsReadBehindTheBytes) {
    constexpr std::string_view kBytes = "\xFF\xFF\xFF\xFF\xFF\xFF";
    EXPECT_EQ(lutBase64Encode(kBytes.substr(0, 1)), "/w==");
    EXPECT_EQ(lutBase64Encode(kBytes.substr(0, 2)), "//8=");
    EXPECT_EQ(lutBase64Encode(kBytes.substr(0, 4)), "/////w==");
    EXPECT_EQ(lutBase64Decode(std::string_view("Zm9vYmFy").substr(0, 4)), "foo");
}

TEST(Base64, WhiteSpaceIsPassedOver) { EXPECT_EQ(lutBase64Decode(" Zm9v\r\nYm\tFy\n\v\f"), "foobar"); }

TEST(Base64, DecodingStopsAtWhatIsNoPart) {
    EXPECT_EQ(lutBase64Decode("Zm9v!YmFy"), "foo");
    EXPECT_EQ(lutBase64Decode("Zm9v-_"), "foo");
    EXPECT_EQ(lutBase64Decode("Zg==YmFy"), "f");
    EXPECT_EQ(lutBase64Decode("Zm9v\0YmFy"s), "foo");
    EXPECT_EQ(lutBase64Decode("Zm9v\xC5\xBC"), "foo");
    EXPECT_EQ(lutBase64Decode("="), "");
}

TEST(Base64, WhereBlanksAndEndsStandMakesNoDifference) {
    const std::string plain = "any text of some length";
    const std::string coded = lutBase64Encode(plain);
    for (std::size_t at = 0; at <= coded.size(); ++at) {
        const std::string before = coded.substr(0, at), behind = coded.substr(at);
        EXPECT_EQ(lutBase64Decode(before + "\n" + behind), plain) << at;
        EXPECT_EQ(lutBase64Decode(before + "!" + behind), plain.substr(0, at * 6 / 8)) << at;
    }
}

TEST(Base64, BitsThatMakeNoByteAreDropped) {
    EXPECT_EQ(lutBase64Decode("Z"), "");
    EXPECT_EQ(lutBase64Decode("Zm"), "f");
    EXPECT_EQ(lutBase64Decode("Zm9"), "fo");
    EXPECT_EQ(lutBase64Decode("Zm9vY"), "foo");
}

TEST(Base64, AnyBytesComeBack) {
    std::mt19937 random(11);
    for (int round = 0; round < 2'000; ++round) {
        std::string bytes;
        for (std::size_t left = random() % 200; left; --left) bytes += static_cast<char>(random() % 256);
        const std::string coded = lutBase64Encode(bytes);
        ASSERT_EQ(coded.size(), (bytes.size() + 2) / 3 * 4);
        ASSERT_EQ(lutBase64Decode(coded), bytes);
    }
}

TEST(Uuid, VersionAndVariantAreSet) {
    std::array<std::uint8_t, 16> bytes;
    bytes.fill(0xFF);
    EXPECT_EQ(uuidFromBytes(bytes), u"ffffffff-ffff-4fff-bfff-ffffffffffff");
    bytes.fill(0);
    EXPECT_EQ(uuidFromBytes(bytes), u"00000000-0000-4000-8000-000000000000");
    for (std::uint8_t i = 0; i < 16; ++i) bytes[i] = i;
    EXPECT_EQ(uuidFromBytes(bytes), u"00010203-0405-4607-8809-0a0b0c0d0e0f");
}

}  // namespace
