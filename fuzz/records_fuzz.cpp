// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Records that the host gives: null pointers, absurd numbers, texts of any kind and length, settings of any type.
#include <memory>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/menu.h"
#include "host/oku/message.h"
#include "host/oku/netlib.h"
#include "host/oku/protocol.h"
#include "host/oku/timer.h"
#include "host/oku/windows.h"
#include "host/util/utf.h"
#include "tests/torture/client.h"

namespace {

constexpr std::uint32_t kNet = 1;

template <typename T>
OKU_WORD word(T& record) {
    return reinterpret_cast<OKU_WORD>(&record);
}

/// Texts that the records of one call point to; some are null.
class Texts {
public:
    explicit Texts(fuzz::Input& input) : input_(input) {}
    const char16_t* next() {
        const std::uint8_t kind = input_.byte();
        if (kind == 0) return nullptr;
        std::u16string text = kind % 2 ? utow(input_.text()) : input_.wide();
        // A long one is made of a short one.
        if (kind > 250)
            for (const std::u16string part = text; !part.empty() && text.size() < 10'000;) text += part;
        kept_.push_back(std::make_unique<std::u16string>(text));
        return kept_.back()->c_str();
    }

private:
    fuzz::Input& input_;
    std::vector<std::unique_ptr<std::u16string>> kept_;
};

void call(torture::Client& client, fuzz::Input& input) {
    Texts texts(input);
    const std::uint8_t what = input.byte();
    const OKU_WORD extra = input.byte();
    OKU_CONTACT_RECORD contact{sizeof contact, {}, texts.next(), u"XMPP", kNet, {}, nullptr};
    const auto protocol = client.host.protocols[kNet];
    switch (what % 10) {
        case 0: {
            OKU_STATUS_SET record{};
            record.status = input.number();
            record.description = texts.next();
            client.callService(kNet, u"PFStatusSet", extra & 1 ? 0 : word(record), extra);
            break;
        }
        case 1: {
            OKU_MESSAGE_SEND record{};
            record.contact = contact;
            record.subject = texts.next();
            record.body = texts.next();
            client.callService(kNet, u"PFMessageSend", extra == 255 ? 0 : word(record), extra);
            break;
        }
        case 2:
            client.callService(kNet, u"PFTNSend", extra == 255 ? 0 : word(contact), extra);
            break;
        case 3:
            protocol.authorize(extra == 255 ? 0 : word(contact), extra);
            break;
        case 4:
            protocol.remove(extra == 255 ? 0 : word(contact), extra);
            break;
        case 5: {
            OKU_MENU_EVENT event{sizeof event, 0, texts.next()};
            for (const auto& [id, item] : std::unordered_map(client.host.menuItems)) item(extra & 1 ? 0 : word(event));
            break;
        }
        case 6: {
            OKU_STATUS_WINDOW_EVENT event{};
            event.event = extra;
            event.status = input.number();
            event.description = texts.next();
            event.protect = input.byte();
            const torture::Callback window = client.host.statusWindows[kNet];
            window(extra == 255 ? 0 : word(event));
            break;
        }
        case 7: {
            const std::string_view bytes = input.text();
            std::vector<char> buffer(bytes.begin(), bytes.end());
            buffer.push_back('\0');
            NL_RECEIVED piece{sizeof piece, extra == 255 ? -1 : static_cast<std::int32_t>(bytes.size()),
                              extra == 254 ? nullptr : buffer.data()};
            client.raise(kNet, NL_EVENT_RECEIVED, extra == 253 ? 0 : word(piece));
            break;
        }
        case 8: {
            NL_TLS_STATE state{sizeof state, input.byte()};
            client.raise(kNet, NL_EVENT_TLS, extra & 1 ? 0 : word(state));
            client.raise(kNet, NL_EVENT_CERTIFICATE, extra);
            break;
        }
        default: {
            OKU_TIMER_EVENT event{};
            event.kind = input.byte();
            for (const auto& [name, timer] : std::map(client.host.timers)) timer.callback(extra & 1 ? 0 : word(event));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr const char16_t* kKeys[] = {u"XMPP/User",
                                                u"XMPP/Pass",
                                                u"XMPP/Serv/Host",
                                                u"XMPP/Serv/Enable",
                                                u"XMPP/Proxy/Enable",
                                                u"XMPP/Proxy/Host",
                                                u"XMPP/Proxy/OKU",
                                                u"XMPP/Proxy/Port",
                                                u"XMPP/Priority",
                                                u"XMPP/AuthType",
                                                u"AV/Hash",
                                                u"desc/String",
                                                u"desc/Protect",
                                                u"protoUUID",
                                                u"XMPP/MessageAsChat",
                                                u"XMPP/Avatar/SendEnable"};
    fuzz::Input input(data, size);
    torture::Client client;
    auto& settings = client.host.settings[u"/profile/protoLink.config"];
    for (std::uint8_t count = input.byte() % 8; count > 0; --count) {
        auto& value = settings[kKeys[input.byte() % std::size(kKeys)]];
        if (input.byte() & 1) {
            value = static_cast<std::int32_t>(input.number() << 16 | input.number());
        } else {
            value = input.wide();
        }
    }
    client.host.onSend = [&client, forward = client.host.onSend](std::uint32_t net, std::string_view bytes) {
        fuzz::requireWhole(client, net, bytes);
        forward(net, bytes);
    };
    client.logIn();
    while (!input.empty()) call(client, input);
    client.unload();
    fuzz::require(client.host.leftovers().empty(), "something is left after unloading");
    return 0;
}
