// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The namespaces of the protocols that the plugin speaks.
#pragma once

#include <string_view>

namespace protolink {

namespace ns {

inline constexpr std::u16string_view kBind = u"urn:ietf:params:xml:ns:xmpp-bind";
inline constexpr std::u16string_view kSession = u"urn:ietf:params:xml:ns:xmpp-session";
inline constexpr std::u16string_view kSasl = u"urn:ietf:params:xml:ns:xmpp-sasl";
inline constexpr std::u16string_view kTls = u"urn:ietf:params:xml:ns:xmpp-tls";
inline constexpr std::u16string_view kStanzas = u"urn:ietf:params:xml:ns:xmpp-stanzas";
inline constexpr std::u16string_view kCompress = u"http://jabber.org/protocol/compress";            // XEP-0138
inline constexpr std::u16string_view kRegister = u"jabber:iq:register";                             // XEP-0077
inline constexpr std::u16string_view kRegisterFeature = u"http://jabber.org/features/iq-register";  // XEP-0077
inline constexpr std::u16string_view kRoster = u"jabber:iq:roster";                                 // RFC 6121
inline constexpr std::u16string_view kDiscoInfo = u"http://jabber.org/protocol/disco#info";         // XEP-0030
inline constexpr std::u16string_view kDiscoItems = u"http://jabber.org/protocol/disco#items";       // XEP-0030
inline constexpr std::u16string_view kCommands = u"http://jabber.org/protocol/commands";            // XEP-0050
inline constexpr std::u16string_view kSearch = u"jabber:iq:search";                                 // XEP-0055
inline constexpr std::u16string_view kLegacyTime = u"jabber:iq:time";                               // XEP-0090
inline constexpr std::u16string_view kCaps = u"http://jabber.org/protocol/caps";                    // XEP-0115
inline constexpr std::u16string_view kChatStates = u"http://jabber.org/protocol/chatstates";        // XEP-0085
inline constexpr std::u16string_view kPubSub = u"http://jabber.org/protocol/pubsub";                // XEP-0060
inline constexpr std::u16string_view kPubSubEvent = u"http://jabber.org/protocol/pubsub#event";     // XEP-0060
inline constexpr std::u16string_view kPublishOptions = u"http://jabber.org/protocol/pubsub#publish-options";
inline constexpr std::u16string_view kTune = u"http://jabber.org/protocol/tune";            // XEP-0118
inline constexpr std::u16string_view kMood = u"http://jabber.org/protocol/mood";            // XEP-0107
inline constexpr std::u16string_view kLocation = u"http://jabber.org/protocol/geoloc";      // XEP-0080
inline constexpr std::u16string_view kHttpAuth = u"http://jabber.org/protocol/http-auth";   // XEP-0070
inline constexpr std::u16string_view kIbb = u"http://jabber.org/protocol/ibb";              // XEP-0047
inline constexpr std::u16string_view kStreamInitiation = u"http://jabber.org/protocol/si";  // XEP-0095
inline constexpr std::u16string_view kFileTransfer = u"http://jabber.org/protocol/si/profile/file-transfer";
inline constexpr std::u16string_view kFeatureNegotiation = u"http://jabber.org/protocol/feature-neg";  // XEP-0020
inline constexpr std::u16string_view kDataForms = u"jabber:x:data";                                    // XEP-0004
inline constexpr std::u16string_view kOob = u"jabber:iq:oob";                                          // XEP-0066
inline constexpr std::u16string_view kDelay = u"urn:xmpp:delay";                                       // XEP-0203
inline constexpr std::u16string_view kLegacyDelay = u"jabber:x:delay";                                 // XEP-0091
inline constexpr std::u16string_view kMessageEvent = u"jabber:x:event";                                // XEP-0022
inline constexpr std::u16string_view kTime = u"urn:xmpp:time";                                         // XEP-0202
inline constexpr std::u16string_view kPing = u"urn:xmpp:ping";                                         // XEP-0199
inline constexpr std::u16string_view kVersion = u"jabber:iq:version";                                  // XEP-0092
inline constexpr std::u16string_view kAvatar = u"jabber:x:avatar";                                     // XEP-0008
inline constexpr std::u16string_view kPrivacy = u"jabber:iq:privacy";                                  // XEP-0016
inline constexpr std::u16string_view kPrivateStorage = u"jabber:iq:private";                           // XEP-0049
inline constexpr std::u16string_view kSharedStatus = u"google:shared-status";
inline constexpr std::u16string_view kMailNotify = u"google:mail:notify";
inline constexpr std::u16string_view kRank = u"aqq:iq:rank";

inline constexpr std::u16string_view kAvatarData = u"urn:xmpp:avatar:data";  // XEP-0084
inline constexpr std::u16string_view kAvatarMetadata = u"urn:xmpp:avatar:metadata";
inline constexpr std::u16string_view kVCard = u"vcard-temp";                 // XEP-0054
inline constexpr std::u16string_view kVCardUpdate = u"vcard-temp:x:update";  // XEP-0153

}  // namespace ns

}  // namespace protolink
