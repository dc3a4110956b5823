// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Personal events of others, publications of the user, and what the server says to them, in any order.
#include <array>
#include <optional>
#include <string>

#include "fuzz/news.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"

namespace {

using torture::Client;

constexpr std::uint32_t kNet = 1;

OKU_WORD publish(Client& client, std::uint32_t kind, OKU_WORD data) {
    OKU_PEP_PUBLISH record{sizeof record, kind};
    return client.callService(kNet, u"PFEPublishData", reinterpret_cast<OKU_WORD>(&record), data);
}

/// A record that is nothing but its size and texts, in the order of the fields; some are left out.
template <typename Data, std::size_t Texts>
OKU_WORD publishTexts(Client& client, std::uint32_t kind, fuzz::Input& input) {
    std::array<std::u16string, Texts> texts;
    Data data{};
    data.size = sizeof data;
    auto* field = reinterpret_cast<const char16_t**>(&data) + 1;
    for (std::size_t i = 0; i < Texts && !input.empty(); ++i, ++field) {
        const std::string_view text = input.text();
        texts[i] = utow(text);
        if (!text.empty()) *field = texts[i].c_str();
    }
    return publish(client, kind, reinterpret_cast<OKU_WORD>(&data));
}

/// What publishes a mood escapes it itself, and chooses a name that an element can have.
OKU_WORD publishMood(Client& client, fuzz::Input& input) {
    const std::u16string text = lutXMLEscapeW(utow(input.text()));
    OKU_PEP_MOOD_DATA mood{};
    mood.size = sizeof mood;
    if (input.byte() & 1) mood.mood = u"happy";
    if (!text.empty()) mood.text = text.c_str();
    return publish(client, OKU_PEP_MOOD, reinterpret_cast<OKU_WORD>(&mood));
}

void doOne(Client& client, fuzz::Input& input, const std::string& lastId) {
    switch (input.byte() % 7) {
        case 0:
            client.receive(kNet, std::string(input.take(input.number())));
            break;
        case 1:
            publishTexts<OKU_PEP_TUNE_DATA, 6>(client, OKU_PEP_TUNE, input);
            break;
        case 2:
            publishMood(client, input);
            break;
        case 3:
            publishTexts<OKU_PEP_LOCATION_DATA, 22>(client, OKU_PEP_LOCATION, input);
            break;
        case 4:
            client.receive(kNet, "<iq id='" + lastId + "' type='result'>" + std::string(input.text()) + "</iq>");
            break;
        case 5:
            publish(client, input.byte(), 0);
            break;
        default:
            client.host.settings[u"/profile/protoLink.config"][input.byte() & 1 ? u"XMPP/XEP-118" : u"XMPP/XEP-107"] =
                input.byte() & 1;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    Client client;
    client.servers.at(kNet).abilities = "<identity type='pep'/><feature var='http://jabber.org/protocol/pubsub'/>";
    client.logIn();
    std::string lastId;
    client.host.onSend = [&](std::uint32_t net, std::string_view bytes) {
        fuzz::requireWhole(client, net, bytes);
        lastId = torture::idIn(bytes);
    };
    const bool references = input.has('&');
    client.host.before = [&](const torture::Call& call) { return fuzz::checkNews(call, input, references); };
    while (!input.empty()) doOne(client, input, lastId);
    client.host.before = nullptr;
    client.unload();
    fuzz::require(client.host.leftovers().empty(), "something is left after unloading");
    return 0;
}
