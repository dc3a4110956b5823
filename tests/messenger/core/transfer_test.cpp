// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <thread>

#include "tests/messenger/core/transfer_stage.h"

namespace oku::test {
namespace {

class TransferTest : public TransferStage {
protected:
    OKU_WORD receiving(const QString& name = QStringLiteral("a.txt")) {
        OKU_WORD window = 0;
        answerNext(OfferReply::accept);
        inPlugin([&] {
            ask(name);
            window = openWindow();
        });
        return window;
    }
    void fromAnotherThread(const std::function<void()>& work) {
        std::thread worker(work);
        worker.join();
    }
};

TEST_F(TransferTest, IsToldFromItsBeginningToItsEnd) {
    const OKU_WORD window = receiving();
    ASSERT_NE(window, 0);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0].name, QStringLiteral("a.txt"));
    EXPECT_EQ(told[0].path, folder("bob@example.org/a.txt"));
    EXPECT_EQ(told[0].direction, Direction::in);
    EXPECT_EQ(told[0].size, 5);
    EXPECT_EQ(told[0].state, TransferState::negotiating);
    EXPECT_EQ(told[0].text, QStringLiteral("Negocjowanie sesji..."));
    inPlugin([&] {
        run(window, 5);
        writePosition(window, 5);
        writeStatus(window, u"Gotowe");
    });
    EXPECT_EQ(transfer(window).state, TransferState::running);
    EXPECT_EQ(transfer(window).position, 5);
    drop(window);
    EXPECT_EQ(told.last().state, TransferState::done);
    EXPECT_EQ(told.last().text, QStringLiteral("Gotowe"));
    writeStatus(window, u"za późno");
    EXPECT_EQ(transfer(window).text, QStringLiteral("Gotowe"));
}

TEST_F(TransferTest, EndsAsItWent) {
    const auto endOf = [&](const std::function<void(OKU_WORD)>& course) {
        const OKU_WORD window = receiving();
        inPlugin([&] { course(window); });
        drop(window);
        return transfer(window).state;
    };
    EXPECT_EQ(endOf([](OKU_WORD) {}), TransferState::failed) << "it never began";
    EXPECT_EQ(endOf([&](OKU_WORD window) {
                  run(window, 5);
                  write(window, OKU_FT_STATE, [](auto& record) { record.state = OKU_FT_FAILED; });
              }),
              TransferState::failed);
    EXPECT_EQ(endOf([&](OKU_WORD window) { run(window, 0); }), TransferState::done) << "a file without bytes";
    EXPECT_EQ(endOf([&](OKU_WORD window) {
                  run(window, 5);
                  writePosition(window, 4);
              }),
              TransferState::incomplete);
    EXPECT_EQ(endOf([&](OKU_WORD window) {
                  run(window, 5);
                  writePosition(window, 6);
              }),
              TransferState::done)
        << "more than was announced";
    EXPECT_EQ(endOf([&](OKU_WORD window) { run(window, static_cast<std::uint64_t>(-1)); }), TransferState::done)
        << "a size below zero is none";
}

TEST_F(TransferTest, TakesWhatAnotherThreadWritesFromTheEventLoop) {
    const OKU_WORD window = receiving();
    fromAnotherThread([&] {
        run(window, 9);
        for (std::uint64_t position = 1; position <= 9; ++position) writePosition(window, position);
        writeStatus(window, u"Przesyłanie...");
    });
    EXPECT_EQ(transfer(window).state, TransferState::negotiating) << "nothing is taken on the other thread";
    ASSERT_TRUE(waitFor([&] { return transfer(window).position == 9; }));
    EXPECT_EQ(transfer(window).text, QStringLiteral("Przesyłanie..."));
}

TEST_F(TransferTest, TakesWhatAnotherThreadWritesWhileThePluginIsHeld) {
    const OKU_WORD window = receiving();
    QTimer::singleShot(0, face.get(), [&] {
        fromAnotherThread([&] { writePosition(window, 3); });
        EXPECT_TRUE(waitFor([&] { return transfer(window).position == 3; }));
        face->answerOffer(face->openOffers().first().number, OfferReply::ignore);
    });
    inPlugin([&] { ask(QStringLiteral("b.txt")); });
    EXPECT_EQ(transfer(window).position, 3);
}

TEST_F(TransferTest, KeepsTheOrderOfBothThreads) {
    const OKU_WORD window = receiving();
    fromAnotherThread([&] {
        run(window, 9);
        writePosition(window, 9);
        writeStatus(window, u"Przesyłanie...");
    });
    inPlugin([&] {
        writeStatus(window, u"Odebrano");
        call(u"OKU/FTDropWindow", window);
    });
    EXPECT_EQ(transfer(window).state, TransferState::done);
    EXPECT_EQ(transfer(window).position, 9);
    EXPECT_EQ(transfer(window).text, QStringLiteral("Odebrano"));
}

TEST_F(TransferTest, DropsWhatWaitsForAWindowThatIsDropped) {
    const OKU_WORD window = receiving();
    fromAnotherThread([&] { writeStatus(window, u"Przesyłanie..."); });
    drop(window);
    told.clear();
    bool passed = false;
    QMetaObject::invokeMethod(
        face.get(), [&] { passed = true; }, Qt::QueuedConnection);
    ASSERT_TRUE(waitFor([&] { return passed; }));
    EXPECT_EQ(transfer(window).text, QStringLiteral("Negocjowanie sesji..."));
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(TransferTest, BearsWritersOfAHostThatHasGone) {
    const OKU_WORD window = receiving();
    face.reset();
    core.reset();
    fromAnotherThread([&] { writeStatus(window, u"za późno"); });
}

TEST_F(TransferTest, IsCancelledWhereThePluginAllowsIt) {
    const OKU_WORD window = receiving();
    const int number = transfer(window).number;
    EXPECT_NE(face->cancelTransfer(number), QString()) << "not offered yet";
    inPlugin([&] {
        write(window, OKU_FT_CANCEL, [](auto& record) { record.cancel = 1; });
        EXPECT_EQ(face->cancelTransfer(number), QString());
        EXPECT_TRUE(windowEvents.empty()) << "not while the plugin is on the stack";
    });
    EXPECT_EQ(windowEvents, std::vector<std::uint32_t>{OKU_FT_EVENT_CANCELLED});
    drop(window);
    EXPECT_EQ(transfer(window).state, TransferState::cancelled);
    EXPECT_NE(face->cancelTransfer(number), QString());
    EXPECT_NE(face->cancelTransfer(99), QString());
}

TEST_F(TransferTest, OneThatEndsBeforeItsCancellingArrivesIsLeftAlone) {
    const OKU_WORD window = receiving();
    inPlugin([&] {
        write(window, OKU_FT_CANCEL, [](auto& record) { record.cancel = 1; });
        face->cancelTransfer(transfer(window).number);
        call(u"OKU/FTDropWindow", window);
    });
    EXPECT_TRUE(windowEvents.empty());
}

TEST_F(TransferTest, EndsWithThePlugin) {
    const OKU_WORD window = receiving();
    inPlugin([&] { run(window, 9); });
    core->queue.post({}, [&] { core->unload(); });
    EXPECT_EQ(transfer(window).state, TransferState::failed);
    EXPECT_EQ(transfer(window).text, QStringLiteral("Przerwano"));
    fromAnotherThread([&] { writeStatus(window, u"za późno"); });
    core->queue.post({}, [&] { core->load(); });
}

TEST_F(TransferTest, ALimitedNumberOfEndedOnesIsRemembered) {
    const OKU_WORD running = receiving();
    for (int number = 0; number < 120; ++number) {
        OKU_WORD window = 0;
        inPlugin([&] { window = openWindow(); });
        drop(window);
    }
    EXPECT_EQ(face->transfers().size(), 101);
    EXPECT_EQ(face->transfers().first().number, running);
}

TEST_F(TransferTest, AWindowThatNobodyExpectedIsShownAllTheSame) {
    OKU_WORD window = 0;
    inPlugin([&] { window = openWindow(u"eve@example.org"); });
    EXPECT_EQ(transfer(window).contact, QStringLiteral("eve@example.org"));
    EXPECT_EQ(transfer(window).name, QString());
}

TEST_F(TransferTest, WhatWasAcceptedIsForgottenWithTheCall) {
    answerNext(OfferReply::accept);
    inPlugin([&] { ask(QStringLiteral("a.txt")); });
    OKU_WORD window = 0;
    inPlugin([&] { window = openWindow(); });
    EXPECT_EQ(transfer(window).name, QString()) << "it is another one's window";
}

}  // namespace
}  // namespace oku::test
