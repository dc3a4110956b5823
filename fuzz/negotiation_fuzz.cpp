// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A server that negotiates as it likes: features, challenges, answers in any order and with any content.
#include <array>
#include <string>

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/netlib.h"
#include "host/oku/protocol.h"
#include "host/util/base64.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "tests/torture/client.h"

namespace {

constexpr std::uint32_t kNet = 1;

struct Part {
    const char* before;
    const char* after;
    enum class Content { None, Text, Base64, Xml } content = Content::Text;
};

constexpr std::array<Part, 15> kParts{{
    {"<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><mechanism>",
     "</mechanism></mechanisms>"
     "</stream:features>"},
    {"<stream:features><mechanisms "
     "xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><mechanism>DIGEST-MD5</mechanism><mechanism>",
     "</mechanism></mechanisms></stream:features>"},
    {"<stream:features><starttls/>", "</stream:features>", Part::Content::Xml},
    {"<stream:features><compression><method>", "</method></compression></stream:features>"},
    {"<stream:features><bind/>", "</stream:features>", Part::Content::Xml},
    {"<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>", "</challenge>", Part::Content::Base64},
    {"<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>", "</challenge>"},
    {"<success>", "</success>"},
    {"<failure xmlns='", "'/>"},
    {"<proceed>", "</proceed>", Part::Content::Xml},
    {"<iq type='result' id='", "'><bind/></iq>"},
    {"<iq type='result' id='",
     "'><query xmlns='http://jabber.org/protocol/disco#info'>"
     "<feature var='jabber:iq:privacy'/><feature var='google:shared-status'/></query></iq>"},
    {"<iq type='error' id='", "'><error/></iq>"},
    {"<?xml version='1.0'?><stream:stream xmlns='jabber:client' id='", "' version='1.0'>"},
    {"", "", Part::Content::Xml},
}};

std::string contentOf(const Part& part, std::string_view bytes) {
    switch (part.content) {
        case Part::Content::None:
            return {};
        case Part::Content::Text:
            return wtou(lutXMLEscapeW(utow(bytes)));
        case Part::Content::Base64:
            return lutBase64Encode(bytes);
        case Part::Content::Xml:
            return std::string(bytes);
    }
    return {};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::uint8_t switches = input.byte();
    torture::Client client;
    auto& settings = client.host.settings[u"/profile/protoLink.config"];
    settings[u"XMPP/Serv/SSL"] = switches & 1;
    settings[u"XMPP/Serv/SSL/Legacy"] = switches >> 1 & 1;
    settings[u"XMPP/User"] = utow(input.text());
    settings[u"XMPP/Pass"] = utow(input.text());
    client.load();
    client.setStatus(kNet, OKU_STATUS_ONLINE);
    std::string lastId;
    client.host.onSend = [&](std::uint32_t net, std::string_view bytes) {
        fuzz::requireWhole(client, net, bytes);
        if (const std::string id = torture::idIn(bytes); !id.empty()) lastId = id;
    };
    client.raise(kNet, NL_EVENT_CONNECTED);
    while (!input.empty()) {
        const Part& part = kParts[input.byte() % kParts.size()];
        const std::string_view bytes = input.text();
        // The client's last id, where the content is told to be it.
        const std::string content = bytes == "id" ? lastId : contentOf(part, bytes);
        client.receive(kNet, part.before + content + part.after);
        if (input.byte() % 8 == 0) client.pass(1000);
    }
    client.host.onSend = nullptr;
    client.unload();
    fuzz::require(client.host.leftovers().empty(), "something is left after unloading");
    return 0;
}
