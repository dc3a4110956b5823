// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The question of a web site holds the plugin at somebody else's wish, so it does not wait for ever.
#include "tests/messenger/core/stage.h"

#include "host/oku/windows.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

class WebSiteQuestion : public Stage {
protected:
    WebSiteQuestion() {
        writeAccount({}, QStringLiteral("alice@example.org"));
        MessengerOptions given = options();
        given.alarms = [this](int milliseconds, std::function<void()> ring) {
            times.append(milliseconds);
            rings.push_back(std::move(ring));
            return std::make_unique<QObject>();
        };
        start(given);
        QObject::connect(&core->boxes, &MessageBoxes::opened, core.get(), [this](const MessageBox& box) {
            boxes.append(box);
            if (onOpened) onOpened(box);
        });
    }

    /// Opens a box of the plugin; gives the button.
    OKU_WORD box(const char16_t* title, std::uint32_t style) {
        auto record = makeRecord<OKU_MESSAGE_BOX>();
        record.title = title;
        record.text = u"Czy?";
        record.style = style;
        OKU_WORD button = 0;
        inPlugin([&] { button = call(u"UI/MessageBox", wordOf(&record)); });
        return button;
    }
    /// As if the time were over, from the event loop that the box runs.
    void letTimePass() {
        QMetaObject::invokeMethod(
            core.get(),
            [this] {
                for (const auto& ring : rings) ring();
            },
            Qt::QueuedConnection);
    }

    QList<MessageBox> boxes;
    std::function<void(const MessageBox&)> onOpened;
    QList<int> times;
    std::vector<std::function<void()>> rings;
};

TEST_F(WebSiteQuestion, SaysThatEverythingWaitsAndForHowLong) {
    onOpened = [this](const MessageBox& one) { core->boxes.answer(one.number, BoxButton::yes); };
    EXPECT_EQ(box(u"Autoryzacja OpenID", OKU_BOX_QUESTION), OKU_BUTTON_YES);
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_TRUE(boxes[0].holds);
    EXPECT_EQ(boxes[0].seconds, 60);
}

TEST_F(WebSiteQuestion, IsAnsweredWithNoWhenNobodyDoes) {
    onOpened = [this](const MessageBox&) { letTimePass(); };
    EXPECT_EQ(box(u"Autoryzacja OpenID", OKU_BOX_QUESTION), OKU_BUTTON_NO);
    EXPECT_EQ(times, (QList<int>{60000, 120000}));
    EXPECT_TRUE(core->boxes.open().isEmpty());
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(QStringLiteral("Autoryzacja OpenID")));
}

TEST_F(WebSiteQuestion, AnAnswerInTimeCounts) {
    onOpened = [this](const MessageBox& one) {
        QMetaObject::invokeMethod(
            core.get(), [this, one] { core->boxes.answer(one.number, BoxButton::yes); }, Qt::QueuedConnection);
    };
    EXPECT_EQ(box(u"Autoryzacja OpenID", OKU_BOX_QUESTION), OKU_BUTTON_YES);
    EXPECT_EQ(times, QList<int>{60000});
    for (const auto& ring : rings) ring();
    EXPECT_TRUE(notices.isEmpty()) << "a clock that rings too late changes nothing";
}

TEST_F(WebSiteQuestion, AfterANoTheNextOnesGetItUnaskedForAWhile) {
    onOpened = [this](const MessageBox& one) { core->boxes.answer(one.number, BoxButton::no); };
    for (int at = 0; at < 100; ++at) EXPECT_EQ(box(u"Autoryzacja OpenID", OKU_BOX_QUESTION), OKU_BUTTON_NO);
    EXPECT_EQ(boxes.size(), 1) << "a flood holds the plugin once";
    EXPECT_EQ(notices.size(), 1);
    EXPECT_EQ(times, QList<int>{120000});
    box(u"Rejestracja", OKU_BOX_QUESTION);
    EXPECT_EQ(boxes.size(), 2) << "other questions are asked";
    for (const auto& ring : std::exchange(rings, {})) ring();
    onOpened = [this](const MessageBox& one) { core->boxes.answer(one.number, BoxButton::yes); };
    for (int at = 0; at < 2; ++at) EXPECT_EQ(box(u"Autoryzacja OpenID", OKU_BOX_QUESTION), OKU_BUTTON_YES);
    EXPECT_EQ(boxes.size(), 4);
    EXPECT_EQ(notices.size(), 1);
}

TEST_F(WebSiteQuestion, OtherBoxesStayUntilThePersonAnswers) {
    onOpened = [this](const MessageBox& one) {
        core->boxes.answer(one.number, one.style == BoxStyle::question ? BoxButton::yes : BoxButton::ok);
    };
    EXPECT_EQ(box(u"Rejestracja", OKU_BOX_QUESTION), OKU_BUTTON_YES);
    EXPECT_EQ(box(u"Autoryzacja OpenID", OKU_BOX_INFORMATION), OKU_BUTTON_OK) << "a notice is no question";
    onOpened = nullptr;
    core->boxes.ask(QStringLiteral("Autoryzacja OpenID"), QStringLiteral("własne"), [](BoxButton) {});
    EXPECT_TRUE(times.isEmpty());
    ASSERT_EQ(boxes.size(), 3);
    EXPECT_TRUE(boxes[0].holds);
    EXPECT_FALSE(boxes[2].holds) << "nothing waits for a question of the messenger's own";
    for (const MessageBox& one : boxes) EXPECT_EQ(one.seconds, 0);
}

}  // namespace
}  // namespace oku::test
