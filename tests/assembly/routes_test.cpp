// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Which row of the routing chain takes which element. What its handler does is told by the transcripts.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "assembly/entries.h"
#include "host/util/xml_parse.h"

using namespace protolink;

namespace {

/// The row that an element comes to when nobody waits for it and each row that may decline it does.
std::string rowOf(const std::string& text) {
    std::string copy = text;
    std::vector<xmlElement> roots;
    lutXMLParseA(roots, copy);
    if (roots.size() != 1) return "not one element";
    const Stanza stanza = Stanza::of(roots.front());
    static const std::set<std::string> kDecline{"awaited answer", "privacy list", "avatar in a presence"};
    for (const auto& row : accountRoutes())
        if (row.takes(stanza) && !kDecline.contains(row.name)) return row.name;
    return "dropped";
}

/// One element for each row, in the order of the rows.
const std::pair<const char*, const char*> kSamples[] = {
    {"pubsub event", "<message><event xmlns='http://jabber.org/protocol/pubsub#event'/><body>b</body></message>"},
    {"http confirmation by message", "<message><confirm xmlns='http://jabber.org/protocol/http-auth'/></message>"},
    {"message", "<message type='error'><event/><confirm/></message>"},
    {"error presence", "<presence type='error'/>"},
    {"subscribe", "<presence type='subscribe'/>"},
    {"subscribed", "<presence type='subscribed'/>"},
    {"unsubscribe", "<presence type='unsubscribe'/>"},
    {"unsubscribed", "<presence type='unsubscribed'/>"},
    {"probe", "<presence type='probe'/>"},
    {"presence", "<presence type='unavailable'/>"},
    {"in-band bytes",
     "<iq><data xmlns='http://jabber.org/protocol/ibb'/><si xmlns='http://jabber.org/protocol/si'/></iq>"},
    {"stream initiation",
     "<iq><a/><confirm xmlns='http://jabber.org/protocol/http-auth'/><si xmlns='http://jabber.org/protocol/si'/></iq>"},
    {"http confirmation",
     "<iq type='get'><time xmlns='urn:xmpp:time'/><confirm xmlns='http://jabber.org/protocol/http-auth'/></iq>"},
    {"time", "<iq type='get'><ping xmlns='urn:xmpp:ping'/><time xmlns='urn:xmpp:time'/></iq>"},
    {"ping", "<iq type='get'><query xmlns='jabber:iq:roster'/><ping xmlns='urn:xmpp:ping'/></iq>"},
    {"disco request", "<iq type='get'><query xmlns='http://jabber.org/protocol/disco#info'/></iq>"},
    {"disco result", "<iq type='result'><query xmlns='http://jabber.org/protocol/disco#info'/></iq>"},
    {"other disco", "<iq type='error'><query xmlns='http://jabber.org/protocol/disco#info'/><bind/></iq>"},
    {"shared status", "<iq type='set'><query xmlns='google:shared-status'/></iq>"},
    {"roster push", "<iq type='set'><ping xmlns='urn:xmpp:ping'/><query xmlns='jabber:iq:roster'/></iq>"},
    {"version", "<iq type='get'><query xmlns='jabber:iq:version'/></iq>"},
    {"avatar reply", "<iq type='result'><query xmlns='jabber:x:avatar'/></iq>"},
    {"avatar request", "<iq type='get'><query xmlns='jabber:x:avatar'/></iq>"},
    {"mailbox", "<iq type='set'><query xmlns='jabber:x:avatar'/><new-mail/><mailbox/></iq>"},
    {"new mail", "<iq type='set'><bind/><new-mail/></iq>"},
    {"bind", "<iq type='error'><query/><bind/></iq>"},
    {"compressed", "<compressed/>"},
    {"features", "<stream:features/>"},
    {"proceed", "<proceed/>"},
    {"success", "<success/>"},
    {"failure", "<failure/>"},
    {"challenge", "<challenge/>"},
};

TEST(Routes, EachRowTakesItsElement) {
    for (const auto& [name, text] : kSamples) EXPECT_EQ(rowOf(text), name) << text;
}

TEST(Routes, EachRowIsOfOneName) {
    std::map<std::string, int> names;
    for (const auto& row : accountRoutes()) ++names[row.name];
    for (const auto& [name, count] : names) EXPECT_EQ(count, 1) << name;
}

TEST(Routes, TheOrderIsTheOneTold) {
    std::vector<std::string> expected{"awaited answer", "privacy list"};
    for (const auto& [name, text] : kSamples) {
        if (name == std::string("presence")) expected.emplace_back("avatar in a presence");
        expected.emplace_back(name);
    }
    std::vector<std::string> rows;
    for (const auto& row : accountRoutes()) rows.emplace_back(row.name);
    EXPECT_EQ(rows, expected);
}

TEST(Routes, WhatNobodyKnowsIsDropped) {
    for (const char* text : {"<stream:error/>", "<iq type='get'><query xmlns='jabber:iq:last'/></iq>", "<iq/>",
                             "<compress/>", "<features/>", "<iq type='set'><query xmlns='jabber:x:avatar'/></iq>",
                             "<iq type='result'><ping xmlns='urn:xmpp:ping'/></iq>"})
        EXPECT_EQ(rowOf(text), "dropped") << text;
}

}  // namespace
