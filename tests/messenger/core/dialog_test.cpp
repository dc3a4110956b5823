// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Windows of the plugin: what the host keeps of them, and what the user does in them.
#include <limits>

#include "tests/messenger/core/dialog_stage.h"

namespace oku::test {
namespace {

using Dialogs = DialogStage;

TEST_F(Dialogs, ComeWholeAndAreToldWhenTheyAreShown) {
    Controls controls;
    controls.add(OKU_CONTROL_LABEL, 0xFFFFFFFF, u"Adres:");
    controls.add(OKU_CONTROL_EDIT, 10, u"example.org").flags = OKU_CONTROL_KEYS;
    auto& choice = controls.add(OKU_CONTROL_DROP_DOWN, 11);
    const char16_t* items[] = {u"raz", u"dwa"};
    choice.items = items;
    choice.itemCount = 2;
    choice.selection = 1;
    choice.name = u"Który";
    controls.add(OKU_CONTROL_TEXT, 12, u"a\r\nb").flags = OKU_CONTROL_READ_ONLY;
    controls.add(OKU_CONTROL_BUTTON, 13, u"Prze&gląd && reszta").flags = OKU_CONTROL_DEFAULT | OKU_CONTROL_DISABLED;
    controls.add(77, 14, u"a kind of tomorrow");
    const OKU_WORD handle = open(controls);
    ASSERT_NE(handle, 0U);
    const int number = static_cast<int>(handle);
    EXPECT_TRUE(face->windows().isEmpty());
    EXPECT_FALSE(face->window(number));
    EXPECT_EQ(told(), "");
    call(u"UI/WindowShow", handle, 1);
    EXPECT_EQ(told(), "opened" + std::to_string(number));
    const DialogWindow window = *face->window(number);
    EXPECT_EQ(window.title, QStringLiteral("Okno"));
    ASSERT_EQ(window.controls.size(), 5) << "what is not known is left out";
    EXPECT_TRUE(window.controls[0].namesNext);
    EXPECT_EQ(window.controls[1].name, QStringLiteral("Adres:"));
    EXPECT_EQ(window.controls[2].name, QStringLiteral("Który"));
    EXPECT_EQ(window.controls[2].items, (QStringList{QStringLiteral("raz"), QStringLiteral("dwa")}));
    EXPECT_EQ(window.controls[2].selection, 1);
    EXPECT_EQ(window.controls[3].text, QStringLiteral("a\nb"));
    EXPECT_TRUE(window.controls[3].readOnly);
    EXPECT_EQ(window.controls[4].text, QStringLiteral("Przegląd & reszta"));
    EXPECT_TRUE(window.controls[4].isDefault);
    EXPECT_FALSE(window.controls[4].enabled);
    call(u"UI/WindowShow", handle, 0);
    EXPECT_EQ(told(), "closed" + std::to_string(number));
    call(u"UI/WindowDestroy", handle);
    EXPECT_EQ(told(), "") << "it was not seen any more";
    EXPECT_EQ(core->dialogs.count(), 0U);
}

TEST_F(Dialogs, TakeTheirNamesFromLabelsThatSaySomething) {
    Controls controls;
    controls.add(OKU_CONTROL_LABEL, 0xFFFFFFFF);
    controls.add(OKU_CONTROL_EDIT, 10).name = u"numer";
    controls.add(OKU_CONTROL_LABEL, 0xFFFFFFFF, u"Hasło:");
    controls.add(OKU_CONTROL_PASSWORD, 11).name = u"haslo";
    controls.add(OKU_CONTROL_CHECK, 12).name = u"zgoda";
    const int window = openSeen(controls);
    EXPECT_EQ(face->control(window, 10)->name, QStringLiteral("numer"));
    EXPECT_EQ(face->control(window, 11)->name, QStringLiteral("Hasło:"));
    EXPECT_EQ(face->control(window, 12)->name, QStringLiteral("zgoda"));
    EXPECT_EQ(face->control(window, 12)->text, QString());
}

TEST_F(Dialogs, KeepTheirNamesWhenALabelIsEmptied) {
    Controls controls;
    controls.add(OKU_CONTROL_LABEL, 9);
    controls.add(OKU_CONTROL_EDIT, 10).name = u"odpowiedź";
    const int window = openSeen(controls);
    const auto handle = static_cast<OKU_WORD>(window);
    EXPECT_EQ(set(handle, 9, OKU_VALUE_TEXT, 0, u""), 1U);
    EXPECT_EQ(face->control(window, 10)->name, QStringLiteral("odpowiedź"));
    EXPECT_EQ(set(handle, 9, OKU_VALUE_TEXT, 0, u"Hasło:"), 1U);
    EXPECT_EQ(face->control(window, 10)->name, QStringLiteral("Hasło:"));
    EXPECT_EQ(set(handle, 9, OKU_VALUE_TEXT, 0, u""), 1U);
    EXPECT_EQ(face->control(window, 9)->text, QString());
    EXPECT_EQ(face->control(window, 10)->name, QStringLiteral("Hasło:"));
}

TEST_F(Dialogs, KeepTheValuesThatThePluginAsksFor) {
    Controls controls;
    controls.add(OKU_CONTROL_EDIT, 10, u"stary");
    controls.add(OKU_CONTROL_TEXT, 11);
    controls.add(OKU_CONTROL_CHECK, 12, u"Znak");
    controls.add(OKU_CONTROL_DROP_DOWN, 13);
    controls.add(OKU_CONTROL_EDIT_DROP_DOWN, 14);
    const int window = openSeen(controls);
    const auto handle = static_cast<OKU_WORD>(window);
    for (const char16_t* item : {u"a", u"b", u"c"}) {
        EXPECT_EQ(set(handle, 13, OKU_VALUE_ADD_ITEM, 0, item), 1U);
        EXPECT_EQ(set(handle, 14, OKU_VALUE_ADD_ITEM, 0, item), 1U);
    }
    EXPECT_EQ(face->fill(window, 10, QStringLiteral("nowy\r\ndalej\ni dalej")), QString());
    EXPECT_EQ(face->fill(window, 11, QStringLiteral("raz\ndwa")), QString());
    EXPECT_EQ(face->setChecked(window, 12, true), QString());
    EXPECT_EQ(face->choose(window, 13, 2), QString());
    EXPECT_EQ(face->choose(window, 14, 1), QString());
    const std::string w = std::to_string(window);
    EXPECT_EQ(heard(), "2:" + w + "/10/0 2:" + w + "/11/0 1:" + w + "/12/0 2:" + w + "/13/0 2:" + w + "/14/0");
    EXPECT_EQ(text(handle, 10), u"nowy dalej i dalej");
    EXPECT_EQ(text(handle, 11), u"raz\r\ndwa");
    EXPECT_EQ(number(handle, 12, OKU_VALUE_CHECKED), 1);
    EXPECT_EQ(text(handle, 13), u"c");
    EXPECT_EQ(number(handle, 13, OKU_VALUE_SELECTION), 2);
    EXPECT_EQ(text(handle, 14), u"b");
    EXPECT_EQ(face->fill(window, 14, QStringLiteral("własne")), QString());
    heard();
    EXPECT_EQ(number(handle, 14, OKU_VALUE_SELECTION), -1);
    EXPECT_EQ(text(handle, 14), u"własne");
    EXPECT_EQ(face->choose(window, 14, 1), QString());
    heard();
    EXPECT_EQ(number(handle, 14, OKU_VALUE_SELECTION), 1);
    set(handle, 14, OKU_VALUE_TEXT, 0, u"gg.example.org");
    EXPECT_EQ(text(handle, 14), u"gg.example.org");
    EXPECT_EQ(number(handle, 14, OKU_VALUE_SELECTION), -1) << "its text is none of the items";
    set(handle, 13, OKU_VALUE_CLEAR_ITEMS, 0);
    EXPECT_EQ(text(handle, 13), u"");
    EXPECT_EQ(number(handle, 13, OKU_VALUE_SELECTION), -1);
    EXPECT_EQ(heard(), "") << "what the plugin sets is not told back";
}

TEST_F(Dialogs, RefuseWhatCannotBeDone) {
    Controls controls;
    controls.add(OKU_CONTROL_EDIT, 10).flags = OKU_CONTROL_READ_ONLY;
    controls.add(OKU_CONTROL_BUTTON, 11, u"OK").flags = OKU_CONTROL_DISABLED;
    controls.add(OKU_CONTROL_DROP_DOWN, 12);
    controls.add(OKU_CONTROL_CHECK, 13);
    controls.add(OKU_CONTROL_LIST, 14);
    controls.add(OKU_CONTROL_EDIT, 15);
    controls.add(OKU_CONTROL_LABEL, 0xFFFFFFFF, u"x");
    const int window = openSeen(controls);
    EXPECT_NE(face->fill(window, 10, QStringLiteral("x")), QString());
    EXPECT_NE(face->press(window, 11), QString());
    EXPECT_NE(face->choose(window, 12, 0), QString());
    EXPECT_NE(face->fill(window, 13, QStringLiteral("x")), QString());
    EXPECT_NE(face->activateRow(window, 14, 1), QString());
    EXPECT_NE(face->fill(window, 15, QString(QChar(0)) + QStringLiteral("x")), QString());
    EXPECT_NE(face->press(window, 0xFFFFFFFF), QString());
    EXPECT_NE(face->press(window, 999), QString());
    EXPECT_NE(face->press(window + 1, 11), QString());
    EXPECT_NE(face->takeFromMenu(window, 1), QString());
    EXPECT_NE(face->apply(window), QString()) << "it is no page";
    EXPECT_EQ(heard(), "");
}

TEST_F(Dialogs, TellOfAnOperationWhoseWindowHasGoneWhenItsTurnCame) {
    Controls controls;
    controls.add(OKU_CONTROL_BUTTON, 1, u"Zamknij");
    controls.add(OKU_CONTROL_EDIT, 2);
    const int window = openSeen(controls);
    onEvent = [&](const OKU_WINDOW_EVENT& event) { call(u"UI/WindowDestroy", event.window); };
    EXPECT_EQ(face->press(window, 1), QString());
    EXPECT_EQ(face->fill(window, 2, QStringLiteral("za późno")), QString());
    EXPECT_EQ(face->close(window), QString());
    EXPECT_EQ(heard(), "1:" + std::to_string(window) + "/1/0");
    EXPECT_EQ(refusals.size(), 2);
    EXPECT_EQ(text(static_cast<OKU_WORD>(window), 2), u"(none)") << "the handle is dead";
    EXPECT_EQ(set(static_cast<OKU_WORD>(window), 2, OKU_VALUE_TEXT, 0, u"x"), 0U);
    EXPECT_EQ(call(u"UI/WindowShow", static_cast<OKU_WORD>(window), 1), 0U);
    EXPECT_EQ(call(u"UI/WindowPost", static_cast<OKU_WORD>(window), 5), 0U);
    EXPECT_NE(open(controls), static_cast<OKU_WORD>(window)) << "and nobody else gets it";
}

TEST_F(Dialogs, RestWhileAModalOneIsOverThem) {
    Controls controls;
    controls.add(OKU_CONTROL_BUTTON, 1, u"Dalej");
    const int window = openSeen(controls);
    const int page = openSeen(controls, static_cast<OKU_WORD>(window), OKU_WINDOW_CHILD);
    const int modal = openSeen(controls, static_cast<OKU_WORD>(page), OKU_WINDOW_MODAL);
    const int second = openSeen(controls, static_cast<OKU_WORD>(modal), OKU_WINDOW_MODAL);
    EXPECT_NE(face->press(window, 1), QString());
    EXPECT_NE(face->press(page, 1), QString());
    EXPECT_NE(face->press(modal, 1), QString());
    EXPECT_FALSE(face->window(window)->takesInput);
    told();
    bool hadInput = false;
    const auto heardClosed =
        QObject::connect(face.get(), &DialogsFace::closed, [&] { hadInput = face->window(modal)->takesInput; });
    inPlugin([&] {
        EXPECT_EQ(call(u"UI/WindowEnd", static_cast<OKU_WORD>(second), 2), 1U);
        EXPECT_EQ(call(u"UI/WindowEnd", static_cast<OKU_WORD>(second), 2), 1U);
        EXPECT_TRUE(events.empty()) << "nothing comes from inside a call";
    });
    EXPECT_EQ(heard(), "10:" + std::to_string(second) + "/0/2") << "once";
    EXPECT_EQ(told(), "closed" + std::to_string(second) + " changed" + std::to_string(modal));
    EXPECT_TRUE(hadInput) << "whoever goes back to it then can work with it";
    QObject::disconnect(heardClosed);
    EXPECT_EQ(face->press(modal, 1), QString());
    heard();
    inPlugin([&] {
        call(u"UI/WindowEnd", static_cast<OKU_WORD>(modal), 1);
        call(u"UI/WindowDestroy", static_cast<OKU_WORD>(modal));
    });
    EXPECT_EQ(heard(), "") << "it was destroyed at once, and the one over it went along";
    EXPECT_EQ(face->press(page, 1), QString());
    EXPECT_EQ(face->press(window, 1), QString());
    EXPECT_EQ(heard(), "1:" + std::to_string(page) + "/1/0 1:" + std::to_string(window) + "/1/0");
    call(u"UI/WindowDestroy", static_cast<OKU_WORD>(window));
    EXPECT_EQ(core->dialogs.count(), 0U) << "what lies in it goes along";
}

TEST_F(Dialogs, ShowWhatLiesInThemWithThem) {
    Controls none;
    const OKU_WORD window = open(none);
    const OKU_WORD page = open(none, window, OKU_WINDOW_CHILD);
    call(u"UI/WindowShow", page, 1);
    EXPECT_EQ(told(), "") << "what it lies in is not seen";
    call(u"UI/WindowShow", window, 1);
    const std::string w = std::to_string(window);
    const std::string p = std::to_string(page);
    EXPECT_EQ(told(), "opened" + w + " opened" + p);
    EXPECT_EQ(face->window(static_cast<int>(window))->children, QList<int>{static_cast<int>(page)});
    call(u"UI/WindowShow", window, 0);
    EXPECT_EQ(told(), "closed" + p + " closed" + w);
    EXPECT_EQ(open(none, 0, OKU_WINDOW_CHILD), 0U) << "a child of nobody";
    EXPECT_EQ(open(none, 4711, OKU_WINDOW_MODAL), 0U);
}

TEST_F(Dialogs, WalkTheirRowsByNumbersThatAreNotUsedAgain) {
    Controls controls;
    controls.add(OKU_CONTROL_LIST, 20).emptyText = u"nic";
    controls.add(OKU_CONTROL_EDIT, 21);
    const int window = openSeen(controls);
    const auto handle = static_cast<OKU_WORD>(window);
    EXPECT_EQ(row(handle, 20, 900, u"raz"), 1U);
    EXPECT_EQ(row(handle, 20, 7, u"dwa"), 1U);
    EXPECT_EQ(row(handle, 20, 900, u"raz i pół"), 1U);
    EXPECT_EQ(row(handle, 20, 0, u"bez numeru"), 0U);
    EXPECT_EQ(row(handle, 21, 1, u"nie lista"), 0U);
    ASSERT_EQ(face->rowCount(window, 20), 2);
    EXPECT_EQ(face->rows(window, 20, 0, 1)[0].text, QStringLiteral("raz i pół")) << "in its place";
    EXPECT_EQ(face->rows(window, 20, 1, 9).size(), 1);
    EXPECT_EQ(number(handle, 20, OKU_VALUE_ROW), 0);
    EXPECT_EQ(face->activateRow(window, 20, 2), QString());
    EXPECT_EQ(face->openRowMenu(window, 20, 1), QString());
    const std::string w = std::to_string(window);
    EXPECT_EQ(heard(), "3:" + w + "/20/7 4:" + w + "/20/900");
    EXPECT_EQ(number(handle, 20, OKU_VALUE_ROW), 900);
    EXPECT_EQ(call(u"UI/RowsClear", handle, 20), 1U);
    EXPECT_EQ(number(handle, 20, OKU_VALUE_ROW), 0);
    row(handle, 20, 8, u"trzy");
    EXPECT_NE(face->activateRow(window, 20, 1), QString()) << "that row has gone";
    EXPECT_EQ(face->rows(window, 20, 0, 9)[0].number, 3);
}

TEST_F(Dialogs, OpenMenusForAsLongAsNothingWasTaken) {
    Controls controls;
    controls.add(OKU_CONTROL_LIST, 20);
    const int window = openSeen(controls);
    OKU_POPUP_ITEM items[3] = {makeRecord<OKU_POPUP_ITEM>(), makeRecord<OKU_POPUP_ITEM>(),
                               makeRecord<OKU_POPUP_ITEM>()};
    items[0].command = 1000;
    items[0].text = u"&Przeglądaj";
    items[0].flags = OKU_POPUP_DEFAULT;
    items[1].flags = OKU_POPUP_SEPARATOR;
    items[2].command = 1001;
    items[2].text = u"Zarejestruj";
    items[2].flags = OKU_POPUP_DISABLED;
    auto menu = makeRecord<OKU_POPUP_MENU>();
    menu.window = static_cast<OKU_WORD>(window);
    menu.control = 20;
    menu.items = items;
    menu.itemCount = 3;
    EXPECT_EQ(call(u"UI/MenuOpen", wordOf(&menu)), 1U);
    const auto open = face->window(window)->menu;
    ASSERT_EQ(open.size(), 3);
    EXPECT_EQ(open[0].text, QStringLiteral("Przeglądaj"));
    EXPECT_TRUE(open[0].isDefault);
    EXPECT_TRUE(open[1].separator);
    EXPECT_NE(face->takeFromMenu(window, 1001), QString()) << "it is disabled";
    EXPECT_NE(face->takeFromMenu(window, 0), QString()) << "a separator is nothing to take";
    EXPECT_EQ(face->takeFromMenu(window, 1000), QString());
    EXPECT_EQ(heard(), "5:" + std::to_string(window) + "/0/1000");
    EXPECT_NE(face->takeFromMenu(window, 1000), QString());
}

TEST_F(Dialogs, GiveTheReturnKeyToThePluginFirst) {
    Controls controls;
    controls.add(OKU_CONTROL_EDIT, 10).flags = OKU_CONTROL_KEYS;
    controls.add(OKU_CONTROL_EDIT, 11);
    controls.add(OKU_CONTROL_BUTTON, 12, u"OK").flags = OKU_CONTROL_DEFAULT;
    const int window = openSeen(controls);
    const std::string w = std::to_string(window);
    face->pressReturn(window, 11);
    EXPECT_EQ(heard(), "1:" + w + "/12/0");
    face->pressReturn(window, 0);
    EXPECT_EQ(heard(), "1:" + w + "/12/0");
    answer = 1;
    face->pressReturn(window, 10);
    EXPECT_EQ(heard(), "6:" + w + "/10/13 7:" + w + "/10/13");
    answer = 0;
    face->pressReturn(window, 10);
    EXPECT_EQ(heard(), "6:" + w + "/10/13 7:" + w + "/10/13 1:" + w + "/12/0");
    set(static_cast<OKU_WORD>(window), 12, OKU_VALUE_ENABLED, 0);
    face->pressReturn(window, 11);
    EXPECT_EQ(heard(), "");
}

TEST_F(Dialogs, PostToThemselvesBehindWhatWaits) {
    Controls none;
    const OKU_WORD window = open(none);
    inPlugin([&] {
        call(u"UI/WindowPost", window, 1025);
        core->queue.post({}, [&] { events.emplace_back("other"); });
        call(u"UI/WindowPost", window, 1026);
        EXPECT_TRUE(events.empty());
    });
    const std::string w = std::to_string(window);
    EXPECT_EQ(heard(), "11:" + w + "/0/1025 other 11:" + w + "/0/1026");
}

TEST_F(Dialogs, TakeNoRecordThatIsTooShortAndNoWindowOfAnotherModule) {
    Controls controls;
    controls.add(OKU_CONTROL_BUTTON, 1).size = 8;
    EXPECT_EQ(open(controls), 0U) << "the control behind it cannot be found";
    Controls good;
    OKU_WINDOW window = record();
    good.fill(window);
    window.module += 1;
    EXPECT_EQ(call(u"UI/WindowOpen", wordOf(&window)), 0U);
    window.module -= 1;
    window.callback = nullptr;
    EXPECT_EQ(call(u"UI/WindowOpen", wordOf(&window)), 0U);
    window = record();
    window.size = 40;
    EXPECT_EQ(call(u"UI/WindowOpen", wordOf(&window)), 0U);
    for (const char16_t* name :
         {u"UI/WindowOpen", u"UI/WindowText", u"UI/ControlSet", u"UI/ControlGet", u"UI/ControlPlace", u"UI/RowSet",
          u"UI/MenuOpen", u"UI/WindowShow", u"UI/WindowDestroy", u"UI/WindowEnd", u"UI/WindowPost", u"UI/RowsClear"}) {
        EXPECT_EQ(call(name, 0, 0), 0U);
    }
    for (const char16_t* name : {u"UI/WindowShow", u"UI/WindowDestroy", u"UI/WindowEnd", u"UI/WindowPost"})
        EXPECT_EQ(call(name, ~OKU_WORD{0}, 1), 0U);
}

TEST_F(Dialogs, AreNotTheirOwnParents) {
    Controls none;
    const int first = openSeen(none);
    const int self = openSeen(none, static_cast<OKU_WORD>(first) + 1);
    EXPECT_EQ(self, first + 1);
    EXPECT_EQ(face->window(self)->parent, 0) << "there was no window of that number";
    const int over = openSeen(none, static_cast<OKU_WORD>(self));
    EXPECT_EQ(face->window(over)->parent, self);
    call(u"UI/WindowDestroy", static_cast<OKU_WORD>(self));
    EXPECT_EQ(face->windows(), QList<int>{first}) << "what stood over it went with it";
}

TEST_F(Dialogs, TakeNoControlsThatLieAcrossTheirPlaces) {
    Controls controls;
    controls.add(OKU_CONTROL_BUTTON, 1).size += 3;
    controls.add(OKU_CONTROL_BUTTON, 2);
    EXPECT_EQ(open(controls), 0U);
}

TEST_F(Dialogs, FindNoRowAtTheEndsOfNumbers) {
    Controls controls;
    controls.add(OKU_CONTROL_LIST, 20);
    const int window = openSeen(controls);
    const auto handle = static_cast<OKU_WORD>(window);
    row(handle, 20, 1, u"raz");
    call(u"UI/RowsClear", handle, 20);
    row(handle, 20, 2, u"dwa");
    for (const qint64 number :
         {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max(), qint64{0}, qint64{1}, qint64{3}}) {
        EXPECT_NE(face->activateRow(window, 20, number), QString()) << number;
    }
    EXPECT_EQ(face->activateRow(window, 20, 2), QString());
    EXPECT_EQ(heard(), "3:" + std::to_string(window) + "/20/2");
}

TEST_F(Dialogs, TakeAnyTextThatIsPastedButNoneThatCannotBeSent) {
    Controls controls;
    controls.add(OKU_CONTROL_EDIT, 10);
    controls.add(OKU_CONTROL_TEXT, 11);
    const int window = openSeen(controls);
    const auto handle = static_cast<OKU_WORD>(window);
    for (const char16_t odd : {u'\x1', u'\x1B', u'\xD800', u'\xDC00', u'\xFFFE', u'\xFFFF'}) {
        for (const quint32 control : {10U, 11U})
            EXPECT_NE(face->fill(window, control, QStringLiteral("a") + QChar(odd)), QString()) << int{odd};
    }
    EXPECT_EQ(heard(), "");
    const QString pasted = QStringLiteral("<a/>&\"'\t\u202E\U0001F600") + QString(1 << 20, u'x');
    EXPECT_EQ(face->fill(window, 10, pasted + QStringLiteral("\r\n")), QString());
    EXPECT_EQ(face->fill(window, 11, pasted + QStringLiteral("\r\n")), QString());
    heard();
    EXPECT_EQ(text(handle, 10), pasted.toStdU16String() + u" ");
    EXPECT_EQ(text(handle, 11), pasted.toStdU16String() + u"\r\n");
}

TEST_F(Dialogs, OfTwoControlsWithOneNumberTheFirstHasIt) {
    Controls controls;
    controls.add(OKU_CONTROL_EDIT, 5, u"pierwsze");
    controls.add(OKU_CONTROL_EDIT, 5, u"drugie");
    const int window = openSeen(controls);
    EXPECT_EQ(text(static_cast<OKU_WORD>(window), 5), u"pierwsze");
}

TEST_F(Dialogs, GoWithThePluginWhoeverIsAtWork) {
    Controls controls;
    controls.add(OKU_CONTROL_BUTTON, 1, u"Koniec");
    const int window = openSeen(controls);
    const int modal = openSeen(controls, static_cast<OKU_WORD>(window), OKU_WINDOW_MODAL);
    onEvent = [&](const OKU_WINDOW_EVENT& event) {
        call(u"UI/WindowPost", event.window, 1);
        // As a reload asks for it: from inside the callback, to be done when nothing is on the stack.
        core->queue.post({}, [&] { core->unload(); });
    };
    told();
    face->press(modal, 1);
    face->press(modal, 1);
    const std::string m = std::to_string(modal);
    EXPECT_EQ(heard(), "1:" + m + "/1/0 11:" + m + "/0/1") << "what was posted before the unloading came";
    EXPECT_EQ(core->dialogs.count(), 0U);
    EXPECT_EQ(told(), "closed" + m + " changed" + std::to_string(window) + " closed" + std::to_string(window));
    EXPECT_TRUE(face->windows().isEmpty());
}

TEST_F(Dialogs, ChangeInProportionToWhatChanges) {
    constexpr int kRows = 20'000;
    constexpr int kItems = 100'000;
    Controls controls;
    for (std::uint32_t field = 1; field <= 10'000; ++field) {
        controls.add(OKU_CONTROL_LABEL, 0xFFFFFFFF, u"Pole");
        controls.add(OKU_CONTROL_EDIT, field);
    }
    controls.add(OKU_CONTROL_DROP_DOWN, 20'001);
    controls.add(OKU_CONTROL_LIST, 20'002);
    const int window = openSeen(controls);
    const auto handle = static_cast<OKU_WORD>(window);
    int added = 0;
    int items = 0;
    QObject::connect(face.get(), &DialogsFace::rowAdded, [&] { ++added; });
    QObject::connect(face.get(), &DialogsFace::itemAdded, [&] { ++items; });
    for (OKU_WORD number = 1; number <= kRows; ++number) row(handle, 20'002, number, u"wiersz");
    for (int item = 0; item < kItems; ++item) set(handle, 20'001, OKU_VALUE_ADD_ITEM, 0, u"x");
    for (std::uint32_t field = 1; field <= 10'000; ++field) set(handle, field, OKU_VALUE_TEXT, 0, u"wartość");
    EXPECT_EQ(added, kRows);
    EXPECT_EQ(items, kItems);
    EXPECT_EQ(face->rowCount(window, 20'002), kRows);
    EXPECT_EQ(face->control(window, 20'001)->items.size(), kItems);
    EXPECT_EQ(text(handle, 10'000), u"wartość");
}

}  // namespace
}  // namespace oku::test
