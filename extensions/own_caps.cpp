// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/own_caps.h"

#include <algorithm>

#include "host/util/base64.h"
#include "host/util/sha1.h"
#include "host/util/utf.h"
#include "router/namespaces.h"

namespace protolink {

namespace ownCaps {

namespace {

constexpr std::array<std::u16string_view, 29> kSorted{
    ns::kCaps,
    ns::kChatStates,
    ns::kDiscoInfo,
    u"http://jabber.org/protocol/disco#items",
    u"http://jabber.org/protocol/geoloc",
    u"http://jabber.org/protocol/geoloc+notify",
    ns::kHttpAuth,
    ns::kIbb,
    u"http://jabber.org/protocol/mood",
    u"http://jabber.org/protocol/mood+notify",
    ns::kPubSub,
    ns::kStreamInitiation,
    ns::kFileTransfer,
    u"http://jabber.org/protocol/tune",
    u"http://jabber.org/protocol/tune+notify",
    u"iq",
    u"jabber:iq:oob",
    ns::kPrivacy,
    ns::kVersion,
    u"jabber:x:data",
    u"presence",
    u"sslc2s",
    u"urn:xmpp:avatar:data",
    u"urn:xmpp:avatar:metadata",
    u"urn:xmpp:avatar:metadata+notify",
    ns::kPing,
    u"urn:xmpp:ssn",
    ns::kTime,
    u"vcard-temp",
};
static_assert(std::is_sorted(kSorted.begin(), kSorted.end()), "the hash is made over the features in this order");

}  // namespace

const std::array<std::u16string_view, 29> kFeatures = kSorted;

std::u16string buildOwnCaps() {
    std::u16string input = std::u16string(kIdentityCategory) + u"/" + std::u16string(kIdentityType) + u"//" +
                           std::u16string(kIdentityName) + u"<";
    for (const std::u16string_view feature : kSorted) input.append(feature).append(u"<");
    const auto digest = lutSHA1Bin(wtou(input));
    const std::string text =
        lutBase64Encode(std::string_view(reinterpret_cast<const char*>(digest.data()), digest.size()));
    return std::u16string(text.begin(), text.end());
}

}  // namespace ownCaps

}  // namespace protolink
