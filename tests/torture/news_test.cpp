// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Much and awkward news: mail, personal events and questions of web sites by the thousand, and deep ones. Each is told,
// and nothing of it stays.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "host/oku/notify.h"
#include "host/oku/pep.h"
#include "tests/torture/allocations.h"
#include "tests/torture/client.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr std::size_t kMany = 5000;
constexpr std::size_t kLittle = 16 * 1024;  // what buffers may keep for the next piece

std::string repeated(std::size_t times, const std::string& text) {
    std::string all;
    all.reserve(times * text.size());
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

std::string message(const std::string& from, const std::string& node, const std::string& items) {
    return "<message from='" + from +
           "'><event xmlns='http://jabber.org/protocol/pubsub#event'><items node='http://jabber.org/protocol/" + node +
           "'>" + items + "</items></event></message>";
}

std::string item(const std::string& node, const std::string& payload) {
    return "<item><" + node + " xmlns='http://jabber.org/protocol/" + node + "'>" + payload + "</" + node + "></item>";
}

class News : public testing::Test {
protected:
    News() {
        client.logIn();
        client.receive(kNet, "<presence from='contact1@example.org/desk'/>");
        client.host.before = [this](const Call& call) -> std::optional<OKU_WORD> {
            ++calls[narrow(call.name)];
            if (call.name == u"OKU/ShowStandardNotify")
                lengthOfNotice = textAt(reinterpret_cast<const OKU_NOTIFY*>(call.param)->text).size();
            return std::nullopt;
        };
    }

    /// What stays of a text after the one before it was of the same kind.
    std::size_t keptOf(const std::string& text) {
        client.receive(kNet, text);
        const std::size_t before = living().bytes;
        client.receive(kNet, text);
        const std::size_t after = living().bytes;
        return after > before ? after - before : 0;
    }

    Client client;
    std::map<std::string, int> calls;
    std::size_t lengthOfNotice = 0;
};

TEST_F(News, ThousandsOfMailsAreOnePopUp) {
    const std::string thread =
        "<mail-thread-info><senders><sender name='Bob'/></senders><subject>Obiad</subject></mail-thread-info>";
    EXPECT_LT(keptOf("<iq type='result' id='m'><mailbox>" + repeated(kMany, thread) + "</mailbox></iq>"), kLittle);
    EXPECT_EQ(calls["OKU/ShowStandardNotify"], 2);
    EXPECT_GT(lengthOfNotice, kMany * std::string("\r\n1 - Bob: \"Obiad\"").size());
}

TEST_F(News, ThousandsOfSendersGiveTheLast) {
    EXPECT_LT(keptOf("<iq type='result' id='m'><mailbox><mail-thread-info><senders>" +
                     repeated(kMany, "<sender name='Bob'/>") +
                     "<sender name='Eve'/></senders><subject>s</subject></mail-thread-info></mailbox></iq>"),
              kLittle);
    EXPECT_EQ(lengthOfNotice, std::u16string(u"Ilość nieprzeczytanych: 1\r\n1 - Eve: \"s\"").size());
}

TEST_F(News, ThousandsOfItemsAreAllTold) {
    EXPECT_LT(keptOf(message("contact1@example.org", "tune", repeated(kMany, item("tune", "<title>t</title>")))),
              kLittle);
    EXPECT_EQ(calls["evNotify"], static_cast<int>(2 * kMany));
    EXPECT_EQ(calls["OKU/ShowStandardNotify"], static_cast<int>(2 * kMany));
}

TEST_F(News, ThousandsOfMoodsInOneAreOne) {
    EXPECT_LT(keptOf(message("contact1@example.org", "mood", item("mood", repeated(kMany, "<sad/>") + "<happy/>"))),
              kLittle);
    EXPECT_EQ(calls["evNotify"], 2);
    EXPECT_EQ(lengthOfNotice, std::u16string(u"Nastrój: happy").size());
}

TEST_F(News, OfThousandsOfStrangersNothingStays) {
    const auto tell = [this](std::size_t from) {
        for (std::size_t i = from; i < from + kMany; ++i)
            client.receive(kNet,
                           message("stranger" + std::to_string(i) + "@example.com", "mood", item("mood", "<happy/>")));
    };
    tell(0);
    const std::size_t before = living().bytes;
    tell(kMany);
    EXPECT_LT(living().bytes, before + kLittle);
    EXPECT_EQ(calls["evNotify"], static_cast<int>(2 * kMany));
}

TEST_F(News, AreReadHoweverDeepTheyAre) {
    const std::string deep = repeated(kMany, "<a>") + repeated(kMany, "</a>");
    EXPECT_LT(keptOf(message("contact1@example.org", "tune", item("tune", deep + "<title>t</title>")) +
                     message("contact1@example.org", "mood", item("mood", "<happy>" + deep + "</happy>")) +
                     message("contact1@example.org", "geoloc", item("geoloc", "<lat>" + deep + "</lat>")) +
                     "<iq id='m'><mailbox><mail-thread-info><senders>" + deep +
                     "</senders><subject>s</subject></mail-thread-info></mailbox></iq>"
                     "<message from='site@example.org' id='c'><confirm xmlns='http://jabber.org/protocol/http-auth'>" +
                     deep + "</confirm></message>"),
              kLittle);
    EXPECT_EQ(calls["evNotify"], 6);
    EXPECT_EQ(calls["OKU/ShowStandardNotify"], 6);
    EXPECT_EQ(calls["UI/MessageBox"], 2);
}

TEST_F(News, AQuestionMayBeLong) {
    const std::string text = "<message from='site@example.org' id='c'><confirm url='" + std::string(1 << 20, 'u') +
                             "' xmlns='http://jabber.org/protocol/http-auth'/></message>";
    EXPECT_LT(keptOf(text), kLittle);
    EXPECT_EQ(calls["UI/MessageBox"], 2);
    EXPECT_EQ(calls["NetLib/Send"], 2);
}

TEST(NewsOfTheUser, ThatNobodyAnswersGoWithTheConnection) {
    Client client;
    client.servers.at(kNet).abilities = "<identity type='pep'/><feature var='http://jabber.org/protocol/pubsub'/>";
    client.logIn();
    const auto publish = [&client] {
        OKU_PEP_MOOD_DATA mood{};
        mood.mood = u"happy";
        OKU_PEP_PUBLISH record{sizeof record, OKU_PEP_MOOD};
        return client.callService(kNet, u"PFEPublishData", reinterpret_cast<OKU_WORD>(&record),
                                  reinterpret_cast<OKU_WORD>(&mood));
    };
    const auto round = [&] {
        client.host.onSend = [](std::uint32_t, std::string_view) {};
        for (std::size_t i = 0; i < kMany; ++i) EXPECT_EQ(publish(), 1);
        client.cut(kNet);
        EXPECT_EQ(publish(), 0);
    };
    const std::size_t before = living().bytes;
    round();
    EXPECT_LT(living().bytes, before + kLittle);
}

}  // namespace
}  // namespace torture
