// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin's own windows: a user who does anything with them, a host that tells any values, and servers that answer
// whatever they like to what was asked last.
#include <array>
#include <set>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/dialogs.h"
#include "host/oku/menu.h"
#include "host/util/utf.h"
#include "tests/torture/client.h"

namespace {

constexpr std::uint32_t kNet = 1;

/// The host's windows; those that have gone keep their callbacks, as a host may call late.
class Desk {
public:
    Desk(torture::Client& client, fuzz::Input& input) : client_(client), input_(input) {
        client.host.before = [this](const torture::Call& call) { return serve(call); };
        client.host.onSend = [this, server = client.host.onSend](std::uint32_t net, std::string_view bytes) {
            fuzz::requireWhole(bytes);
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
        client_.say(kNet, "<iq from='a.example' id='" + id + "' type='" + (shape < 200 ? "result" : "error") + "'>" +
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
        if (!call.name.starts_with(u"UI/")) return std::nullopt;
        if (call.name == u"UI/WindowOpen") return open(*reinterpret_cast<const OKU_WINDOW*>(call.param));
        if (call.name == u"UI/WindowDestroy") open_.erase(call.param);
        if (call.name == u"UI/ControlGet") return get(*reinterpret_cast<OKU_CONTROL_VALUE*>(call.param));
        return 0;
    }
    OKU_WORD open(const OKU_WINDOW& window) {
        if (input_.byte() == 255) return 0;
        callbacks_.push_back({window.callback, window.context});
        open_.insert(static_cast<OKU_WORD>(callbacks_.size()));
        return static_cast<OKU_WORD>(callbacks_.size());
    }
    OKU_WORD get(OKU_CONTROL_VALUE& value) {
        const std::uint8_t what = input_.byte();
        text_ = what % 2 ? input_.wide() : utow(input_.text());
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
};

void openBrowser(torture::Client& client) {
    const auto item = client.host.menuItems.find(u"XMPP/InternalBrowser");
    OKU_MENU_EVENT event{sizeof event, 0, u"XMPP/InternalBrowser"};
    if (item != client.host.menuItems.end()) item->second(reinterpret_cast<OKU_WORD>(&event));
}

OKU_WINDOW_EVENT eventOf(fuzz::Input& input) {
    static constexpr std::array<std::uint32_t, 10> kControls{1, 2, 25, 55, 6025, 6026, 6027, 6028, 6029, 119};
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
            if (what > 240) client.cut(kNet);
            return;
        default:
            if (what < 248) return;
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
    while (!input.empty()) doOne(client, desk, input);
    client.unload();
    fuzz::require(!desk.anyOpen(), "a window outlives the plugin");
    return 0;
}
