// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Calls of a host that lack the record they are about, or what the record should point to: nothing is done.
#include <gtest/gtest.h>

#include "host/oku/menu.h"
#include "host/oku/protocol.h"
#include "host/oku/timer.h"
#include "plugin/module.h"
#include "tests/support/fake_platform.h"
#include "tests/support/stage.h"

namespace {

class MissingRecords : public testing::Test {
protected:
    MissingRecords() {
        harness::world() = harness::FakeWorld();
        stage.load();
        stage.host.onEvent = [this](const harness::Event& event) { events.push_back(harness::render(event)); };
    }
    ~MissingRecords() override {
        EXPECT_TRUE(events.empty()) << events.front();
        stage.host.onEvent = nullptr;
        stage.unload();
        EXPECT_TRUE(stage.host.complaints.empty()) << stage.host.complaints.front();
    }
    const harness::Callback& menuItem(const std::string& id) { return stage.host.menuItems.at(id); }

    harness::Stage stage{{queryPlugInfo, pluginLoad, pluginUnload}};
    std::vector<std::string> events;
};

TEST_F(MissingRecords, OfAStatus) { EXPECT_EQ(stage.service("PFStatusSet", 0, 0), 0u); }

TEST_F(MissingRecords, OfACard) {
    for (const char* name : {"PFGetContactVCard", "PFGetMyVCard", "PFSetMyVCard", "PFGetMyAvatar", "PFSetMyAvatar"})
        EXPECT_EQ(stage.service(name, 0, 0), 0u) << name;
}

TEST_F(MissingRecords, OfAMenuItem) {
    const auto& item = menuItem("XMPP/1/Presence/Away");
    EXPECT_EQ(item(0, 0), 0u);
    OKU_MENU_EVENT unnamed{};
    unnamed.size = sizeof unnamed;
    EXPECT_EQ(item(reinterpret_cast<OKU_WORD>(&unnamed), 0), 0u);
}

TEST_F(MissingRecords, OfATimer) {
    const auto timer = stage.host.timers.at("XMPP/Timer/1");
    EXPECT_EQ(timer.callback(0, 0), 0u);
}

TEST_F(MissingRecords, OfRawData) {
    stage.receive("<success/>");
    ASSERT_EQ(stage.flags(), OKU_FLAG_AUTHORIZED);
    events.clear();
    OKU_RAW_SEND nothing{};
    nothing.size = sizeof nothing;
    nothing.length = 5;
    EXPECT_EQ(stage.service("PFRawSend", reinterpret_cast<OKU_WORD>(&nothing), 0), 0u);
}

}  // namespace
