// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A host and files that fail: each call in turn answers 0, and the plugin goes on to its orderly end.
#include <gtest/gtest.h>

#include "plugin/module.h"
#include "tests/support/player.h"

namespace {

constexpr harness::PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};

constexpr char kConversation[] =
    "log in as alice@example.org/home with contact bob@example.org\n"
    "S: <presence from='bob@example.org/desk'><status>tu</status></presence>\n"
    "S: <message from='bob@example.org/desk' type='chat'><body>a</body></message>\n"
    "send chat to bob@example.org \"b\"\n"
    "typing to bob@example.org = 1\n"
    "S: <presence type='subscribe' from='carol@example.org'/>\n"
    "authorize carol@example.org = 3\n"
    "delete contact bob@example.org\n"
    "status window confirms status=away description=\"x\"\n"
    "S: <iq type='set' id='r'><query xmlns='jabber:iq:roster'><item jid='bob@example.org' "
    "subscription='remove'/></query></iq>\n"
    "after 60 s\n"
    "dropped\n"
    "after 3 s\n"
    "connected\n"
    "unload\n";

harness::Transcript conversation() {
    return harness::FoldBook(PROTOLINK_FOLDS).readText("conversation", kConversation);
}

TEST(FailingHost, EachCallInTurnAnswersNothing) {
    const auto transcript = conversation();
    harness::PlayMode mode;
    mode.onlyDrive = true;
    mode.failingCall = 1000000;
    const auto whole = harness::play(kExports, transcript, mode);
    ASSERT_TRUE(whole.passed) << whole.report;
    ASSERT_GT(whole.calls, 150u);
    for (std::size_t call = 0; call < whole.calls; ++call) {
        mode.failingCall = call;
        const auto outcome = harness::play(kExports, transcript, mode);
        ASSERT_TRUE(outcome.passed) << "call " << call << "\n" << outcome.report;
    }
}

TEST(FailingHost, WithoutAnyServiceThePluginLoadsAndUnloads) {
    const auto transcript = harness::FoldBook(PROTOLINK_FOLDS).readText("nothing", "load -> 0\nunload -> 0\n");
    OKU_FUNCTION_TABLE empty{};
    EXPECT_EQ(pluginLoad(1, &empty), 0);
    EXPECT_EQ(pluginUnload(), 0);
    harness::PlayMode mode;
    mode.onlyDrive = true;
    EXPECT_TRUE(harness::play(kExports, transcript, mode).passed);
}

TEST(FailingHost, UnloadingWhatWasNeverLoadedDoesNothing) { EXPECT_EQ(pluginUnload(), 0); }

class FailingFiles : public testing::TestWithParam<const char*> {};

TEST_P(FailingFiles, LeaveThePluginRunning) {
    const auto transcript =
        harness::FoldBook(PROTOLINK_FOLDS).readText("files", std::string(GetParam()) + "\n" + kConversation);
    harness::PlayMode mode;
    mode.onlyDrive = true;
    const auto outcome = harness::play(kExports, transcript, mode);
    EXPECT_TRUE(outcome.passed) << outcome.report;
}

INSTANTIATE_TEST_SUITE_P(EachFile, FailingFiles,
                         testing::Values("cannot open protoLink.roster", "cannot write protoLink.roster",
                                         "cannot open XMPPClientDB.xml", "cannot write XMPPClientDB.xml",
                                         "cannot open cwd:XMPPClientDB.xml",
                                         "file protoLink.roster = \"<roster><element jid=\"",
                                         "file protoLink.roster = \"\\xff\\xfe\\0garbage\"",
                                         "file cwd:XMPPClientDB.xml = \"<dbRoot><entry\""));

}  // namespace
