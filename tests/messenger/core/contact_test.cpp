// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

class Contacts : public Stage {
protected:
    Contacts() {
        writeAccount({}, QStringLiteral("alice@example.org/home"));
        begin();
    }

    void begin() {
        start();
        watch();
    }

    void watch() {
        QObject::connect(
            &core->contacts, &ContactService::changed, core.get(),
            [this](const QString&, const Contact& contact) { trace.append(QStringLiteral("+") + contact.jid); });
        QObject::connect(&core->contacts, &ContactService::removed, core.get(),
                         [this](const QString&, const QString& jid) { trace.append(QStringLiteral("-") + jid); });
        QObject::connect(&core->sessions, &Sessions::rosterComplete, core.get(),
                         [this](const QString&) { trace.append(QStringLiteral("complete")); });
    }

    ContactList& list() { return core->contacts.list(entry()); }
    Contact contact(const char* jid) { return list().contact(QString::fromLatin1(jid)).value_or(Contact()); }

    void presence(const char16_t* jid, const char16_t* resourceName, std::uint32_t status, const char16_t* text = u"",
                  int priority = 0) {
        auto identity = makeRecord<OKU_CONTACT_RECORD>();
        auto resource = makeRecord<OKU_RESOURCE_INFO>();
        auto state = makeRecord<OKU_CONTACT_STATE>();
        identity.id = jid;
        identity.pfClass = u"XMPP";
        identity.netId = account().netId;
        identity.resource = state.resource = &resource;
        resource.resource = resourceName;
        resource.priority = priority;
        state.contact = &identity;
        state.status = status;
        state.description = text;
        state.time = QDateTime::currentSecsSinceEpoch();
        inPlugin([&] { call(u"OKU/CTL/SetContactState", wordOf(&state)); });
    }

    OKU_WORD find(const char16_t* jid) {
        OKU_CONTACT_IDENTITY identity{};
        identity.id = jid;
        identity.netId = account().netId;
        return call(u"OKU/CTL/FndContact", wordOf(&identity));
    }

    QStringList trace;
};

TEST_F(Contacts, AreRebuiltAsOneChange) {
    logIn({u"bob@example.org", u"carol@example.org", u"dave@example.org"});
    presence(u"bob@example.org", u"work", OKU_STATUS_AWAY, u"obiad");
    inPlugin([&] { receiveMessage(u"bob@example.org", u"hej"); });
    QCoreApplication::processEvents();
    trace.clear();
    inPlugin([&] {
        call(u"OKU/CTL/DeleteAll", wordOf(u"XMPP"), account().netId);
        EXPECT_EQ(list().contacts().size(), 3) << "nothing goes before the rebuild is complete";
        call(u"OKU/CTL/EnableDrawing", 0);
        addContact(u"bob@example.org", u"bob@example.org", u"Kontakty");
        addContact(u"carol@example.org", u"Carol", u"Praca");
        EXPECT_TRUE(trace.isEmpty());
        call(u"OKU/CTL/EnableDrawing", 1);
    });
    EXPECT_TRUE(trace.isEmpty()) << "what changed is told at the end of the turn";
    QCoreApplication::processEvents();
    EXPECT_EQ(trace, (QStringList{QStringLiteral("-dave@example.org"), QStringLiteral("+carol@example.org")}));
    EXPECT_EQ(contact("bob@example.org").unread, 1);
    EXPECT_EQ(contact("bob@example.org").status, Status::away);
    EXPECT_EQ(contact("carol@example.org").name, QStringLiteral("Carol"));
}

TEST_F(Contacts, AreToldAsOneListWhenALoginIsComplete) {
    trace.clear();
    logIn({u"bob@example.org", u"carol@example.org"});
    presence(u"bob@example.org", u"work", OKU_STATUS_AWAY);
    QCoreApplication::processEvents();
    EXPECT_EQ(trace, (QStringList{QStringLiteral("complete"), QStringLiteral("+bob@example.org")}));
    trace.clear();
    logIn({u"carol@example.org"});
    QCoreApplication::processEvents();
    EXPECT_EQ(trace, QStringList(QStringLiteral("complete")))
        << "who is not in the list is gone without a word of its own";
}

TEST_F(Contacts, AreToldOnceForAllThatChangesInATurn) {
    logIn({u"bob@example.org", u"carol@example.org"});
    QCoreApplication::processEvents();
    trace.clear();
    for (const char16_t* resource : {u"a", u"b", u"c"}) {
        presence(u"bob@example.org", resource, OKU_STATUS_ONLINE);
        presence(u"carol@example.org", resource, OKU_STATUS_ONLINE);
    }
    EXPECT_TRUE(trace.isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(trace, (QStringList{QStringLiteral("+bob@example.org"), QStringLiteral("+carol@example.org")}));
    presence(u"bob@example.org", u"d", OKU_STATUS_ONLINE);
    QCoreApplication::processEvents();
    EXPECT_EQ(trace.size(), 3);
}

TEST_F(Contacts, WhoseMessagesComeAreUnreadAndNotChanged) {
    logIn({u"bob@example.org"});
    QCoreApplication::processEvents();
    trace.clear();
    QList<int> unread;
    QObject::connect(&core->contacts, &ContactService::unreadChanged, core.get(),
                     [&](const QString&, const QString&, int count) { unread.append(count); });
    inPlugin([&] { receiveMessage(u"bob@example.org", u"raz"); });
    inPlugin([&] { receiveMessage(u"bob@example.org", u"dwa"); });
    list().clearUnread(QStringLiteral("bob@example.org"));
    list().clearUnread(QStringLiteral("bob@example.org"));
    QCoreApplication::processEvents();
    EXPECT_EQ(unread, (QList<int>{1, 2, 0}));
    EXPECT_TRUE(trace.isEmpty());
}

TEST_F(Contacts, HaveABoundOfResources) {
    logIn({u"bob@example.org"});
    for (int number = 0; number < 200; ++number) {
        const std::u16string name = u"r" + QString::number(number).toStdU16String();
        presence(u"bob@example.org", name.c_str(), OKU_STATUS_ONLINE);
        if (number >= 100) presence(u"bob@example.org", u"r50", OKU_STATUS_AWAY);
    }
    const auto resources = contact("bob@example.org").resources;
    ASSERT_EQ(resources.size(), 64);
    const auto has = [&](const QString& name) {
        return std::any_of(resources.begin(), resources.end(), [&](const Resource& one) { return one.name == name; });
    };
    EXPECT_TRUE(has(QStringLiteral("r199")));
    EXPECT_TRUE(has(QStringLiteral("r50"))) << "the last presence counts, not the first";
    EXPECT_TRUE(has(QStringLiteral("r137")));
    EXPECT_FALSE(has(QStringLiteral("r136"))) << "the oldest make room";
}

TEST_F(Contacts, ShowTheNewestOfEqualResources) {
    logIn({u"bob@example.org"});
    presence(u"bob@example.org", u"a", OKU_STATUS_ONLINE);
    presence(u"bob@example.org", u"b", OKU_STATUS_AWAY);
    EXPECT_EQ(contact("bob@example.org").status, Status::away) << "within one second as well";
    presence(u"bob@example.org", u"a", OKU_STATUS_DND);
    EXPECT_EQ(contact("bob@example.org").status, Status::dnd);
}

TEST_F(Contacts, MayBeAskedForByAThousandWhoWaitForAnAnswer) {
    logIn({});
    notices.clear();
    QStringList asked;
    QObject::connect(&core->authorizations, &Authorizations::requested, core.get(),
                     [&](const QString&, const QString& jid) { asked.append(jid); });
    const auto ask = [&](int number) {
        const std::u16string jid = QStringLiteral("s%1@example.org").arg(number).toStdU16String();
        auto identity = makeRecord<OKU_CONTACT_RECORD>();
        identity.id = jid.c_str();
        identity.netId = account().netId;
        inPlugin([&] { call(u"OKU/PFAskForAuth", wordOf(&identity)); });
    };
    for (int number = 0; number < 1200; ++number) ask(number);
    EXPECT_EQ(asked.size(), 1000);
    EXPECT_EQ(entry().authorizations.list().size(), 1000);
    EXPECT_EQ(notices.size(), 1) << "one for all the rest";
    ask(3);
    EXPECT_EQ(asked.size(), 1001) << "who waits already may ask again";
    EXPECT_EQ(entry().authorizations.list().size(), 1000);
    core->roster.answer(entry(), QStringLiteral("s7@example.org"), 3);
    ask(1100);
    EXPECT_EQ(asked.last(), QStringLiteral("s1100@example.org")) << "an answer makes room";
    ask(1101);
    EXPECT_EQ(notices.size(), 2);
}

TEST_F(Contacts, StayWhenTheServerGivesNoList) {
    logIn({u"bob@example.org"});
    inPlugin([&] { account().flags = 0; });
    notices.clear();
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTED | OKU_FLAG_AUTHORIZED; });
    inPlugin([&] {
        // An error in answer to the roster request: the list is emptied, and nothing follows.
        raise(OKU_HOOK_ROSTER_COMPLETE, OKU_PHASE_NOTICE);
        call(u"OKU/CTL/DeleteAll", wordOf(u"XMPP"), account().netId);
    });
    EXPECT_EQ(list().contacts().size(), 1);
    EXPECT_EQ(notices.size(), 1);
    EXPECT_TRUE(entry().ready());
    inPlugin([&] {
        call(u"OKU/CTL/EnableDrawing", 0);
        addContact(u"eve@example.org", u"eve", u"Kontakty");
        call(u"OKU/CTL/EnableDrawing", 1);
    });
    EXPECT_EQ(list().contacts().size(), 2) << "a push after it is no rebuild";
    restart();
    EXPECT_EQ(list().contacts().size(), 2) << "and it is the list of the next start";
}

TEST_F(Contacts, AreShownBeforeALoginAsTheyWereLastKnown) {
    logIn({u"bob@example.org", u"carol@example.org"});
    presence(u"bob@example.org", u"work", OKU_STATUS_ONLINE);
    restart();
    EXPECT_EQ(list().contacts().size(), 2);
    EXPECT_EQ(contact("bob@example.org").status, Status::offline);
    inPlugin([&] { call(u"OKU/CTL/DeleteAll", wordOf(u"XMPP"), account().netId); });
    EXPECT_EQ(list().contacts().size(), 2);
}

TEST_F(Contacts, SurviveADamagedFile) {
    core.reset();
    QFile file(directory.filePath(QStringLiteral("tiny.contacts")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray damaged = "[{\"jid\": 5}, 7, {\"jid\":\"bob@example.org\"}, ";
    file.write(damaged);
    file.close();
    begin();
    EXPECT_TRUE(list().contacts().isEmpty());
    logIn({u"bob@example.org"});
    EXPECT_EQ(list().contacts().size(), 1);
    const auto aside = QDir(directory.path()).entryList({QStringLiteral("tiny.contacts.damaged-*")});
    ASSERT_EQ(aside.size(), 1);
    QFile kept(directory.filePath(aside.first()));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), damaged);
    EXPECT_EQ(notices.filter(aside.first()).size(), 1);
    restart();
    EXPECT_EQ(list().contacts().size(), 1);
    EXPECT_EQ(notices.filter(QStringLiteral("damaged")).size(), 1) << "the new file is whole";
}

TEST_F(Contacts, AreWrittenAgainAfterAFailureThatIsToldOnce) {
    const QString path = directory.filePath(QStringLiteral("tiny.contacts"));
    ASSERT_TRUE(QDir().mkdir(path));  // a folder in its place cannot be replaced, not even by root
    logIn({u"bob@example.org"});
    const auto told = [&] { return notices.filter(path).size(); };
    EXPECT_EQ(told(), 1);
    inPlugin([&] { addContact(u"ewa@example.org", u"Ewa", u"Kontakty"); });
    list().save();
    EXPECT_EQ(told(), 1);
    ASSERT_TRUE(QDir().rmdir(path));
    inPlugin([&] { addContact(u"jan@example.org", u"Jan", u"Kontakty"); });
    EXPECT_TRUE(waitFor([&] { return QFile::exists(path); })) << "a change writes what waits as well";
    restart();
    EXPECT_TRUE(list().has(QStringLiteral("ewa@example.org")));
    EXPECT_TRUE(list().has(QStringLiteral("jan@example.org")));
}

TEST_F(Contacts, AreNotWrittenAgainWhenALoginBringsTheSame) {
    const QString path = directory.filePath(QStringLiteral("tiny.contacts"));
    logIn({u"bob@example.org", u"ewa@example.org"});
    ASSERT_TRUE(QFile::remove(path));
    logIn({u"bob@example.org", u"ewa@example.org"});
    EXPECT_FALSE(QFile::exists(path));
    logIn({u"bob@example.org"});
    EXPECT_TRUE(QFile::exists(path));
    ASSERT_TRUE(QFile::remove(path));
    logIn({u"bob@example.org", u"jan@example.org"});
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(Contacts, StandByGroupThenByName) {
    logIn({});
    inPlugin([&] {
        addContact(u"c@example.org", u"Zenon", u"Dom");
        addContact(u"a@example.org", u"Ala", u"Praca");
        addContact(u"d@example.org", u"Adam", u"Dom");
        addContact(u"b@example.org", u"Adam", u"Dom");
    });
    QStringList order;
    for (const Contact& one : list().contacts()) order.append(one.jid.left(1));
    EXPECT_EQ(order.join(QString()), QStringLiteral("bdca"));
}

TEST_F(Contacts, ComeAndGoWithPushes) {
    logIn({u"bob@example.org"});
    trace.clear();
    inPlugin([&] {
        call(u"OKU/CTL/EnableDrawing", 0);
        EXPECT_EQ(find(u"nobody@example.org"), 0);
        const OKU_WORD handle = find(u"bob@example.org");
        EXPECT_NE(handle, 0);
        EXPECT_EQ(call(u"OKU/CTL/DelContact", handle), 1);
        EXPECT_EQ(call(u"OKU/CTL/DelContact", handle), 0);
        addContact(u"Eve@Example.org", u"Ewa", u"Praca");
        call(u"OKU/CTL/EnableDrawing", 1);
    });
    QCoreApplication::processEvents();
    EXPECT_EQ(trace, (QStringList{QStringLiteral("-bob@example.org"), QStringLiteral("+eve@example.org")}));
}

TEST_F(Contacts, ShowTheResourceWithTheHighestPriority) {
    logIn();
    presence(u"bob@example.org", u"a", OKU_STATUS_ONLINE, u"", 1);
    presence(u"bob@example.org", u"b", OKU_STATUS_DND, u"zajęty", 5);
    EXPECT_EQ(contact("bob@example.org").status, Status::dnd);
    EXPECT_EQ(contact("bob@example.org").description, QStringLiteral("zajęty"));
    presence(u"bob@example.org", u"b", OKU_STATUS_OFFLINE);
    EXPECT_EQ(contact("bob@example.org").status, Status::online);
    EXPECT_EQ(contact("bob@example.org").resources.size(), 1);
    presence(u"bob@example.org", u"", OKU_STATUS_OFFLINE);
    EXPECT_EQ(contact("bob@example.org").status, Status::offline);
    EXPECT_TRUE(contact("bob@example.org").resources.isEmpty());
    presence(u"stranger@example.org", u"x", OKU_STATUS_ONLINE);
    EXPECT_EQ(list().contacts().size(), 1);
}

TEST_F(Contacts, AreOfflineWithTheReasonWhenTheyCannotBeReached) {
    logIn({u"bob@example.org"});
    presence(u"bob@example.org", u"", OKU_STATUS_ERROR, u"nie ma takiego serwera");
    EXPECT_EQ(contact("bob@example.org").status, Status::offline);
    EXPECT_EQ(contact("bob@example.org").description, QStringLiteral("nie ma takiego serwera"));
    EXPECT_TRUE(contact("bob@example.org").resources.isEmpty());
    presence(u"bob@example.org", u"a", OKU_STATUS_ONLINE);
    presence(u"bob@example.org", u"", OKU_STATUS_ERROR, u"odmowa");
    EXPECT_EQ(contact("bob@example.org").status, Status::online);
    presence(u"bob@example.org", u"a", OKU_STATUS_ERROR, u"limit");
    EXPECT_EQ(contact("bob@example.org").status, Status::offline);
}

TEST_F(Contacts, CarrySubscriptionAndGroupsAsTheServerTellsThem) {
    logIn({u"bob@example.org", u"carol@example.org"});
    inPlugin([&] {
        offerIncoming(
            "<iq type='result' id='r1'><query xmlns='jabber:iq:roster'>"
            "<item jid='Bob@example.org' subscription='both'><group>Praca &amp; dom</group><group>B</group></item>"
            "<item jid='new@example.org' subscription='none' ask='subscribe'/></query></iq>");
        answerRoster({u"bob@example.org", u"new@example.org"});
    });
    EXPECT_EQ(contact("bob@example.org").subscription, QStringLiteral("both"));
    EXPECT_EQ(list().groups(QStringLiteral("bob@example.org")),
              (QStringList{QStringLiteral("Praca & dom"), QStringLiteral("B")}));
    EXPECT_EQ(contact("new@example.org").subscription, QStringLiteral("none"));
    EXPECT_TRUE(contact("new@example.org").waiting);
}

TEST_F(Contacts, KeepAllGroupsWhenOneIsRenamed) {
    logIn({u"bob@example.org"});
    inPlugin([&] {
        offerIncoming(
            "<iq type='set'><query xmlns='jabber:iq:roster'><item jid='bob@example.org' subscription='both'>"
            "<group>A</group><group>B</group></item></query></iq>");
    });
    EXPECT_EQ(core->roster.rename(entry(), QStringLiteral("bob@example.org"), QStringLiteral("Bob <3")), QString());
    const std::string& sent = plugin().log.back();
    EXPECT_NE(sent.find("<item jid=\"bob@example.org\" name=\"Bob &lt;3\"><group>A</group><group>B</group></item>"),
              std::string::npos)
        << sent;
    EXPECT_EQ(core->roster.move(entry(), QStringLiteral("bob@example.org"), QStringLiteral("C")), QString());
    EXPECT_NE(plugin().log.back().find("<group>C</group></item>"), std::string::npos);
    EXPECT_EQ(plugin().log.back().find("<group>A</group>"), std::string::npos);
}

TEST_F(Contacts, AreAddedWithADisplayNameAndAsked) {
    logIn({});
    plugin().log.clear();
    EXPECT_EQ(core->roster.add(entry(), QStringLiteral("Bob@example.org/x"), {}, QStringLiteral("Praca")), QString());
    ASSERT_EQ(plugin().log.size(), 2U);
    EXPECT_NE(plugin().log[0].find("<item jid=\"bob@example.org\" name=\"bob\"><group>Praca</group></item>"),
              std::string::npos);
    EXPECT_EQ(plugin().log[1], "raw <presence to=\"bob@example.org\" type=\"subscribe\"/>");
    EXPECT_FALSE(core->roster.add(entry(), QStringLiteral("b ob@example.org"), {}, {}).isEmpty());
    EXPECT_FALSE(core->roster.rename(entry(), QStringLiteral("no@example.org"), {}).isEmpty());
}

TEST_F(Contacts, AreAskedOnlyAtAnAddress) {
    logIn({});
    plugin().log.clear();
    for (const char* nobody : {"nie adres", "@", "bob@", "/dom"}) {
        const QString jid = QString::fromLatin1(nobody);
        EXPECT_EQ(core->roster.subscribe(entry(), jid), QStringLiteral("To nie jest adres: ") + jid);
        EXPECT_EQ(core->roster.add(entry(), jid, {}, {}), QStringLiteral("To nie jest adres: ") + jid);
    }
    EXPECT_EQ(core->roster.subscribe(entry(), {}), QStringLiteral("Nie podano adresu."));
    EXPECT_TRUE(plugin().log.empty());
    EXPECT_EQ(core->roster.subscribe(entry(), QStringLiteral("Bob@example.org/x")), QString());
    EXPECT_EQ(core->roster.subscribe(entry(), QStringLiteral("icq.example.org")), QString());
    EXPECT_EQ(plugin().log, (std::vector<std::string>{"raw <presence to=\"bob@example.org\" type=\"subscribe\"/>",
                                                      "raw <presence to=\"icq.example.org\" type=\"subscribe\"/>"}));
}

TEST_F(Contacts, AreRemovedAndAnsweredByThePluginsHandlers) {
    logIn();
    EXPECT_EQ(core->roster.remove(entry(), QStringLiteral("bob@example.org")), QString());
    EXPECT_TRUE(logged("delete bob@example.org"));
    auto identity = makeRecord<OKU_CONTACT_RECORD>();
    identity.id = u"eve@example.org";
    identity.netId = account().netId;
    QStringList asked;
    QObject::connect(&core->authorizations, &Authorizations::requested, core.get(),
                     [&](const QString&, const QString& jid) { asked.append(jid); });
    inPlugin([&] { call(u"OKU/PFAskForAuth", wordOf(&identity)); });
    EXPECT_EQ(asked, QStringList(QStringLiteral("eve@example.org")));
    EXPECT_EQ(entry().authorizations.list(), asked);
    EXPECT_EQ(core->roster.answer(entry(), QStringLiteral("eve@example.org"), 3), QString());
    EXPECT_TRUE(logged("authorization eve@example.org 3"));
    EXPECT_TRUE(entry().authorizations.list().isEmpty());
}

TEST_F(Contacts, CannotBeChangedWhileOffline) {
    EXPECT_FALSE(core->roster.add(entry(), QStringLiteral("bob@example.org"), {}, {}).isEmpty());
    EXPECT_FALSE(core->roster.subscribe(entry(), QStringLiteral("bob@example.org")).isEmpty());
    EXPECT_FALSE(core->roster.answer(entry(), QStringLiteral("bob@example.org"), 2).isEmpty());
    EXPECT_TRUE(plugin().log.empty());
}

TEST_F(Contacts, RefusalsOfTheServerAreTold) {
    logIn();
    core->roster.rename(entry(), QStringLiteral("bob@example.org"), QStringLiteral("B"));
    const std::string& sent = plugin().log.back();
    const std::size_t at = sent.find("id=\"") + 4;
    const std::string id = sent.substr(at, sent.find('"', at) - at);
    std::string left;
    inPlugin([&] {
        left = offerIncoming("<iq type='error' id='" + id + "'><error type='cancel'><not-allowed/></error></iq><a/>");
    });
    EXPECT_EQ(left.find("error"), std::string::npos) << "the plugin never asked, so it must not see the answer";
    EXPECT_NE(left.find("<a/>"), std::string::npos);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(QStringLiteral("not-allowed")));
}

}  // namespace
}  // namespace oku::test
