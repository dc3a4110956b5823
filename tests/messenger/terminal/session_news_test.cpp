// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Tunes, moods, places, mail and the questions of web sites in the interactive program.
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

class SessionNewsTest : public SessionTest {
protected:
    void change(QString Contact::*field, const char* text, Status status = Status::away) {
        Contact& olek = messenger.contactLists[kMe][0];
        olek.*field = QString::fromUtf8(text);
        olek.status = status;
        emit messenger.roster().contactChanged(kMe, olek);
    }
    static Popup mail(int number) {
        return {number, PopupKind::mail, QStringLiteral("New mail"), QStringLiteral("Unread: 1"), {}, false, true};
    }
    QStringList completions(const char* text) {
        const QString line = QString::fromUtf8(text);
        return session->complete(line, line.size()).candidates;
    }
};

TEST_F(SessionNewsTest, TellsAContactsTuneAndMoodOnce) {
    change(&Contact::tune, "Artist: A\nTitle: T");
    EXPECT_EQ(heard(), "- Olek listens to: Artist: A, Title: T");
    change(&Contact::mood, "Mood: happy");
    EXPECT_EQ(heard(), "- Olek shows a mood: Mood: happy");
    change(&Contact::mood, "Mood: happy");
    EXPECT_EQ(heard(), "");
    change(&Contact::tune, "");
    EXPECT_EQ(heard(), "- Olek listens to nothing any more");
    change(&Contact::mood, "", Status::offline);
    EXPECT_EQ(heard(), "") << "who is gone tells nothing, of course";
}

TEST_F(SessionNewsTest, ShowsTuneAndMoodWithTheContact) {
    change(&Contact::tune, "Artist: A\nTitle: T");
    change(&Contact::mood, "Mood: happy\x1b[31m");
    heard();
    type("/roster Olek");
    const std::string list = heard();
    EXPECT_NE(list.find("      Artist: A, Title: T\n"), std::string::npos) << list;
    EXPECT_NE(list.find("      Mood: happy"), std::string::npos) << list;
    EXPECT_EQ(list.find('\x1b'), std::string::npos);
    type("/chat-with Olek");
    const std::string title = lineText(session->view().title()).toStdString();
    EXPECT_NE(title.find("— Artist: A, Title: T — Mood: happy"), std::string::npos) << title;
}

TEST_F(SessionNewsTest, TellsPlacesAndWhatTheOwnAccountPublishes) {
    NewsFace& news = messenger.news();
    const QString olek = QStringLiteral("olek@localhost");
    emit news.locationReceived(kMe, olek, {{"locality", "Łódź"}, {"country", "Polska"}});
    EXPECT_EQ(heard(), "- Olek shows a place: country Polska, locality Łódź");
    emit news.locationReceived(kMe, olek, {});
    EXPECT_EQ(heard(), "- Olek shows no place any more");
    emit news.tuneReceived(kMe, olek, {"A", "T", {}, {}, {}, {}});
    emit news.moodReceived(kMe, olek, {"happy", {}});
    EXPECT_EQ(heard(), "") << "these stand with the contact";
    emit news.tuneReceived(kMe, kMe, {"A", "T", "S", "3", "u", "9"});
    emit news.moodReceived(kMe, kMe, {"happy", "because"});
    emit news.locationReceived(kMe, kMe, {{"lat", "1"}});
    EXPECT_EQ(heard(),
              "- contacts see what you listen to: A — T — S\n- contacts see your mood: happy — because\n"
              "- contacts see where you are: lat 1");
    emit news.tuneReceived(kMe, kMe, {});
    emit news.moodReceived(kMe, kMe, {});
    emit news.locationReceived(kMe, kMe, {});
    EXPECT_EQ(heard(),
              "- contacts do not see any more what you listen to\n- contacts do not see your mood any more\n"
              "- contacts do not see any more where you are");
}

TEST_F(SessionNewsTest, PublishesAndTakesBack) {
    EXPECT_EQ(type("/mood happy because <it> is"), "publishMood|ala@localhost|happy|because <it> is");
    EXPECT_EQ(heard(), "- sent to the server, for the contacts");
    EXPECT_EQ(type("/mood in_love"), "publishMood|ala@localhost|in_love|");
    heard();
    EXPECT_EQ(type("/mood off"), "publishMood|ala@localhost||");
    EXPECT_EQ(heard(), "- sent to the server: it is taken back");
    EXPECT_EQ(type("/tune \"Long title\" Artist An album"), "publishTune|ala@localhost|Artist|Long title|An album|||");
    EXPECT_EQ(type("/tune Off Artist"), "publishTune|ala@localhost|Artist|Off||||");
    EXPECT_EQ(type("/tune off"), "publishTune|ala@localhost||||||");
    EXPECT_EQ(type("/location locality \"Nowy Sącz\" country Polska"),
              "publishLocation|ala@localhost|country=Polska|locality=Nowy Sącz");
    EXPECT_EQ(type("/location off"), "publishLocation|ala@localhost");
}

TEST_F(SessionNewsTest, RefusesWhatIsHalf) {
    for (const char* line : {"/mood", "/mood off really", "/tune", "/location", "/location lat", "/mail now"}) {
        EXPECT_EQ(type(line), "") << line;
        EXPECT_NE(heard().find("usage:"), std::string::npos) << line;
    }
    messenger.refusals["publishMood"] = "no such mood";
    type("/mood sleepless");
    EXPECT_EQ(heard(), "! no such mood");
}

TEST_F(SessionNewsTest, ShowsNewsOfMailAndOpensItsPage) {
    type("/mail");
    EXPECT_EQ(heard(), "! there is no news of mail");
    messenger.popupList = {mail(3), mail(4), {5, PopupKind::other, "x", "y", {}, false, true}};
    emit messenger.news().popupShown(mail(4));
    EXPECT_EQ(heard(), "! New mail\nUnread: 1\n/mail opens the mail page, /mail off closes the notice");
    EXPECT_EQ(type("/mail"), "openPopup|4") << "the newest one of mail";
    EXPECT_EQ(type("/mail off"), "closePopup|4");
    emit messenger.news().popupShown({6, PopupKind::tune, "Olek listens:", "T", {}, false, false});
    emit messenger.news().popupShown({7, PopupKind::mood, "Olek:", "happy", {}, false, false});
    EXPECT_EQ(heard(), "") << "told with the contact";
    emit messenger.news().popupShown({8, PopupKind::other, "Title", "text", {}, false, false});
    EXPECT_EQ(heard(), "! Title\ntext");
}

TEST_F(SessionNewsTest, SaysOfAQuestionThatHoldsThePluginWhatWaits) {
    MessageBox box{7, QStringLiteral("Allow?"), QStringLiteral("Web site"), BoxStyle::question, true, 60};
    emit messenger.windows().boxOpened(box);
    EXPECT_EQ(heard(),
              "? Web site: Allow?\nanswer: /answer 7 yes or /answer 7 no\n"
              "until there is an answer, everything else waits\nafter 60 s without an answer it is: no");
    box.holds = false;
    box.seconds = 0;
    emit messenger.windows().boxOpened(box);
    EXPECT_EQ(heard(), "? Web site: Allow?\nanswer: /answer 7 yes or /answer 7 no");
}

TEST_F(SessionNewsTest, CompletesMoodsAndFields) {
    EXPECT_EQ(completions("/mood in_"), (QStringList{"in_awe ", "in_love "}));
    EXPECT_EQ(completions("/mood happy in_"), QStringList());
    EXPECT_EQ(completions("/location loc"), QStringList{"locality "});
    EXPECT_EQ(completions("/location locality loc"), QStringList()) << "a value";
    EXPECT_EQ(completions("/location locality Łódź count"), (QStringList{"country ", "countrycode "}));
    EXPECT_EQ(completions("/tune of"), QStringList{"off "});
    EXPECT_EQ(completions("/mail o"), QStringList{"off "});
}

}  // namespace
}  // namespace oku::terminal::test
