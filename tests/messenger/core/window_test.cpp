// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include "host/oku/graphics.h"
#include "host/oku/menu.h"
#include "host/oku/windows.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

class Windows : public Stage {
protected:
    Windows() {
        writeAccount({}, QStringLiteral("alice@example.org"));
        start();
    }

    OKU_MENU_RECORD item(const char16_t* id, int order, const char16_t* caption = u"") {
        auto record = makeRecord<OKU_MENU_RECORD>();
        record.id = id;
        record.parent = u"XMPP/1/Menu";
        record.caption = caption;
        record.order = order;
        record.context = wordOf(this);
        record.callback = [](OKU_WORD param, OKU_WORD, OKU_WORD context) -> OKU_WORD {
            const auto* event = reinterpret_cast<const OKU_MENU_EVENT*>(param);
            reinterpret_cast<Windows*>(context)->chosen.append(wideText(event->id));
            return 0;
        };
        return record;
    }
    void add(OKU_MENU_RECORD record) { EXPECT_EQ(call(u"OKU/Menu/Add", wordOf(&record)), 1); }
    QStringList captions(const char16_t* parent) {
        QStringList list;
        for (const MenuItem& entry : core->menus.items(wideText(parent)))
            list.append(entry.separator ? QStringLiteral("-") : entry.caption);
        return list;
    }

    QStringList chosen;
    QList<StatusWindow> shown;
};

TEST_F(Windows, MenusStandInTheOrderOfTheirValues) {
    add(item(u"XMPP/1/Presence/Away", 1007, u"Zaraz wracam"));
    add(item(u"XMPP/1/Presence/Online", 1010, u"Dostępny"));
    auto separator = item(u"SEPARATOR", 1003);
    separator.flags = OKU_MENU_SEPARATOR;
    add(separator);
    separator.parent = u"XMPP/2/Menu";
    add(separator);
    add(item(u"XMPP/1/Presence/Descr", 1002, u"Opis..."));
    EXPECT_EQ(captions(u"XMPP/1/Menu").join(u' '), QStringLiteral("Dostępny Zaraz wracam - Opis..."));
    EXPECT_EQ(captions(u"XMPP/2/Menu").join(u' '), QStringLiteral("-")) << "separators share their name";
    add(item(u"XMPP/1/Presence/Away", 1011, u"Inaczej"));
    EXPECT_EQ(captions(u"XMPP/1/Menu").first(), QStringLiteral("Inaczej"));
}

TEST_F(Windows, MenuItemsReachTheirCallbackThroughTheQueue) {
    const QString id = QStringLiteral("XMPP/1/Presence/Away");
    add(item(u"XMPP/1/Presence/Away", 1007));
    core->queue.post({}, [&] {
        EXPECT_TRUE(core->menus.activate(id));
        QCoreApplication::sendPostedEvents(&core->menus, QEvent::MetaCall);
        EXPECT_TRUE(chosen.isEmpty());
    });
    EXPECT_EQ(chosen, QStringList(id));
    EXPECT_FALSE(core->menus.activate(QStringLiteral("SEPARATOR")));
}

TEST_F(Windows, MenuItemsHoldNobodyWhoChoosesThem) {
    add(item(u"XMPP/InternalBrowser", 1007));
    EXPECT_TRUE(core->menus.activate(QStringLiteral("XMPP/InternalBrowser")));
    EXPECT_TRUE(chosen.isEmpty()) << "the callback may open a question";
    QCoreApplication::sendPostedEvents(&core->menus, QEvent::MetaCall);
    EXPECT_EQ(chosen, QStringList(QStringLiteral("XMPP/InternalBrowser")));
}

TEST_F(Windows, MenusChangeTheirIcon) {
    add(item(u"XMPP/1/Presence/Away", 1007, u"Zaraz wracam"));
    auto change = makeRecord<OKU_MENU_RECORD>();
    change.id = u"XMPP/1/Presence/Away";
    change.flags = OKU_MENU_CHANGE_ICON;
    change.icon = u"XMPP/Icon/away";
    EXPECT_EQ(call(u"OKU/Menu/Modify", wordOf(&change)), 1);
    EXPECT_EQ(core->menus.items(QStringLiteral("XMPP/1/Menu"))[0].icon, QStringLiteral("XMPP/Icon/away"));
    EXPECT_EQ(captions(u"XMPP/1/Menu"), QStringList(QStringLiteral("Zaraz wracam")));
    change.id = u"XMPP/1/Menu";
    change.parent = u"OKU/Menu/Main/States";
    EXPECT_EQ(call(u"OKU/Menu/Modify", wordOf(&change)), 1);
    EXPECT_EQ(core->menus.items(QStringLiteral("OKU/Menu/Main/States")).size(), 1);
}

TEST_F(Windows, StatusWindowsAreFilledShownAndAnswered) {
    static QStringList events;
    events.clear();
    auto prepare = makeRecord<OKU_STATUS_WINDOW_PREPARE>();
    const std::uint32_t statuses[] = {1, 4, 7};
    prepare.title = u"XMPP / ustaw status...";
    prepare.statuses = statuses;
    prepare.statusCount = 3;
    prepare.netId = account().netId;
    prepare.callback = [](OKU_WORD param, OKU_WORD, OKU_WORD) -> OKU_WORD {
        const auto* event = reinterpret_cast<const OKU_STATUS_WINDOW_EVENT*>(param);
        events.append(QStringLiteral("%1 %2 %3 %4")
                          .arg(event->event)
                          .arg(event->status)
                          .arg(event->protect)
                          .arg(wideText(event->description)));
        if (event->event != OKU_STATUS_WINDOW_WANTS_TEXTS) return 0;
        auto texts = makeRecord<OKU_STATUS_WINDOW_TEXTS>();
        texts.title = u"alice@example.org - Ustaw status...";
        texts.window = event->window;
        return HostTable::table()->fnCall(u"OKU/StatusWND/SetTexts", wordOf(&texts), 0);
    };
    EXPECT_EQ(call(u"OKU/StatusWND/Prepare", wordOf(&prepare)), 1);
    QObject::connect(&core->statusWindows, &StatusWindows::requested, core.get(),
                     [&](const QString&, const StatusWindow& window) { shown.append(window); });
    auto show = makeRecord<OKU_STATUS_WINDOW_SHOW>();
    show.netId = account().netId;
    show.status = 4;
    show.description = u"opis";
    show.protect = 1;
    inPlugin([&] { call(u"OKU/StatusWND/Show", wordOf(&show)); });
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0].title, QStringLiteral("alice@example.org - Ustaw status..."));
    EXPECT_EQ(shown[0].choices, (QList<Status>{Status::online, Status::away, Status::offline}));
    EXPECT_EQ(shown[0].status, Status::away);
    EXPECT_TRUE(shown[0].protect);
    ASSERT_TRUE(core->statusWindows.has(entry()));
    inPlugin([&] { core->statusWindows.confirm(entry(), Status::xa, QStringLiteral("dalej"), true); });
    EXPECT_EQ(events, (QStringList{QStringLiteral("4 0 0 "), QStringLiteral("1 5 1 dalej")}));
}

TEST_F(Windows, WhatIsHandedOverForWindowsIsKept) {
    auto iconClass = makeRecord<OKU_ICON_CLASS>();
    iconClass.name = u"XMPP/UserTune";
    EXPECT_EQ(call(u"OKU/Graph/ICCreate", wordOf(&iconClass)), 1);
    call(u"OKU/Graph/AddIC", wordOf(u"XMPP/UserTune"), wordOf(u"Image/Audio"));
    ASSERT_EQ(core->windows.icons().size(), 1U);
    EXPECT_EQ(core->windows.icons()[0].fallback, QStringLiteral("Image/Audio"));
    auto page = makeRecord<OKU_OPTIONS_PAGE>();
    page.id = u"XMPP/Options/1";
    page.icon = 5;
    EXPECT_EQ(call(u"OKU/AddOptionsPage", plugin().module, wordOf(&page)), 1);
    EXPECT_EQ(page.icon, 0) << "there is no icon to destroy";
    auto properties = makeRecord<OKU_PROPERTIES_PAGE>();
    properties.id = u"XMPP/1/Properties";
    EXPECT_EQ(call(u"OKU/PropertiesStaticPageAdd", wordOf(&properties)), 1);
    EXPECT_EQ(core->windows.optionPages().size() + core->windows.propertyPages().size(), 2U);
}

TEST_F(Windows, ACallWithoutEndOfNoticesShowsTenOfATitle) {
    QStringList titles;
    QObject::connect(&core->boxes, &MessageBoxes::opened, core.get(), [&](const MessageBox& box) {
        titles.append(box.title);
        core->boxes.answer(box.number, box.style == BoxStyle::question ? BoxButton::yes : BoxButton::ok);
    });
    const auto ask = [this](const char16_t* title, std::uint32_t style) {
        auto record = makeRecord<OKU_MESSAGE_BOX>();
        record.text = u"Tekst";
        record.title = title;
        record.style = style;
        return call(u"UI/MessageBox", wordOf(&record));
    };
    inPlugin([&] {
        for (int at = 0; at < 1000; ++at) {
            EXPECT_EQ(ask(u"Pole", at % 2 ? OKU_BOX_WARNING : OKU_BOX_INFORMATION), OKU_BUTTON_OK);
            if (at % 50 == 0) {
                EXPECT_EQ(ask(u"Pole", OKU_BOX_QUESTION), OKU_BUTTON_YES);
            }
        }
        EXPECT_EQ(titles.count(QStringLiteral("Pole")), 10 + 20) << "what has to be decided is asked";
        EXPECT_EQ(ask(u"Inne", OKU_BOX_ERROR), OKU_BUTTON_OK);
        EXPECT_TRUE(titles.contains(QStringLiteral("Inne"))) << "another title has its own";
        EXPECT_TRUE(notices.isEmpty());
    });
    EXPECT_EQ(notices, QStringList(QStringLiteral("Pominięto dalsze komunikaty (990): Pole.")));
    titles.clear();
    inPlugin([&] { ask(u"Pole", OKU_BOX_WARNING); });
    EXPECT_EQ(titles, QStringList(QStringLiteral("Pole"))) << "a new call begins anew";
    EXPECT_EQ(notices.size(), 1);
}

TEST_F(Windows, EveryServiceBearsANullRecord) {
    for (const char16_t* name : {u"OKU/Log",
                                 u"OKU/Settings/Init",
                                 u"OKU/Settings/Read",
                                 u"OKU/Settings/Write",
                                 u"OKU/Settings/Destroy",
                                 u"OKU/Settings/Set",
                                 u"OKU/Timer/Destroy",
                                 u"OKU/Info/GetCacheDir",
                                 u"OKU/Info/GetProfileDir",
                                 u"OKU/Menu/Add",
                                 u"OKU/Menu/Modify",
                                 u"OKU/Graph/ICCreate",
                                 u"OKU/Graph/AddIC",
                                 u"OKU/Graph/LoadIS",
                                 u"OKU/Graph/Load",
                                 u"OKU/AddOptionsPage",
                                 u"OKU/PropertiesStaticPageAdd",
                                 u"OKU/StatusWND/Prepare",
                                 u"OKU/StatusWND/Show",
                                 u"OKU/StatusWND/SetTexts",
                                 u"OKU/ProtocolAdd",
                                 u"OKU/ProtocolDel",
                                 u"OKU/PFSetInfo",
                                 u"OKU/PFTNSet",
                                 u"OKU/PFAskForAuth",
                                 u"OKU/CallProtolHooks",
                                 u"OKU/CTL/AddContact",
                                 u"OKU/CTL/FndContact",
                                 u"OKU/CTL/DelContact",
                                 u"OKU/CTL/AddContactIcon",
                                 u"OKU/CTL/EnableDrawing",
                                 u"OKU/CTL/DeleteAll",
                                 u"OKU/CTL/SetContactState",
                                 u"OKU/CTL/SetAllOffline",
                                 u"OKU/NL/GetDefaultSettings",
                                 u"NetLib/Create",
                                 u"NetLib/ConnectService",
                                 u"NetLib/Send",
                                 u"NetLib/InitSSL",
                                 u"NetLib/Close",
                                 u"NetLib/Destroy",
                                 u"UI/MessageBox",
                                 u"UI/FileChooser",
                                 u"OKU/FTInitWindow",
                                 u"OKU/FTDropWindow",
                                 u"OKU/FTAskForConfirmation",
                                 u"MyVCard/SetStatus",
                                 u"MyVCard/SetFieldValue",
                                 u"MyVCard/GetFieldValue",
                                 u"VCard/SetStatus",
                                 u"VCard/AddElement",
                                 u"OKU/CTL/SetAvatar",
                                 u"MyVCard/SignalBusyness"}) {
        EXPECT_TRUE(core->services.has(name)) << wideText(name).toStdString();
        call(name, 0, 0);
    }
}

}  // namespace
}  // namespace oku::test
