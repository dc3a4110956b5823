// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/torture/scenarios.h"

#include "host/oku/pep.h"
#include "tests/torture/card_scenarios.h"
#include "tests/torture/transfers.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;

void nothing(Client&) {}
void logIn(Client& client) { client.logIn(); }

void roster(Client& client) {
    client.say(kNet,
               "<iq type='set' id='push1'><query xmlns='jabber:iq:roster'>"
               "<item jid='New@example.org' name='Nowy &amp; inny' subscription='none' ask='subscribe'/>"
               "<item jid='contact0@example.org' subscription='remove'/>"
               "<item jid='contact1@example.org' subscription='both'><group>Praca</group></item></query></iq>");
    client.say(kNet, "<presence from='stranger@example.org' type='subscribe'/>");
    client.pump();
}

void message(Client& client) {
    client.say(kNet,
               "<message from='contact1@example.org/desk' type='chat'><body>cze\xC5\x9B\xC4\x87</body>"
               "<active xmlns='http://jabber.org/protocol/chatstates'/></message>");
    client.sendMessage(kNet, u"contact1@example.org", u"hej <&>");
    client.say(kNet,
               "<message from='contact1@example.org/desk'>"
               "<composing xmlns='http://jabber.org/protocol/chatstates'/></message>"
               "<message from='contact2@example.org' type='error'><body>?</body>"
               "<error code='404' type='cancel'/></message>"
               "<message from='contact2@example.org'><subject>s</subject><body>b</body>"
               "<x xmlns='jabber:x:delay' stamp='20240229T12:30:00'/></message>");
    client.pump();
}

void presenceStorm(Client& client) {
    for (int i = 0; i < 12; ++i) {
        const std::string from = "contact" + std::to_string(i % 4) + "@example.org/r" + std::to_string(i);
        client.say(kNet, "<presence from='" + from +
                             "'><show>away</show><status>zaraz</status><priority>5</priority>"
                             "<c xmlns='http://jabber.org/protocol/caps' hash='sha-1' node='n' ver='v" +
                             std::to_string(i % 3) + "='/></presence>");
    }
    client.say(kNet,
               "<iq type='result' from='contact0@example.org/r0' id='d1'>"
               "<query xmlns='http://jabber.org/protocol/disco#info' node='n#v0='>"
               "<feature var='http://jabber.org/protocol/chatstates'/></query></iq>"
               "<presence from='contact9@example.org' type='error'><status>x</status><error code='503'/></presence>"
               "<presence from='contact1@example.org/r1' type='unavailable'/>");
    client.pump();
}

void reconnect(Client& client) {
    // A socket closes once.
    if (client.isOpen(kNet)) client.cut(kNet);
    client.passUntilReady(10);
}

std::string event(const std::string& node, const std::string& payload) {
    const std::string ns = "http://jabber.org/protocol/" + node;
    return "<message from='contact1@example.org/desk'><event xmlns='http://jabber.org/protocol/pubsub#event'>"
           "<items node='" +
           ns + "'><item id='i'><" + node + " xmlns='" + ns + "'>" + payload + "</" + node +
           "></item></items></event></message>";
}

void personalEvents(Client& client) {
    client.say(kNet, event("tune", "<artist>A</artist><title>T</title><length>125</length>") + event("tune", ""));
    client.say(kNet, event("mood", "<happy/><text>x &amp; y</text>"));
    client.say(kNet, event("geoloc", "<lat>52.2</lat><lon>21.0</lon>"));
    client.pump();
}

void logInWithPersonalEvents(Client& client) {
    client.servers.at(kNet).abilities =
        "<identity category='pubsub' type='pep'/><feature var='http://jabber.org/protocol/pubsub'/>";
    client.logIn();
}

template <typename Data>
void publish(Client& client, std::uint32_t kind, Data data) {
    data.size = sizeof data;
    OKU_PEP_PUBLISH record{sizeof record, kind};
    client.callService(kNet, u"PFEPublishData", reinterpret_cast<OKU_WORD>(&record), reinterpret_cast<OKU_WORD>(&data));
}

void publishAll(Client& client) {
    OKU_PEP_TUNE_DATA tune{};
    tune.artist = u"<&>";
    publish(client, OKU_PEP_TUNE, tune);
    OKU_PEP_MOOD_DATA mood{};
    mood.mood = u"happy";
    publish(client, OKU_PEP_MOOD, mood);
    OKU_PEP_LOCATION_DATA location{};
    location.lat = u"52.2";
    publish(client, OKU_PEP_LOCATION, location);
    client.pump();
}

void mail(Client& client) {
    client.say(kNet, "<iq type='set' from='example.org' id='m1'><new-mail xmlns='google:mail:notify'/></iq>");
    client.pump();
    client.say(kNet,
               "<iq type='result' id='m2'><mailbox xmlns='google:mail:notify'><mail-thread-info><senders>"
               "<sender name='Bob'/></senders><subject>Obiad</subject></mail-thread-info></mailbox></iq>");
    client.pump();
}

void questionOfAWebSite(Client& client) {
    const std::string confirm = "<confirm xmlns='http://jabber.org/protocol/http-auth' id='1' method='GET' url='u'/>";
    client.say(kNet, "<iq type='get' from='site@example.org' id='c1'>" + confirm + "</iq>");
    client.say(kNet, "<message from='site@example.org' id='c2'>" + confirm + "<body>b</body></message>");
    client.pump();
}

void rank(Client& client) {
    client.servers.at(kNet).abilities = "<feature var='aqq:iq:rank'/><feature var='google:mail:notify'/>";
    client.logIn();
}

void cancelledOffer(Client& client) {
    offerFile(client);
    cancelAll(client);
    takeOffer(client, "http://jabber.org/protocol/ibb");
}

void unload(Client& client) { client.unload(); }

}  // namespace

const std::vector<Scenario> kScenarios{
    {"Login", nothing, logIn},
    {"Roster", logIn, roster},
    {"Message", logIn, message},
    {"PresenceStorm", logIn, presenceStorm},
    {"Reconnect", logIn, reconnect},
    {"Unload", logIn, unload},
    {"PersonalEvents", logIn, personalEvents},
    {"Publish", logInWithPersonalEvents, publishAll},
    {"Mail", logIn, mail},
    {"QuestionOfAWebSite", logIn, questionOfAWebSite},
    {"LoginWithMailAndRank", nothing, rank},
    {"SendFile", logIn, sendFile},
    {"ReceiveFile", logIn, receiveFile},
    {"PublishFile", logIn, publishFile},
    {"DownloadFile", logIn, downloadFile},
    {"CancelledOffer", logIn, cancelledOffer},
    {"AnnouncedPictures", logIn, announcedPictures},
    {"Cards", logIn, cards},
    {"OwnPicture", logInWithNodes, ownPicture},
};

std::string scenarioName(const testing::TestParamInfo<Scenario>& info) { return info.param.name; }

}  // namespace torture
