// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pages of the messenger that the plugin puts a window of its own into.
#include "host/oku/windows.h"
#include "tests/messenger/core/dialog_stage.h"

namespace oku::test {
namespace {

class PagesOfTheHost : public DialogStage {
protected:
    PagesOfTheHost() {
        auto record = makeRecord<OKU_PROPERTIES_PAGE>();
        record.id = u"XMPP/1/Properties";
        record.caption = u"Właściwości";
        record.pfClass = u"XMPP";
        record.netId = account().netId;
        record.context = wordOf(this);
        record.callback = [](OKU_WORD param, OKU_WORD, OKU_WORD context) {
            return reinterpret_cast<PagesOfTheHost*>(context)->onPage(*reinterpret_cast<const OKU_PAGE_EVENT*>(param));
        };
        call(u"OKU/PropertiesStaticPageAdd", wordOf(&record));
    }

    OKU_WORD onPage(const OKU_PAGE_EVENT& event) {
        pageEvents += std::to_string(event.event) + ":" + (event.contact ? "contact" : "none") + " ";
        if (event.event == OKU_PAGE_SHOW && !empty) {
            const std::u16string title = u"XMPP";
            title.copy(event.title, OKU_PAGE_TEXT_CAPACITY - 1);
            *event.page = open(Controls(), event.parent, OKU_WINDOW_CHILD);
            call(u"UI/WindowShow", *event.page, 1);
        }
        if (event.event == OKU_PAGE_DESTROY && *event.page) call(u"UI/WindowDestroy", *event.page);
        return answer;
    }
    std::string paged() {
        heard();
        return std::exchange(pageEvents, {});
    }
    int page() const { return face->windows().value(0); }

    std::string pageEvents;
    bool empty = false;
    const QString me = QStringLiteral("alice@example.org");
    const QString bob = QStringLiteral("bob@example.org");
};

TEST_F(PagesOfTheHost, StayUntilThePluginCouldDoWhatWasEntered) {
    EXPECT_EQ(face->propertyPages(me).size(), 1);
    EXPECT_EQ(face->openProperties(me, bob, {}), QString());
    EXPECT_EQ(paged(), "1:contact ");
    ASSERT_EQ(face->windows().size(), 2);
    EXPECT_EQ(face->window(page())->title, QStringLiteral("XMPP"));
    EXPECT_TRUE(face->window(page())->page);
    EXPECT_EQ(face->apply(page()), QString());
    EXPECT_EQ(paged(), "4:contact ");
    answer = 1;
    EXPECT_EQ(face->confirm(page()), QString());
    EXPECT_EQ(paged(), "5:contact ");
    EXPECT_EQ(face->windows().size(), 2);
    answer = 0;
    EXPECT_EQ(face->confirm(page()), QString());
    EXPECT_EQ(paged(), "5:contact 2:contact 3:contact ");
    EXPECT_TRUE(face->windows().isEmpty());
    EXPECT_EQ(core->dialogs.count(), 0U);
}

TEST_F(PagesOfTheHost, AddAContactThatIsNotThereYet) {
    face->openProperties(me, {}, {});
    paged();
    face->confirm(page());
    EXPECT_EQ(paged(), "7:none 2:none 3:none ");
}

TEST_F(PagesOfTheHost, AreNotShownWhenNothingIsInThem) {
    empty = true;
    face->openProperties(me, bob, {});
    EXPECT_EQ(paged(), "1:contact 2:contact 3:contact ");
    EXPECT_TRUE(face->windows().isEmpty());
    EXPECT_EQ(refusals.size(), 1);
    EXPECT_NE(face->openProperties(me, bob, QStringLiteral("other")), QString());
    EXPECT_NE(face->openOptions({}), QString()) << "none was offered";
}

TEST_F(PagesOfTheHost, GoWithThePlugin) {
    face->openProperties(me, bob, {});
    paged();
    EXPECT_EQ(face->close(page()), QString());
    core->queue.post({}, [&] { core->unload(); });
    EXPECT_EQ(paged(), "") << "nobody is there to be told";
    EXPECT_TRUE(face->windows().isEmpty());
    EXPECT_TRUE(face->propertyPages(me).isEmpty());
}

}  // namespace
}  // namespace oku::test
