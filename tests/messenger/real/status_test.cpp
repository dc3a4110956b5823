// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A status chosen while a login is under way, in each way in which a person can choose one. The plugin would drop the
// attempt, and dial no more.
#include "messenger/core/windows_on_host.h"
#include "tests/messenger/real/stage.h"

namespace oku::test {
namespace {

class ChosenDuringALogin : public RealStage {
protected:
    void beginLogin() {
        start(true);
        core->choices.set(entry(), Status::online, QStringLiteral("opis"));
        ASSERT_TRUE(entry().loggingIn());
    }
    void expectOneLoginWith(Status status) {
        EXPECT_TRUE(waitFor([&] { return entry().ready() && entry().status == status; }));
        EXPECT_EQ(server.connections(), 1);
        EXPECT_FALSE(states.contains(QStringLiteral("offline"))) << states.join(u' ').toStdString();
        settle();
        EXPECT_TRUE(server.heardOf("<show>" + statusWord(status).toLatin1() + "</show>"));
    }
    /// Of what the server heard.
    QByteArray lastShown() const {
        QByteArray shown;
        for (const QByteArray& one : server.heard()) {
            const qsizetype at = one.indexOf("<show>");
            if (at >= 0) shown = one.mid(at, one.indexOf("</show>") + 7 - at);
        }
        return shown;
    }
    bool activate(const QString& id) { return windowsOnHost(*core)->activateMenu(id).isEmpty(); }
    QString menuItem(const char* word) const {
        return QString::fromStdU16String(entry().service(u"Presence")) + u'/' + QString::fromLatin1(word);
    }
};

TEST_F(ChosenDuringALogin, ByCommand) {
    beginLogin();
    core->choices.set(entry(), Status::away, QStringLiteral("obiad"));
    expectOneLoginWith(Status::away);
    EXPECT_EQ(entry().description, QStringLiteral("obiad"));
}

TEST_F(ChosenDuringALogin, InTheMenu) {
    beginLogin();
    EXPECT_TRUE(activate(menuItem("DND")));
    expectOneLoginWith(Status::dnd);
}

TEST_F(ChosenDuringALogin, InTheStatusWindow) {
    beginLogin();
    EXPECT_EQ(windowsOnHost(*core)->confirmStatusWindow(entry().jid(), Status::xa, QStringLiteral("jutro"), true),
              QString());
    expectOneLoginWith(Status::xa);
    EXPECT_EQ(entry().description, QStringLiteral("jutro"));
    EXPECT_EQ(entry().settings->number(QStringLiteral("desc/Protect"), 0), 1);
}

TEST_F(ChosenDuringALogin, TheLastOneCounts) {
    beginLogin();
    EXPECT_TRUE(activate(menuItem("DND")));
    core->choices.set(entry(), Status::chat, {});
    EXPECT_TRUE(activate(menuItem("Away")));
    expectOneLoginWith(Status::away);
    EXPECT_FALSE(server.heardOf("<show>dnd</show>"));
    EXPECT_FALSE(server.heardOf("<show>chat</show>"));
}

TEST_F(ChosenDuringALogin, AfterItTheLastOneCountsAlsoWhileThePluginIsHeld) {
    logIn(true);
    const auto inTheMenu = [&] { EXPECT_TRUE(activate(menuItem("DND"))); };
    const auto inTheWindow = [&] {
        EXPECT_EQ(windowsOnHost(*core)->confirmStatusWindow(entry().jid(), Status::xa, {}, false), QString());
    };
    for (const std::function<void()>& first : {std::function<void()>(inTheMenu), std::function<void()>(inTheWindow)}) {
        server.clear();
        core->queue.post({}, [&] {
            first();
            core->choices.set(entry(), Status::chat, {});
        });
        settle();
        EXPECT_EQ(lastShown(), "<show>chat</show>");
        EXPECT_EQ(entry().status, Status::chat);
    }
}

TEST_F(ChosenDuringALogin, OfflineInTheMenuEndsItAtOnce) {
    beginLogin();
    EXPECT_TRUE(activate(menuItem("Unavailable")));
    EXPECT_TRUE(waitFor([&] { return entry().connection == ConnectionState::offline; }));
    EXPECT_FALSE(server.heardOf("<auth"));
}

TEST_F(ChosenDuringALogin, WhatChoosesNoStatusIsCarriedOutAtOnce) {
    beginLogin();
    bool shown = false;
    QObject::connect(&core->statusWindows, &StatusWindows::requested, core.get(), [&] { shown = true; });
    EXPECT_TRUE(activate(menuItem("Descr")));
    QCoreApplication::sendPostedEvents(&core->menus, QEvent::MetaCall);
    EXPECT_TRUE(shown);
    EXPECT_FALSE(activate(menuItem("None")));
    EXPECT_TRUE(waitFor([&] { return entry().ready(); }));
}

TEST_F(ChosenDuringALogin, AfterItTheMenuCountsAtOnce) {
    logIn(true);
    EXPECT_TRUE(activate(menuItem("Away")));
    EXPECT_EQ(entry().status, Status::away);
}

}  // namespace
}  // namespace oku::test
