// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What people tell of themselves, pop-ups, and the addresses that the plugin wants opened.
#include "tests/messenger/core/stage.h"

#include "host/oku/contact.h"
#include "host/oku/notify.h"
#include "host/oku/pep.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

class NewsTest : public Stage {
protected:
    NewsTest() {
        writeAccount({}, QStringLiteral("alice@example.org"));
        MessengerOptions given = options();
        given.linkOpener = [this](const QString& address) {
            opened.append(address);
            return canOpen;
        };
        start(given);
        hear();
    }
    void hear() {
        QObject::connect(&core->news, &PersonalNews::tune, core.get(),
                         [this](const QString& account, const QString& from, const Tune& tune) {
                             told.append(QStringList{account, from, tune.artist, tune.title, tune.source, tune.track,
                                                     tune.uri, tune.length}
                                             .join(u'|'));
                         });
        QObject::connect(&core->news, &PersonalNews::mood, core.get(),
                         [this](const QString&, const QString& from, const Mood& mood) {
                             told.append(QStringList{from, mood.name, mood.text}.join(u'|'));
                         });
        QObject::connect(&core->news, &PersonalNews::location, core.get(),
                         [this](const QString&, const QString& from, const Location& location) {
                             QStringList fields{from};
                             for (auto at = location.begin(); at != location.end(); ++at)
                                 fields.append(at.key() + u'=' + at.value());
                             told.append(fields.join(u'|'));
                         });
        QObject::connect(&core->popups, &Popups::shown, core.get(),
                         [this](const Popup& popup) { shown.append(popup); });
        QObject::connect(&core->popups, &Popups::gone, core.get(), [this](int number) { gone.append(number); });
    }

    OKU_CONTACT_IDENTITY identity(const char16_t* jid) {
        OKU_CONTACT_IDENTITY result{};
        result.id = jid;
        result.pfClass = u"XMPP";
        result.netId = account().netId;
        return result;
    }

    /// Offers an event as the plugin does; its answer is whether a listener took it.
    template <typename Data>
    OKU_WORD offer(const char16_t* from, std::uint32_t kind, const Data& data) {
        if (!event) event = HostTable::table()->evCreate(u"XMPP/OnPEPEvent");
        auto record = makeRecord<OKU_PEP_EVENT>();
        record.own = identity(u"alice@example.org");
        record.contact = identity(from);
        record.kind = kind;
        OKU_WORD taken = 0;
        inPlugin([&] { taken = HostTable::table()->evNotify(event, wordOf(&record), wordOf(&data)); });
        return taken;
    }
    OKU_PEP_MOOD_DATA mood(const char16_t* name, const char16_t* text = u"") {
        auto data = makeRecord<OKU_PEP_MOOD_DATA>();
        data.mood = name;
        data.text = text;
        return data;
    }

    /// Serves the account's "PFEPublishData" and notes what comes.
    void servePublishing(OKU_WORD answer = 1) {
        publishAnswer = answer;
        const std::u16string name = entry().service(u"PFEPublishData");
        service = HostTable::table()->fnCreate(
            name.c_str(),
            [](OKU_WORD param, OKU_WORD extra, OKU_WORD context) -> OKU_WORD {
                auto& test = *reinterpret_cast<NewsTest*>(context);
                test.note(*reinterpret_cast<const OKU_PEP_PUBLISH*>(param), extra);
                return test.publishAnswer;
            },
            wordOf(this));
        ASSERT_NE(service, 0);
    }
    void note(const OKU_PEP_PUBLISH& publish, OKU_WORD extra) {
        QStringList line{QString::number(publish.kind)};
        // All three are a size and then texts, the last of them the item's id, which nobody sets.
        const auto size = *reinterpret_cast<const std::uint32_t*>(extra);
        const auto* texts = reinterpret_cast<const char16_t* const*>(extra + 8);
        for (std::uint32_t at = 0; at + 1 < (size - 8) / 8; ++at)
            if (texts[at]) line.append(QStringLiteral("%1=%2").arg(at).arg(wideText(texts[at])));
        published.append(line.join(u'|'));
    }

    void popUp(const char16_t* text, const char16_t* key, bool clickable = true, std::uint32_t kind = OKU_NOTIFY_MAIL) {
        auto record = makeRecord<OKU_NOTIFY>();
        record.title = u"Nowa poczta";
        record.text = text;
        record.key = key;
        record.kind = kind;
        record.mode = key ? OKU_NOTIFY_MODE_MAIL_KEPT : OKU_NOTIFY_MODE_MAIL;
        record.user = wordOf(this);
        if (clickable) {
            record.callback = [](OKU_WORD param, OKU_WORD, OKU_WORD) -> OKU_WORD {
                const auto* action = reinterpret_cast<const OKU_NOTIFY_EVENT*>(param);
                auto& test = *reinterpret_cast<NewsTest*>(action->user);
                test.actions.append(static_cast<int>(action->action));
                if (action->action == OKU_NOTIFY_CLICKED || test.opensAtAnyEnd) test.openLink(test.link);
                return 0;
            };
        }
        inPlugin([&] { call(u"OKU/ShowStandardNotify", wordOf(&record)); });
    }
    void openLink(const QString& address) { call(u"UI/OpenLink", wordOf(address)); }
    QList<int> openPopups() const {
        QList<int> numbers;
        for (const Popup& one : core->popups.open()) numbers.append(one.number);
        return numbers;
    }
    OKU_WORD handleOf(const char16_t* jid) {
        const OKU_CONTACT_IDENTITY contact = identity(jid);
        return call(u"OKU/CTL/FndContact", wordOf(&contact));
    }
    void icon(const char16_t* name, OKU_WORD contact, const char16_t* which, const char16_t* tooltip) {
        auto record = makeRecord<OKU_CONTACT_ICON>();
        record.icon = which;
        record.tooltip = tooltip;
        inPlugin([&] { EXPECT_EQ(call(name, contact, wordOf(&record)), contact ? 1 : 0); });
    }

    QStringList opened;
    bool canOpen = true;
    bool opensAtAnyEnd = false;  ///< the plugin opens its address also for a pop-up that goes unread
    QString link = QStringLiteral("https://mail.example.org/");
    QStringList told;
    QList<Popup> shown;
    QList<int> gone;
    QList<int> actions;
    QStringList published;
    OKU_WORD publishAnswer = 1;
    OKU_WORD event = 0;
    OKU_WORD service = 0;
};

TEST_F(NewsTest, WhatContactsPublishIsTold) {
    logIn();
    auto tune = makeRecord<OKU_PEP_TUNE_DATA>();
    tune.artist = u"Czesław";
    tune.title = u"Sen";
    tune.source = u"Album";
    tune.track = u"3";
    tune.uri = u"";
    tune.length = u"180";
    EXPECT_EQ(offer(u"Bob@example.org", OKU_PEP_TUNE, tune), 0) << "the plugin goes on with it";
    EXPECT_EQ(offer(u"alice@example.org", OKU_PEP_MOOD, mood(u"happy", u"bo tak")), 0);
    auto place = makeRecord<OKU_PEP_LOCATION_DATA>();
    place.accuracy = u"20";
    place.uri = u"geo:1,2";
    place.lat = u"";
    EXPECT_EQ(offer(u"bob@example.org", OKU_PEP_LOCATION, place), 0);
    EXPECT_EQ(told, (QStringList{QStringLiteral("alice@example.org|bob@example.org|Czesław|Sen|Album|3||180"),
                                 QStringLiteral("alice@example.org|happy|bo tak"),
                                 QStringLiteral("bob@example.org|accuracy=20|uri=geo:1,2")}));
}

TEST_F(NewsTest, WhatStrangersPublishEndsHere) {
    logIn();
    EXPECT_EQ(offer(u"mallory@example.net", OKU_PEP_MOOD, mood(u"happy")), 1);
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(NewsTest, AModuleThatIsLoadedAnewIsHeardOnce) {
    core->queue.post({}, [this] {
        core->unload();
        core->load();
    });
    findPlugin();
    logIn();
    EXPECT_EQ(offer(u"bob@example.org", OKU_PEP_MOOD, mood(u"sad")), 0);
    EXPECT_EQ(told, QStringList(QStringLiteral("bob@example.org|sad|")));
}

TEST_F(NewsTest, RecordsOfAnotherSizeAreLeftAlone) {
    logIn();
    auto small = mood(u"happy");
    small.size = 8;
    EXPECT_EQ(offer(u"bob@example.org", OKU_PEP_MOOD, small), 0);
    EXPECT_EQ(offer(u"bob@example.org", 99, mood(u"happy")), 0);
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(NewsTest, IconsBecomeWhatIsKnownOfAContact) {
    logIn();
    pass(0);
    QList<Contact> changes;
    QObject::connect(&core->contacts, &ContactService::changed, core.get(),
                     [&](const QString&, const Contact& contact) { changes.append(contact); });
    const OKU_WORD bob = handleOf(u"bob@example.org");
    icon(u"OKU/CTL/AddContactIcon", bob, u"XMPP/UserTune", u"Tytuł: Sen\r\nAlbum: Dom");
    icon(u"OKU/CTL/AddContactIcon", bob, u"XMPP/UserTune", u"Tytuł: Jawa\r\nAlbum: Dom");
    icon(u"OKU/CTL/AddContactIcon", bob, u"XMPP/UserMood", u"Nastrój: happy");
    icon(u"OKU/CTL/AddContactIcon", bob, u"XMPP/Icon", nullptr);
    icon(u"OKU/CTL/AddContactIcon", 0, u"XMPP/UserMood", u"Nastrój: sad");
    ASSERT_TRUE(waitFor([&] { return !changes.isEmpty(); }));
    ASSERT_EQ(changes.size(), 1) << "all of it at once";
    EXPECT_EQ(changes[0].tune, QStringLiteral("Tytuł: Jawa\nAlbum: Dom"));
    EXPECT_EQ(changes[0].mood, QStringLiteral("Nastrój: happy"));
    icon(u"OKU/CTL/DelContactIcon", bob, u"XMPP/UserTune", u"");
    ASSERT_TRUE(waitFor([&] { return changes.size() == 2; }));
    EXPECT_TRUE(changes[1].tune.isEmpty());
    EXPECT_EQ(changes[1].mood, QStringLiteral("Nastrój: happy"));
    inPlugin([&] { call(u"OKU/CTL/SetAllOffline", wordOf(u"XMPP"), account().netId); });
    ASSERT_TRUE(waitFor([&] { return changes.size() == 3; }));
    EXPECT_TRUE(changes[2].mood.isEmpty()) << "after the connection nobody knows";
}

TEST_F(NewsTest, NewsArePublishedAndTakenBack) {
    servePublishing();
    logIn();
    EXPECT_EQ(core->news.publish(entry(), Tune{QStringLiteral("A & B"), QStringLiteral("Sen"), {}, {}, {}, {}}),
              QString());
    EXPECT_EQ(core->news.publish(entry(), Tune{}), QString());
    EXPECT_EQ(core->news.publish(entry(), Mood{QStringLiteral("in_love"), QStringLiteral("<b> & \x01 koniec")}),
              QString());
    EXPECT_EQ(core->news.publish(entry(), Mood{}), QString());
    EXPECT_EQ(core->news.publish(entry(), Location{{QStringLiteral("lat"), QStringLiteral("52")},
                                                   {QStringLiteral("uri"), QStringLiteral("u")}}),
              QString());
    EXPECT_EQ(core->news.publish(entry(), Location{}), QString());
    EXPECT_EQ(published, (QStringList{QStringLiteral("1|1=A & B|2=Sen"), QStringLiteral("1"),
                                      QStringLiteral("2|0=in_love|1=&lt;b&gt; &amp;  koniec"), QStringLiteral("2"),
                                      QStringLiteral("3|11=52|21=u"), QStringLiteral("3")}));
}

TEST_F(NewsTest, WhatCannotBePublishedIsRefusedWithAReason) {
    servePublishing(0);
    EXPECT_EQ(core->news.publish(entry(), Mood{QStringLiteral("happy"), {}}), notConnected());
    logIn();
    EXPECT_TRUE(core->news.publish(entry(), Mood{QStringLiteral("x/><evil"), {}}).contains(QStringLiteral("x/><evil")));
    EXPECT_FALSE(core->news.publish(entry(), Mood{{}, QStringLiteral("tekst")}).isEmpty());
    EXPECT_TRUE(core->news.publish(entry(), Location{{QStringLiteral("planet"), QStringLiteral("3")}})
                    .contains(QStringLiteral("planet")));
    EXPECT_TRUE(published.isEmpty());
    EXPECT_FALSE(core->news.publish(entry(), Mood{QStringLiteral("happy"), {}}).isEmpty()) << "the server takes none";
}

TEST_F(NewsTest, PublishingWaitsWhileThePluginIsHeld) {
    servePublishing(0);
    logIn();
    inPlugin([&] {
        EXPECT_EQ(core->news.publish(entry(), Mood{QStringLiteral("happy"), {}}), QString());
        EXPECT_TRUE(published.isEmpty());
    });
    EXPECT_EQ(published.size(), 1);
    ASSERT_EQ(notices.size(), 1) << "the failure that comes late is told";
}

TEST_F(NewsTest, APopUpIsToldAndKeptWhereAClickOpensSomething) {
    popUp(u"Ilość nieprzeczytanych: 1\r\n1 - \"Temat\"", nullptr);
    popUp(u"bez niczego", nullptr, false);
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].kind, PopupKind::mail);
    EXPECT_EQ(shown[0].text, QStringLiteral("Ilość nieprzeczytanych: 1\n1 - \"Temat\""));
    EXPECT_FALSE(shown[0].stays);
    EXPECT_TRUE(shown[0].opens);
    EXPECT_FALSE(shown[1].opens);
    EXPECT_EQ(openPopups(), QList<int>{shown[0].number});
}

TEST_F(NewsTest, ANewerPopUpTakesThePlaceOfTheOneWithItsKey) {
    popUp(u"jeden", u"GMAIL/1/XMPP");
    popUp(u"dwa", u"GMAIL/1/XMPP");
    popUp(u"inne", u"GMAIL/2/XMPP");
    popUp(u"bez nazwy", nullptr);
    popUp(u"bez nazwy", nullptr);
    EXPECT_EQ(gone, QList<int>{shown[0].number});
    EXPECT_EQ(actions, QList<int>{OKU_NOTIFY_GONE});
    EXPECT_EQ(openPopups().size(), 4);
    EXPECT_TRUE(shown[1].stays);
}

TEST_F(NewsTest, ATuneOfTheSameKeyDoesNotTakeTheMailsPlace) {
    popUp(u"poczta", u"GMAIL/1/XMPP");
    popUp(u"utwór", u"GMAIL/1/XMPP", false, OKU_NOTIFY_TUNE);
    EXPECT_TRUE(gone.isEmpty()) << "whoever publishes a tune chooses its key";
    EXPECT_EQ(openPopups(), QList<int>{shown[0].number});
}

TEST_F(NewsTest, PopUpsHaveABound) {
    for (int at = 0; at < 40; ++at) popUp(u"x", nullptr);
    EXPECT_EQ(openPopups().size(), 32);
    EXPECT_EQ(gone.size(), 8);
    EXPECT_EQ(openPopups().first(), shown[8].number) << "the oldest go";
}

TEST_F(NewsTest, AClickOpensTheMailPageOnceAndThroughTheQueue) {
    popUp(u"jeden", nullptr);
    inPlugin([&] {
        EXPECT_TRUE(core->popups.click(shown[0].number));
        EXPECT_TRUE(actions.isEmpty()) << "not while the plugin is on the stack";
    });
    EXPECT_EQ(actions, QList<int>{OKU_NOTIFY_CLICKED});
    EXPECT_EQ(opened, QStringList(QStringLiteral("https://mail.example.org/")));
    EXPECT_FALSE(core->popups.click(shown[0].number));
    EXPECT_FALSE(core->popups.close(shown[0].number));
}

TEST_F(NewsTest, OnlyAClickOpensAnAddress) {
    inPlugin([&] { openLink(QStringLiteral("https://evil.example/")); });
    opensAtAnyEnd = true;
    popUp(u"jeden", nullptr);
    core->popups.close(shown[0].number);
    EXPECT_TRUE(opened.isEmpty());
    ASSERT_EQ(notices.size(), 2);
    EXPECT_TRUE(notices[0].contains(QStringLiteral("https://evil.example/")));
    EXPECT_TRUE(notices[1].contains(link));
}

TEST_F(NewsTest, OnlyAddressesOfTheWebOfMailAndOfXmppAreOpened) {
    const QStringList good{QStringLiteral("http://example.org/a?b=c#d"), QStringLiteral("https://example.org/"),
                           QStringLiteral("mailto:bob@example.org"), QStringLiteral("xmpp:bob@example.org?message")};
    const QStringList bad{QStringLiteral("file:///etc/passwd"),
                          QStringLiteral("javascript:alert(1)"),
                          QStringLiteral("--help"),
                          QStringLiteral("/bin/sh"),
                          QStringLiteral("https:"),
                          QStringLiteral("mailto:"),
                          QString(),
                          QStringLiteral("smb://server/share"),
                          QStringLiteral("http://example.org/") + QString(5000, u'a')};
    for (const QString& address : good + bad) {
        link = address;
        popUp(u"jeden", nullptr);
        core->popups.click(shown.last().number);
    }
    EXPECT_EQ(opened, good);
    EXPECT_EQ(notices.size(), bad.size());
}

TEST_F(NewsTest, WithoutAProgramTheAddressIsTold) {
    canOpen = false;
    popUp(u"jeden", nullptr);
    core->popups.click(shown[0].number);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(link));
}

TEST_F(NewsTest, AClickThatWaitsIsNotToldToAModuleThatHasGone) {
    popUp(u"jeden", nullptr);
    core->queue.post({}, [this] {
        EXPECT_TRUE(core->popups.click(shown[0].number));
        core->unload();
    });
    EXPECT_TRUE(actions.isEmpty());
}

TEST_F(NewsTest, PopUpsGoWithTheirModule) {
    popUp(u"jeden", nullptr);
    popUp(u"dwa", nullptr);
    inPlugin([&] {
        core->popups.click(shown[1].number);
        core->queue.post({}, [&] { EXPECT_EQ(actions.size(), 1); });
    });
    core->queue.post({}, [this] { core->unload(); });
    EXPECT_EQ(gone.size(), 2);
    EXPECT_TRUE(openPopups().isEmpty());
    EXPECT_EQ(actions, QList<int>{OKU_NOTIFY_CLICKED}) << "nobody is told who is gone";
}

}  // namespace
}  // namespace oku::test
