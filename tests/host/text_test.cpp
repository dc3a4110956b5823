// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Patterns, numbers and letter case.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <string>

#include "host/util/format.h"
#include "host/util/letter_case.h"
#include "host/util/numbers.h"

namespace {

using namespace std::string_literals;

template <typename Type>
constexpr bool kIsArgument = std::is_constructible_v<FormatArgument, Type>;
static_assert(kIsArgument<const char16_t*> && kIsArgument<std::u16string> && kIsArgument<std::u16string_view>);
static_assert(kIsArgument<int> && kIsArgument<std::uint64_t> && kIsArgument<bool> && kIsArgument<double>);
static_assert(!kIsArgument<char16_t> && !kIsArgument<char> && !kIsArgument<const char*> && !kIsArgument<void*>,
              "what cannot be meant does not compile");

TEST(Format, TextsAndNumbers) {
    EXPECT_EQ(formatText(u"%s@%s", u"node", u"domain"s), u"node@domain");
    EXPECT_EQ(formatText(u"%s/%d/%s", std::u16string_view(u"XMPP"), 3, u"Menu"), u"XMPP/3/Menu");
    EXPECT_EQ(formatText(u"no conversion"), u"no conversion");
    EXPECT_EQ(formatText(u""), u"");
}

TEST(Format, PercentSigns) {
    EXPECT_EQ(formatText(u"%d%%", 50), u"50%");
    EXPECT_EQ(formatText(u"%%%%"), u"%%");
    EXPECT_EQ(formatText(u"100%"), u"100%");
    EXPECT_EQ(formatText(u"%"), u"%");
    EXPECT_EQ(formatText(u"%y %s", u"a"), u"%y a");
    EXPECT_EQ(formatText(u"%5", u"a"), u"%5");
    EXPECT_EQ(formatText(u"%.", u"a"), u"%.");
}

TEST(Format, NothingIsReadBehindThePattern) {
    constexpr std::u16string_view kWhole = u"%012.34lld";
    for (std::size_t length = 1; length < kWhole.size(); ++length) {
        const std::u16string_view pattern = kWhole.substr(0, length);
        EXPECT_EQ(formatPattern(pattern, {7}), pattern);
    }
}

TEST(Format, WhatIsNoDigitEndsAWidth) {
    EXPECT_EQ(formatText(u"%:d %/d", 1, 2), u"%:d %/d");
    EXPECT_EQ(formatText(u"%12d|%10s", 1, u"a"), u"           1|         a");
}

TEST(Format, ZeroFillAsPrintf) {
    EXPECT_EQ(formatText(u"%02d:%02d", -1, 30), u"-1:30");
    EXPECT_EQ(formatText(u"%02d:%02d", 5, 0), u"05:00");
    EXPECT_EQ(formatText(u"%04d-%02d-%02dT", 2024, 3, 9), u"2024-03-09T");
    EXPECT_EQ(formatText(u"%04d", -7), u"-007");
    EXPECT_EQ(formatText(u"%4d|%4s", -7, u"ab"), u"  -7|  ab");
    EXPECT_EQ(formatText(u"%02d", 12345), u"12345");
}

TEST(Format, RealNumbers) {
    EXPECT_EQ(formatText(u"%.2fkiB", 1.5), u"1.50kiB");
    EXPECT_EQ(formatText(u"%.2f", 0.005), u"0.01") << "0.005 is a little more than its text says";
    EXPECT_EQ(formatText(u"%.2f", -1234567.891), u"-1234567.89");
    EXPECT_EQ(formatText(u"%f", 1.0), u"1.000000");
    EXPECT_EQ(formatText(u"%.0f", 2.5), u"2");
    EXPECT_EQ(formatText(u"%07.2f", -1.5), u"-001.50");
    EXPECT_EQ(formatText(u"%.2f", 3), u"3.00");
    EXPECT_EQ(formatText(u"%.1f %.1f", -3, 3u), u"-3.0 3.0");
    EXPECT_EQ(formatText(u"%.0f", std::numeric_limits<std::uint64_t>::max()), u"18446744073709551616");
    EXPECT_EQ(formatText(u"%.40f", std::numeric_limits<double>::max()).size(), 309u + 1 + 40);
    EXPECT_EQ(formatText(u"%f", std::numeric_limits<double>::infinity()), u"inf");
}

TEST(Format, HexadecimalNumbers) {
    EXPECT_EQ(formatText(u"%02x%02x", 0xA, 0xFF), u"0aff");
    EXPECT_EQ(formatText(u"%08X", 0xBEEFu), u"0000BEEF");
    EXPECT_EQ(formatText(u"%X", 0x190ABCDEFu), u"190ABCDEF");
    EXPECT_EQ(formatText(u"%x", -1), u"ffffffff");
    EXPECT_EQ(formatText(u"%x", std::int64_t{-1}), u"ffffffffffffffff");
}

TEST(Format, TheWidestNumbers) {
    EXPECT_EQ(formatText(u"%llu", std::numeric_limits<std::uint64_t>::max()), u"18446744073709551615");
    EXPECT_EQ(formatText(u"%d", std::numeric_limits<std::uint32_t>::max()), u"4294967295");
    EXPECT_EQ(formatText(u"%d", std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

TEST(Format, AnArgumentOfAnotherKindIsWrittenAsWhatItIs) {
    EXPECT_EQ(formatText(u"%d %s %u %x", u"text", -5, -5, u"text"), u"text -5 -5 text");
    EXPECT_EQ(formatText(u"%d", 1.5), u"1.500000");
}

TEST(Format, AMissingArgumentGivesNothingAndOneTooManyIsNotUsed) {
    EXPECT_EQ(formatText(u"%s-%d-%.2f-%s", u"a"), u"a---");
    EXPECT_EQ(formatText(u"%s", u"a", u"b", 3), u"a");
}

TEST(Format, AnArgumentIsNoPattern) { EXPECT_EQ(formatText(u"%s %s", u"%s%d%n", u"x"), u"%s%d%n x"); }

TEST(Format, AHostilePatternAsksForNoMoreThanALine) {
    EXPECT_EQ(formatText(u"%99999999999999999999d", 1).size(), 255u);
    EXPECT_EQ(formatText(u"%0999999999d", 1).size(), 255u);
    EXPECT_EQ(formatText(u"%.999999999f", 1.0).size(), 42u);
    EXPECT_EQ(formatText(u"%999999999s", u"a").size(), 255u);
    EXPECT_EQ(formatText(std::u16string(100'000, u'%')), std::u16string(50'000, u'%'));
}

TEST(Format, NulIsACharacterLikeAnyOther) { EXPECT_EQ(formatText(u"a\0%s"s, u"b\0c"s), u"a\0b\0c"s); }

TEST(Format, NamesWithANumber) {
    EXPECT_EQ(lutCID(u"XMPP/%d/Reconn", 7), u"XMPP/7/Reconn");
    EXPECT_EQ(lutCID(u"none", 7), u"none");
    EXPECT_EQ(lutCID(u"%d%d%s", -1), u"-1");
}

TEST(Numbers, DigitsUpToTheFirstOtherCharacter) {
    EXPECT_EQ(parseInt32(u"42"), 42);
    EXPECT_EQ(parseInt32(u" \t\r\n\v\f+42px"), 42);
    EXPECT_EQ(parseInt32(u"-5.9"), -5);
    EXPECT_EQ(parseInt64(u"007"), 7);
    EXPECT_EQ(parseUInt32(u"5222/tcp"), 5222u);
    EXPECT_EQ(parseInt32(u"1 2"), 1);
    EXPECT_EQ(parseInt32(u"1\0002"s), 1);
    EXPECT_EQ(parseInt32(u"1:2/3"), 1);
    EXPECT_EQ(parseInt32(u"\t42"), 42);
}

TEST(Numbers, TextThatIsNoNumberGivesZero) {
    for (const std::u16string_view text :
         {u"", u" ", u"-", u"+", u"--1", u"+-1", u"- 1", u"abc", u"\xFF11", u"x1", u".5", u"\b5",
          u"\x0E"
          u"5"}) {
        EXPECT_EQ(parseInt32(text), 0);
        EXPECT_EQ(parseUInt32(text), 0u);
        EXPECT_EQ(parseInt64(text), 0);
    }
}

TEST(Numbers, NothingIsReadBehindTheText) {
    constexpr std::u16string_view kWhole = u"  -123";
    EXPECT_EQ(parseInt32(kWhole.substr(0, 0)), 0);
    EXPECT_EQ(parseInt32(kWhole.substr(0, 2)), 0);
    EXPECT_EQ(parseInt32(kWhole.substr(0, 3)), 0);
    EXPECT_EQ(parseInt32(kWhole.substr(0, 4)), -1);
    EXPECT_EQ(parseInt64(kWhole.substr(3, 0)), 0);
    EXPECT_EQ(parseInt64(kWhole.substr(3, 2)), 12);
}

TEST(Numbers, TheLimitsAreReachedAndNotPassed) {
    EXPECT_EQ(parseInt32(u"2000000000"), 2000000000);
    EXPECT_EQ(parseInt32(u"2147483640"), 2147483640);
    EXPECT_EQ(parseInt32(u"-2000000000"), -2000000000);
    EXPECT_EQ(parseInt32(u"-2147483640"), -2147483640);
    EXPECT_EQ(parseUInt32(u"4294967290"), 4294967290u);
    EXPECT_EQ(parseInt64(u"9223372036854775800"), 9223372036854775800);

    EXPECT_EQ(parseInt32(u"2147483647"), 2147483647);
    EXPECT_EQ(parseInt32(u"2147483648"), 2147483647);
    EXPECT_EQ(parseInt32(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(parseInt32(u"-2147483647"), -2147483647);
    EXPECT_EQ(parseInt32(u"-2147483649"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(parseUInt32(u"4294967295"), 4294967295u);
    EXPECT_EQ(parseUInt32(u"4294967296"), 4294967295u);
    EXPECT_EQ(parseUInt32(u"-1"), 0u);
    EXPECT_EQ(parseInt64(u"9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseInt64(u"9223372036854775808"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseInt64(u"-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(parseInt64(u"-9223372036854775809"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(parseInt32(std::u16string(1'000'000, u'9')), 2147483647);
    EXPECT_EQ(parseInt32(u"-" + std::u16string(1'000'000, u'9')), std::numeric_limits<std::int32_t>::min());
}

TEST(LetterCase, LettersOfManyScripts) {
    EXPECT_EQ(lowerCase(u"ABCxyzZ019@[`{"), u"abcxyzz019@[`{");
    EXPECT_EQ(lowerCase(u"ZAŻÓŁĆ GĘŚLĄ JAŹŃ"), u"zażółć gęślą jaźń");
    EXPECT_EQ(lowerCase(u"ÀÖØÞ×ß÷ÿŸĞŐŽ"), u"àöøþ×ß÷ÿÿğőž");
    EXPECT_EQ(lowerCase(u"ΑΣΩΆΏΪ"), u"ασωάώϊ");
    EXPECT_EQ(lowerCase(u"АЯЁЂЏҐӀ"), u"аяёђџґӏ");
    EXPECT_EQ(lowerCase(u"ԱՖႠＡＺẞ"), u"աֆⴀａｚß");
    EXPECT_EQ(lowerCase(u"\x130\x0131"s), u"i\x0131"s);
}

TEST(LetterCase, EachUnitStaysOneUnitAndSmallLettersStay) {
    std::u16string all;
    for (char32_t unit = 0; unit < 0x10000; ++unit) all += static_cast<char16_t>(unit);
    const std::u16string lower = lowerCase(all);
    ASSERT_EQ(lower.size(), all.size());
    EXPECT_TRUE(lowerCase(lower) == lower);
    const auto changed =
        std::inner_product(all.begin(), all.end(), lower.begin(), 0, std::plus<>(), std::not_equal_to<>());
    EXPECT_EQ(changed, 26 + 1147) << "as many capitals as Unicode 14 has in the first plane";
    for (std::size_t unit = 0xD800; unit < 0xE000; ++unit) EXPECT_EQ(lower[unit], all[unit]);
}

TEST(LetterCase, EmptyTextStaysEmpty) { EXPECT_EQ(lowerCase(u""), u""); }

}  // namespace
