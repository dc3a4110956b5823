// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the plugin learns of contacts for its windows, and what it lets the user do with one.
#include "host/oku/menu.h"
#include "tests/messenger/core/dialog_stage.h"

namespace oku::test {
namespace {

class GroupsInAWindow : public DialogStage {
protected:
    GroupsInAWindow() {
        inPlugin([&] {
            addContact(u"bob@example.org", u"Bob", u"Praca");
            addContact(u"carol@example.org", u"Carol", u"Dom");
            addContact(u"dave@example.org", u"Dave", u"Praca");
            addContact(u"eve@example.org", u"Eve", u"Źródło");
        });
        Controls controls;
        controls.add(OKU_CONTROL_EDIT_DROP_DOWN, 7019, u"Praca");
        controls.add(OKU_CONTROL_EDIT, 7017);
        window = openSeen(controls);
    }
    OKU_WORD list(OKU_WORD of, OKU_WORD control) { return call(u"OKU/CTL/EnumGroupsHWND", of, control); }

    int window = 0;
};

TEST_F(GroupsInAWindow, AreEachAnItemOnceInOrder) {
    EXPECT_EQ(list(static_cast<OKU_WORD>(window), 7019), 1);
    const auto control = face->control(window, 7019);
    EXPECT_EQ(control->items.join(u'|').toStdString(), "Dom|Praca|Źródło");
    EXPECT_EQ(control->text, QStringLiteral("Praca")) << "what stood there stays";
    EXPECT_EQ(face->choose(window, 7019, 0), QString());
    heard();
    EXPECT_EQ(text(static_cast<OKU_WORD>(window), 7019), u"Dom");
}

TEST_F(GroupsInAWindow, GoIntoNothingElse) {
    EXPECT_EQ(list(static_cast<OKU_WORD>(window), 7017), 0);
    EXPECT_EQ(list(static_cast<OKU_WORD>(window), 1), 0);
    EXPECT_EQ(list(static_cast<OKU_WORD>(window) + 1, 7019), 0);
    EXPECT_EQ(list(0, 7019), 0);
    EXPECT_TRUE(face->control(window, 7017)->items.isEmpty());
}

TEST_F(GroupsInAWindow, ArePlacedAsAWhole) {
    auto place = makeRecord<OKU_CONTROL_PLACE>();
    place.window = static_cast<OKU_WORD>(window);
    EXPECT_EQ(call(u"UI/ControlPlace", wordOf(&place)), 1) << "0 is the window itself";
    place.control = 1;
    EXPECT_EQ(call(u"UI/ControlPlace", wordOf(&place)), 0);
}

/// A plugin that permits two things, and one that this host does not know.
class MenuOfAContact : public Stage {
protected:
    MenuOfAContact() {
        writeAccount({}, QStringLiteral("alice@example.org"));
        start();
        const auto hook = [](OKU_WORD param, OKU_WORD extra, OKU_WORD context) -> OKU_WORD {
            auto& self = *reinterpret_cast<MenuOfAContact*>(context);
            const auto& menu = *reinterpret_cast<const OKU_CONTACT_MENU*>(param);
            EXPECT_TRUE(self.core->queue.busy());
            EXPECT_EQ(extra, 0);
            EXPECT_EQ(menu.contactCount, 1U);
            EXPECT_EQ(menu.contact->netId, self.account().netId);
            EXPECT_EQ(std::u16string(menu.contact->pfClass), u"XMPP");
            self.asked = QString::fromUtf16(menu.contact->id) + u' ' + QString::fromUtf16(menu.menu);
            for (const char16_t* item : {u"OKU/Contact/Chat", u"OKU/Contact/PubDir", u"Other/Item"})
                EXPECT_EQ(menu.add(wordOf(item), 0, menu.addContext), 1);
            EXPECT_EQ(menu.add(0, 0, menu.addContext), 0);
            return 0;
        };
        core->events.addHook(u"OKU/OnMenuRebuild", hook, wordOf(this));
        QObject::connect(&core->contactMenus, &ContactMenus::told,
                         [this](const QString& account, const QString& jid, const QList<MenuItem>& items) {
                             told = account + u' ' + jid;
                             for (const MenuItem& item : items) told += u' ' + item.id + u'=' + item.caption;
                         });
    }

    QString asked;
    QString told;
};

TEST_F(MenuOfAContact, HoldsWhatThePluginPermitsInItsOrder) {
    core->contactMenus.ask(entry(), QStringLiteral("bob@example.org"), false);
    EXPECT_TRUE(told.isEmpty()) << "it comes from the event loop";
    ASSERT_TRUE(waitFor([&] { return !told.isEmpty(); }));
    EXPECT_EQ(asked.toStdString(), "bob@example.org OKU/Loc/ContactList");
    EXPECT_EQ(told.toStdString(),
              "alice@example.org bob@example.org OKU/Contact/Chat=Rozmawiaj OKU/Contact/PubDir=Wizytówka "
              "Other/Item=Other/Item");
}

TEST_F(MenuOfAContact, IsThatOfAChatWhereOneIsOpen) {
    core->contactMenus.ask(entry(), QStringLiteral("bob@example.org"), true);
    ASSERT_TRUE(waitFor([&] { return !told.isEmpty(); }));
    EXPECT_EQ(asked.toStdString(), "bob@example.org OKU/Loc/ChatWND");
}

}  // namespace
}  // namespace oku::test
