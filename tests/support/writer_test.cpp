// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/writer.h"

#include <gtest/gtest.h>

#include "plugin/module.h"

namespace harness {
namespace {

constexpr PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};

TEST(Writer, WhatIsWrittenOfALoginIsPlayedAgain) {
    const FoldBook folds(PROTOLINK_FOLDS);
    const auto first = play(kExports, folds.readText("login", "log in as alice@example.org/home by digest\n"));
    ASSERT_TRUE(first.passed) << first.report;
    const auto written = writeTranscript(first.journal);
    const auto again = play(kExports, folds.readText("recording", written));
    EXPECT_TRUE(again.passed) << again.report << "\n--- recording:\n" << written;
    EXPECT_EQ(writeTranscript(again.journal), written);
}

TEST(Writer, IdsOfThePluginBecomeCapturedValues) {
    const auto written = writeTranscript({{false, R"(C: <iq id="abc" type="get"/>)"}, {true, "S: <iq id='abc'/>"}});
    EXPECT_EQ(written, "C: <iq id=\"{id1}\" type=\"get\"/>\n\nS: <iq id='{id1}'/>\n");
}

TEST(Writer, IdsOfTheOtherSideStay) {
    const auto written = writeTranscript({{true, "S: <iq id='abc'/>"}, {false, R"(C: <iq id="abc" type="result"/>)"}});
    EXPECT_EQ(written, "\nS: <iq id='abc'/>\nC: <iq id=\"abc\" type=\"result\"/>\n");
}

}  // namespace
}  // namespace harness
