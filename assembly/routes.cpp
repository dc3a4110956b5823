// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Where received elements go: name, question, member of a part.
#include "assembly/account_parts.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

using A = AccountParts;

constexpr std::u16string_view kAny{};
constexpr std::u16string_view kMessage = u"message";
constexpr std::u16string_view kPresence = u"presence";
constexpr std::u16string_view kIq = u"iq";

// clang-format off
constexpr Route<A> kRoutes[] = {
    {"awaited answer", kAny, always, to<&A::requests, &Requests::onStanza>},
    {"privacy list", kAny, always, to<&A::privacy, &PrivacyLists::onPrivacyReply>},

    {"pubsub event", kMessage, hasChild(u"event", ns::kPubSubEvent),
     to<&A::pubSubEvents, &PubSubEvents<A>::onPubsubEvent>},
    {"http confirmation by message", kMessage, hasChild(u"confirm", ns::kHttpAuth),
     to<&A::httpConfirmation, &HttpConfirmation::onHttpAuthConfirm>},
    {"message", kMessage, always, to<&A::messages, &Messages::onMessage>},

    {"error presence", kPresence, ofType(u"error"), to<&A::presence, &Presence::onErrorPresence>},
    {"subscribe", kPresence, ofType(u"subscribe"), to<&A::subscriptions, &Subscriptions::onSubscribe>},
    // The roster pushes that follow a change of subscription carry it, so the presences that announce one are dropped.
    {"subscribed", kPresence, ofType(u"subscribed"), drop},
    {"unsubscribe", kPresence, ofType(u"unsubscribe"), drop},
    {"unsubscribed", kPresence, ofType(u"unsubscribed"), drop},
    {"probe", kPresence, ofType(u"probe"), drop},
    {"avatar in a presence", kPresence, always, to<&A::contactAvatars, &ContactAvatars::onPresenceAvatar>},
    {"presence", kPresence, always, to<&A::presence, &Presence::onPresence>},

    {"in-band bytes", kIq, firstChildIs(ns::kIbb),
     to<&A::sessionManager, &CSessionManager::DispatchStanza>},
    {"stream initiation", kIq, hasChild(u"si", ns::kStreamInitiation),
     to<&A::sessionManager, &CSessionManager::HandleOffer>},
    {"http confirmation", kIq, hasChild(u"confirm", ns::kHttpAuth),
     to<&A::httpConfirmation, &HttpConfirmation::onHttpAuthConfirm>},
    {"time", kIq, hasChild(u"time", ns::kTime), to<&A::timeReply, &TimeReply::onTimeIq>},
    {"ping", kIq, hasChild(u"ping", ns::kPing).ofType(u"get"), to<&A::pingReply, &PingReply::onPingIq>},
    {"disco request", kIq, asks(ns::kDiscoInfo).ofType(u"get"), to<&A::discoReplies, &DiscoReplies::onDiscoInfo>},
    {"disco result", kIq, asks(ns::kDiscoInfo).ofType(u"result"),
     to<&A::contactCapabilities, &ContactCapabilities::onDiscoInfo>},
    {"other disco", kIq, asks(ns::kDiscoInfo), drop},
    {"shared status", kIq, asks(ns::kSharedStatus), to<&A::presence, &Presence::onSharedStatus>},
    {"roster push", kIq, asks(ns::kRoster), to<&A::roster, &Roster::onRosterPush>},
    {"version", kIq, asks(ns::kVersion), to<&A::versionReply, &VersionReply::onVersionIq>},
    {"avatar reply", kIq, asks(ns::kAvatar).ofType(u"result"),
     to<&A::contactAvatars, &ContactAvatars::onAvatarIqResult>},
    {"avatar request", kIq, asks(ns::kAvatar).ofType(u"get"), to<&A::ownAvatar, &OwnAvatar::onAvatarIqGet>},
    {"mailbox", kIq, hasChild(u"mailbox"), to<&A::mailNotifications, &MailNotifications::onMailbox>},
    {"new mail", kIq, hasChild(u"new-mail"), to<&A::mailNotifications, &MailNotifications::onNewMail>},
    {"bind", kIq, hasChild(u"bind"), to<&A::binding, &Binding::onBind>},

    {"compressed", u"compressed", always, to<&A::compression, &StreamCompression::onCompressed>},
    {"features", u"stream:features", always, to<&A::negotiation, &Negotiation::onFeatures>},
    {"proceed", u"proceed", always, to<&A::encryption, &Encryption::onProceed>},
    {"success", u"success", always, to<&A::authentication, &Authentication::onSuccess>},
    {"failure", u"failure", always, to<&A::loginFailure, &LoginFailure::onFailure>},
    {"challenge", u"challenge", always, to<&A::authentication, &Authentication::onChallenge>},
};
// clang-format on

}  // namespace

std::span<const Route<AccountParts>> accountRoutes() { return kRoutes; }

}  // namespace protolink
