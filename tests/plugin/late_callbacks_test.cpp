// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Callbacks that the host still has in its hands when the account that they are of has gone.
#include <gtest/gtest.h>

#include "host/oku/avatar.h"
#include "host/oku/cards.h"
#include "host/oku/netlib.h"
#include "plugin/module.h"
#include "tests/support/fake_platform.h"
#include "tests/support/stage.h"

namespace {

TEST(LateCallbacks, AnswerNothingAfterUnloading) {
    harness::world() = harness::FakeWorld();
    harness::Stage stage({queryPlugInfo, pluginLoad, pluginUnload});
    stage.load();
    const auto sockets = stage.host.sockets;
    const auto timers = stage.host.timers;
    const auto services = stage.host.services;
    const auto items = stage.host.menuItems;
    const auto windows = stage.host.statusWindows;
    const auto protocols = stage.host.protocols;
    stage.unload();

    std::size_t events = 0;
    stage.host.onEvent = [&](const harness::Event&) { ++events; };
    NL_EVENT event{sizeof(NL_EVENT), NL_EVENT_CONNECTED};
    const auto record = reinterpret_cast<OKU_WORD>(&event);
    for (const auto& [name, callback] : sockets) EXPECT_EQ(callback(record, 0), 0) << name;
    for (const auto& [name, timer] : timers) EXPECT_EQ(timer.callback(0, 0), 0) << name;
    for (const auto& [name, callback] : services) EXPECT_EQ(callback(0, 0), 0) << name;
    for (const auto& [name, callback] : items) {
        if (!callback.handler) continue;
        EXPECT_EQ(callback(0, 0), 0) << name;
    }
    for (const auto& [net, callback] : windows) EXPECT_EQ(callback(0, 0), 0) << net;
    for (const auto& [net, protocol] : protocols) {
        EXPECT_EQ(protocol.authorize(0, 2), 0) << net;
        EXPECT_EQ(protocol.remove(0, 0), 0) << net;
    }
    EXPECT_EQ(events, 0u);
    EXPECT_TRUE(stage.host.complaints.empty()) << stage.host.complaints.front();
}

TEST(LateCallbacks, OfCardsAndPicturesAnswerNothingAfterUnloading) {
    harness::world() = harness::FakeWorld();
    harness::Stage stage({queryPlugInfo, pluginLoad, pluginUnload});
    stage.load();
    const auto services = stage.host.services;
    const auto hooks = stage.host.hooks;
    stage.unload();

    std::size_t events = 0;
    stage.host.onEvent = [&](const harness::Event&) { ++events; };
    OKU_CONTACT_CARD_REQUEST card{sizeof card, 0, 5, {}, u"bob@example.org"};
    OKU_AVATAR_CHANGED picture{sizeof picture, {}, u"abcde", {}, OKU_AVATAR_SET, 0};
    for (const char* name : {"PFGetContactVCard", "PFGetMyVCard", "PFSetMyVCard", "PFGetMyAvatar", "PFSetMyAvatar"})
        EXPECT_EQ(services.at(std::string("XMPP/1/") + name)(reinterpret_cast<OKU_WORD>(&card), 0), 0) << name;
    for (const auto& [name, callback] : hooks) EXPECT_EQ(callback(reinterpret_cast<OKU_WORD>(&picture), 0), 0) << name;
    EXPECT_EQ(events, 0u);
}

TEST(LateCallbacks, WordsOfAnEarlierLoadNameNobody) {
    harness::world() = harness::FakeWorld();
    harness::Stage stage({queryPlugInfo, pluginLoad, pluginUnload});
    stage.load();
    const auto old = stage.host.sockets.at("XMPP/Socket/1");
    stage.unload();
    stage.load();
    std::size_t events = 0;
    stage.host.onEvent = [&](const harness::Event&) { ++events; };
    NL_EVENT event{sizeof(NL_EVENT), NL_EVENT_CONNECTED};
    EXPECT_EQ(old(reinterpret_cast<OKU_WORD>(&event), 0), 0);
    EXPECT_EQ(events, 0u);
    stage.unload();
    EXPECT_TRUE(stage.host.complaints.empty()) << stage.host.complaints.front();
}

TEST(LateCallbacks, UnloadingWhileThePluginUnloadsDoesNothing) {
    harness::world() = harness::FakeWorld();
    harness::Stage stage({queryPlugInfo, pluginLoad, pluginUnload});
    stage.load();
    std::size_t removed = 0;
    stage.host.onEvent = [&](const harness::Event& event) {
        if (!event.line.head.starts_with("call OKU/ProtocolDel") || ++removed > 1) return;
        EXPECT_EQ(pluginUnload(), 0);
    };
    stage.unload();
    EXPECT_EQ(removed, 1u);
    EXPECT_TRUE(stage.host.complaints.empty()) << stage.host.complaints.front();
}

}  // namespace
