// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Who may go while somebody else still calls: the plugin inside every call of the host, targets inside their own.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "host/oku/pep.h"
#include "router/event_dispatcher.h"
#include "tests/torture/scenarios.h"
#include "tests/torture/transfers.h"

using namespace protolink;

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;

struct Deed {
    const char* name;
    void (*act)(Client& client);
};

/// What a host, or a listener inside it, may do while the plugin calls it.
const std::vector<Deed> kDeeds{
    {"Unloads",
     [](Client& client) {
         if (client.loaded()) client.unload();
     }},
    {"UnloadsAndLoads",
     [](Client& client) {
         if (client.loaded()) client.unload();
         client.load();
     }},
    {"GoesOffline", [](Client& client) { client.setStatus(kNet, OKU_STATUS_OFFLINE); }},
    {"GoesOnline", [](Client& client) { client.setStatus(kNet, OKU_STATUS_ONLINE); }},
    {"LosesTheConnection", [](Client& client) { client.cut(kNet); }},
    {"DestroysTheSocket", [](Client& client) { client.raise(kNet, 1); }},
    {"ConnectsAgain",
     [](Client& client) {
         client.servers.at(kNet).onConnected();
         client.raise(kNet, 2);
     }},
    {"ReceivesMore",
     [](Client& client) {
         client.receive(kNet,
                        "<message from='a@b/c'><body>more</body></message><presence from='contact0@example.org/x' "
                        "type='unavailable'/>");
     }},
    {"ReceivesAHalf", [](Client& client) { client.receive(kNet, "<message from='a@b/c'><body>half"); }},
    {"ReceivesAnEndOfAuthorization",
     [](Client& client) { client.receive(kNet, "<failure xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>"); }},
    {"ReceivesARoster",
     [](Client& client) {
         client.receive(kNet,
                        "<iq type='set'><query xmlns='jabber:iq:roster'><item jid='contact0@example.org' "
                        "subscription='remove'/><item jid='n@b'/></query></iq>");
     }},
    {"Sends", [](Client& client) { client.sendMessage(kNet, u"contact0@example.org", u"hej"); }},
    {"Cancels", [](Client& client) { cancelAll(client); }},
    {"PassesTime", [](Client& client) { client.pass(61'000); }},
};

class Deeds : public testing::TestWithParam<std::tuple<Scenario, Deed>> {};

TEST_P(Deeds, InsideEachCallOfTheHost) {
    const auto& [scenario, deed] = GetParam();
    bool reached = true;
    for (std::size_t at = 0; reached; ++at) {
        SCOPED_TRACE("call " + std::to_string(at));
        Client client;
        scenario.prepare(client);
        const std::size_t wanted = client.host.calls + at;
        reached = false;
        client.host.before = [&](const Call& call) -> std::optional<OKU_WORD> {
            if (call.index != wanted) return std::nullopt;
            reached = true;
            const std::size_t loads = client.loads();
            const bool wasLoaded = client.loaded();
            deed.act(client);
            // A host does nothing more for a plugin that went while it asked.
            const bool went = wasLoaded && (!client.loaded() || client.loads() != loads);
            return went ? std::optional<OKU_WORD>(0) : std::nullopt;
        };
        scenario.run(client);
        client.host.before = nullptr;
        client.pump();
        client.pass(240'000);
        if (client.loaded()) client.unload();
        EXPECT_EQ(client.host.leftovers(), "");
        client.logIn();
        EXPECT_TRUE(client.passUntilReady(60));
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(, Deeds, testing::Combine(testing::ValuesIn(kScenarios), testing::ValuesIn(kDeeds)),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) + "_" + std::get<1>(test.param).name;
                         });

/// A listener that has the account dial anew, which gives it its address again, and then looks at whom it was told of.
struct DialsInside {
    std::u16string seen;

    std::optional<OKU_WORD> dial(Client& client, const char16_t* const& id) {
        client.setStatus(kNet, OKU_STATUS_OFFLINE);
        client.setStatus(kNet, OKU_STATUS_ONLINE);
        seen = id;
        return std::nullopt;
    }
};

/// Its address is too long to stand in a string itself.
void logInUnderALongAddress(Client& client) {
    client.host.settings[u"/profile/protoLink.config"][u"XMPP/User"] = u"alice-in-wonderland@example.org/home";
    client.logIn();
    ASSERT_TRUE(client.passUntilReady(60));
}

TEST(Subjects, OutliveADialInsideTheHookOfMail) {
    Client client;
    DialsInside listener;
    logInUnderALongAddress(client);
    client.host.before = [&](const Call& call) -> std::optional<OKU_WORD> {
        if (call.name != u"OKU/CallProtolHooks") return std::nullopt;
        const auto& hook = *reinterpret_cast<const OKU_PROTOCOL_HOOK*>(call.param);
        if (hook.kind != OKU_HOOK_NEW_MAIL) return std::nullopt;
        return listener.dial(client, static_cast<const OKU_CONTACT_RECORD*>(hook.subject)->id);
    };
    client.receive(kNet,
                   "<iq id='m'><mailbox><mail-thread-info><subject>s</subject></mail-thread-info></mailbox></iq>");
    EXPECT_EQ(listener.seen, u"alice-in-wonderland");
}

TEST(Subjects, OutliveADialInsideAPersonalEvent) {
    Client client;
    DialsInside listener;
    logInUnderALongAddress(client);
    client.host.before = [&](const Call& call) -> std::optional<OKU_WORD> {
        if (call.name != u"evNotify" || !listener.seen.empty()) return std::nullopt;
        return listener.dial(client, reinterpret_cast<const OKU_PEP_EVENT*>(call.param)->own.id);
    };
    client.receive(kNet,
                   "<message from='contact0@example.org'><event xmlns='http://jabber.org/protocol/pubsub#event'><items "
                   "node='http://jabber.org/protocol/mood'><item id='1'><mood "
                   "xmlns='http://jabber.org/protocol/mood'><happy/></mood></item></items></event></message>");
    EXPECT_EQ(listener.seen, u"alice-in-wonderland@example.org");
}

/// A target that changes the registry while it is fired.
class Meddler : public CXMLTarget {
public:
    explicit Meddler(CProtoEventDispatcher& dispatcher) : dispatcher_(dispatcher) {}
    void onXMLResult(xmlElement&, void*) override {
        ++fired;
        dispatcher_.removeByTarget(*this);
        dispatcher_.removeByUser(this);
        for (Meddler* other : others) dispatcher_.removeByTarget(*other);
        if (again) dispatcher_.addTarget(*this, u"id", this);
        if (clears) dispatcher_.clear();
    }

    int fired = 0;
    bool again = false;
    bool clears = false;
    std::vector<Meddler*> others;

private:
    CProtoEventDispatcher& dispatcher_;
};

xmlElement answer() {
    xmlElement iq(u"iq");
    iq.SetAttribute(u"id", u"id");
    return iq;
}

TEST(Targets, OneThatRemovesItselfAndOthersWhileItIsFired) {
    CProtoEventDispatcher dispatcher;
    Meddler first(dispatcher), second(dispatcher);
    first.others = {&second};
    dispatcher.addTarget(first, u"id", &first);
    dispatcher.addTarget(second, u"id", &second);
    dispatcher.addTarget(first, u"id", &first);
    xmlElement iq = answer();
    EXPECT_TRUE(dispatcher.dispatch(iq));
    EXPECT_FALSE(dispatcher.dispatch(iq));
    EXPECT_EQ(first.fired, 1);
    EXPECT_EQ(second.fired, 0);
}

TEST(Targets, OneThatWaitsAgainFiresOnceForEachAnswer) {
    CProtoEventDispatcher dispatcher;
    Meddler target(dispatcher);
    target.again = true;
    dispatcher.addTarget(target, u"id", &target);
    for (int i = 0; i < 3; ++i) {
        xmlElement iq = answer();
        EXPECT_TRUE(dispatcher.dispatch(iq));
        EXPECT_EQ(target.fired, i + 1);
    }
}

TEST(Targets, OneThatEmptiesTheRegistryWhileItIsFired) {
    CProtoEventDispatcher dispatcher;
    Meddler first(dispatcher), second(dispatcher);
    first.clears = true;
    dispatcher.addTarget(first, u"id", &first);
    dispatcher.addTarget(second, u"id", &second);
    xmlElement iq = answer();
    EXPECT_TRUE(dispatcher.dispatch(iq));
    EXPECT_FALSE(dispatcher.dispatch(iq));
    EXPECT_EQ(second.fired, 0);
}

TEST(Targets, OneThatIsDeletedWhileItIsFired) {
    CProtoEventDispatcher dispatcher;
    auto owned = std::make_unique<int>(1);
    dispatcher.addHandler(
        [&dispatcher, &owned](xmlElement&, void*) {
            dispatcher.clear();
            owned.reset();
        },
        u"id", &dispatcher);
    xmlElement iq = answer();
    EXPECT_TRUE(dispatcher.dispatch(iq));
    EXPECT_EQ(owned, nullptr);
}

}  // namespace
}  // namespace torture
