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

    /// From now on the plugin has a page for each contact that it is asked about.
    void offer() {
        const auto hook = [](OKU_WORD param, OKU_WORD word, OKU_WORD context) -> OKU_WORD {
            const auto& event = *reinterpret_cast<const OKU_PROPERTIES_EVENT*>(param);
            auto& self = *reinterpret_cast<PagesOfTheHost*>(context);
            EXPECT_EQ(event.event, OKU_PROPERTIES_OPEN);
            EXPECT_EQ(std::u16string(event.contact->id), u"bob@example.org");
            EXPECT_TRUE(self.core->queue.busy());
            self.askedWord = word;
            EXPECT_EQ(self.addInformation(word), 1);
            EXPECT_EQ(self.addInformation(word + 1), 0);
            return 0;
        };
        core->events.addHook(u"OKU/PropertiesAddPages", hook, wordOf(this));
        QObject::connect(face.get(), &DialogsFace::propertyPagesTold,
                         [this](const QString& account, const QString& jid, const QList<DialogPage>& pages) {
                             pagesTold += account.toStdString() + " " + jid.toStdString() + " ";
                             for (const DialogPage& one : pages)
                                 pagesTold += one.id.toStdString() + ":" + one.caption.toStdString() + " ";
                         });
    }
    OKU_WORD addInformation(OKU_WORD of) {
        auto record = makeRecord<OKU_PROPERTIES_PAGE>();
        record.id = u"Info";
        record.caption = u"Informacje";
        record.context = wordOf(this);
        record.callback = [](OKU_WORD param, OKU_WORD, OKU_WORD context) {
            return reinterpret_cast<PagesOfTheHost*>(context)->onPage(*reinterpret_cast<const OKU_PAGE_EVENT*>(param));
        };
        return call(u"OKU/PropertiesPageAdd", wordOf(&record), of);
    }
    OKU_WORD lateAnswer() { return addInformation(askedWord); }

    std::string pageEvents;
    std::string pagesTold;
    OKU_WORD askedWord = 0;
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
    int applied = 0;
    QObject::connect(face.get(), &DialogsFace::applied, [&] { ++applied; });
    EXPECT_EQ(face->apply(page()), QString());
    EXPECT_EQ(paged(), "4:contact ");
    EXPECT_EQ(applied, 1);
    answer = 1;
    EXPECT_EQ(face->confirm(page()), QString());
    EXPECT_EQ(paged(), "5:contact ");
    EXPECT_EQ(face->windows().size(), 2);
    EXPECT_EQ(refusals.size(), 1) << "the user hears of it";
    EXPECT_EQ(face->apply(page()), QString());
    paged();
    EXPECT_EQ(refusals.size(), 2);
    EXPECT_EQ(applied, 1);
    answer = 0;
    EXPECT_EQ(face->confirm(page()), QString());
    EXPECT_EQ(paged(), "5:contact 2:contact 3:contact ");
    EXPECT_TRUE(face->windows().isEmpty());
    EXPECT_EQ(core->dialogs.count(), 0U);
}

TEST_F(PagesOfTheHost, AreNotShownBeforeThePluginHasFilledThem) {
    QList<qsizetype> children;
    QObject::connect(face.get(), &DialogsFace::opened, [&](int number) {
        if (face->window(number)->page) children.append(face->window(number)->children.size());
    });
    EXPECT_EQ(face->openProperties(me, bob, {}), QString());
    EXPECT_EQ(face->openProperties(me, bob, {}), QString());
    paged();
    EXPECT_EQ(children, QList<qsizetype>{1});
    EXPECT_EQ(face->openProperties(me, bob, {}), QString());
    EXPECT_EQ(children, (QList<qsizetype>{1, 1})) << "it comes to the front";
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
    EXPECT_NE(face->openProperties(me, {}, QStringLiteral("other")), QString());
    EXPECT_NE(face->openOptions({}), QString()) << "none was offered";
}

TEST_F(PagesOfTheHost, AreThoseTooThatThePluginHasForOneContact) {
    offer();
    EXPECT_EQ(face->askPropertyPages(me, bob), QString());
    paged();
    EXPECT_EQ(pagesTold, "alice@example.org bob@example.org XMPP/1/Properties:Właściwości Info:Informacje ");
    EXPECT_EQ(face->propertyPages(me).size(), 1) << "those of every contact";
    EXPECT_EQ(face->openProperties(me, bob, QStringLiteral("Info")), QString());
    EXPECT_EQ(paged(), "1:contact ");
    EXPECT_EQ(face->window(page())->title, QStringLiteral("XMPP"));
    EXPECT_EQ(face->openProperties(me, bob, {}), QString()) << "the other page of the same contact";
    EXPECT_EQ(paged(), "1:contact ");
    EXPECT_EQ(face->windows().size(), 4);
    EXPECT_EQ(face->openProperties(me, bob, QStringLiteral("Info")), QString());
    EXPECT_EQ(paged(), "") << "it is open already";
    EXPECT_TRUE(refusals.isEmpty());
    EXPECT_EQ(face->openProperties(me, bob, QStringLiteral("other")), QString());
    paged();
    EXPECT_EQ(refusals.size(), 1) << "the plugin was asked, and has none";
    EXPECT_EQ(lateAnswer(), 0) << "a page is taken only while the plugin is asked";
}

TEST_F(PagesOfTheHost, DoWhatTheirPluginWantsOfTheWindowAround) {
    face->openProperties(me, bob, {});
    paged();
    const auto inside = static_cast<OKU_WORD>(face->windows().value(1));
    EXPECT_EQ(call(u"UI/ParentCommand", inside, 1), 1);
    EXPECT_EQ(paged(), "5:contact 2:contact 3:contact ");
    EXPECT_TRUE(face->windows().isEmpty());
    face->openProperties(me, bob, {});
    paged();
    EXPECT_EQ(call(u"UI/ParentCommand", static_cast<OKU_WORD>(face->windows().value(1)), 2), 1);
    EXPECT_EQ(paged(), "2:contact 3:contact ");
    EXPECT_EQ(call(u"UI/ParentCommand", inside, 1), 0) << "it has gone";
}

TEST_F(PagesOfTheHost, HearOfReturnWhereNoButtonTakesIt) {
    face->openProperties(me, bob, {});
    paged();
    const int inside = face->windows().value(1);
    EXPECT_EQ(face->pressReturn(page(), 0), QString());
    EXPECT_EQ(face->pressReturn(inside, 0), QString());
    const std::string confirmed = "1:" + std::to_string(inside) + "/1/0";
    EXPECT_EQ(heard(), confirmed + " " + confirmed);
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
