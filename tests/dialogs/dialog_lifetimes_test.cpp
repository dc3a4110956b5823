// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Windows that go, accounts that go and hosts that fail, at every step of what windows do.
#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "plugin/module.h"
#include "tests/support/player.h"
#include "tests/support/text.h"

namespace {

constexpr harness::PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};

/// Ids are chosen by the plugin: these lines catch them, all else is only driven.
constexpr char kRegistration[] =
    "log in as alice@example.org/home\n"
    "menu XMPP/InternalBrowser\n"
    "the user presses 6028\n"
    "C: <iq to=\"example.org\" id=\"{items}\" type=\"get\"><query "
    "xmlns=\"http://jabber.org/protocol/disco#items\"/></iq>\n"
    "S: <iq from='example.org' id='{items}' type='result'><query xmlns='http://jabber.org/protocol/disco#items'>"
    "<item jid='gg.example.org'/><item jid='b.example.org'/></query></iq>\n"
    "C: <iq to=\"gg.example.org\" id=\"{info}\" type=\"get\"><query "
    "xmlns=\"http://jabber.org/protocol/disco#info\"/></iq>\n"
    "S: <iq from='gg.example.org' id='{info}' type='result'><query xmlns='http://jabber.org/protocol/disco#info'>"
    "<feature var='jabber:iq:register'/><feature var='jabber:iq:version'/></query></iq>\n"
    "C: <iq to=\"gg.example.org\" id=\"{version}\" type=\"get\"><query xmlns=\"jabber:iq:version\"/></iq>\n"
    "S: <iq from='gg.example.org' id='{version}' type='result'><query xmlns='jabber:iq:version'><name>x</name>"
    "</query></iq>\n"
    "the user opens the menu of row 1\n"
    "the user takes 1002 from the menu\n"
    "C: <iq to=\"gg.example.org\" id=\"{form}\" type=\"get\"><query xmlns=\"jabber:iq:register\"/></iq>\n"
    "S: <iq from='gg.example.org' id='{form}' type='result'><query xmlns='jabber:iq:register'>"
    "<x xmlns='jabber:x:data'><field type='odd'/><field type='text-single' var='a'/><field type='boolean' var='b'/>"
    "<field type='list-single' var='c'><option><value>1</value></option></field><field type='hidden' var='h'/></x>"
    "</query></iq>\n"
    "the user types \"x\" into 25\n"
    "the user presses 1\n"
    "C: <iq to=\"gg.example.org\" id=\"{submit}\" type=\"set\"><query xmlns=\"jabber:iq:register\"><x "
    "xmlns=\"jabber:x:data\" type=\"submit\"><field var=\"a\"><value>x</value></field>\\r\\n<field "
    "var=\"b\"><value>false</value></field>\\r\\n<field var=\"c\"><value>1</value></field>\\r\\n<field "
    "var=\"h\"><value/></field>\\r\\n</x></query></iq>\n"
    "S: <iq from='gg.example.org' id='{submit}' type='result'><query xmlns='jabber:iq:register'/></iq>\n"
    "after 100 ms\n"
    "the host delivers\n"
    "the user presses 6028\n";

constexpr char kCommand[] =
    "log in as alice@example.org/home\n"
    "menu XMPP/InternalBrowser\n"
    "the user presses 6028\n"
    "C: <iq to=\"example.org\" id=\"{items}\" type=\"get\"><query "
    "xmlns=\"http://jabber.org/protocol/disco#items\"/></iq>\n"
    "S: <iq from='example.org' id='{items}' type='result'><query xmlns='http://jabber.org/protocol/disco#items'>"
    "<item jid='example.org' node='n'/></query></iq>\n"
    "the user selects row 1\n"
    "event of window 6003 kind=5 number=1004\n"
    "C: <iq type=\"set\" id=\"{execute}\" to=\"example.org\"><command "
    "xmlns=\"http://jabber.org/protocol/commands\" node=\"n\"/></iq>\n"
    "event of window 6003 kind=5 number=1004\n"
    "C: <iq type=\"set\" id=\"{second}\" to=\"example.org\"><command "
    "xmlns=\"http://jabber.org/protocol/commands\" node=\"n\"/></iq>\n"
    "event of window 6003 kind=5 number=1003\n"
    "C: <iq type=\"set\" id=\"{remove}\" to=\"example.org\"><query "
    "xmlns=\"jabber:iq:register\"><remove/></query></iq>\n"
    "S: <iq from='example.org' id='{remove}' type='error'/>\n"
    "S: <iq from='example.org' id='{execute}' type='result'><command xmlns='http://jabber.org/protocol/commands' "
    "node='n' sessionid='1' status='executing'><x xmlns='jabber:x:data'><field type='text-single' var='a'/>"
    "<field type='odd'/></x></command></iq>\n"
    "S: <iq from='example.org' id='{second}' type='error'><command xmlns='http://jabber.org/protocol/commands' "
    "status='completed'/></iq>\n"
    "the host delivers\n"
    "the host delivers\n"
    "the user presses 1\n"
    "C: <iq to=\"example.org\" id=\"{submit}\" type=\"set\"><command "
    "xmlns=\"http://jabber.org/protocol/commands\" node=\"n\" sessionid=\"1\"><x xmlns=\"jabber:x:data\" "
    "type=\"submit\"><field var=\"a\"><value/></field>\\r\\n</x></command></iq>\n"
    "S: <iq from='example.org' id='{submit}' type='result'><command xmlns='http://jabber.org/protocol/commands'>"
    "<x xmlns='jabber:x:data'><field type='text-single' var='r'/></x></command></iq>\n"
    "the user presses 2\n"
    "the user closes window 6003\n"
    "menu XMPP/InternalBrowser\n";

constexpr char kOptions[] =
    "log in as alice@example.org/home\n"
    "options page show\n"
    "the user unchecks 6014\n"
    "the user checks 7004\n"
    "host answers UI/MessageBox = 6\n"
    "the user presses 7013\n"
    "host answers UI/MessageBox = 6\n"
    "event of window 9 kind=1 control=7006\n"
    "options page hide\n"
    "options page show\n"
    "options page apply\n"
    "options page destroy\n"
    "options page show\n";

constexpr char kWizard[] =
    "log in as alice@example.org/home\n"
    "options page show\n"
    "the user presses 7031\n"
    "the user types \"secret2\" into 7033\n"
    "the user presses 1\n"
    "C: <iq id=\"{change}\" type=\"set\"><query xmlns=\"jabber:iq:register\"><username>alice</username>"
    "<password>secret2</password></query></iq>\n"
    "S: <iq type='result' id='{change}'/>\n"
    "the host delivers\n"
    "status offline\n"
    "closed\n"
    "the user presses 7029\n"
    "the user types \"new@example.net\" into 7032\n"
    "the user types \"secret3\" into 7033\n"
    "the user presses 1\n"
    "connected\n"
    "S: <stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' id='s1'>\n"
    "S: <stream:features><register xmlns='http://jabber.org/features/iq-register'/></stream:features>\n"
    "C: <iq id=\"{registration}\" type=\"set\"><query xmlns=\"jabber:iq:register\"><username>new</username>"
    "<password>secret3</password></query></iq>\n"
    "S: <iq type='result' id='{registration}'/>\n"
    "the host delivers\n";

constexpr char kProperties[] =
    "log in as alice@example.org/home up to the roster\n"
    "S: <iq type='result' from='example.org' id='{disco}'><query xmlns='http://jabber.org/protocol/disco#info'>"
    "<feature var='jabber:iq:privacy'/></query></iq>\n"
    "C: <iq type=\"get\" id=\"{list}\"><query xmlns=\"jabber:iq:privacy\"><list name=\"okf-privacy\"/></query></iq>\n"
    "S: <iq type='result' id='{list}'><query xmlns='jabber:iq:privacy'><list name='okf-privacy'><item type='jid' "
    "value='bob@example.org' action='deny' order='1'><iq/></item></list></query></iq>\n"
    "S: <iq type='result' id='{roster}'><query xmlns='jabber:iq:roster'><item jid='bob@example.org' name='bob' "
    "subscription='both'><group>Friends</group></item></query></iq>\n"
    "properties page show of=bob@example.org x=1 y=2 width=3 height=4\n"
    "the user presses 6003\n"
    "the user presses 6004\n"
    "event of window 6001 kind=1 control=1\n"
    "event of window 6001 kind=1 control=2\n"
    "properties page hide of=bob@example.org\n"
    "properties page show of=bob@example.org x=4 y=3 width=2 height=1\n"
    "properties page place of=bob@example.org x=1 y=2 width=3 height=4\n"
    "the user types \"B\" into 7017\n"
    "the user checks 6011\n"
    "properties page apply of=bob@example.org\n"
    "the user unchecks 6011\n"
    "properties page ok of=bob@example.org\n"
    "properties page show page=2\n"
    "properties page add page=2\n"
    "the user types \"carol@example.net\" into 7018\n"
    "properties page add page=2\n"
    "status offline\n"
    "properties page add page=2\n"
    "the user presses 6004\n"
    "properties page destroy of=bob@example.org\n"
    "properties page destroy page=2\n"
    "properties page show of=bob@example.org\n";

constexpr char kInformation[] =
    "log in as alice@example.org/home with contact bob@example.org\n"
    "S: <presence from='bob@example.org/desk'/>\n"
    "S: <presence from='bob@example.org/phone'/>\n"
    "the host builds a menu of=bob@example.org\n"
    "the host shows properties of=bob@example.org word=7\n"
    "information page show of=bob@example.org x=1 y=2 width=3 height=4\n"
    "C: <iq id=\"{desk}\" type=\"get\" to=\"bob@example.org/desk\"><query xmlns=\"jabber:iq:version\"/></iq>\n"
    "C: <iq id=\"{phone}\" type=\"get\" to=\"bob@example.org/phone\"><query xmlns=\"jabber:iq:version\"/></iq>\n"
    "information page hide of=bob@example.org\n"
    "S: <iq type='result' id='{phone}' from='bob@example.org/phone'><query xmlns='jabber:iq:version'><name>x</name>"
    "</query></iq>\n"
    "information page show of=bob@example.org x=4 y=3 width=2 height=1\n"
    "S: <iq type='error' id='{desk}' from='bob@example.org/desk'/>\n"
    "the user presses 6006\n"
    "C: <iq id=\"{again}\" type=\"get\" to=\"bob@example.org/desk\"><query xmlns=\"jabber:iq:version\"/></iq>\n"
    "information page show of=bob@example.org page=2\n"
    "information page destroy of=bob@example.org\n"
    "S: <iq type='result' id='{again}' from='bob@example.org/desk'><query xmlns='jabber:iq:version'/></iq>\n"
    "status offline\n"
    "the user presses 6006\n"
    "information page destroy of=bob@example.org page=2\n"
    "information page show of=bob@example.org\n"
    "closed\n";

constexpr char kRefusedWizard[] =
    "load as alice@example.org/home\n"
    "options page show\n"
    "the user presses 7029\n"
    "the user types \"new@example.net\" into 7032\n"
    "the user types \"secret3\" into 7033\n"
    "the user presses 1\n"
    "connected\n"
    "S: <stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' id='s1'>\n"
    "S: <stream:features/>\n"
    "closed\n"
    "the user presses 2\n"
    "the host delivers\n";

/// What is done, and how windows go meanwhile.
struct Story {
    const char* name;
    const char* text;
    std::vector<const char*> ends;

    friend void PrintTo(const Story& story, std::ostream* out) { *out << story.name; }
};
const std::vector<const char*> kEndsOfTheBrowser = {"unload", "event of window 6003 kind=9",
                                                    "event of window 6004 kind=9", "dropped"};
const Story kStories[] = {
    {"OfARegistration", kRegistration, kEndsOfTheBrowser},
    {"OfACommand", kCommand, kEndsOfTheBrowser},
    {"OfOptions", kOptions, {"unload", "options page destroy", "event of window 9 kind=9"}},
    {"OfProperties",
     kProperties,
     {"unload", "properties page destroy of=bob@example.org", "properties page destroy page=2",
      "event of window 6001 kind=9", "dropped", "connected"}},
    {"OfInformation",
     kInformation,
     {"unload", "information page destroy of=bob@example.org", "information page destroy of=bob@example.org page=2",
      "event of window 6006 kind=1 control=6006", "dropped", "connected"}},
    {"OfTheWizard", kWizard, {"unload", "options page destroy", "event of window 7003 kind=9", "dropped"}},
    {"OfARefusedWizard", kRefusedWizard, {"unload", "options page destroy", "event of window 7003 kind=9", "dropped"}},
};

harness::Outcome drive(const std::string& text, std::optional<std::size_t> failingCall = std::nullopt) {
    // Read once: some thousand stories are told.
    static const harness::FoldBook folds(PROTOLINK_FOLDS);
    const auto transcript = folds.readText("windows", text);
    harness::PlayMode mode;
    mode.onlyDrive = true;
    mode.failingCall = failingCall;
    return harness::play(kExports, transcript, mode);
}

/// What happens from the first window's opening on, each thing once.
std::vector<std::string> eventsOf(const harness::Outcome& whole) {
    std::vector<std::string> events;
    std::set<std::string> seen;
    bool open = false;
    for (const auto& entry : whole.journal) {
        if (entry.text == "unload") break;
        open = open || harness::startsWith(entry.text, "opens window ");
        // A socket that goes inside this call is the host's own trouble.
        if (harness::startsWith(entry.text, "call NetLib/ConnectService")) continue;
        if (open && !entry.isStimulus && seen.insert(entry.text).second) events.push_back(entry.text);
    }
    return events;
}

class Windows : public testing::TestWithParam<Story> {};

TEST_P(Windows, GoAtEveryStep) {
    const auto whole = drive(GetParam().text);
    ASSERT_TRUE(whole.passed) << whole.report;
    const auto events = eventsOf(whole);
    ASSERT_GT(events.size(), 25u);
    for (const std::string& event : events) {
        for (const char* end : GetParam().ends) {
            const auto outcome = drive("when " + harness::quoted(event) + " then " + end + "\n" + GetParam().text);
            ASSERT_TRUE(outcome.passed) << end << " inside " << event << "\n" << outcome.report;
        }
    }
}

TEST_P(Windows, LiveWithAHostThatFailsAtEachCall) {
    const auto whole = drive(GetParam().text, 1'000'000);
    ASSERT_TRUE(whole.passed) << whole.report;
    ASSERT_GT(whole.calls, 120u);
    for (std::size_t call = 0; call < whole.calls; ++call) {
        const auto outcome = drive(GetParam().text, call);
        ASSERT_TRUE(outcome.passed) << "call " << call << "\n" << outcome.report;
    }
}

INSTANTIATE_TEST_SUITE_P(, Windows, testing::ValuesIn(kStories),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
