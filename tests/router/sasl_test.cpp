// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/sasl.h"

#include <gtest/gtest.h>

using namespace protolink;

namespace {

std::string md5(std::string_view text) {
    MD5Context context;
    MD5Init(context);
    MD5Update(context, text);
    return hexDigest(MD5Final(context));
}

TEST(Md5, GivesTheDigestsOfRfc1321) {
    EXPECT_EQ(md5(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(md5("a"), "0cc175b9c0f1b6a831c399e269772661");
    EXPECT_EQ(md5("abc"), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(md5("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(md5("abcdefghijklmnopqrstuvwxyz"), "c3fcd3d76192e4007dfb496cca67e13b");
    EXPECT_EQ(md5("12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
              "57edf4a22be3c955ac49da2e2107b67a");
}

TEST(Md5, PadsTextsThatEndNearTheEndOfABlock) {
    EXPECT_EQ(md5(std::string(55, 'x')), "04364420e25c512fd958a70738aa8f72");
    EXPECT_EQ(md5(std::string(56, 'x')), "668a72d5ba17f08e62dabcafad6db14b");
    EXPECT_EQ(md5(std::string(57, 'x')), "693037871c4a9d3d8685018905cb530a");
    EXPECT_EQ(md5(std::string(63, 'x')), "7dc2ca208106a2f703567bdff99d8981");
    EXPECT_EQ(md5(std::string(64, 'x')), "c1bb4f81d892b2d57947682aeb252456");
    EXPECT_EQ(md5(std::string(119, 'x')), "ab347a5f68c8a443cfcddc633f12c24f");
    EXPECT_EQ(md5(std::string(120, 'x')), "fb98667f98096de92620b64f46e1c5b5");
}

TEST(Md5, BeginsAnewInAContextThatWasUsed) {
    MD5Context context;
    MD5Init(context);
    MD5Update(context, "x");
    MD5Init(context);
    EXPECT_EQ(hexDigest(MD5Final(context)), md5(""));
}

TEST(Md5, TakesItsInputInAnyPieces) {
    const std::string text(1000, 'x');
    for (const std::size_t piece : {1u, 3u, 55u, 56u, 63u, 64u, 65u, 999u}) {
        MD5Context context;
        MD5Init(context);
        for (std::size_t at = 0; at < text.size(); at += piece)
            MD5Update(context, std::string_view(text).substr(at, piece));
        EXPECT_EQ(hexDigest(MD5Final(context)), md5(text)) << piece;
    }
}

TEST(Sasl, DigestResponseIsThatOfRfc2831) {
    EXPECT_EQ(digestResponse("chris", "elwood.innosoft.com", "OA6MG9tEQGm2hh", "OA6MHXh6VqTrRk", "secret",
                             "imap/elwood.innosoft.com"),
              "d388dad90d4bbd760a152321f2143af7");
}

TEST(Sasl, PlainCoversUserAndPasswordAndTwoBytes) {
    using namespace std::string_literals;
    EXPECT_EQ(plainPayload("alice", "secret"), "\0alice\0secret"s);
    EXPECT_EQ(plainPayload("alice", ""), "\0alice\0"s);
    EXPECT_EQ(plainPayload("alice", "").size(), 5u + 2u);
    EXPECT_EQ(plainPayload("", ""), "\0\0"s);
}

TEST(Sasl, PlainHasRoomForALongPassword) {
    const std::string password(2000, 'p');
    EXPECT_EQ(plainPayload("u", password).size(), 1u + 2000u + 2u);
}

TEST(Sasl, ParameterEndsAtTheCommaAndLosesItsQuotationMarks) {
    EXPECT_EQ(digestParam("realm=\"a,b\",nonce=\"n\"", "realm"), "a");
    EXPECT_EQ(digestParam("realm=\"a\"x\"b\",nonce=\"n\"", "realm"), "axb");
    EXPECT_EQ(digestParam("realm=\"a\",nonce=\"n\"", "nonce"), "n");
    EXPECT_EQ(digestParam("nonce=bare", "nonce"), "bare");
}

TEST(Sasl, ParameterIsFoundWhereverItsLettersStand) {
    EXPECT_EQ(digestParam("cnonce=\"c\",nonce=\"n\"", "nonce"), "c");
    EXPECT_EQ(digestParam("x=\"realm\",realm=\"r\"", "realm"), "");
}

TEST(Sasl, MissingParameterIsEmpty) {
    EXPECT_EQ(digestParam("", "nonce"), "");
    EXPECT_EQ(digestParam("realm=\"r\"", "nonce"), "");
    EXPECT_EQ(digestParam("nonce", "nonce"), "");
    EXPECT_EQ(digestParam("nonce=", "nonce"), "");
}

}  // namespace
