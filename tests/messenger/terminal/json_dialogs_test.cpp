// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Windows of the plugin in the JSON mode: told as events, and worked with by commands.
#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>

#include "messenger/core/texts.h"
#include "messenger/terminal/json/json_mode.h"
#include "tests/messenger/terminal/dialog_values.h"

namespace oku::terminal::test {
namespace {

class JsonDialogs : public testing::Test {
protected:
    void SetUp() override {
        setLanguage(Language::English);
        messenger.accountList = {account("ala@localhost")};
        ASSERT_EQ(mode.start(), QString());
        messenger.fakeDialogs().open.insert(7, form());
        messenger.fakeDialogs().lists[{7, 24}] = formRows();
        events.clear();
        messenger.calls.clear();
    }
    void TearDown() override { setLanguage(Language::Polish); }

    void take(const QByteArray& line) {
        const QJsonDocument document = QJsonDocument::fromJson(line);
        EXPECT_TRUE(document.isObject()) << line.constData();
        events.append(document.object());
    }
    // Feeds a command that must be answered with `ok` last; gives what the messenger was asked for.
    std::string ask(const QByteArray& line) {
        messenger.calls.clear();
        events.clear();
        mode.feed(line + '\n');
        EXPECT_EQ(events.isEmpty() ? QString() : events.last().value("event").toString(), "ok") << line.constData();
        return messenger.takeCalls().join(u'\n').toStdString();
    }
    QJsonObject told() {
        const QJsonObject event = events.isEmpty() ? QJsonObject() : events.last();
        events.clear();
        return event;
    }
    static std::string compact(const QJsonObject& object) {
        return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
    }

    FakeMessenger messenger;
    QList<QJsonObject> events;
    JsonMode mode{messenger, [this](const QByteArray& line) { take(line); }, true, {}, [] {}};
};

TEST_F(JsonDialogs, TellThatAPageWasCarriedOut) {
    emit messenger.fakeDialogs().applied(7);
    EXPECT_EQ(compact(told()), R"({"event":"page-applied","window":7})");
}

TEST_F(JsonDialogs, TellAWindowWithAllThatIsInIt) {
    emit messenger.dialogs().opened(7);
    const QJsonObject window = told();
    EXPECT_EQ(window.value("event"), "window");
    EXPECT_EQ(window.value("window"), 7);
    EXPECT_EQ(window.value("kind"), "modal");
    EXPECT_EQ(window.value("parent"), 3);
    EXPECT_EQ(window.value("input"), true);
    EXPECT_EQ(window.value("title"), "Rejestracja");
    const QJsonArray controls = window.value("controls").toArray();
    ASSERT_EQ(controls.size(), 8);
    EXPECT_EQ(controls[0].toObject().value("kind"), "label");
    EXPECT_EQ(
        compact(controls[1].toObject()),
        "{\"control\":21,\"enabled\":true,\"kind\":\"edit\",\"name\":\"Nick\",\"readOnly\":false,\"text\":\"ala\"}");
    EXPECT_EQ(controls[2].toObject().value("text"), "***") << "a password is told to nobody";
    EXPECT_EQ(controls[3].toObject().value("checked"), true);
    EXPECT_EQ(controls[4].toObject().value("choice"), 1);
    EXPECT_EQ(controls[4].toObject().value("items").toArray().size(), 2);
    const QJsonArray rows = controls[5].toObject().value("rows").toArray();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(compact(rows[1].toObject()),
              "{\"fields\":[{\"label\":\"Stan:\",\"value\":\"ok\"}],\"row\":12,\"text\":\"drugi\"}");
    EXPECT_EQ(controls[6].toObject().value("default"), true);
}

TEST_F(JsonDialogs, TellChangesOneByOne) {
    DialogsFace& dialogs = messenger.dialogs();
    emit dialogs.controlChanged(7, 23);
    EXPECT_EQ(
        compact(told()),
        "{\"choice\":1,\"control\":23,\"enabled\":true,\"event\":\"window-control\",\"name\":\"Rodzaj\",\"readOnly\":"
        "false,\"text\":\"\",\"window\":7}");
    emit dialogs.changed(7);
    EXPECT_EQ(told().value("title"), "Rejestracja");
    emit dialogs.itemAdded(7, 23, QStringLiteral("trzeci"));
    EXPECT_EQ(compact(told()), "{\"control\":23,\"event\":\"window-item\",\"item\":\"trzeci\",\"window\":7}");
    emit dialogs.itemsCleared(7, 23);
    EXPECT_EQ(told().value("event"), "window-no-items");
    emit dialogs.rowAdded(7, 24, formRows()[0]);
    const QJsonObject row = told();
    EXPECT_EQ(row.value("event"), "window-row");
    EXPECT_EQ(row.value("new"), true);
    EXPECT_EQ(row.value("row"), 11);
    emit dialogs.rowChanged(7, 24, formRows()[0]);
    EXPECT_EQ(told().value("new"), false);
    emit dialogs.rowsCleared(7, 24);
    EXPECT_EQ(told().value("event"), "window-no-rows");
    emit dialogs.menuOpened(7, 24, {{1000, QStringLiteral("Przeglądaj"), true, true, false}});
    EXPECT_EQ(told().value("items").toArray()[0].toObject().value("item"), 1000);
    emit dialogs.focused(7, 21);
    EXPECT_EQ(told().value("event"), "window-focus");
    emit dialogs.refused(7, QStringLiteral("nie"));
    EXPECT_EQ(told().value("reason"), "nie");
    emit dialogs.closed(7);
    EXPECT_EQ(compact(told()), "{\"event\":\"window-closed\",\"window\":7}");
}

TEST_F(JsonDialogs, TellWhatThePluginHasForAContact) {
    const QString me = QStringLiteral("ala@localhost");
    const QString olek = QStringLiteral("olek@localhost");
    emit messenger.dialogs().propertyPagesTold(me, olek, {{QStringLiteral("b"), QStringLiteral("Informacje")}});
    EXPECT_EQ(compact(told()),
              "{\"account\":\"ala@localhost\",\"event\":\"pages\",\"jid\":\"olek@localhost\",\"options\":[],"
              "\"properties\":[{\"caption\":\"Informacje\",\"page\":\"b\"}]}");
    MenuItem item;
    item.id = QStringLiteral("OKU/Contact/Chat");
    item.caption = QStringLiteral("Rozmawiaj");
    emit messenger.windows().contactMenuTold(me, olek, {item});
    EXPECT_EQ(compact(told()),
              "{\"account\":\"ala@localhost\",\"event\":\"contact-menu\",\"items\":[{\"caption\":\"Rozmawiaj\","
              "\"item\":\"OKU/Contact/Chat\",\"separator\":false}],\"jid\":\"olek@localhost\"}");
}

TEST_F(JsonDialogs, CarryCommandsToTheWindow) {
    EXPECT_EQ(ask(R"({"cmd":"window-fill","window":7,"control":21,"text":"ola"})"), "fill|7|21|ola");
    EXPECT_EQ(ask(R"({"cmd":"window-check","window":7,"control":25,"checked":false})"), "setChecked|7|25|off");
    EXPECT_EQ(ask(R"({"cmd":"window-choose","window":7,"control":23,"choice":0})"), "choose|7|23|0");
    EXPECT_EQ(ask(R"({"cmd":"window-press","window":7,"control":26})"), "press|7|26|");
    EXPECT_EQ(ask(R"({"cmd":"window-return","window":7})"), "pressReturn|7|0|");
    EXPECT_EQ(ask(R"({"cmd":"window-return","window":7,"control":21})"), "pressReturn|7|21|");
    EXPECT_EQ(ask(R"({"cmd":"window-activate","window":7,"control":24,"row":12})"), "activateRow|7|24|12");
    EXPECT_EQ(ask(R"({"cmd":"window-row-menu","window":7,"control":24,"row":12})"), "openRowMenu|7|24|12");
    EXPECT_EQ(ask(R"({"cmd":"window-menu-item","window":7,"item":1000})"), "takeFromMenu|7|1000|");
    EXPECT_EQ(ask(R"({"cmd":"window-close","window":7})"), "closeWindow|7");
    EXPECT_EQ(ask(R"({"cmd":"options"})"), "openOptions|");
    EXPECT_EQ(ask(R"({"cmd":"properties","jid":"olek@localhost"})"), "openProperties|ala@localhost|olek@localhost|");
    EXPECT_EQ(ask(R"({"cmd":"pages","jid":"olek@localhost"})"), "askPropertyPages|ala@localhost|olek@localhost");
    EXPECT_EQ(ask(R"({"cmd":"contact-menu","jid":"olek@localhost"})"),
              "askContactMenu|ala@localhost|olek@localhost|list");
    EXPECT_EQ(ask(R"({"cmd":"contact-menu","jid":"olek@localhost","chat":true})"),
              "askContactMenu|ala@localhost|olek@localhost|chat");
    EXPECT_EQ(ask(R"({"cmd":"page-apply","window":7})"), "apply|7");
    EXPECT_EQ(ask(R"({"cmd":"page-ok","window":7})"), "confirm|7");
    EXPECT_EQ(ask(R"({"cmd":"menu-item","item":"XMPP/InternalBrowser"})"), "activateMenu|XMPP/InternalBrowser");
}

TEST_F(JsonDialogs, RefuseWithTheReasonOfTheMessenger) {
    messenger.refusals.insert(QStringLiteral("press"), QStringLiteral("to pole śpi"));
    mode.feed("{\"cmd\":\"window-press\",\"window\":7,\"control\":26}\n");
    EXPECT_EQ(told().value("reason"), "to pole śpi");
    mode.feed("{\"cmd\":\"window-fill\",\"window\":7,\"text\":\"x\"}\n");
    EXPECT_EQ(told().value("event"), "error") << "a field is missing";
}

TEST_F(JsonDialogs, ListWindowsPagesAndMenus) {
    ask(R"({"cmd":"windows"})");
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(events[0].value("window"), 7);
    messenger.fakeDialogs().options = {{QStringLiteral("XMPP/Options/1"), QStringLiteral("XMPP")}};
    ask(R"({"cmd":"pages"})");
    EXPECT_EQ(events[0].value("options").toArray()[0].toObject().value("page"), "XMPP/Options/1");
    EXPECT_TRUE(events[0].value("properties").toArray().isEmpty());
    MenuItem item;
    item.id = QStringLiteral("XMPP/InternalBrowser");
    item.caption = QStringLiteral("Przeglądarka");
    messenger.menus[programMenu()] = {item};
    ask(R"({"cmd":"menu"})");
    EXPECT_EQ(events[0].value("items").toArray()[0].toObject().value("item"), "XMPP/InternalBrowser");
}

}  // namespace
}  // namespace oku::terminal::test
