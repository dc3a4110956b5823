// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/received_text.h"

#include <gtest/gtest.h>

using namespace protolink;

namespace {

std::string collected(std::initializer_list<const char*> pieces) {
    ReceivedText text;
    for (const char* piece : pieces) text.append(piece);
    return std::string(text.view());
}

TEST(ReceivedText, OpenTagThatWasClosedIsNotClosedAgainWhenDeclarationsBehindItGo) {
    EXPECT_EQ(collected({"<stream:stream >?>", "<?a>", "b>"}), "<stream:stream />?>a>b>");
}

TEST(ReceivedText, OpenTagThatJoinsWhenADeclarationGoesIsClosedWithTheNextPiece) {
    EXPECT_EQ(collected({"?><str<?eam:stream >", "<a>"}), "?><stream:stream /><a>");
}

TEST(ReceivedText, EndThatGoesWithItsBeginningEndsNothingMore) { EXPECT_EQ(collected({"<?>", "<?a"}), "><?a"); }

}  // namespace
