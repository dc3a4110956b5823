// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The JSON mode on a scripted messenger.
#pragma once

#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <utility>

#include "messenger/core/texts.h"
#include "messenger/terminal/json/json_commands.h"
#include "messenger/terminal/json/json_mode.h"
#include "tests/messenger/terminal/fake_messenger.h"

namespace oku::terminal::test {

class JsonModeTest : public testing::Test {
protected:
    void SetUp() override {
        setLanguage(Language::English);
        messenger.accountList = {account("ala@localhost"), account("ola@localhost")};
        messenger.contactLists[QStringLiteral("ala@localhost")] = {
            contact("olek@localhost", "Olek", "Znajomi", Status::away)};
        messenger.contactLists[QStringLiteral("ala@localhost")][0].resources = {
            resource("dom", Status::away, 5, "Zaraz wracam ☕")};
        ASSERT_EQ(mode.start(), QString());
        events.clear();
        messenger.calls.clear();
    }
    void TearDown() override { setLanguage(Language::Polish); }

    void take(const QByteArray& line) {
        EXPECT_TRUE(line.endsWith('\n'));
        EXPECT_EQ(line.count('\n'), 1);
        const QJsonDocument document = QJsonDocument::fromJson(line);
        EXPECT_TRUE(document.isObject()) << line.constData();
        events.append(document.object());
    }

    // Feeds one line and gives the events that follow.
    QList<QJsonObject> say_(const QByteArray& line) {
        events.clear();
        mode.feed(line + '\n');
        return std::exchange(events, {});
    }

    // Feeds a command that must be answered with `ok` last and nothing else but what comes before.
    void expectOk(const QByteArray& line, const char* call) {
        messenger.calls.clear();
        const auto answers = say_(line);
        ASSERT_FALSE(answers.isEmpty()) << line.constData();
        EXPECT_EQ(answers.last().value("event"), "ok") << line.constData();
        EXPECT_EQ(messenger.takeCalls().join(u'\n').toStdString(), call) << line.constData();
    }

    // Feeds a line that must be answered with one `error` and reach nothing; gives the reason.
    std::string expectError(const QByteArray& line) {
        messenger.calls.clear();
        const auto answers = say_(line);
        EXPECT_EQ(answers.size(), 1) << line.constData();
        EXPECT_EQ(answers.value(0).value("event"), "error") << line.constData();
        EXPECT_TRUE(messenger.takeCalls().isEmpty()) << line.constData();
        const QString reason = answers.value(0).value("reason").toString();
        EXPECT_FALSE(reason.contains(u'\n'));
        return reason.toStdString();
    }

    // The event that the mode wrote last.
    QJsonObject last() const { return events.isEmpty() ? QJsonObject() : events.last(); }

    // The same as text; the events are forgotten.
    std::string told() {
        const QByteArray text = QJsonDocument(last()).toJson(QJsonDocument::Compact);
        events.clear();
        return text.toStdString();
    }

    FakeMessenger messenger;
    QList<QJsonObject> events;
    bool ended = false;
    JsonMode mode{messenger, [this](const QByteArray& line) { take(line); }, true, {}, [this] { ended = true; }};
};

}  // namespace oku::terminal::test
