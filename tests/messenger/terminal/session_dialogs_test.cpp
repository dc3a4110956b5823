// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin's windows as pages of numbered rows, and what is typed into them.
#include "tests/messenger/terminal/dialog_values.h"
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

class SessionDialogs : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        open(form());
        dialogs().lists[{7, 24}] = formRows();
    }
    FakeDialogs& dialogs() { return messenger.fakeDialogs(); }
    void open(const DialogWindow& window) { dialogs().open.insert(window.number, window); }
    // What was told together with what comes from the event loop.
    std::string heardLater() {
        QCoreApplication::processEvents();
        return heard();
    }
    std::string prompt() { return session->view().prompt().toStdString(); }
    void close(int number) {
        dialogs().open.remove(number);
        emit dialogs().closed(number);
        QCoreApplication::processEvents();
    }
    void enter() {
        type("/dialog 7");
        heard();
    }
};

TEST_F(SessionDialogs, ShowAWindowAsNumberedRows) {
    EXPECT_EQ(type("/dialog 7"), "");
    EXPECT_EQ(heard(),
              "Window 7: Rejestracja\n"
              "    Proszę wypełnić\n"
              "  1 Nick: ala\n"
              "  2 Hasło: •••\n"
              "  3 [x] Zgoda\n"
              "  4 Rodzaj: duży ▾\n"
              "  5 Usługi: 2 rows\n"
              "  6 <OK> !\n"
              "  7 <Później> (disabled)\n"
              "NUMBER chooses, NUMBER TEXT fills in, x closes, < leaves, ? help");
    EXPECT_EQ(prompt(), "Rejestracja> ");
    type("?");
    EXPECT_NE(heard().find("4.12 m"), std::string::npos);
}

TEST_F(SessionDialogs, ShowANameWhereThereIsNoText) {
    DialogWindow window;
    window.number = 8;
    window.title = QStringLiteral("Formularz");
    window.controls = {control(ControlKind::check, 25, "zgoda"), control(ControlKind::edit, 55, "numer", "1")};
    open(window);
    type("/dialog 8");
    const std::string page = heard();
    EXPECT_NE(page.find("  1 [ ] zgoda\n  2 numer: 1\n"), std::string::npos) << page;
}

TEST_F(SessionDialogs, CarryLinesToTheirControls) {
    enter();
    EXPECT_EQ(type("1 ola i ala"), "fill|7|21|ola i ala");
    EXPECT_EQ(heardLater(), "  1 Nick: ala") << "what has become of it is shown";
    EXPECT_EQ(type("1 \"\""), "fill|7|21|");
    EXPECT_EQ(type("1 \"!\""), "fill|7|21|!");
    EXPECT_EQ(type("1 !"), "pressReturn|7|21|");
    EXPECT_EQ(type("!"), "pressReturn|7|0|");
    EXPECT_EQ(type("3"), "setChecked|7|25|off");
    EXPECT_EQ(type("3 on"), "setChecked|7|25|on");
    EXPECT_EQ(type("4 #1"), "choose|7|23|0");
    EXPECT_EQ(type("4 2"), "choose|7|23|1");
    EXPECT_EQ(type("4 mały"), "choose|7|23|0");
    EXPECT_EQ(type("4 DUŻ"), "choose|7|23|1") << "the only one with this text";
    EXPECT_EQ(type("5.2"), "activateRow|7|24|12");
    EXPECT_EQ(type("5.1 m"), "openRowMenu|7|24|11");
    EXPECT_EQ(type("6"), "press|7|26|");
    EXPECT_EQ(type("x"), "closeWindow|7");
    EXPECT_EQ(type("ok"), "confirm|7");
    EXPECT_EQ(type("apply"), "apply|7");
    EXPECT_EQ(type("/dialog 7 6"), "press|7|26|");
}

TEST_F(SessionDialogs, RefuseWhatIsNotThereAndSendItToNobody) {
    type("/chat-with Olek");
    enter();
    for (const char* line :
         {"hello", "9", "0", "5.3", "5.x", "4 #3", "4 ogromny", "3 maybe", "5.1 n", "99999999999999999999"}) {
        EXPECT_EQ(type(line), "") << line;
        EXPECT_EQ(heard().substr(0, 1), "!") << line;
    }
    EXPECT_EQ(type("/dialog 9"), "");
    EXPECT_EQ(heard(), "! there is no open window 9");
    dialogs().open.clear();
}

TEST_F(SessionDialogs, AskForPasswordsWithoutShowingThem) {
    enter();
    EXPECT_EQ(type("2 jawnie"), "") << "it would stand on the screen";
    EXPECT_NE(heard(), "") << "and why it was not taken is told";
    ASSERT_TRUE(session->secret().wanted());
    EXPECT_EQ(prompt(), "Rejestracja: Hasło: ") << "no question of the messenger's own";
    EXPECT_EQ(type("nowe hasło"), "fill|7|22|nowe hasło");
    EXPECT_EQ(heardLater(), "  2 Hasło: •••");
    EXPECT_EQ(type("2 \"\""), "fill|7|22|") << "it can be emptied";
}

TEST_F(SessionDialogs, LeaveRoomBesideALongName) {
    dialogs().open[7].title = QStringLiteral("Okno ").repeated(100);
    dialogs().open[7].controls[2].name = QStringLiteral("Hasło ").repeated(100) + u':';
    enter();
    EXPECT_LT(session->view().prompt().size(), 60);
    type("2");
    EXPECT_LT(session->view().prompt().size(), 60);
}

TEST_F(SessionDialogs, SayHowToWriteWhereANumberAloneDoesNothing) {
    enter();
    type("1");
    EXPECT_EQ(heard(), "  1 Nick: ala\n1 TEXT changes it, 1 \"\" empties it");
    dialogs().open[7].controls[1].readOnly = true;
    type("1");
    EXPECT_EQ(heard(), "  1 Nick: ala (read only)");
    type("3 perhaps");
    EXPECT_EQ(heard(), "! 3 changes the mark, 3 on sets it, 3 off takes it away");
}

TEST_F(SessionDialogs, FindRowsAndChoicesByTheirText) {
    QList<DialogRow> rows;
    for (int number = 1; number <= 1000; ++number)
        rows.append(
            {number, QStringLiteral("usługa %1").arg(number), {{QStringLiteral("Typ:"), QStringLiteral("Bot")}}});
    dialogs().lists[{7, 24}] = rows;
    dialogs().open[7].controls[4].items = {QStringLiteral("Ala"), QStringLiteral("Ola"), QStringLiteral("Ewa")};
    enter();
    type("5 usługa 77");
    std::string shown = heard();
    EXPECT_NE(shown.find("  5.77 usługa 77 · Typ: Bot\n  5.770 usługa 770"), std::string::npos) << shown;
    EXPECT_EQ(shown.find("5.78 "), std::string::npos);
    EXPECT_NE(shown.find("5.1 m"), std::string::npos) << "how to open one";
    type("5 bot");
    EXPECT_NE(heard().find("40 of 1000 shown"), std::string::npos);
    type("+");
    EXPECT_NE(heard().find("5.41 usługa 41"), std::string::npos);
    type("5 #990");
    shown = heard();
    EXPECT_NE(shown.find("5.990 "), std::string::npos);
    EXPECT_EQ(shown.find("5.989 "), std::string::npos);
    type("5 nic takiego");
    EXPECT_NE(heard().find("there is no such thing here: nic takiego"), std::string::npos);
    EXPECT_EQ(type("5 #1001"), "");
    EXPECT_EQ(heard(), "! there is no item 5.1001 here");
    EXPECT_EQ(type("4 la"), "") << "two of them have it";
    EXPECT_EQ(heard(),
              "  4 Rodzaj: Ola ▾\n    #1 Ala\n  > #2 Ola\n4 #2 takes the second choice, 4 TEXT the one with this text");
}

TEST_F(SessionDialogs, ShowListsAndChoicesAPartAtATime) {
    QList<DialogRow> rows;
    for (int number = 1; number <= 100; ++number) rows.append({number, QStringLiteral("usługa %1").arg(number), {}});
    dialogs().lists[{7, 24}] = rows;
    enter();
    type("5");
    std::string shown = heard();
    EXPECT_NE(shown.find("5.1 usługa 1\n"), std::string::npos);
    EXPECT_NE(shown.find("5.40 usługa 40\n"), std::string::npos);
    EXPECT_EQ(shown.find("usługa 41"), std::string::npos);
    EXPECT_NE(shown.find("40 of 100 shown"), std::string::npos);
    type("+");
    EXPECT_NE(heard().find("5.41 usługa 41"), std::string::npos);
    type("+");
    EXPECT_NE(heard().find("5.100 usługa 100"), std::string::npos);
    type("+");
    EXPECT_EQ(heard(), "");
    type("-");
    EXPECT_NE(heard().find("5.41"), std::string::npos);
    type("4");
    EXPECT_EQ(heard(),
              "  4 Rodzaj: duży ▾\n    #1 mały\n  > #2 duży\n"
              "4 #2 takes the second choice, 4 TEXT the one with this text");
}

TEST_F(SessionDialogs, TellChangesTogetherAndAFillingListOnce) {
    dialogs().lists.clear();
    enter();
    dialogs().lists[{7, 24}] = formRows();
    dialogs().open[7].controls[1].text = QStringLiteral("nowa\nlinia\x1b[2J");
    emit dialogs().controlChanged(7, 21);
    emit dialogs().controlChanged(7, 21);
    EXPECT_EQ(heard(), "");
    EXPECT_EQ(heardLater(), "  1 Nick: nowa⏎linia�[2J");
    emit dialogs().controlChanged(7, 21);
    EXPECT_EQ(heardLater(), "") << "it was told so already";
    type("2");
    type("inne hasło");
    EXPECT_EQ(heardLater(), "  2 Hasło: •••") << "but the user gets an answer";
    for (const DialogRow& row : formRows()) emit dialogs().rowAdded(7, 24, row);
    EXPECT_EQ(heardLater(), "  5 Usługi: 2 rows");
    emit dialogs().rowAdded(7, 24, formRows()[0]);
    EXPECT_EQ(heardLater(), "");
    emit dialogs().changed(7);
    EXPECT_EQ(heardLater(), "") << "nothing has";
    dialogs().lists[{7, 24}].append(DialogRow{13, QStringLiteral("trzeci"), {}});
    emit dialogs().rowAdded(7, 24, dialogs().lists[{7, 24}].last());
    EXPECT_EQ(heardLater(), "") << "it was told already";
    dialogs().open[7].description = QStringLiteral("Gotowe\nNUMER");
    emit dialogs().changed(7);
    EXPECT_EQ(heardLater(), "    Gotowe\n    NUMER\n  5 Usługi: 3 rows") << "and how much there is by now";
    dialogs().open[7].takesInput = false;
    emit dialogs().changed(7);
    EXPECT_EQ(heardLater(), "this window waits for another one or for an answer");
    emit dialogs().refused(7, QStringLiteral("za późno"));
    EXPECT_EQ(heard(), "! za późno");
}

TEST_F(SessionDialogs, TakeOneItemOfAMenu) {
    enter();
    const QList<DialogMenuItem> items = {{1000, QStringLiteral("Przeglądaj"), true, true, false},
                                         {0, {}, true, false, true},
                                         {1001, QStringLiteral("Polecenia"), true, false, false}};
    emit dialogs().menuOpened(7, 24, items);
    EXPECT_EQ(heard(), "menu: NUMBER chooses, any other line closes it\n  1 Przeglądaj\n  2 Polecenia");
    EXPECT_EQ(type("2"), "takeFromMenu|7|1001|");
    EXPECT_EQ(type("6"), "press|7|26|") << "it is closed";
    emit dialogs().menuOpened(7, 24, items);
    heard();
    EXPECT_EQ(type("6"), "") << "no button is meant";
    emit dialogs().menuOpened(7, 24, items);
    heard();
    EXPECT_EQ(type("?"), "");
    EXPECT_EQ(heard(), "- menu closed");
    typing("6");
    emit dialogs().menuOpened(7, 24, items);
    EXPECT_EQ(type("1"), "") << "it was meant for the window";
    EXPECT_EQ(type("1"), "takeFromMenu|7|1000|");
}

TEST_F(SessionDialogs, LookAtWhatTheUserAskedForAndTakeNoLineElsewhere) {
    DialogWindow next = form();
    next.number = 8;
    next.title = QStringLiteral("Inne");
    open(next);
    emit dialogs().opened(8);
    EXPECT_EQ(heard(), "? window 8 opened: Inne. /dialog 8 goes into it");
    EXPECT_FALSE(session->dialogs().active());
    enter();
    emit dialogs().opened(8);
    EXPECT_EQ(prompt(), "Inne> ") << "it follows what is worked with";
    close(8);
    EXPECT_EQ(prompt(), "Rejestracja> ") << "and goes back";
    type("/chat-with Olek");
    enter();
    typing("1 ola");
    close(7);
    EXPECT_EQ(type("1 ola"), "") << "the line was meant for a window";
    EXPECT_FALSE(session->dialogs().active());
    EXPECT_EQ(type("hej").substr(0, 11), "sendMessage");
}

TEST_F(SessionDialogs, TakeNoLineThatWasTypedForAnotherWindow) {
    DialogWindow next = form();
    next.number = 8;
    next.title = QStringLiteral("Inne");
    open(next);
    enter();
    typing("1 dla siódmego");
    emit dialogs().opened(8);
    EXPECT_EQ(type("1 dla siódmego"), "");
    EXPECT_NE(heard().find("! the window had changed before"), std::string::npos);
    EXPECT_EQ(type("1 dla ósmego"), "fill|8|21|dla ósmego");
    typing("1 dla ósmego");
    close(8);
    EXPECT_EQ(type("1 dla ósmego"), "");
    EXPECT_EQ(type("1 dla siódmego"), "fill|7|21|dla siódmego");
    typing("1 a");
    close(7);
    typing("");
    EXPECT_FALSE(session->dialogs().active()) << "the line was taken back";
}

TEST_F(SessionDialogs, FollowACommandThatWasTypedKeyByKey) {
    for (const char* line : {"/options", "/menu 1", "/properties new"}) {
        messenger.fakeDialogs().options = {{QStringLiteral("a"), QStringLiteral("Pierwsze")}};
        MenuItem item;
        item.id = QStringLiteral("XMPP/InternalBrowser");
        messenger.menus[programMenu()] = {item};
        typing(line);
        type(line);
        emit dialogs().opened(7);
        EXPECT_TRUE(session->dialogs().active()) << line;
        type("<");
    }
    typing("/options");
    type("/options");
    typing("h");
    emit dialogs().opened(7);
    EXPECT_FALSE(session->dialogs().active()) << "something else is being written by now";
}

TEST_F(SessionDialogs, StayInTheConversationInWhichTheyAreLookedAt) {
    type("/chat-with Olek");
    type("/close");
    enter();
    type("/chat-with Olek");
    EXPECT_EQ(type("1 kawa?").substr(0, 11), "sendMessage");
    heard();
    dialogs().open[7].description = QStringLiteral("Gotowe");
    emit dialogs().changed(7);
    EXPECT_EQ(heardLater(), "") << "who is there is not interrupted";
    session->conversations().show(0);
    EXPECT_EQ(prompt(), "Rejestracja> ");
    EXPECT_EQ(type("1 ola"), "fill|7|21|ola");
}

TEST_F(SessionDialogs, GoTogetherWithoutShowingThoseBelow) {
    DialogWindow next = form();
    next.number = 8;
    open(next);
    enter();
    emit dialogs().opened(8);
    heard();
    for (const int number : {8, 7}) {
        dialogs().open.remove(number);
        emit dialogs().closed(number);
    }
    EXPECT_EQ(heardLater(), "- the window “Rejestracja” is closed");
    EXPECT_FALSE(session->dialogs().active());
}

TEST_F(SessionDialogs, TellWhatWasSaved) {
    enter();
    emit dialogs().applied(7);
    EXPECT_EQ(heard(), "- saved");
}

TEST_F(SessionDialogs, LeaveAWindowOpen) {
    enter();
    type("<");
    EXPECT_FALSE(session->dialogs().active());
    heard();
    type("/dialog");
    EXPECT_EQ(heard(), "  7. Rejestracja");
}

TEST_F(SessionDialogs, ShowWhatLiesInAWindowAsItsOwn) {
    DialogWindow page;
    page.number = 10;
    page.page = true;
    page.title = QStringLiteral("XMPP");
    page.children = {11};
    open(page);
    DialogWindow child;
    child.number = 11;
    child.parent = 10;
    child.child = true;
    child.controls = {control(ControlKind::separator, 6020, "", "Dane"),
                      control(ControlKind::edit, 7000, "Użytkownik:", "ala")};
    open(child);
    messenger.fakeDialogs().options = {{QStringLiteral("XMPP/Options/1"), QStringLiteral("XMPP")}};
    EXPECT_EQ(type("/options"), "openOptions|XMPP/Options/1");
    emit dialogs().opened(10);
    emit dialogs().opened(11);
    EXPECT_EQ(heardLater(),
              "Window 10: XMPP\n    ── Dane ──\n  1 Użytkownik: ala\n"
              "NUMBER chooses, NUMBER TEXT fills in, ok saves, x closes, < leaves, ? help");
    EXPECT_EQ(type("1 ola"), "fill|11|7000|ola");
    EXPECT_EQ(type("ok"), "confirm|10");
}

TEST_F(SessionDialogs, OpenAPageOfAContactOnceThePluginHasBeenAsked) {
    const QList<DialogPage> pages = {{QStringLiteral("a"), QStringLiteral("Właściwości")},
                                     {QStringLiteral("b"), QStringLiteral("Informacje")}};
    const auto told = [&](const char* jid, const QList<DialogPage>& which) {
        messenger.calls.clear();
        emit dialogs().propertyPagesTold(QStringLiteral("ala@localhost"), QString::fromLatin1(jid), which);
        return messenger.calls.join(u' ').toStdString();
    };
    EXPECT_EQ(type("/properties Olek"), "askPropertyPages|ala@localhost|olek@localhost");
    EXPECT_EQ(told("ewa@localhost", pages), "") << "somebody else was asked about";
    EXPECT_EQ(told("olek@localhost", pages), "openProperties|ala@localhost|olek@localhost|a");
    EXPECT_EQ(heard(), "there is also the page \"Informacje\": /properties olek@localhost 2");
    EXPECT_EQ(told("olek@localhost", pages), "") << "it is open";
    EXPECT_EQ(type("/properties Olek 2"), "askPropertyPages|ala@localhost|olek@localhost");
    EXPECT_EQ(told("olek@localhost", pages), "openProperties|ala@localhost|olek@localhost|b");
    EXPECT_EQ(heard(), "");
    type("/properties Olek 3");
    EXPECT_EQ(told("olek@localhost", pages), "");
    EXPECT_EQ(heard(), "! there is no such page");
    EXPECT_EQ(type("/properties Olek x"), "");
    EXPECT_EQ(heard(), "! there is no such page");
    type("/properties Olek");
    messenger.refusals.insert(QStringLiteral("openProperties"), QStringLiteral("teraz nie"));
    told("olek@localhost", {pages[0]});
    EXPECT_EQ(heard(), "! teraz nie");
}

TEST_F(SessionDialogs, TellWhatCanBeDoneWithAContact) {
    const auto item = [](const char* id, const char* caption) {
        MenuItem one;
        one.id = QString::fromLatin1(id);
        one.caption = QString::fromUtf8(caption);
        return one;
    };
    const QString me = QStringLiteral("ala@localhost");
    const QString olek = QStringLiteral("olek@localhost");
    EXPECT_EQ(type("/menu Olek"), "askContactMenu|ala@localhost|olek@localhost|list");
    emit messenger.windows().contactMenuTold(me, QStringLiteral("ewa@localhost"), {});
    EXPECT_EQ(heard(), "") << "somebody else was asked about";
    emit messenger.windows().contactMenuTold(
        me, olek, {item("OKU/Contact/Archive", "Archiwum"), item("OKU/Contact/Edit", "Edytuj"), item("X/Y", "Inne")});
    EXPECT_EQ(heard(), "Archiwum: /history olek@localhost\nEdytuj: /properties olek@localhost\nInne");
    type("/menu Olek");
    emit messenger.windows().contactMenuTold(me, olek, {});
    EXPECT_EQ(heard(), "the plugin has nothing for this contact");
    type("/chat-with Olek");
    heard();
    messenger.calls.clear();
    EXPECT_EQ(type("/menu Olek"), "askContactMenu|ala@localhost|olek@localhost|chat");
}

TEST_F(SessionDialogs, OpenPagesAndMenusByCommands) {
    messenger.fakeDialogs().options = {{QStringLiteral("a"), QStringLiteral("Pierwsze")},
                                       {QStringLiteral("b"), QStringLiteral("Drugie")}};
    EXPECT_EQ(type("/options"), "");
    EXPECT_EQ(heard(), "1. Pierwsze\n2. Drugie");
    EXPECT_EQ(type("/options 2"), "openOptions|b");
    type("/options 3");
    EXPECT_EQ(heard(), "! there is no such page");
    EXPECT_EQ(type("/properties new"), "openProperties|ala@localhost||");
    MenuItem item;
    item.id = QStringLiteral("XMPP/InternalBrowser");
    item.caption = QStringLiteral("Przeglądarka usług");
    messenger.menus[programMenu()] = {item};
    type("/menu");
    EXPECT_EQ(heard(), "1. Przeglądarka usług");
    EXPECT_EQ(type("/menu 1"), "activateMenu|XMPP/InternalBrowser");
    EXPECT_EQ(session->complete(QStringLiteral("/dialog "), 8).candidates, QStringList(QStringLiteral("7 ")));
}

TEST_F(SessionDialogs, TellNobodyThatALineIsTypedIntoAWindow) {
    type("/chat-with Olek");
    enter();
    messenger.calls.clear();
    typing("1 o");
    EXPECT_EQ(typingCalls(), "");
}

}  // namespace
}  // namespace oku::terminal::test
