// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Windows with very much in them, over views that nobody draws.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "dialogs/browser.h"
#include "dialogs/browser_layout.h"
#include "dialogs/form.h"
#include "dialogs/properties_info.h"
#include "dialogs/properties_layout.h"
#include "host/util/format.h"
#include "host/util/utf.h"
#include "host/util/xml_parse.h"
#include "plugin/boundary.h"
#include "router/namespaces.h"
#include "tests/dialogs/recording_windows.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;
using dialogs_test::RecordedWindow;

namespace {

constexpr std::size_t kItems = 20'000;
constexpr std::size_t kFields = 10'000;
constexpr std::size_t kResources = 1'000;

ResourceEntry resourceOf(std::size_t number) {
    ResourceEntry entry;
    entry.resource = formatText(u"r%d", number);
    return entry;
}

class LargeWindows : public testing::Test {
protected:
    LargeWindows() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        host.onEvent = [this](const harness::Event& event) {
            if (event.category == harness::Event::Category::Sent) sent.push_back(event.data);
        };
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
        client.jid.domain = u"example.org";
    }

    /// The value of the attribute `id` of what was sent.
    static std::string idOf(const std::string& stanza) {
        const auto from = stanza.find("id=\"") + 4;
        return stanza.substr(from, stanza.find('"', from) - from);
    }
    std::string lastId() const { return idOf(sent.back()); }
    void answer(const std::string& text) {
        std::vector<xmlElement> parsed;
        lutXMLParseA(parsed, text);
        ASSERT_EQ(parsed.size(), 1u);
        EXPECT_TRUE(dispatcher.dispatch(parsed.front()));
    }
    RecordedWindow& formWith(const std::string& fields) {
        form = std::make_shared<CWndForm>(windows, account, u"gg.example.org");
        form->DoModal(1, [](std::int32_t) {});
        answer("<iq from='gg.example.org' id='" + lastId() +
               "' type='result'><query xmlns='jabber:iq:register'><x xmlns='jabber:x:data' type='form'>" + fields +
               "</x></query></iq>");
        return windows.newest(6005);
    }

    harness::RecordingHost host;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    CProtoEventDispatcher dispatcher;
    DialogAccount account{client, dispatcher, output};
    DialogAccounts accounts{&account};
    Host boxes{host.table(), host.module};
    dialogs_test::RecordingWindows windows;
    std::vector<std::string> sent;
    std::shared_ptr<CWndForm> form;
    const PluginCall call;  // as if the host had called
};

TEST_F(LargeWindows, ABrowserTellsEachRowOnceForEachThingThatItLearns) {
    const auto browser = std::make_shared<CWndBrowser>(windows, boxes, accounts);
    browser->open();
    RecordedWindow& window = windows.newest(6003);
    window.press(browser::kGo);
    std::string items;
    for (std::size_t i = 0; i < kItems; ++i) items += "<item jid='i" + std::to_string(i) + ".example.org'/>";
    answer("<iq from='example.org' id='" + lastId() + "' type='result'><query xmlns='" + wtou(ns::kDiscoItems) + "'>" +
           items + "</query></iq>");
    ASSERT_EQ(window.rows.size(), kItems);
    ASSERT_EQ(sent.size(), 1 + kItems);
    EXPECT_EQ(window.rowsSet, kItems);

    const std::vector<std::string> questions(sent.begin() + 1, sent.end());
    for (std::size_t i = 0; i < kItems; ++i) {
        answer("<iq from='i" + std::to_string(i) + ".example.org' id='" + idOf(questions[i]) +
               "' type='result'><query xmlns='" + wtou(ns::kDiscoInfo) + "'><identity name='N" + std::to_string(i) +
               "'/></query></iq>");
    }
    EXPECT_EQ(window.rowsSet, 2 * kItems);
    EXPECT_EQ(window.rows.at(kItems).text, u"N19999 (i19999.example.org)");
    EXPECT_EQ(window.description, u"Gotowe");
    browser->DestroyWindow();
}

TEST_F(LargeWindows, AFormIsOnePageAndIsReadOnce) {
    std::string fields;
    for (std::size_t i = 0; i < kFields; ++i)
        fields += "<field type='text-single' var='v" + std::to_string(i) + "'><value>1</value></field>";
    RecordedWindow& page = formWith(fields);
    RecordedWindow& window = windows.newest(6004);
    EXPECT_EQ(page.opened.controls.size(), 2 * kFields);
    EXPECT_EQ(page.enabledCalls, 1u);
    window.press(kOkButton);
    EXPECT_EQ(page.asked, kFields);
    EXPECT_EQ(page.enabledCalls, 2u);
    EXPECT_FALSE(page.allEnabled);
    EXPECT_NE(sent.back().find("<field var=\"v9999\"><value>1</value></field>"), std::string::npos);
    form->DestroyWindow();
}

TEST_F(LargeWindows, AFieldHasAsManyOptionsAsComeAndAsMuchText) {
    std::string options;
    for (int i = 0; i < 100'000; ++i) options += "<option><value>" + std::to_string(i) + "</value></option>";
    const std::string megabyte(1'000'000, 'x');
    RecordedWindow& page = formWith("<field type='list-single' var='l'>" + options +
                                    "</field><field type='text-multi' var='t'><value>" + megabyte + "</value></field>");
    page.controls.at(25).selection = 99'999;
    EXPECT_EQ(page.controls.at(25).items.size(), 100'000u);
    windows.newest(6004).press(kOkButton);
    EXPECT_NE(sent.back().find("<field var=\"l\"><value>99999</value></field>"), std::string::npos);
    EXPECT_NE(sent.back().find("<field var=\"t\"><value>" + megabyte + "</value></field>"), std::string::npos);
    form->DestroyWindow();
}

TEST_F(LargeWindows, AContactHasAsManyResourcesAsLogIn) {
    Contacts contacts;
    ResourceList& resources = contacts.entry(u"bob@example.org").resources;
    for (std::size_t i = 0; i < kResources; ++i) resources.append(resourceOf(i));
    const auto page = std::make_shared<CWndPropertiesInfo>(windows, account, contacts, u"bob@example.org");
    ASSERT_TRUE(page->CreateChild(1));
    ASSERT_EQ(sent.size(), kResources);
    RecordedWindow& window = windows.newest(6006);
    const std::u16string list = window.controls.at(properties::kResources).text;

    const std::vector<std::string> questions = std::exchange(sent, {});
    for (const std::string& question : questions)
        answer("<iq from='bob@example.org/x' id='" + idOf(question) + "' type='result'><query/></iq>");
    const std::u16string told = u"JID:\tbob@example.org/x\r\n  Program:\t\r\n  Wersja:  \t\r\n  System:\t\r\n\r\n\r\n";
    EXPECT_EQ(window.controls.at(properties::kResources).text.size(), list.size() + kResources * told.size());
    // Nothing more is said than was asked, and what is shown is read once for each answer.
    EXPECT_TRUE(sent.empty());
    EXPECT_EQ(window.asked, kResources);
    page->DestroyWindow();
}

TEST_F(LargeWindows, FieldsOfOneNameOrNoneAreSentAsTheyStand) {
    formWith(
        "<field type='hidden' var='a'><value>1</value></field><field type='hidden' var='a'><value>2</value></field>"
        "<field type='hidden'><value>3</value></field>");
    windows.newest(6004).press(kOkButton);
    EXPECT_NE(sent.back().find("<field var=\"a\"><value>1</value></field>\r\n<field var=\"a\"><value>2</value></field>"
                               "\r\n<field var=\"\"><value>3</value></field>"),
              std::string::npos)
        << sent.back();
    form->DestroyWindow();
}

TEST_F(LargeWindows, AnAddressPastedWithEverythingIsAskedAsOne) {
    const auto browser = std::make_shared<CWndBrowser>(windows, boxes, accounts);
    browser->open();
    RecordedWindow& window = windows.newest(6003);
    const std::u16string pasted =
        u"\"'><a/>&amp;\x1\xFFFE\xD800\xDC00\xDC00\t\r\n\x202E" + std::u16string(1'000'000, u'x');
    window.controls.at(browser::kJid).text = pasted;
    window.controls.at(browser::kNode).text = pasted;
    window.press(browser::kGo);
    std::vector<xmlElement> asked;
    lutXMLParseA(asked, sent.back());
    ASSERT_EQ(asked.size(), 1u);
    ASSERT_EQ(asked.front().children.size(), 1u);
    const std::u16string_view jid = asked.front().GetAttribute(u"to");
    EXPECT_EQ(jid.substr(0, 11), u"\"'><a/>&amp");
    EXPECT_EQ(jid.substr(jid.size() - 1'000'000), std::u16string(1'000'000, u'x'));
    EXPECT_EQ(asked.front().children.front().GetAttribute(u"node"), jid);
    browser->DestroyWindow();
}

TEST_F(LargeWindows, ATextPastedWithEverythingStaysOneText) {
    RecordedWindow& page = formWith("<field type='text-single' var='a'/>");
    page.controls.at(25).text = u"</value>&\x1\xFFFE\xD800\"'\t\r\n\x202E";
    windows.newest(6004).press(kOkButton);
    EXPECT_NE(sent.back().find("<value>&lt;/value&gt;&amp;&quot;&apos;\t\r\n\xE2\x80\xAE</value>"), std::string::npos)
        << sent.back();
    form->DestroyWindow();
}

}  // namespace
