#include "extensions/own_caps.h"

#include <algorithm>

#include "host/util/base64.h"
#include "host/util/sha1.h"
#include "host/util/utf.h"

namespace ownCaps {

namespace {

constexpr std::array<std::u16string_view, 29> kSorted{
    u"http://jabber.org/protocol/caps",
    u"http://jabber.org/protocol/chatstates",
    u"http://jabber.org/protocol/disco#info",
    u"http://jabber.org/protocol/disco#items",
    u"http://jabber.org/protocol/geoloc",
    u"http://jabber.org/protocol/geoloc+notify",
    u"http://jabber.org/protocol/http-auth",
    u"http://jabber.org/protocol/ibb",
    u"http://jabber.org/protocol/mood",
    u"http://jabber.org/protocol/mood+notify",
    u"http://jabber.org/protocol/pubsub",
    u"http://jabber.org/protocol/si",
    u"http://jabber.org/protocol/si/profile/file-transfer",
    u"http://jabber.org/protocol/tune",
    u"http://jabber.org/protocol/tune+notify",
    u"iq",
    u"jabber:iq:oob",
    u"jabber:iq:privacy",
    u"jabber:iq:version",
    u"jabber:x:data",
    u"presence",
    u"sslc2s",
    u"urn:xmpp:avatar:data",
    u"urn:xmpp:avatar:metadata",
    u"urn:xmpp:avatar:metadata+notify",
    u"urn:xmpp:ping",
    u"urn:xmpp:ssn",
    u"urn:xmpp:time",
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
