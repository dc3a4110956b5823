// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What windows with very much in them cost the plugin: a browser's items, each listed, asked about and answered, and a
// form's fields, shown and sent. Each line has twice as many as the one before.
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "dialogs/browser.h"
#include "dialogs/browser_layout.h"
#include "dialogs/form.h"
#include "host/util/utf.h"
#include "host/util/xml_parse.h"
#include "plugin/boundary.h"
#include "router/namespaces.h"
#include "tests/dialogs/recording_windows.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

using Clock = std::chrono::steady_clock;

/// An account that is logged in to a server that says what it is told to.
struct Desk {
    Desk() {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        host.onEvent = [this](const harness::Event& event) {
            if (event.category == harness::Event::Category::Sent) note(event.data);
        };
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
        client.jid.domain = u"example.org";
    }
    void note(const std::string& sent) {
        const auto from = sent.find("id=\"") + 4;
        ids.push_back(sent.substr(from, sent.find('"', from) - from));
    }
    void answer(const std::string& id, const std::string& from, const std::string& content) {
        std::vector<xmlElement> parsed;
        lutXMLParseA(parsed, "<iq from='" + from + "' id='" + id + "' type='result'>" + content + "</iq>");
        dispatcher.dispatch(parsed.front());
    }

    harness::RecordingHost host;
    CClientClass client{{u"r", u"c", u"XMPP"}, Host(host.table(), host.module)};
    CZipStream zip;
    StreamOutput output{client, zip};
    CProtoEventDispatcher dispatcher;
    DialogAccount account{client, dispatcher, output};
    DialogAccounts accounts{&account};
    Host boxes{host.table(), host.module};
    dialogs_test::RecordingWindows windows;
    std::vector<std::string> ids;
    const PluginCall call;  // as if the host had called
};

std::string addressOf(std::size_t item) { return "i" + std::to_string(item) + ".example.org"; }

void browse(Desk& desk, std::size_t items) {
    const auto browser = std::make_shared<CWndBrowser>(desk.windows, desk.boxes, desk.accounts);
    browser->open();
    desk.windows.newest(6003).press(browser::kGo);
    std::string list;
    for (std::size_t i = 0; i < items; ++i) list += "<item jid='" + addressOf(i) + "'/>";
    desk.answer(desk.ids[0], "example.org", "<query xmlns='" + wtou(ns::kDiscoItems) + "'>" + list + "</query>");
    for (std::size_t i = 0; i < items; ++i) {
        desk.answer(desk.ids[i + 1], addressOf(i),
                    "<query xmlns='" + wtou(ns::kDiscoInfo) + "'><identity name='N'/></query>");
    }
    browser->DestroyWindow();
}

void fillIn(Desk& desk, std::size_t fields) {
    const auto form = std::make_shared<CWndForm>(desk.windows, desk.account, u"gg.example.org");
    form->DoModal(1, [](std::int32_t) {});
    std::string all;
    for (std::size_t i = 0; i < fields; ++i)
        all += "<field type='text-single' var='v" + std::to_string(i) + "'><value>1</value></field>";
    desk.answer(desk.ids[0], "gg.example.org",
                "<query xmlns='jabber:iq:register'><x xmlns='jabber:x:data'>" + all + "</x></query>");
    desk.windows.newest(6004).press(kOkButton);
    form->DestroyWindow();
}

void measure(const char* what, void (*act)(Desk&, std::size_t), std::size_t first) {
    for (std::size_t count = first; count <= 16 * first; count *= 2) {
        Desk desk;
        const auto begin = Clock::now();
        act(desk, count);
        const double spent = std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
        std::printf("%6zu %-6s %8.1f ms, %6.2f us each\n", count, what, spent / 1000,
                    spent / static_cast<double>(count));
    }
}

}  // namespace

int main() {
    measure("items", browse, 2'500);
    measure("fields", fillIn, 2'500);
}
