// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/received_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

using namespace protolink;

namespace {

std::string collected(const std::vector<std::string>& pieces) {
    ReceivedText text;
    for (const std::string& piece : pieces) text.append(piece);
    return std::string(text.view());
}

/// What becomes of a text that waits when more comes, looked at as a whole each time.
std::string byTheLetter(const std::vector<std::string>& pieces) {
    std::string text;
    for (const std::string& piece : pieces) {
        text += piece;
        const auto tag = text.find("<stream:stream ");
        const auto tagEnd = tag == std::string::npos ? tag : text.find('>', tag);
        if (tagEnd != std::string::npos && text[tagEnd - 1] != '/') text.insert(tagEnd, "/");
        if (text.find("<?") == std::string::npos || text.find("?>") == std::string::npos) continue;
        std::string kept;
        for (std::size_t at = 0; at < text.size();) {
            if (text.compare(at, 2, "<?") == 0)
                at += 2;
            else
                kept += text[at++];
        }
        text = kept;
    }
    return text;
}

TEST(ReceivedText, OpenTagThatWasClosedIsNotClosedAgainWhenDeclarationsBehindItGo) {
    EXPECT_EQ(collected({"<stream:stream >?>", "<?a>", "b>"}), "<stream:stream />?>a>b>");
}

TEST(ReceivedText, OpenTagThatJoinsWhenADeclarationGoesIsClosedWithTheNextPiece) {
    EXPECT_EQ(collected({"?><str<?eam:stream >", "<a>"}), "?><stream:stream /><a>");
}

TEST(ReceivedText, EndThatGoesWithItsBeginningEndsNothingMore) { EXPECT_EQ(collected({"<?>", "<?a"}), "><?a"); }

TEST(ReceivedText, PiecesGiveWhatTheWholeGives) {
    const std::vector<std::string> rows[] = {
        {"<stream:stream>", "<stream:stream a='>'>", ">"},
        {"<stream:stream", " ", "a", ">", ">"},
        {"<stream:stream /", ">", "<stream:stream >"},
        {"<stream:stream a/>b>", "c>"},
        {":", "<stream:stream >"},
        {"<stream:<stream:stream >"},
        {"x", "<?", "a", "?", ">", "<?b?>", "<a/>"},
        {"?>", "<", "?"},
        {"<", "?", ">"},
        {"<<", "??", ">", "<"},
        {"<?xml?><stream:stream ", ">"},
        {"<stream:stream ", "<?", "?>", ">"},
        {"<stre<?am:stream ", "?>", ">", ">"},
        {"<stream:stream<?", " a?>", "b"},
        {"<stream:stream a<?", "/>?>", "b>"},
        {"<str<?eam:stream a> <stream:stream b>", "?>", "c"},
        {"01234567890123456789<str<?eam:stream a> <stream:stream b>", "?>", "c"},
        {"<str", "<?eam:stream a", "> <stream:stream b>?>", ">", "<?", "d>"},
    };
    for (const auto& pieces : rows) EXPECT_EQ(collected(pieces), byTheLetter(pieces)) << testing::PrintToString(pieces);
}

/// A text that changes behind one's back costs a wrong verdict about balance; one that is told to change costs time.
TEST(ReceivedText, TellsFromWhereItHasChangedAndWhatWillStay) {
    std::mt19937 random(3);
    const std::string tokens[] = {"<",        "?",       "<?",      ">",           "?>",   "<stream:stream ",
                                  "<stream:", "stream ", "<str",    "eam:stream ", "/>",   "/",
                                  ":",        "a",       "text\n ", "<<",          "<a/>", ""};
    for (int round = 0; round < 5'000; ++round) {
        ReceivedText text;
        std::vector<std::string> pieces;
        std::string before, settled;
        for (auto left = random() % 6 + 1; left > 0; --left) {
            std::string piece;
            for (auto count = random() % 4; count > 0; --count) piece += tokens[random() % std::size(tokens)];
            pieces.push_back(piece);
            const std::size_t same = text.append(piece);
            ASSERT_EQ(text.view(), byTheLetter(pieces)) << testing::PrintToString(pieces);
            ASSERT_LE(same, before.size()) << testing::PrintToString(pieces);
            ASSERT_EQ(text.view().substr(0, same), before.substr(0, same)) << testing::PrintToString(pieces);
            ASSERT_TRUE(text.view().starts_with(settled)) << testing::PrintToString(pieces);
            before = text.view();
            settled = before.substr(0, text.settled());
        }
    }
}

TEST(ReceivedText, KnowsNothingOfTheLastTextOnceItIsCleared) {
    ReceivedText text;
    text.append("<a/><?xml ?><stream:stream a='1'><b><<");
    text.clear();
    EXPECT_EQ(text.view(), "");
    EXPECT_EQ(text.settled(), 0u);
    EXPECT_EQ(text.append("<stream:stream >"), 0u);
    EXPECT_EQ(text.view(), "<stream:stream />");
    EXPECT_EQ(text.settled(), text.view().size());
}

}  // namespace
