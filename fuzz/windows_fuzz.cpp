// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin's own windows and pages: a user who does anything with them, also while the host opens one or shows a box,
// a host that tells any values, and servers that answer whatever they like to what was asked last.
#include <array>
#include <set>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/dialogs.h"
#include "host/oku/menu.h"
#include "host/oku/windows.h"
#include "host/util/utf.h"
#include "tests/torture/client.h"

namespace {

constexpr std::uint32_t kNet = 1;
constexpr int kMostNested = 4;

OKU_WINDOW_EVENT eventOf(fuzz::Input& input) {
    static constexpr std::array<std::uint32_t, 35> kControls{
        1,    2,    25,   55,   6025, 6026, 6027, 6028, 6029, 119,  6000, 6009, 6014, 7002, 7004, 7006, 7009, 7013,
        7029, 7031, 7032, 7033, 7034, 0,    7017, 7018, 7019, 6003, 6004, 6011, 6012, 6015, 6016, 6005, 6006};
    OKU_WINDOW_EVENT event{};
    event.kind = input.byte() % 13;
    event.control = kControls[input.byte() % kControls.size()];
    const std::uint8_t number = input.byte();
    event.number = number < 100 ? number : number < 200 ? 900 + number : number - 250;
    if (event.number == 1099) event.number = 1025;
    event.width = static_cast<std::int32_t>(input.number());
    event.height = -event.width;
    return event;
}

/// The host's windows; those that have gone keep their callbacks, as a host may call late.
class Desk {
public:
    Desk(torture::Client& client, fuzz::Input& input) : client_(client), input_(input) {
        client.host.before = [this](const torture::Call& call) { return serve(call); };
        client.host.onSend = [this, server = client.host.onSend](std::uint32_t net, std::string_view bytes) {
            fuzz::requireWhole(client_, net, bytes);
            noteId(bytes);
            server(net, bytes);
        };
    }

    void tell(OKU_WINDOW_EVENT event, bool withRecord) {
        if (callbacks_.empty()) return;
        event.size = sizeof event;
        const torture::Callback window = callbacks_[input_.byte() % callbacks_.size()];
        window(withRecord ? reinterpret_cast<OKU_WORD>(&event) : 0);
    }
    /// An event of one of the pages, in one of two windows of the host's that it may be shown in; of a contact, or of
    /// none.
    void tellPage(std::uint8_t which) {
        if (which == 249) return openProperties();
        if (pages_.empty()) return;
        const OKU_CONTACT_RECORD contact = contactRecord();
        std::array<char16_t, OKU_PAGE_TEXT_CAPACITY> title{};
        OKU_PAGE_EVENT event{};
        event.size = sizeof event;
        event.event = which % 12;
        event.page = which < 250 ? &pageWords_[which / 12 % pageWords_.size()] : nullptr;
        event.parent = 1000 + which / 12 % pageWords_.size();
        event.contact = which < 120 ? nullptr : &contact;
        event.title = title.data();
        const torture::Callback page = pages_[which / 24 % pages_.size()];
        page(reinterpret_cast<OKU_WORD>(&event));
    }
    void answer(std::uint8_t shape, std::string_view content) {
        if (!client_.isOpen(kNet) || ids_.empty()) return;
        static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kShapes{{
            {"", ""},
            {"<query xmlns='http://jabber.org/protocol/disco#items'>", "</query>"},
            {"<query xmlns='http://jabber.org/protocol/disco#info'>", "</query>"},
            {"<query xmlns='jabber:iq:register'>", "</query>"},
            {"<query xmlns='jabber:iq:register'><x xmlns='jabber:x:data'>", "</x></query>"},
            {"<command xmlns='http://jabber.org/protocol/commands' status='completed'><x xmlns='jabber:x:data'>",
             "</x></command>"},
        }};
        const auto& [begin, end] = kShapes[shape % kShapes.size()];
        const std::string& id = ids_[ids_.size() - 1 - input_.byte() % ids_.size()];
        static constexpr std::array<std::string_view, 4> kSenders{"a.example", "a.example", "b.example/c", ""};
        const std::string from(kSenders[shape / 6 % kSenders.size()]);
        client_.say(kNet, "<iq from='" + from + "' id='" + id + "' type='" + (shape < 200 ? "result" : "error") + "'>" +
                              std::string(begin) + std::string(content) + std::string(end) + "</iq>");
    }
    bool anyOpen() const { return !open_.empty(); }

private:
    /// The `id` of a stanza of ours; it stands in its first tag.
    void noteId(std::string_view bytes) {
        const auto at = bytes.find(" id=\"");
        if (at == std::string_view::npos || at > bytes.find('>')) return;
        ids_.emplace_back(bytes.substr(at + 5, bytes.find('"', at + 5) - at - 5));
    }

    std::optional<OKU_WORD> serve(const torture::Call& call) {
        notePage(call);
        if (!call.name.starts_with(u"UI/")) return std::nullopt;
        if (call.name == u"UI/WindowOpen") return open(*reinterpret_cast<const OKU_WINDOW*>(call.param));
        if (call.name == u"UI/WindowDestroy") open_.erase(call.param);
        if (call.name == u"UI/MessageBox") return ask();
        if (call.name == u"UI/ControlGet") return get(*reinterpret_cast<OKU_CONTROL_VALUE*>(call.param));
        return 0;
    }
    void notePage(const torture::Call& call) {
        if (call.name == u"OKU/AddOptionsPage") {
            const auto& page = *reinterpret_cast<const OKU_OPTIONS_PAGE*>(call.extra);
            pages_ = {{page.callback, page.context}};
            pageWords_ = {};
        } else if (call.name == u"OKU/PropertiesStaticPageAdd" || call.name == u"OKU/PropertiesPageAdd") {
            const auto& page = *reinterpret_cast<const OKU_PROPERTIES_PAGE*>(call.param);
            if (pages_.size() < 4) pages_.push_back({page.callback, page.context});
        }
    }
    static OKU_CONTACT_RECORD contactRecord() {
        OKU_CONTACT_RECORD contact{};
        contact.size = sizeof contact;
        contact.id = u"contact1@example.org";
        contact.pfClass = u"XMPP";
        contact.netId = kNet;
        return contact;
    }
    void openProperties() {
        const OKU_CONTACT_RECORD contact = contactRecord();
        OKU_PROPERTIES_EVENT event{};
        event.size = sizeof event;
        event.event = OKU_PROPERTIES_OPEN;
        event.contact = &contact;
        client_.tellListeners(u"OKU/PropertiesAddPages", reinterpret_cast<OKU_WORD>(&event));
    }
    OKU_WORD open(const OKU_WINDOW& window) {
        const std::uint8_t how = input_.byte();
        if (how == 255) return 0;
        callbacks_.push_back({window.callback, window.context});
        const auto handle = static_cast<OKU_WORD>(callbacks_.size());
        open_.insert(handle);
        if (how > 240) meanwhile();
        // Whoever unloads the plugin drops its windows.
        if (!client_.loaded()) open_.clear();
        return handle;
    }
    OKU_WORD ask() {
        const std::uint8_t button = input_.byte();
        if (button > 100) meanwhile();
        return button % 8;
    }
    /// What no host should do: the user goes on while a call waits.
    void meanwhile() {
        if (nested_ >= kMostNested) return;
        ++nested_;
        const std::uint8_t what = input_.byte();
        if (what < 200) {
            tell(eventOf(input_), true);
        } else if (what < 250) {
            tellPage(what);
        } else {
            client_.unload();
            open_.clear();
        }
        --nested_;
    }
    OKU_WORD get(OKU_CONTROL_VALUE& value) {
        const std::uint8_t what = input_.byte();
        text_ = what % 2 ? input_.wide() : utow(input_.text());
        // The wizard sends a name and a password as they stand, so this user has none with what XML does not take.
        if (value.control == 7032 || value.control == 7033)
            std::erase_if(text_, [](char16_t unit) {
                return unit < u' ' || unit == u'<' || unit == u'&' || unit == u'>' || unit >= 0xFFFE;
            });
        value.text = what == 254 ? nullptr : text_.c_str();
        value.number = what == 253 ? -7 : what % 4;
        return what == 255 ? 0 : 1;
    }

    torture::Client& client_;
    fuzz::Input& input_;
    std::vector<torture::Callback> callbacks_;
    std::set<OKU_WORD> open_;
    std::vector<std::string> ids_;
    std::u16string text_;
    std::vector<torture::Callback> pages_;  // a host may call them late
    std::array<OKU_WORD, 2> pageWords_{};
    int nested_ = 0;
};

void openBrowser(torture::Client& client) {
    const auto item = client.host.menuItems.find(u"XMPP/InternalBrowser");
    OKU_MENU_EVENT event{sizeof event, 0, u"XMPP/InternalBrowser"};
    if (item != client.host.menuItems.end()) item->second(reinterpret_cast<OKU_WORD>(&event));
}

void doOne(torture::Client& client, Desk& desk, fuzz::Input& input) {
    const std::uint8_t what = input.byte();
    switch (what % 8) {
        case 0:
            return openBrowser(client);
        case 1:
        case 2:
            return desk.tell(eventOf(input), what < 250);
        case 3:
        case 4: {
            const std::uint8_t shape = input.byte();
            return desk.answer(shape, input.take(input.number() % 1024));
        }
        case 5:
            return client.pass(200);
        case 6:
            return what > 240 ? client.cut(kNet) : desk.tellPage(input.byte());
        default:
            if (what < 248) return client.setStatus(kNet, what < 100 ? 7 : 1);
            client.unload();
            fuzz::require(!desk.anyOpen(), "a window outlives the plugin");
            client.logIn();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    torture::Client client;
    Desk desk(client, input);
    client.logIn();
    while (!input.empty()) {
        doOne(client, desk, input);
        client.pump();
        if (!client.loaded()) client.logIn();
    }
    client.unload();
    fuzz::require(!desk.anyOpen(), "a window outlives the plugin");
    return 0;
}
