// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What is kept of the features that resources and servers tell, beside the log lines that transcripts see.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "extensions/contact_capabilities.h"
#include "extensions/server_discovery.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

class EmptyCache : public CapsCache {
public:
    const xmlElement* find(std::u16string_view) const override { return nullptr; }
    void add(const xmlElement&, std::u16string_view) override {}
};

OKU_WORD OKU_CALL ignore(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }

class LearntFeatures : public testing::Test {
protected:
    LearntFeatures() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.jid = parseJID(u"alice@example.org/home");
        ResourceEntry desk;
        desk.resource = u"desk";
        contacts.entry(u"bob@example.org").resources.append(std::move(desk));
    }

    static xmlElement child(std::u16string name, std::u16string_view attribute, std::u16string_view value) {
        xmlElement element(std::move(name));
        element.SetAttribute(attribute, value);
        return element;
    }
    static xmlElement queryOf(const std::vector<std::u16string_view>& features) {
        xmlElement query(u"query");
        for (const auto feature : features) query.SetChild(child(u"feature", u"var", feature));
        return query;
    }

    /// Bob's resource after it has told these features.
    const ResourceEntry& resourceAfter(const std::vector<std::u16string_view>& features) {
        xmlElement iq(u"iq");
        iq.SetChild(queryOf(features));
        capabilities.onDiscoInfo({iq, u"bob@example.org/desk", u"result", u"r1"});
        return *contacts.findResource(u"bob@example.org", u"desk");
    }
    /// The names of what the server can do after it has told these features, and an identity of PEP.
    std::string serverAfter(const std::vector<std::u16string_view>& features, bool pep = false) {
        serverFeatures = {};
        xmlElement iq(u"iq");
        xmlElement query = queryOf(features);
        if (pep) query.SetChild(child(u"identity", u"type", u"pep"));
        iq.SetChild(query);
        server.onServerDiscoInfo(iq);
        std::string names;
        for (const auto& [name, field] : kServerFields)
            if (serverFeatures.*field == 1) names += name + " ";
        return names;
    }

    inline static const std::map<std::string, std::uint32_t ServerFeatures::*> kServerFields{
        {"privacy", &ServerFeatures::serverHasPrivacyLists},
        {"invisible", &ServerFeatures::serverHasInvisibility},
        {"private", &ServerFeatures::serverHasPrivateStorage},
        {"pubsub", &ServerFeatures::serverHasPubSub},
        {"pep", &ServerFeatures::serverHasPEP},
        {"options", &ServerFeatures::serverHasPublishOptions},
        {"mail", &ServerFeatures::serverHasMailNotify},
        {"shared", &ServerFeatures::serverHasSharedStatus},
    };

    harness::RecordingHost host;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    CProtoEventDispatcher dispatcher;
    Contacts contacts;
    ServerFeatures serverFeatures;
    PrivacyLists privacy{output};
    EmptyCache cache;
    ContactCapabilities capabilities{client, output, contacts, cache};
    Reconnection reconnection{client, ignore};
    OwnPresentation own;
    Presence presence{client, output, reconnection, contacts, serverFeatures, privacy, capabilities, own};
    Requests requests{dispatcher, output};
    MailNotifications mail{client, output};
    RankQuery rank{client, requests};
    ServerDiscovery server{client, requests, serverFeatures, privacy, presence, mail, rank};
};

TEST_F(LearntFeatures, OfAResourceSetItsFields) {
    const ResourceEntry& resource =
        resourceAfter({u"http://jabber.org/protocol/chatstates", u"urn:xmpp:ping", u"http://jabber.org/protocol/caps",
                       u"http://jabber.org/protocol/si/profile/file-transfer"});
    EXPECT_EQ(resource.resChatStates, 1u);
    EXPECT_EQ(resource.resPing, 1u);
    EXPECT_EQ(resource.resCaps, 1u);
    EXPECT_EQ(resource.resFileTransfer, 1u);
    EXPECT_EQ(resource.resDiscoDone, 1u);
}

TEST_F(LearntFeatures, OfAResourceSetNoFieldButTheirOwn) {
    const ResourceEntry& resource = resourceAfter({u"http://jabber.org/protocol/si/profile/file-transfer"});
    EXPECT_EQ(resource.resFileTransfer, 1u);
    EXPECT_EQ(resource.resChatStates + resource.resPing + resource.resCaps, 0u);
}

TEST_F(LearntFeatures, OfAResourceThatCanDoNothingStillCountAsAsked) {
    const ResourceEntry& resource = resourceAfter({});
    EXPECT_EQ(resource.resDiscoDone, 1u);
    EXPECT_EQ(resource.resChatStates + resource.resPing + resource.resCaps + resource.resFileTransfer, 0u);
}

TEST_F(LearntFeatures, OfAResourceStayWhenALaterAnswerLacksThem) {
    resourceAfter({u"urn:xmpp:ping", u"http://jabber.org/protocol/si/profile/file-transfer"});
    const ResourceEntry& resource = resourceAfter({u"http://jabber.org/protocol/caps"});
    EXPECT_EQ(resource.resPing + resource.resFileTransfer + resource.resCaps, 3u);
}

TEST_F(LearntFeatures, OfAResourceThatGoesWhileTheHostHearsOfThemAreLost) {
    host.onEvent = [this](const harness::Event& event) {
        if (harness::render(event.line).find("XEP-0085") != std::string::npos) contacts.clear();
    };
    xmlElement iq(u"iq");
    iq.SetChild(queryOf({u"http://jabber.org/protocol/chatstates", u"urn:xmpp:ping"}));
    capabilities.onDiscoInfo({iq, u"bob@example.org/desk", u"result", u"r1"});
    EXPECT_EQ(contacts.findResource(u"bob@example.org", u"desk"), nullptr);
}

TEST_F(LearntFeatures, OfAServerSetTheirOwnFlags) {
    EXPECT_EQ(serverAfter({}), "");
    EXPECT_EQ(serverAfter({u"google:mail:notify"}), "mail ");
    EXPECT_EQ(serverAfter({u"presence-invisible"}), "invisible ");
    EXPECT_EQ(serverAfter({u"jabber:iq:privacy"}), "privacy ");
    EXPECT_EQ(serverAfter({u"jabber:iq:private"}), "private ");
    EXPECT_EQ(serverAfter({u"google:shared-status"}), "shared ");
    EXPECT_EQ(serverAfter({u"http://jabber.org/protocol/pubsub"}), "pubsub ");
    EXPECT_EQ(serverAfter({u"aqq:iq:rank"}), "");
}

TEST_F(LearntFeatures, OfAServerThatBelongToPubSubCountOnlyBesideIt) {
    constexpr std::u16string_view kOptions = u"http://jabber.org/protocol/pubsub#publish-options";
    EXPECT_EQ(serverAfter({kOptions}, true), "");
    EXPECT_EQ(serverAfter({u"http://jabber.org/protocol/pubsub", kOptions}), "options pubsub ");
    EXPECT_EQ(serverAfter({u"http://jabber.org/protocol/pubsub"}, true), "pep pubsub ");
}

}  // namespace
