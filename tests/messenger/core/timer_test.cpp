// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include "host/oku/timer.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

class Timers : public Stage {
protected:
    Timers() { start(); }

    void create(const char16_t* name, std::uint32_t interval, bool oneShot) {
        auto record = makeRecord<OKU_TIMER_RECORD>();
        record.id = name;
        record.interval = interval;
        record.oneShot = oneShot;
        record.context = wordOf(&ticks);
        record.handler = [](OKU_WORD event, OKU_WORD, OKU_WORD context) -> OKU_WORD {
            EXPECT_EQ(reinterpret_cast<const OKU_TIMER_EVENT*>(event)->kind, 3U);
            ++*reinterpret_cast<int*>(context);
            return 1;
        };
        EXPECT_EQ(call(u"OKU/Timer/Create", wordOf(&record)), 1);
    }

    int ticks = 0;
};

TEST_F(Timers, FireOnceOrAgainAndAgain) {
    create(u"XMPP/1/Reconn", 5, true);
    EXPECT_TRUE(waitFor([&] { return ticks == 1; }));
    EXPECT_FALSE(core->timers.has(QStringLiteral("XMPP/1/Reconn")));
    create(u"XMPP/Timer/1", 5, false);
    EXPECT_TRUE(waitFor([&] { return ticks >= 4; }));
    EXPECT_TRUE(core->timers.has(QStringLiteral("XMPP/Timer/1")));
}

TEST_F(Timers, AreDestroyedByTheirName) {
    create(u"XMPP/Timer/1", 5, false);
    const std::u16string copy = u"XMPP/Timer/1";
    EXPECT_EQ(call(u"OKU/Timer/Destroy", wordOf(copy.c_str())), 1);
    pass(20);
    EXPECT_EQ(ticks, 0);
}

TEST_F(Timers, AreDestroyedByTheAddressOfAWordThatPointsToTheName) {
    create(u"XMPP/1/Reconn", 5, true);
    const std::u16string copy = u"XMPP/1/Reconn";
    auto record = makeRecord<OKU_TIMER_RECORD>();
    record.id = copy.c_str();
    EXPECT_EQ(call(u"OKU/Timer/Destroy", wordOf(&record.id)), 1);
    pass(20);
    EXPECT_EQ(ticks, 0);
}

TEST_F(Timers, BearEveryKindOfRubbishInDestroy) {
    create(u"XMPP/Timer/1", 100000, false);
    const OKU_WORD wild = 0x5a5a5a5a5a5a5a58;
    const char16_t* nowhere = reinterpret_cast<const char16_t*>(0x1238);
    char16_t shortName[2] = u"X";
    for (const OKU_WORD word : {OKU_WORD{0}, OKU_WORD{8}, OKU_WORD{-1}, wild, wordOf(&wild), wordOf(&nowhere),
                                wordOf(&shortName[0]), wordOf(u"XMPP/9/Reconn"), wordOf(u"XMPP/Timer/12")}) {
        EXPECT_EQ(call(u"OKU/Timer/Destroy", word), 0);
    }
    EXPECT_TRUE(core->timers.has(QStringLiteral("XMPP/Timer/1")));
}

TEST_F(Timers, StartAnewWhenTheNameExists) {
    create(u"XMPP/1/Reconn", 20, true);
    create(u"XMPP/1/Reconn", 100000, true);
    pass(60);
    EXPECT_EQ(ticks, 0) << "the first one's time counts no more";
    create(u"XMPP/1/Reconn", 5, true);
    EXPECT_TRUE(waitFor([&] { return ticks == 1; }));
    pass(40);
    EXPECT_EQ(ticks, 1);
}

TEST_F(Timers, DoNotFireOnceDestroyedThoughATickWaits) {
    core->queue.post({}, [&] {
        create(u"XMPP/1/Reconn", 1, true);
        pass(20);  // comes due with this call on the stack
        EXPECT_EQ(ticks, 0);
        call(u"OKU/Timer/Destroy", wordOf(u"XMPP/1/Reconn"));
        create(u"XMPP/1/Reconn", 100000, true);
    });
    EXPECT_EQ(ticks, 0);
}

TEST_F(Timers, MakeNoneWithoutANameOrAHandler) {
    auto record = makeRecord<OKU_TIMER_RECORD>();
    EXPECT_EQ(call(u"OKU/Timer/Create", wordOf(&record)), 0);
    record.id = u"XMPP/Timer/1";
    EXPECT_EQ(call(u"OKU/Timer/Create", wordOf(&record)), 0);
    EXPECT_EQ(call(u"OKU/Timer/Create", 0), 0);
}

}  // namespace
}  // namespace oku::test
