// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Which payload of an event reaches which part, with nodes of the test's own.
#include "profile/pubsub_events.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/util/utf.h"
#include "host/util/xml_parse.h"

using namespace protolink;

namespace {

struct Taker {
    void onItem(const PubSubItem& item) {
        taken.push_back(utow(name) + u" " + std::u16string(item.from) + u" " + std::u16string(item.id) + u" " +
                        item.payload.text);
    }
    std::string name;
    std::vector<std::u16string>& taken;
};

struct Parts {
    std::vector<std::u16string> taken;
    Taker first{"first", taken};
    Taker second{"second", taken};
};

constexpr EventNode<Parts> kNodes[] = {
    {u"urn:n1", u"one", itemTo<&Parts::first, &Taker::onItem>},
    {u"urn:n2", u"two", itemTo<&Parts::second, &Taker::onItem>},
};

/// What was taken of a message, in order: part, sender, id of the item, text of the payload.
std::vector<std::u16string> takenOf(const std::string& attributes, const std::string& event) {
    std::string text = "<message from='bob@example.org' " + attributes +
                       "><event xmlns='http://jabber.org/protocol/pubsub#event'>" + event + "</event></message>";
    std::vector<xmlElement> roots;
    lutXMLParseA(roots, text);
    Parts parts;
    PubSubEvents<Parts>(parts, kNodes).onPubsubEvent(Stanza::of(roots.at(0)));
    return parts.taken;
}

using Taken = std::vector<std::u16string>;

TEST(PubSubEvents, EachNodeGoesToItsPart) {
    EXPECT_EQ(takenOf("", "<items node='urn:n2'><item id='i'><two xmlns='urn:n2'>x</two></item></items>"),
              Taken{u"second bob@example.org i x"});
}

TEST(PubSubEvents, NodesAreLookedAtInTheOrderOfTheTable) {
    EXPECT_EQ(takenOf("",
                      "<items node='urn:n2'><item id='b'><two xmlns='urn:n2'/></item></items>"
                      "<items node='urn:n1'><item id='a'><one xmlns='urn:n1'/></item></items>"),
              (Taken{u"first bob@example.org a ", u"second bob@example.org b "}));
}

TEST(PubSubEvents, AllItemsOfANodeAreTakenInOrder) {
    EXPECT_EQ(
        takenOf("",
                "<items node='urn:n1'><item id='a'><one xmlns='urn:n1'>1</one></item>"
                "<item><one xmlns='urn:n1'>2</one></item><other id='c'><one xmlns='urn:n1'>3</one></other></items>"),
        (Taken{u"first bob@example.org a 1", u"first bob@example.org  2", u"first bob@example.org c 3"}));
}

TEST(PubSubEvents, OfTwoItemsElementsForOneNodeTheFirstCounts) {
    EXPECT_EQ(takenOf("", "<items node='urn:n1'/><items node='urn:n1'><item><one xmlns='urn:n1'/></item></items>"),
              Taken{});
}

TEST(PubSubEvents, OnePayloadOfAnItemIsTaken) {
    EXPECT_EQ(takenOf("",
                      "<items node='urn:n1'><item><one>0</one><one xmlns='urn:n1'>1</one><one "
                      "xmlns='urn:n1'>2</one></item></items>"),
              Taken{u"first bob@example.org  1"});
}

TEST(PubSubEvents, WhatHoldsNoPayloadIsPassedOver) {
    for (const char* event :
         {"", "<items node='urn:n1'/>", "<items node='urn:n1'><retract id='a'/></items>",
          "<items node='urn:n1'><item id='a'/></items>", "<items node='urn:n1'><item><one/></item></items>",
          "<items node='urn:n1'><item><one xmlns='urn:n2'/></item></items>",
          "<items node='urn:n3'><item><one xmlns='urn:n1'/></item></items>",
          "<items><item><one xmlns='urn:n1'/></item></items>",
          "<items node='urn:n1'><item><x><one xmlns='urn:n1'/></x></item></items>", "<purge node='urn:n1'/>"})
        EXPECT_EQ(takenOf("", event), Taken{}) << event;
}

TEST(PubSubEvents, AFailedEventIsDropped) {
    const std::string event = "<items node='urn:n1'><item><one xmlns='urn:n1'/></item></items>";
    EXPECT_EQ(takenOf("type='error'", event), Taken{});
    EXPECT_EQ(takenOf("type='headline'", event).size(), 1U);
}

}  // namespace
