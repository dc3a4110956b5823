// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A transcript fails when it should: the player against the real plugin, with transcripts that are wrong in one place.
#include "tests/support/player.h"

#include <gtest/gtest.h>

#include "plugin/module.h"

namespace harness {
namespace {

constexpr PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};

std::string reportOf(const std::string& text) {
    const auto outcome = play(kExports, FoldBook(PROTOLINK_FOLDS).readText("t", text));
    return outcome.passed ? "passed" : outcome.report;
}

constexpr char kLoggedIn[] = "log in as alice@example.org/home\n";

TEST(Player, PassesWhatIsRight) { EXPECT_EQ(reportOf(kLoggedIn), "passed"); }

TEST(Player, FailsWhenMoreHappensAtTheEnd) {
    EXPECT_NE(reportOf(std::string(kLoggedIn) + "tick XMPP/Timer/1\n").find("more happened: log 6"), std::string::npos);
}

TEST(Player, FailsWhenMoreHappensBeforeAStimulus) {
    EXPECT_NE(reportOf(std::string(kLoggedIn) + "tick XMPP/Timer/1\nclosed\n").find("not expected before it"),
              std::string::npos);
}

TEST(Player, RepeatsALineAsOftenAsItSays) {
    const std::string twice = std::string(kLoggedIn) + "repeat 2 times: tick XMPP/Timer/1 kind=1\n";
    EXPECT_EQ(reportOf(twice), "passed");
    EXPECT_EQ(FoldBook(PROTOLINK_FOLDS).readText("t", "repeat 3 times: nothing\n").steps.size(), 3u);
    for (const char* wrong : {"repeat 0 times: nothing\n", "repeat x times: nothing\n", "repeat 3 nothing\n"})
        EXPECT_THROW(FoldBook(PROTOLINK_FOLDS).readText("t", wrong), std::runtime_error) << wrong;
}

TEST(Player, FailsWhenNothingHappens) {
    EXPECT_NE(reportOf(std::string(kLoggedIn) + "C: <x/>\n").find("nothing more happened"), std::string::npos);
}

TEST(Player, FailsOnAnotherOrder) {
    const auto report = reportOf(std::string(kLoggedIn) +
                                 "tick XMPP/Timer/1\nC: <iq to=\"example.org\" id=\"{p}\" type=\"get\"><ping "
                                 "xmlns=\"urn:xmpp:ping\"/></iq>\nlog 6 XMPP \"ping <-> pong\"\n");
    EXPECT_NE(report.find("another thing happened: log 6"), std::string::npos) << report;
}

TEST(Player, FailsOnAnotherFieldMissingFieldAndMoreFields) {
    const std::string begin = std::string(kLoggedIn) + "status window asks window=7\ncall OKU/StatusWND/SetTexts ";
    const std::string right =
        "title=\"alice@example.org - Ustaw status...\" header=\"Status\" "
        "account=\"alice@example.org\" window=7";
    EXPECT_EQ(reportOf(begin + right + "\n"), "passed");
    EXPECT_NE(reportOf(begin + right + "8\n"), "passed");
    EXPECT_NE(reportOf(begin + right.substr(0, right.rfind(' ')) + "\n"), "passed");
    EXPECT_NE(reportOf(begin + right + " more=1\n"), "passed");
    EXPECT_EQ(reportOf(begin + right + " more=0\n"), "passed");
}

TEST(Player, FailsOnAnotherResult) { EXPECT_NE(reportOf("load -> 1\n").find("the result is 0"), std::string::npos); }

TEST(Player, CapturedValuesMustComeBack) {
    const std::string ping =
        "tick XMPP/Timer/1\nlog 6 XMPP \"ping <-> pong\"\nC: <iq to=\"example.org\" id=\"{p}\" "
        "type=\"get\"><ping xmlns=\"urn:xmpp:ping\"/></iq>\n";
    EXPECT_EQ(reportOf(kLoggedIn + ping), "passed");
    EXPECT_NE(reportOf(kLoggedIn + ping + ping), "passed");
    EXPECT_EQ(reportOf(kLoggedIn + ping + "forget p\n" + ping), "passed");
}

TEST(Player, SameXmlLooksThroughOrderAndForm) {
    const std::string begin = std::string(kLoggedIn) + "tick XMPP/Timer/1\nlog 6 XMPP \"ping <-> pong\"\nC xml: ";
    EXPECT_EQ(reportOf(begin + "<iq type='get' id='{p}' to='example.org'> <ping xmlns='urn:xmpp:ping'></ping> </iq>\n"),
              "passed");
    EXPECT_NE(reportOf(begin + "<iq type='get' id='{p}' to='example.org'><ping/></iq>\n"), "passed");
    EXPECT_NE(reportOf(begin + "<iq type='get' id='{p}' to='example.org'/>\n"), "passed");
    EXPECT_NE(reportOf(begin + "<iq type='set' id='{p}' to='example.org'><ping xmlns='urn:xmpp:ping'/></iq>\n"),
              "passed");
}

TEST(Player, PrintsTheExchangeAndTheLine) {
    const auto report = reportOf(std::string(kLoggedIn) + "tick XMPP/Timer/1\nlog 5 XMPP \"ping <-> pong\"\n");
    EXPECT_NE(report.find("> tick XMPP/Timer/1\n  log 6 XMPP \"ping <-> pong\"\n"), std::string::npos) << report;
    EXPECT_NE(report.find("t:3: log 5 XMPP"), std::string::npos) << report;
}

TEST(Player, CutsOnlyInsideTagsAndCharacters) {
    EXPECT_EQ(cutPositions("ab<c>d"), (std::vector<std::size_t>{3, 4}));
    EXPECT_EQ(cutPositions("\xc5\x82"), (std::vector<std::size_t>{1}));
    EXPECT_TRUE(cutPositions("plain").empty());
}

}  // namespace
}  // namespace harness
