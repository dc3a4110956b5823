// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How a connection ends decides whether the plugin dials again; the whole way, from the server's words to the next
// dial.
#include "tests/messenger/real/stage.h"

namespace oku::test {
namespace {

class RealEnds : public RealStage {
protected:
    void endStream(const QByteArray& condition) {
        server.say("<stream:error><" + condition +
                   " xmlns='urn:ietf:params:xml:ns:xmpp-streams'/></stream:error>"
                   "</stream:stream>");
        server.hangUp();
    }
    bool dialledAgain(int milliseconds) {
        return waitFor([&] { return server.connections() > 1; }, milliseconds);
    }
};

TEST_F(RealEnds, AConflictLeavesTheAccountOffline) {
    logIn(true);
    endStream("conflict");
    ASSERT_TRUE(waitFor([&] { return entry().connection == ConnectionState::offline; }));
    EXPECT_FALSE(dialledAgain(4000)) << "or two clients with one resource throw each other out for ever";
    EXPECT_EQ(entry().status, Status::offline);
    EXPECT_TRUE(entry().reason.contains(QStringLiteral("zasob"))) << entry().reason.toStdString();
    core->choices.set(entry(), Status::online, {});
    EXPECT_TRUE(waitFor([&] { return entry().ready(); })) << "the user may take it back";
}

TEST_F(RealEnds, AnyOtherEndIsFollowedByAnotherDial) {
    logIn(true);
    endStream("system-shutdown");
    EXPECT_TRUE(dialledAgain(patience));
    EXPECT_TRUE(waitFor([&] { return entry().ready(); }));
}

TEST_F(RealEnds, TheUsersOwnEndIsNotFollowedByAnotherDial) {
    logIn(true);
    core->choices.set(entry(), Status::offline, {});
    ASSERT_TRUE(waitFor([&] { return entry().connection == ConnectionState::offline; }));
    EXPECT_FALSE(dialledAgain(4000));
}

TEST_F(RealEnds, AfterFailedLoginsTheUsersChoiceDialsAtOnce) {
    server.refusing = true;
    start(true);
    for (int attempt = 1; attempt <= 3; ++attempt) {
        core->choices.set(entry(), Status::online, {});
        ASSERT_TRUE(waitFor([&] { return server.connections() >= attempt; })) << attempt;
        ASSERT_TRUE(waitFor([&] { return entry().connection == ConnectionState::offline; }));
    }
    server.refusing = false;
    core->choices.set(entry(), Status::online, {});
    EXPECT_TRUE(waitFor([&] { return entry().ready(); }));
    EXPECT_TRUE(notices.filter(QStringLiteral("Nieudane logowania z rzędu")).isEmpty()) << "no dial was put off";
}

}  // namespace
}  // namespace oku::test
