// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// UTF-8 and UTF-16, broken text included.
#include "host/util/utf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using namespace std::string_literals;

constexpr char16_t kBad = 0xFFFD;

/// A second reading of UTF-8 by its definition alone: a sequence is good as long as some completion of it is a code
/// point in its shortest form.
class Reference {
public:
    static std::u16string decode(std::string_view text) {
        std::u16string out;
        while (!text.empty()) {
            std::size_t length = 1;
            while (length < text.size() && length < 4 && canBegin(text.substr(0, length + 1))) ++length;
            if (canBegin(text.substr(0, length)) && length == wanted(text[0]))
                append(out, lowest(text.substr(0, length)));
            else
                out += kBad;
            text.remove_prefix(length);
        }
        return out;
    }

private:
    static std::size_t wanted(char lead) {
        const auto byte = static_cast<unsigned char>(lead);
        if (byte < 0x80) return 1;
        if (byte >= 0xC0 && byte < 0xE0) return 2;
        if (byte >= 0xE0 && byte < 0xF0) return 3;
        return byte >= 0xF0 && byte < 0xF8 ? 4 : 0;
    }

    /// The code point of a sequence whose missing bytes are the lowest or the highest ones.
    static char32_t complete(std::string_view text, unsigned char missing) {
        const std::size_t length = wanted(text[0]);
        char32_t code = length == 1 ? static_cast<unsigned char>(text[0])
                                    : static_cast<unsigned char>(text[0]) & ((1u << (7 - length)) - 1);
        for (std::size_t i = 1; i < length; ++i)
            code = code << 6 | ((i < text.size() ? static_cast<unsigned char>(text[i]) : missing) & 0x3Fu);
        return code;
    }
    static char32_t lowest(std::string_view text) { return complete(text, 0x80); }

    static bool canBegin(std::string_view text) {
        const std::size_t length = wanted(text[0]);
        if (length == 0 || text.size() > length) return false;
        for (const char byte : text.substr(1))
            if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) return false;
        constexpr char32_t kShortest[] = {0, 0, 0x80, 0x800, 0x10000};
        const char32_t low = std::max(lowest(text), kShortest[length]);
        const char32_t high = std::min<char32_t>(complete(text, 0xBF), 0x10FFFF);
        return low <= high && !(low >= 0xD800 && high <= 0xDFFF);
    }

    static void append(std::u16string& out, char32_t code) {
        if (code >= 0x10000) {
            out += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            code = 0xDC00 + ((code - 0x10000) & 0x3FF);
        }
        out += static_cast<char16_t>(code);
    }
};

TEST(Utf, EmptyTextStaysEmpty) {
    EXPECT_EQ(utow(""), u"");
    EXPECT_EQ(wtou(u""), "");
}

TEST(Utf, LettersOfEveryLength) {
    EXPECT_EQ(utow("a\xC5\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z"), u"a\u017C\u20AC\U0001F600z");
    EXPECT_EQ(wtou(u"a\u017C\u20AC\U0001F600z"), "a\xC5\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z");
}

TEST(Utf, NothingIsReadBehindTheText) {
    EXPECT_EQ(utow(std::string_view("\xC5\xBC\xC5\xBC").substr(0, 2)), u"\u017C");
    EXPECT_EQ(utow(std::string_view("\xC5\xBC").substr(0, 1)), u"\xFFFD"s);
    EXPECT_EQ(utow(std::string_view("\xE2\x82\xAC").substr(0, 2)), u"\xFFFD"s);
    EXPECT_EQ(utow(std::string_view("\xF0\x9F\x98\x80").substr(0, 3)), u"\xFFFD"s);
    EXPECT_EQ(wtou(std::u16string_view(u"\u017C\u017C").substr(0, 1)), "\xC5\xBC");
    EXPECT_EQ(wtou(std::u16string_view(u"\U0001F600").substr(0, 1)), "\xEF\xBF\xBD");
}

TEST(Utf, NulIsACharacterLikeAnyOther) {
    EXPECT_EQ(utow("a\0b"s), u"a\0b"s);
    EXPECT_EQ(wtou(u"a\0b"s), "a\0b"s);
}

TEST(Utf, EveryCodePointComesBack) {
    std::u16string all;
    for (char32_t code = 0; code < 0x110000; ++code) {
        if (code >= 0xD800 && code < 0xE000) continue;
        if (code >= 0x10000) all += static_cast<char16_t>(0xD7C0 + (code >> 10));
        all += static_cast<char16_t>(code < 0x10000 ? code : 0xDC00 | (code & 0x3FF));
    }
    const std::string narrow = wtou(all);
    EXPECT_EQ(narrow.size(), 0x80u + 0x780u * 2 + (0xF800u - 0x800u) * 3 + 0x100000u * 4);
    EXPECT_TRUE(utow(narrow) == all);
}

TEST(Utf, EveryLoneSurrogateBecomesAReplacement) {
    for (char32_t unit = 0xD800; unit < 0xE000; ++unit) {
        const std::u16string lone(1, static_cast<char16_t>(unit));
        EXPECT_EQ(wtou(lone), "\xEF\xBF\xBD");
        EXPECT_EQ(wtou(u"a" + lone + u"b"), "a\xEF\xBF\xBD"s + "b");
    }
    EXPECT_EQ(wtou(u"\xDC00\xD800"s), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(wtou(u"\xD800\xD83D\xDE00"s), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(Utf, OneReplacementForEachMaximalSubpart) {
    // The example of Unicode's chapter 3, table 3-8 and its neighbours.
    EXPECT_EQ(utow("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64"),
              u"a\xFFFD\xFFFD\xFFFD"s + u"b\xFFFD"s + u"c\xFFFD\xFFFD"s + u"d");
    EXPECT_EQ(utow("\xC0\xAF"), std::u16string(2, kBad)) << "overlong form of two bytes";
    EXPECT_EQ(utow("\xE0\x80\x80"), std::u16string(3, kBad)) << "overlong form of three bytes";
    EXPECT_EQ(utow("\xF0\x80\x80\x80"), std::u16string(4, kBad)) << "overlong form of four bytes";
    EXPECT_EQ(utow("\xED\xA0\x80"), std::u16string(3, kBad)) << "a surrogate";
    EXPECT_EQ(utow("\xF4\x90\x80\x80"), std::u16string(4, kBad)) << "over U+10FFFF";
    EXPECT_EQ(utow("\xF8\x88\x80\x80\x80"), std::u16string(5, kBad)) << "five bytes";
    EXPECT_EQ(utow("\xFE\xFF"), std::u16string(2, kBad));
    EXPECT_EQ(utow("\x80"), std::u16string(1, kBad));
}

TEST(Utf, ACutSequenceIsOneReplacement) {
    EXPECT_EQ(utow("\xC5"), std::u16string(1, kBad));
    EXPECT_EQ(utow("\xE2\x82"), std::u16string(1, kBad));
    EXPECT_EQ(utow("\xF0\x9F\x98"), std::u16string(1, kBad));
    EXPECT_EQ(utow("\xF0\x9F\x98z"), u"\xFFFDz"s);
}

TEST(Utf, LettersStandAtEveryPlaceOfABlock) {
    for (std::size_t before = 0; before < 40; ++before) {
        for (std::size_t after = 0; after < 40; ++after) {
            const std::string narrow = std::string(before, 'a') + "\xC5\xBC" + std::string(after, 'b');
            const std::u16string wide = std::u16string(before, u'a') + u"\u017C" + std::u16string(after, u'b');
            ASSERT_EQ(utow(narrow), wide);
            ASSERT_EQ(wtou(wide), narrow);
        }
    }
}

TEST(Utf, EveryLengthOfPlainText) {
    for (std::size_t length = 0; length < 1200; ++length) {
        ASSERT_EQ(utow(std::string(length, 'x')), std::u16string(length, u'x'));
        ASSERT_EQ(wtou(std::u16string(length, u'x')), std::string(length, 'x'));
    }
}

TEST(Utf, LongTextsTakeNoMoreMemoryThanTheyNeed) {
    std::string three;
    for (int i = 0; i < 100'000; ++i) three += "\xE2\x82\xAC";
    const std::u16string wide = utow(three);
    EXPECT_EQ(wide.size(), 100'000u);
    EXPECT_LT(wide.capacity(), 130'000u);
    EXPECT_LT(wtou(wide).capacity(), 380'000u);
}

TEST(Utf, AnyBytesReadAsTheDefinitionSays) {
    std::mt19937 random(20240607);
    // Leads, continuations and borders are frequent, so that nearly good sequences are.
    const std::vector<unsigned char> bytes = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2,
                                              0xDF, 0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF4, 0xF5, 0xFF};
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t left = random() % 40; left; --left)
            text += static_cast<char>(random() % 4 ? bytes[random() % bytes.size()] : random() % 256);
        ASSERT_EQ(utow(text), Reference::decode(text)) << testing::PrintToString(text);
    }
}

TEST(Utf, AnyUnitsComeBackWithReplacements) {
    std::mt19937 random(7);
    for (int round = 0; round < 5'000; ++round) {
        std::u16string text;
        for (std::size_t left = random() % 60; left; --left)
            text += static_cast<char16_t>(random() % 3 ? random() % 0x80 : 0xD700 + random() % 0xA00);
        std::u16string expected = text;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            if (expected[i] < 0xD800 || expected[i] > 0xDFFF) continue;
            const bool pair = expected[i] < 0xDC00 && i + 1 < expected.size() && (expected[i + 1] & 0xFC00) == 0xDC00;
            if (pair)
                ++i;
            else
                expected[i] = kBad;
        }
        ASSERT_EQ(utow(wtou(text)), expected);
    }
}

}  // namespace
