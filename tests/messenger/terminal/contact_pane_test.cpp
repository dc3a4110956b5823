// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/contact_pane.h"

#include "messenger/terminal/screen/screen.h"
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

// A pane that hears what the session says of its contacts.
class ContactPaneTest : public SessionTest {
protected:
    class PaneDisplay final : public Display {
    public:
        ContactPane* pane = nullptr;

        void appended(const LogEntry&) override {}
        void changed() override {}
        int columns() const override { return 120; }
        void ended() override {}
        void contactTouched(const Peer& peer) override {
            if (pane != nullptr) pane->touch(peer);
        }
        void contactsReset() override {
            if (pane != nullptr) pane->reset();
        }
    };

    void SetUp() override {
        SessionTest::SetUp();
        begin();
    }

    void begin() {
        session = std::make_unique<Session>(messenger, paneDisplay, SessionOptions{});
        EXPECT_EQ(session->start(), "");
        pane = std::make_unique<ContactPane>(*session);
        paneDisplay.pane = pane.get();
    }

    std::string shown(int columns = 20, int rows = 12) {
        QStringList lines;
        for (const Line& line : pane->lines(columns, rows)) {
            EXPECT_LE(lineWidth(line), columns);
            QString text = lineText(line);
            while (text.endsWith(u' ')) text.chop(1);
            const bool chosen = !line.empty() && (line[0].style == Style::Bar || line[0].style == Style::BarAlert);
            lines.append((chosen ? "*" : "") + text);
        }
        return lines.join(u'\n').toStdString();
    }
    void press(KeyCode code) { outcome = pane->handle({code, {}}); }

    PaneDisplay paneDisplay;
    std::unique_ptr<ContactPane> pane;
    ContactPane::Outcome outcome;
};

TEST_F(ContactPaneTest, ShowsGroupsMarksAndWhatIsUnread) {
    EXPECT_EQ(shown(), "▾ Praca (0/2)\n ○ Ewa Żółć\n ○ Ola\n▾ Znajomi (1/1)\n ◐ Olek");
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "ola@localhost", "hej"));
    emit messenger.talk().typingReceived(kMe, "olek@localhost", true);
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "obcy@localhost", "hej"));
    type("/chat-with Olek");
    EXPECT_EQ(shown(),
              "▾ Praca (0/2)\n ○ Ola           (1)\n ○ Ewa Żółć\n▾ Znajomi (1/1)\n>◐ Olek            …\n"
              "▾ not on the … (0/1)\n ? obcy@localho… (1)");
    session->conversations().open({kMe, "obcy@localhost"});
    EXPECT_NE(shown().find(">? obcy@localhost"), std::string::npos) << shown();
    type("/close");
    EXPECT_EQ(shown().find("obcy"), std::string::npos);
}

TEST_F(ContactPaneTest, ForgetsTheContactsOfAnAccountThatIsRemoved) {
    EXPECT_NE(shown().find("Olek"), std::string::npos);
    messenger.accountList.clear();
    messenger.contactLists.clear();
    emit messenger.accounts().accountRemoved(kMe);
    EXPECT_EQ(shown().find("Olek"), std::string::npos) << shown();
    // Added once more it begins anew.
    emit messenger.roster().rosterComplete(kMe);
    for (const LogEntry* entry : session->log().entries())
        EXPECT_FALSE(entry->text.contains(QStringLiteral("Olek"))) << entry->text.toStdString();
}

TEST_F(ContactPaneTest, FollowsPresenceAndTheList) {
    shown();
    messenger.contactLists[kMe][2].status = Status::dnd;
    emit messenger.roster().contactChanged(kMe, messenger.contactLists[kMe][2]);
    EXPECT_EQ(shown(), "▾ Praca (1/2)\n ⊘ Ola\n ○ Ewa Żółć\n▾ Znajomi (1/1)\n ◐ Olek");
    messenger.contactLists[kMe].removeAt(2);
    emit messenger.roster().contactRemoved(kMe, "ola@localhost");
    EXPECT_EQ(shown(), "▾ Praca (0/1)\n ○ Ewa Żółć\n▾ Znajomi (1/1)\n ◐ Olek");
    messenger.contactLists[kMe].clear();
    emit messenger.roster().rosterComplete(kMe);
    EXPECT_EQ(shown(), "the contact list is\nempty; /add adds a\ncontact");
    pane->focus();
    press(KeyCode::Down);
    press(KeyCode::Enter);
    EXPECT_FALSE(outcome.opened);
}

TEST_F(ContactPaneTest, MovesByKeysAndOpens) {
    pane->focus();
    EXPECT_EQ(shown(), "*▾ Praca (0/2)\n ○ Ewa Żółć\n ○ Ola\n▾ Znajomi (1/1)\n ◐ Olek");
    press(KeyCode::Down);
    press(KeyCode::Down);
    EXPECT_NE(shown().find("* ○ Ola"), std::string::npos);
    // The contact moves, and the cursor with it.
    messenger.contactLists[kMe][2].status = Status::online;
    emit messenger.roster().contactChanged(kMe, messenger.contactLists[kMe][2]);
    EXPECT_NE(shown().find("* ● Ola"), std::string::npos);
    press(KeyCode::End);
    press(KeyCode::Enter);
    ASSERT_TRUE(outcome.opened);
    EXPECT_EQ(outcome.opened->jid, "olek@localhost");
    EXPECT_FALSE(pane->focused());
}

TEST_F(ContactPaneTest, FoldsGroups) {
    pane->focus();
    press(KeyCode::Down);
    outcome = pane->handle({KeyCode::Text, " "});
    EXPECT_EQ(shown(), "*▸ Praca (0/2)\n▾ Znajomi (1/1)\n ◐ Olek");
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "ola@localhost", "hej"));
    EXPECT_EQ(shown(), "*▸ Praca (0/2)    (1)\n▾ Znajomi (1/1)\n ◐ Olek");
    press(KeyCode::Enter);
    EXPECT_EQ(shown(), "*▾ Praca (0/2)\n ○ Ola           (1)\n ○ Ewa Żółć\n▾ Znajomi (1/1)\n ◐ Olek");
    press(KeyCode::Left);
    press(KeyCode::Right);
    EXPECT_TRUE(pane->focused());
    EXPECT_NE(shown().find("Ola"), std::string::npos);
}

TEST_F(ContactPaneTest, GivesOtherKeysBackToTheLine) {
    pane->focus();
    outcome = pane->handle({KeyCode::Text, "c"});
    EXPECT_FALSE(outcome.taken);
    EXPECT_FALSE(pane->focused());
    pane->focus();
    press(KeyCode::Escape);
    EXPECT_TRUE(outcome.taken);
    EXPECT_FALSE(pane->focused());
}

TEST_F(ContactPaneTest, ScrollsWithTheCursorAndTheConversation) {
    for (int number = 0; number < 50; ++number) {
        const QByteArray name = "k" + QByteArray::number(number).rightJustified(2, '0');
        messenger.contactLists[kMe].append(contact(name + "@localhost", name, "Znajomi"));
    }
    pane->reset();
    EXPECT_EQ(shown(20, 5), "▾ Praca (0/2)\n ○ Ewa Żółć\n ○ Ola\n▾ Znajomi (1/51)\n ◐ Olek");
    pane->focus();
    press(KeyCode::PageDown);
    press(KeyCode::PageDown);
    EXPECT_EQ(shown(20, 5), " ◐ Olek\n ○ k00\n ○ k01\n ○ k02\n* ○ k03");
    press(KeyCode::Up);
    EXPECT_EQ(shown(20, 5), " ◐ Olek\n ○ k00\n ○ k01\n* ○ k02\n ○ k03") << "what is seen stays";
    press(KeyCode::Home);
    EXPECT_EQ(shown(20, 3), "*▾ Praca (0/2)\n ○ Ewa Żółć\n ○ Ola");
    pane->leave();
    session->conversations().open({kMe, "k49@localhost"});
    EXPECT_EQ(shown(20, 3), " ○ k47\n ○ k48\n>○ k49");
}

TEST_F(ContactPaneTest, ShowsNamesOfAnyScriptInItsWidth) {
    int number = 0;
    for (const char* name :
         {"李梅李梅李梅李梅李梅", "👩‍👩‍👧🦆👍🏽🇵🇱", "אברהם בן דוד הלוי ממשפחה ארוכה",
          "محمد‏ عبد", "z̷̧̢̛", "Bardzo Długie Imię I Nazwisko", "a\u202Eb\x1b[2J"})
        messenger.contactLists[kMe].append(
            contact("x" + QByteArray::number(++number) + "@l", name, name, Status::online));
    pane->reset();
    for (int columns = 1; columns < 40; ++columns) {
        const QString text = QString::fromStdString(shown(columns, 30));
        EXPECT_FALSE(text.contains(u'\x1b'));
    }
    for (int width : {40, 63, 64, 72, 80, 100, 120, 200}) {
        ScreenContent content;
        content.paneColumns = pane->columnsOf(width);
        if (content.paneColumns > 0) content.pane = pane->lines(content.paneColumns, 20);
        LineEditor editor;
        for (const Line& row : composeFrame(content, editor, {width, 23}).rows) EXPECT_LE(lineWidth(row), width);
    }
}

TEST_F(ContactPaneTest, TakesItsPlaceByTheScreenAndTheWish) {
    const auto columns = [this] {
        QStringList result;
        for (const int width : {40, 64, 99, 100, 200}) result.append(QString::number(pane->columnsOf(width)));
        return result.join(u' ').toStdString();
    };
    EXPECT_EQ(columns(), "0 0 0 25 32");
    EXPECT_EQ(type("/contacts on"), "setSetting|ala@localhost|OKU/ContactList|int|1");
    EXPECT_EQ(columns(), "0 18 24 25 32");
    EXPECT_EQ(type("/contacts off"), "setSetting|ala@localhost|OKU/ContactList|int|0");
    EXPECT_EQ(columns(), "0 0 0 0 0");
    pane->focus();
    EXPECT_EQ(columns(), "40 18 24 25 32") << "in place of the log where there is no room for both";
    EXPECT_EQ(type("/contacts online"), "setSetting|ala@localhost|OKU/ReachableOnly|int|1");
    EXPECT_EQ(shown(), "*▾ Znajomi (1/1)\n ◐ Olek");
    messenger.contactLists[kMe][0].status = Status::offline;
    emit messenger.roster().contactChanged(kMe, messenger.contactLists[kMe][0]);
    EXPECT_EQ(shown(), "no contact fits");
    begin();
    EXPECT_EQ(columns(), "0 0 0 0 0") << "as it was left";
    EXPECT_TRUE(session->contactView().reachableOnly());
    EXPECT_EQ(type("/contacts all"), "setSetting|ala@localhost|OKU/ReachableOnly|int|0");
    EXPECT_EQ(type("/contacts"), "");
}

}  // namespace
}  // namespace oku::terminal::test
