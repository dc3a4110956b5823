// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Windows, choosers, published files and threads that call when what they are about has gone; unloading in every state.
#include <gtest/gtest.h>

#include <functional>

#include "host/oku/timer.h"
#include "host/oku/transfer.h"
#include "plugin/module.h"
#include "tests/support/fake_platform.h"
#include "tests/torture/transfers.h"

namespace {

using torture::Callback;
using torture::Client;

constexpr std::uint32_t kNet = 1;
constexpr char kIbb[] = "http://jabber.org/protocol/ibb";

/// A state that a transfer can be in.
struct State {
    const char* name;
    std::function<void(Client& client)> reach;
};

void hear(Client& client, const std::string& id, const std::string& child) {
    client.say(kNet, "<iq type='set' from='contact1@example.org/desk' id='" + id + "'>" + child + "</iq>");
    client.pump();
}

std::string offer(const std::string& method) {
    return "<si xmlns='http://jabber.org/protocol/si' id='stream1'><file "
           "xmlns='http://jabber.org/protocol/si/profile/file-transfer' name='plik' size='6'/><feature "
           "xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field><option><value>" +
           method + "</value></option></field></x></feature></si>";
}

void downloadBegins(Client& client) {
    hear(client, "o1", offer("jabber:iq:oob"));
    hear(client, "stream1", "<query xmlns='jabber:iq:oob'><url>http://files.example/plik</url></query>");
}

const std::vector<State> kStates{
    {"ChooserIsOpen",
     [](Client& client) {
         OKU_CONTACT_RECORD contact{};
         contact.size = sizeof contact;
         contact.id = u"contact1@example.org";
         client.callService(kNet, u"PFInitSendFile", reinterpret_cast<OKU_WORD>(&contact), 0);
     }},
    {"Offered", torture::offerFile},
    {"TakenInTheStream",
     [](Client& client) {
         torture::offerFile(client);
         torture::takeOffer(client, kIbb);
     }},
    {"TakenByAddress",
     [](Client& client) {
         torture::offerFile(client);
         torture::takeOffer(client, "jabber:iq:oob");
     }},
    {"Expected", [](Client& client) { hear(client, "o1", offer(kIbb)); }},
    {"Receiving",
     [](Client& client) {
         hear(client, "o1", offer(kIbb));
         hear(client, "stream1", "<open xmlns='http://jabber.org/protocol/ibb' sid='stream1'/>");
         hear(client, "d1", "<data xmlns='http://jabber.org/protocol/ibb' sid='stream1'>Y3pl</data>");
     }},
    {"AddressIsAwaited", [](Client& client) { hear(client, "o1", offer("jabber:iq:oob")); }},
    {"DownloadBegins", downloadBegins},
    {"Downloading",
     [](Client& client) {
         downloadBegins(client);
         harness::world().downloads.at(0)->answer(200);
         harness::world().downloads.at(0)->block("cze");
     }},
    {"DownloadHasEnded",
     [](Client& client) {
         downloadBegins(client);
         harness::world().downloads.at(0)->end();
     }},
    {"DownloadWithoutAWindow",
     [](Client& client) {
         downloadBegins(client);
         torture::cancelAll(client);
     }},
};

class Unloading : public testing::TestWithParam<State> {};

TEST_P(Unloading, LeavesNothingThatCallsTheHost) {
    Client client;
    client.logIn();
    GetParam().reach(client);
    const auto windows = client.host.transferWindows;
    const auto choosers = client.host.choosers;
    const auto publications = client.host.publications;
    const auto timers = client.host.timers;
    client.unload();
    EXPECT_EQ(client.host.leftovers(), "");

    const std::size_t calls = client.host.calls;
    OKU_FT_EVENT cancel{sizeof cancel, OKU_FT_EVENT_CANCELLED};
    OKU_FILE_CHOICE choice{sizeof choice, OKU_FILE_CHOSEN, u"/home/file", {}};
    OKU_TIMER_EVENT tick{};
    tick.size = sizeof tick;
    tick.kind = OKU_TIMER_TICK;
    for (const Callback& window : windows) EXPECT_EQ(window(reinterpret_cast<OKU_WORD>(&cancel)), 0);
    for (const Callback& chooser : choosers) EXPECT_EQ(chooser(reinterpret_cast<OKU_WORD>(&choice)), 0);
    for (const Callback& publication : publications)
        for (const OKU_WORD state : {0, 1, 2}) EXPECT_EQ(publication(state), 0);
    for (const auto& [name, timer] : timers) EXPECT_EQ(timer.callback(reinterpret_cast<OKU_WORD>(&tick)), 0);
    for (const auto& download : harness::world().downloads) {
        download->answer(200);
        download->block("more");
        download->end();
    }
    EXPECT_EQ(client.host.calls, calls);
}

TEST_P(Unloading, LeavesNothingForTheNextLoad) {
    Client client;
    client.logIn();
    GetParam().reach(client);
    const auto windows = client.host.transferWindows;
    const auto choosers = client.host.choosers;
    client.unload();
    client.logIn();
    const std::size_t calls = client.host.calls;
    OKU_FT_EVENT cancel{sizeof cancel, OKU_FT_EVENT_CANCELLED};
    OKU_FILE_CHOICE choice{sizeof choice, OKU_FILE_CHOSEN, u"/home/file", {}};
    for (const Callback& window : windows) window(reinterpret_cast<OKU_WORD>(&cancel));
    for (const Callback& chooser : choosers) chooser(reinterpret_cast<OKU_WORD>(&choice));
    EXPECT_EQ(client.host.calls, calls) << "a word was used again";
    client.unload();
}

INSTANTIATE_TEST_SUITE_P(, Unloading, testing::ValuesIn(kStates), [](const auto& test) { return test.param.name; });

TEST(AskedAboutAnOffer, TheHostMayUnloadMeanwhile) {
    Client client;
    client.logIn();
    client.host.before = [&](const torture::Call& call) -> std::optional<OKU_WORD> {
        if (call.name == u"OKU/FTAskForConfirmation") client.unload();
        return std::nullopt;
    };
    hear(client, "o1", offer(kIbb));
    client.host.before = nullptr;
    EXPECT_FALSE(client.loaded());
    EXPECT_TRUE(client.host.transferWindows.empty());
    EXPECT_EQ(client.host.leftovers(), "");
}

TEST(AskedAboutAnOffer, TheConnectionMayEndMeanwhile) {
    Client client;
    client.logIn();
    client.host.before = [&](const torture::Call& call) -> std::optional<OKU_WORD> {
        if (call.name == u"OKU/FTAskForConfirmation") client.cut(kNet);
        return std::nullopt;
    };
    hear(client, "o1", offer(kIbb));
    client.host.before = nullptr;
    // The session stands, for whatever it is worth, and its user can cancel it.
    ASSERT_EQ(client.host.transferWindows.size(), 1u);
    torture::cancelAll(client);
    client.unload();
    EXPECT_EQ(client.host.leftovers(), "");
}

TEST(Sessions, AHostileCrowdOfOffersThatNobodyWantsLeavesNothing) {
    Client client;
    client.logIn();
    client.host.before = [](const torture::Call& call) -> std::optional<OKU_WORD> {
        if (call.name == u"OKU/FTAskForConfirmation") return OKU_FT_ANSWER_IGNORE;
        return std::nullopt;
    };
    const std::size_t registered = client.host.services.size() + client.host.timers.size();
    for (int i = 0; i < 5000; ++i) hear(client, "o" + std::to_string(i), offer(kIbb));
    client.host.before = nullptr;
    EXPECT_TRUE(client.host.transferWindows.empty());
    EXPECT_EQ(client.host.services.size() + client.host.timers.size(), registered);
    // What they might have begun is nobody's.
    const std::size_t calls = client.host.calls;
    client.receive(kNet,
                   "<iq type='set' id='stream1'><open xmlns='http://jabber.org/protocol/ibb' sid='stream1'/></iq>");
    EXPECT_EQ(client.host.calls, calls + 2) << "the two hooks of received data";
}

TEST(Sessions, ABlockOfHugeSizeIsWrittenAsItComes) {
    Client client;
    client.logIn();
    hear(client, "o1", offer(kIbb));
    hear(client, "stream1", "<open xmlns='http://jabber.org/protocol/ibb' sid='stream1' block-size='4294967295'/>");
    hear(client, "d1",
         "<data xmlns='http://jabber.org/protocol/ibb' sid='stream1'>" + std::string(1 << 20, 'A') + "</data>");
    EXPECT_EQ(harness::world().files["/received/plik"].size(), (std::size_t{1} << 20) / 4 * 3);
}

}  // namespace
