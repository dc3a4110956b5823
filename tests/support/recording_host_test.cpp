// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The strictness of the fake host, without which no transcript proves anything.
#include "tests/support/recording_host.h"

#include <gtest/gtest.h>

#include "host/host.h"
#include "host/oku/log.h"
#include "host/oku/settings.h"
#include "host/oku/timer.h"
#include "host/record.h"
#include "host/services/contact_list.h"
#include "host/services/settings_store.h"
#include "host/services/sockets.h"
#include "host/services/timers.h"

using namespace protolink;

namespace harness {
namespace {

OKU_WORD OKU_CALL ignore(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }

class StrictHost : public testing::Test {
protected:
    StrictHost() {
        host.onEvent = [this](const Event& event) { lines.push_back(render(event.line)); };
    }
    bool complainsOf(const std::string& what) const {
        for (const auto& complaint : host.complaints) {
            if (complaint.find(what) != std::string::npos) return true;
        }
        return false;
    }
    OKU_WORD call(const char16_t* service, const void* record) {
        return host.table()->fnCall(service, reinterpret_cast<OKU_WORD>(record), 0);
    }

    RecordingHost host;
    Host proxy{host.table(), host.module};
    std::vector<std::string> lines;
};

TEST_F(StrictHost, NoticesAWrongSize) {
    auto record = makeRecord<OKU_LOG_RECORD>();
    record.size = 32;
    call(u"OKU/Log", &record);
    EXPECT_TRUE(complainsOf("OKU_LOG_RECORD has the size 32"));
}

TEST_F(StrictHost, NoticesAByteThatIsNotZero) {
    auto record = makeRecord<OKU_LOG_RECORD>();
    record.reserved[1] = 5;
    call(u"OKU/Log", &record);
    EXPECT_TRUE(complainsOf("OKU_LOG_RECORD is not zero at 28"));
}

TEST_F(StrictHost, NoticesAMissingCallback) {
    auto record = makeRecord<OKU_TIMER_RECORD>();
    record.id = u"XMPP/Timer/1";
    call(u"OKU/Timer/Create", &record);
    EXPECT_TRUE(complainsOf("OKU_TIMER_RECORD has no handler"));
}

TEST_F(StrictHost, NoticesAnUnknownService) {
    call(u"OKU/Nothing", nullptr);
    EXPECT_TRUE(complainsOf("no service OKU/Nothing"));
}

TEST_F(StrictHost, NoticesDeadThings) {
    Timers(proxy).destroy(u"XMPP/Timer/9");
    Sockets(proxy).close(u"XMPP/Socket/9");
    SettingsStore(proxy).save();
    proxy.destroyService(9);
    proxy.removeHook(9);
    proxy.destroyEvent(9);
    ContactList(proxy).remove(9);
    for (const char* what : {"dead timer XMPP/Timer/9", "dead socket XMPP/Socket/9", "OKU/Settings/Write on a dead",
                             "fnDestroy", "hookRemove", "evDestroy", "OKU/CTL/DelContact"}) {
        EXPECT_TRUE(complainsOf(what)) << what;
    }
}

TEST_F(StrictHost, TakesACancellationByReferenceOfATimerThatIsNotThere) {
    Timers(proxy).destroyByReference(u"XMPP/1/Reconn");
    EXPECT_TRUE(host.complaints.empty());
    EXPECT_EQ(lines.back(), "call OKU/Timer/Destroy id=\"XMPP/1/Reconn\" shape=reference");
}

TEST_F(StrictHost, NoticesASendWithoutItsHooks) {
    Sockets(proxy).create(u"XMPP/Socket/1", {ignore, 1});
    Sockets(proxy).send(u"XMPP/Socket/1", "<a/>");
    EXPECT_TRUE(complainsOf("without its two stream hooks"));
}

TEST_F(StrictHost, NoticesSettingsThatAreReadTooEarly) {
    auto record = makeRecord<OKU_SETTINGS_RECORD>();
    record.key = u"key";
    record.type = OKU_SETTING_INTEGER;
    record.store = proxy.call(u"OKU/Settings/Init", toWord(u"/x"), proxy.module());
    call(u"OKU/Settings/Get", &record);
    EXPECT_TRUE(complainsOf("before Read"));
}

TEST_F(StrictHost, NoticesWhatIsLeftAfterUnloading) {
    proxy.createNetService(1, u"X", ignore, 1);
    proxy.addHook(u"OKU/Y", ignore, 1);
    proxy.createEvent(u"Z");
    Timers(proxy).create(u"XMPP/Timer/1", 1, {ignore, 1}, false);
    Sockets(proxy).create(u"XMPP/Socket/1", {ignore, 1});
    proxy.call(u"OKU/Settings/Init", toWord(u"/x"), proxy.module());
    ASSERT_TRUE(host.complaints.empty());
    host.checkUnloaded();
    EXPECT_EQ(host.complaints.size(), 6u);
}

TEST_F(StrictHost, FailsTheCallThatTheTestNames) {
    host.failingCall = 1;
    EXPECT_NE(proxy.call(u"OKU/Settings/Init", toWord(u"/a"), proxy.module()), 0);
    EXPECT_EQ(proxy.call(u"OKU/Settings/Init", toWord(u"/b"), proxy.module()), 0);
    EXPECT_NE(proxy.call(u"OKU/Settings/Init", toWord(u"/c"), proxy.module()), 0);
    EXPECT_EQ(host.calls, 3u);
}

TEST_F(StrictHost, LacksTheServicesThatTheTestTakesAway) {
    host.absent.insert("OKU/Settings/Init");
    EXPECT_EQ(proxy.call(u"OKU/Settings/Init", toWord(u"/a"), proxy.module()), 0);
}

}  // namespace
}  // namespace harness
