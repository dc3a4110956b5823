// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Several threads that write to windows at once, while the messenger's own takes, forgets and goes.
#include "messenger/core/transfers/window_updates.h"

#include <gtest/gtest.h>
#include <atomic>
#include <map>
#include <QCoreApplication>
#include <thread>

#include "host/oku/transfer.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

constexpr std::uint64_t kLast = 3000;

/// What a download's thread does.
void writePosition(OKU_WORD window, std::uint64_t position) {
    auto record = makeRecord<OKU_FT_UPDATE_RECORD>();
    record.mask = OKU_FT_POSITION;
    record.position = record.positionAgain = position;
    WindowUpdates::handler()(wordOf(&record), 0, window);
}

void writeStatus(OKU_WORD window, const QString& text) {
    auto record = makeRecord<OKU_FT_UPDATE_RECORD>();
    record.mask = OKU_FT_STATUS_TEXT;
    record.status = widePointer(text);
    WindowUpdates::handler()(wordOf(&record), 0, window);
}

void download(OKU_WORD window) {
    for (std::uint64_t position = 1; position <= kLast; ++position) {
        writePosition(window, position);
        if (position % 7 == 0) writeStatus(window, QString::number(position));
    }
}

class WindowThreads : public testing::Test {
protected:
    /// Takes updates until this is true.
    template <typename Condition>
    static void takeUntil(Condition condition) {
        while (!condition()) QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    void take(const WindowUpdate& update) {
        EXPECT_EQ(std::this_thread::get_id(), own_);
        if (update.mask == OKU_FT_POSITION) {
            EXPECT_GE(update.position, positions[update.window]) << "in order";
            positions[update.window] = update.position;
        } else {
            EXPECT_LE(update.status.toULongLong(), positions[update.window]) << "after what was written before";
            texts[update.window] = update.status;
        }
    }
    std::unique_ptr<WindowUpdates> updates() {
        return std::make_unique<WindowUpdates>(queue, [this](const WindowUpdate& one) { take(one); });
    }

    PluginQueue queue;
    std::map<OKU_WORD, std::uint64_t> positions;
    std::map<OKU_WORD, QString> texts;

private:
    std::thread::id own_ = std::this_thread::get_id();
};

TEST_F(WindowThreads, WriteToTheirWindowsAtOnce) {
    const auto all = updates();
    std::thread first([] { download(1); });
    std::thread second([] { download(2); });
    takeUntil([&] { return positions[1] == kLast && positions[2] == kLast; });
    first.join();
    second.join();
    takeUntil([&] { return texts[1] == QStringLiteral("2996") && texts[2] == QStringLiteral("2996"); });
}

TEST_F(WindowThreads, WriteWhileTheMessengersOwnWritesToTheSameWindow) {
    const auto all = updates();
    std::atomic<bool> ended = false;
    std::thread worker([&] {
        download(1);
        ended = true;
    });
    while (!ended) writeStatus(1, QStringLiteral("0"));
    worker.join();
    all->handOver(1);
    EXPECT_EQ(positions[1], kLast);
}

TEST_F(WindowThreads, WriteToAWindowThatIsForgotten) {
    const auto all = updates();
    std::atomic<bool> ended = false;
    std::thread worker([&] {
        download(1);
        ended = true;
    });
    while (!ended) all->forget(1);
    worker.join();
    all->forget(1);
    QCoreApplication::processEvents();
    EXPECT_LE(positions[1], kLast);
}

TEST_F(WindowThreads, WriteWhileWhoeverTakesItComesAndGoes) {
    std::atomic<bool> ended = false;
    std::thread worker([&] {
        while (!ended) {
            writePosition(1, 1);
            writeStatus(1, QStringLiteral("0"));
        }
    });
    for (int round = 0; round < 300; ++round) {
        const auto all = updates();
        QCoreApplication::processEvents();
    }
    ended = true;
    worker.join();
}

}  // namespace
}  // namespace oku::test

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
