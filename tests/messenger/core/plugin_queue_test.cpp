// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <QEventLoop>
#include <thread>

#include "tests/messenger/core/stage.h"

#include "host/oku/timer.h"
#include "host/oku/windows.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

using Kind = PluginQueue::Kind;

TEST(PluginQueue, RunsAtOnceWhenNothingIsOnTheStack) {
    PluginQueue queue;
    bool ran = false;
    queue.post({}, [&] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST(PluginQueue, NeverNestsAndKeepsTheOrder) {
    PluginQueue queue;
    std::string trace;
    queue.post({}, [&] {
        queue.post({}, [&] { trace += 'b'; });
        queue.post({}, [&] {
            queue.post({}, [&] { trace += 'd'; });
            trace += 'c';
        });
        EXPECT_TRUE(queue.busy());
        trace += 'a';
    });
    EXPECT_EQ(trace, "abcd");
    EXPECT_FALSE(queue.busy());
}

TEST(PluginQueue, LetsTicksInBehindEverythingElse) {
    PluginQueue queue;
    std::string trace;
    queue.post({}, [&] {
        queue.post(Kind::tick, {}, [&] {
            queue.post({}, [&] { trace += '3'; });
            trace += 't';
        });
        queue.post(Kind::tick, {}, [&] { trace += 'u'; });
        queue.post({}, [&] { trace += '1'; });
        queue.post({}, [&] { trace += '2'; });
    });
    EXPECT_EQ(trace, "12") << "who posted may have more bytes to report, and ticks that waited come after those";
    queue.post({}, [&] { trace += '+'; });
    EXPECT_TRUE(waitFor([&] { return trace.size() == 6; }));
    EXPECT_EQ(trace, "12+t3u");
    queue.post(Kind::tick, {}, [&] { trace += '!'; });
    EXPECT_EQ(trace, "12+t3u!") << "one that need not wait goes in at once";
}

TEST(PluginQueue, TellsAnExceptionAndGoesOn) {
    PluginQueue queue;
    QStringList reasons;
    QObject::connect(&queue, &PluginQueue::failed, &queue, [&](const QString& reason) { reasons.append(reason); });
    bool ran = false;
    queue.post({}, [] { throw std::runtime_error("boom"); });
    queue.post({}, [&] { ran = true; });
    EXPECT_EQ(reasons, QStringList("boom"));
    EXPECT_TRUE(ran);
}

TEST(PluginQueue, CarriesCallsOfOtherThreadsOver) {
    PluginQueue queue;
    std::thread::id ranOn;
    OKU_WORD result = 0;
    std::atomic<bool> done = false;
    std::thread worker([&] {
        result = queue.runFromThread([&]() -> OKU_WORD {
            ranOn = std::this_thread::get_id();
            EXPECT_TRUE(queue.busy());
            return 42;
        });
        done = true;
    });
    EXPECT_TRUE(waitFor([&] { return done.load(); }));
    worker.join();
    EXPECT_EQ(result, 42);
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(PluginQueue, LetsThreadsGoWhenItClosesToThem) {
    PluginQueue queue;
    std::atomic<int> entered = 0;
    std::thread worker([&] {
        ++entered;
        EXPECT_EQ(queue.runFromThread([]() -> OKU_WORD { return 1; }), 0);
        EXPECT_EQ(queue.runFromThread([]() -> OKU_WORD { return 1; }), 0);
    });
    queue.post({}, [&] {
        while (entered == 0) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        // As while unloading: this thread waits for the other one, with no event loop.
        queue.setClosedToThreads(true);
        worker.join();
    });
}

class HeldPlugin : public Stage {
protected:
    /// Opens a message box as the plugin, lets `meanwhile` run while it is open, and answers it.
    OKU_WORD hold(std::uint32_t style, BoxButton button, const std::function<void()>& meanwhile) {
        auto record = makeRecord<OKU_MESSAGE_BOX>();
        record.text = u"Tekst";
        record.title = u"Tytuł";
        record.style = style;
        QTimer::singleShot(0, core.get(), [&] {
            meanwhile();
            ASSERT_EQ(core->boxes.open().size(), 1);
            EXPECT_TRUE(core->boxes.answer(core->boxes.open().first().number, button));
        });
        OKU_WORD result = 0;
        inPlugin([&] { result = call(u"UI/MessageBox", wordOf(&record)); });
        return result;
    }
};

TEST_F(HeldPlugin, GivesTheBoxesButton) {
    start();
    EXPECT_EQ(hold(OKU_BOX_QUESTION, BoxButton::yes, [] {}), OKU_BUTTON_YES);
    EXPECT_EQ(hold(OKU_BOX_QUESTION, BoxButton::no, [] {}), OKU_BUTTON_NO);
    EXPECT_EQ(hold(OKU_BOX_ERROR, BoxButton::ok, [] {}), OKU_BUTTON_OK);
}

TEST_F(HeldPlugin, TakesNoButtonThatDoesNotFit) {
    start();
    hold(OKU_BOX_QUESTION, BoxButton::no, [&] {
        EXPECT_FALSE(core->boxes.answer(core->boxes.open().first().number, BoxButton::ok));
        EXPECT_FALSE(core->boxes.answer(99, BoxButton::no));
    });
}

TEST_F(HeldPlugin, HearsNothingWhileABoxIsOpen) {
    writeAccount({}, QStringLiteral("alice@example.org"));
    start();
    logIn();
    plugin().log.clear();
    std::string trace;
    auto record = makeRecord<OKU_TIMER_RECORD>();
    record.id = u"XMPP/Timer/1";
    record.interval = 1;
    record.handler = [](OKU_WORD, OKU_WORD, OKU_WORD context) -> OKU_WORD {
        *reinterpret_cast<std::string*>(context) += 't';
        return 0;
    };
    record.context = wordOf(&trace);
    call(u"OKU/Timer/Create", wordOf(&record));
    hold(OKU_BOX_QUESTION, BoxButton::yes, [&] {
        trace.clear();
        pass(30);  // ticks come due
        core->choices.set(entry(), Status::away, QStringLiteral("obiad"));
        core->queue.post({}, [&] { trace += '1'; });
        core->queue.post({}, [&] { trace += '2'; });
        pass(30);
        EXPECT_EQ(trace, "");
        EXPECT_TRUE(plugin().log.empty());
    });
    // Ticks go in from the event loop, behind whatever waited before them.
    ASSERT_TRUE(waitFor([&] { return trace.size() >= 3; })) << trace;
    call(u"OKU/Timer/Destroy", wordOf(u"XMPP/Timer/1"));
    EXPECT_TRUE(logged("status 4 obiad"));
    EXPECT_EQ(trace.substr(0, 3), "12t");
    EXPECT_LT(trace.size(), 30U) << "ticks that came due while the box was open count once: " << trace;
    EXPECT_EQ(plugin().deepest, 1);
}

TEST_F(HeldPlugin, LeavesNothingUndoneThatWasPostedBehindIt) {
    start();
    bool returned = false;
    bool late = false;
    auto record = makeRecord<OKU_MESSAGE_BOX>();
    record.style = OKU_BOX_QUESTION;
    const auto answerIt = [&] {
        for (const MessageBox& box : core->boxes.open()) core->boxes.answer(box.number, BoxButton::yes);
    };
    const auto post = [this](auto call) { QMetaObject::invokeMethod(core.get(), call, Qt::QueuedConnection); };
    QEventLoop loop;
    post([&] {
        inPlugin([&] { EXPECT_EQ(call(u"UI/MessageBox", wordOf(&record)), OKU_BUTTON_YES); });
        returned = true;
        loop.quit();
    });
    post(answerIt);
    QTimer::singleShot(300'000, core.get(), [&] {
        late = !returned;
        answerIt();
    });
    loop.exec();
    EXPECT_FALSE(late) << "it waited for something else to happen";
}

TEST_F(HeldPlugin, IsUnloadedOnlyAfterTheCallHasReturned) {
    writeAccount({}, QStringLiteral("alice@example.org"));
    start();
    bool returned = false;
    bool finished = false;
    QObject::connect(core.get(), &HostCore::finished, core.get(), [&] { finished = true; });
    plugin().onUnload = [&] { EXPECT_TRUE(returned); };
    auto record = makeRecord<OKU_MESSAGE_BOX>();
    record.style = OKU_BOX_QUESTION;
    QTimer::singleShot(0, core.get(), [&] { core->shutdown(); });
    inPlugin([&] {
        EXPECT_EQ(call(u"UI/MessageBox", wordOf(&record)), OKU_BUTTON_NO);
        returned = true;
    });
    EXPECT_TRUE(waitFor([&] { return finished; }));
    EXPECT_FALSE(core->running());
}

}  // namespace
}  // namespace oku::test
