// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Roster files that are huge, deep or cut anywhere.
#include <gtest/gtest.h>

#include <string>

#include "plugin/module.h"
#include "tests/support/fake_platform.h"
#include "tests/support/stage.h"

namespace {

constexpr harness::PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};
constexpr char kPath[] = "/profile/protoLink.roster";

/// How the plugin fared with a roster file.
struct Fate {
    std::size_t added = 0;  // contacts that reached the host
    std::string saved;      // what the file holds in the end
};

Fate loadAndUnload(const std::string& content) {
    harness::world() = harness::FakeWorld();
    harness::world().files[kPath] = content;
    Fate fate;
    harness::Stage stage(kExports);
    stage.host.now = [] { return harness::world().now; };
    stage.host.onEvent = [&](const harness::Event& event) {
        if (event.line.head == "call OKU/CTL/AddContact") ++fate.added;
    };
    stage.load();
    stage.unload();
    EXPECT_TRUE(stage.host.complaints.empty()) << stage.host.complaints.front();
    fate.saved = harness::world().files[kPath];
    return fate;
}

std::string element(int number) {
    const auto digits = std::to_string(100000 + number);
    return "<element name=\"N" + digits + "\" jid=\"c" + digits + "@example.org\" auth=\"both\" group=\"Ż\"/>";
}

TEST(RosterFile, ThousandsOfContactsComeAndGo) {
    std::string content = "<roster>";
    for (int i = 0; i < 4000; ++i) content += element(i);
    content += "</roster>";
    const auto fate = loadAndUnload(content);
    EXPECT_EQ(fate.added, 4000u);
    EXPECT_EQ(fate.saved, content);
}

TEST(RosterFile, CutAnywhereItGivesNoContacts) {
    const std::string content = "<roster>" + element(1) + element(2) + "</roster>";
    for (std::size_t length = 0; length < content.size(); ++length) {
        const auto fate = loadAndUnload(content.substr(0, length));
        EXPECT_EQ(fate.added, 0u) << length;
        EXPECT_EQ(fate.saved, "<roster/>") << length;
    }
    EXPECT_EQ(loadAndUnload(content).added, 2u);
}

TEST(RosterFile, WithAnyByteSpoiltThePluginGoesOn) {
    const std::string content = "<roster>" + element(1) + "</roster>";
    for (std::size_t at = 0; at < content.size(); ++at) {
        for (const char byte : {'\0', '<', '"', '\xFF'}) {
            auto spoilt = content;
            spoilt[at] = byte;
            EXPECT_LE(loadAndUnload(spoilt).added, 1u) << at;
        }
    }
}

TEST(RosterFile, DeepNestingIsNoContact) {
    constexpr std::size_t kDepth = 200000;
    std::string content;
    for (std::size_t i = 0; i < kDepth; ++i) content += "<a>";
    for (std::size_t i = 0; i < kDepth; ++i) content += "</a>";
    const auto fate = loadAndUnload(content);
    EXPECT_EQ(fate.added, 0u);
    EXPECT_EQ(fate.saved, "<roster/>");
}

TEST(RosterFile, ALongNameIsKeptWhole) {
    const std::string name(2000000, 'n');
    const auto content =
        "<roster><element name=\"" + name + "\" jid=\"bob@example.org\" auth=\"both\" group=\"G\"/></roster>";
    const auto fate = loadAndUnload(content);
    EXPECT_EQ(fate.added, 1u);
    EXPECT_EQ(fate.saved, content);
}

}  // namespace
