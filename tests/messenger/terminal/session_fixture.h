// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A session on a scripted messenger, with a display that notes what it is told.
#pragma once

#include <gtest/gtest.h>
#include <QRegularExpression>

#include "messenger/core/texts.h"
#include "messenger/terminal/talk/session.h"
#include "tests/messenger/terminal/fake_messenger.h"

namespace oku::terminal::test {

inline const QString kMe = QStringLiteral("ala@localhost");

class SessionTest : public testing::Test {
protected:
    class NotingDisplay final : public Display {
    public:
        QStringList lines;
        bool over = false;
        int width = 80;
        int beside = 0;

        void appended(const LogEntry& entry) override {
            const QString who = entry.who.isEmpty() ? entry.mark : entry.who;
            lines.append(who.isEmpty() ? entry.text : who + u' ' + entry.text);
        }
        void changed() override {}
        int columns() const override { return width; }
        int logColumns() const override { return width - beside; }
        void ended() override { over = true; }
    };

    void SetUp() override {
        setLanguage(Language::English);
        messenger.accountList = {account("ala@localhost")};
        messenger.contactLists[kMe] = {contact("olek@localhost", "Olek", "Znajomi", Status::away),
                                       contact("ewa@localhost", "Ewa Żółć", "Praca"),
                                       contact("ola@localhost", "Ola", "Praca")};
        messenger.contactLists[kMe][0].resources = {resource("dom", Status::away, 5, "Zaraz wracam")};
        start({});
    }
    void TearDown() override { setLanguage(Language::Polish); }

    void start(SessionOptions options) {
        session.reset();
        options.startDirectory = QStringLiteral("/start");
        session = std::make_unique<Session>(messenger, display, options);
        reason = session->start();
        heard();
        messenger.calls.clear();
    }
    // What the display was told since the last time.
    std::string heard() { return std::exchange(display.lines, {}).join(u'\n').toStdString(); }
    // Types a line; gives what the messenger was asked for.
    std::string type(const char* line) {
        messenger.calls.clear();
        session->submit(QString::fromUtf8(line));
        return messenger.takeCalls().filter(QRegularExpression("^(?!settingValue)")).join(u'\n').toStdString();
    }
    void typing(const char* text) { session->typed(QString::fromUtf8(text)); }
    std::string typingCalls() { return messenger.takeCalls().filter("sendTyping").join(u'\n').toStdString(); }
    std::string status() { return lineText(session->view().status()).toStdString(); }

    FakeMessenger messenger;
    NotingDisplay display;
    std::unique_ptr<Session> session;
    QString reason;
};

}  // namespace oku::terminal::test
