// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the client says of itself: other clients keep the hash for years, so it never changes unnoticed.
#include "extensions/own_caps.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/util/base64.h"
#include "host/util/sha1.h"

using namespace protolink;

namespace {

/// Typed here once more, in the order of the hash.
const std::vector<std::string> kFeatures = {
    "http://jabber.org/protocol/caps",
    "http://jabber.org/protocol/chatstates",
    "http://jabber.org/protocol/disco#info",
    "http://jabber.org/protocol/disco#items",
    "http://jabber.org/protocol/geoloc",
    "http://jabber.org/protocol/geoloc+notify",
    "http://jabber.org/protocol/http-auth",
    "http://jabber.org/protocol/ibb",
    "http://jabber.org/protocol/mood",
    "http://jabber.org/protocol/mood+notify",
    "http://jabber.org/protocol/pubsub",
    "http://jabber.org/protocol/si",
    "http://jabber.org/protocol/si/profile/file-transfer",
    "http://jabber.org/protocol/tune",
    "http://jabber.org/protocol/tune+notify",
    "iq",
    "jabber:iq:oob",
    "jabber:iq:privacy",
    "jabber:iq:version",
    "jabber:x:data",
    "presence",
    "sslc2s",
    "urn:xmpp:avatar:data",
    "urn:xmpp:avatar:metadata",
    "urn:xmpp:avatar:metadata+notify",
    "urn:xmpp:ping",
    "urn:xmpp:ssn",
    "urn:xmpp:time",
    "vcard-temp",
};

TEST(OwnCaps, TheFeaturesAreThese29) {
    ASSERT_EQ(kFeatures.size(), 29u);
    ASSERT_EQ(ownCaps::kFeatures.size(), kFeatures.size());
    for (std::size_t i = 0; i < kFeatures.size(); ++i) {
        EXPECT_EQ(ownCaps::kFeatures[i], std::u16string(kFeatures[i].begin(), kFeatures[i].end())) << i;
    }
}

TEST(OwnCaps, TheHashIsMadeOfIdentityAndFeatures) {
    std::string input = "client/pc//OKF - protoLink<";
    for (const auto& feature : kFeatures) input += feature + "<";
    const auto digest = lutSHA1Bin(input);
    const auto expected = lutBase64Encode({reinterpret_cast<const char*>(digest.data()), digest.size()});
    EXPECT_EQ(ownCaps::buildOwnCaps(), std::u16string(expected.begin(), expected.end()));
}

TEST(OwnCaps, TheHashIsAConstant) { EXPECT_EQ(ownCaps::buildOwnCaps(), u"Mgj7/6UYDCvtMHYusw+RENOsUsk="); }

}  // namespace
