// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Lists of mail, questions of web sites and the user's rank, as a server may word them.
#include <optional>
#include <string>

#include "fuzz/news.h"

namespace {

constexpr std::uint32_t kNet = 1;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    torture::Client client;
    auto& settings = client.host.settings[u"/profile/protoLink.config"];
    const std::uint8_t flags = input.byte();
    settings[u"XMPP/GMail"] = flags & 1;
    settings[u"XMPP/GMailLeave"] = flags >> 1 & 1;
    client.servers.at(kNet).abilities = "<feature var='google:mail:notify'/><feature var='aqq:iq:rank'/>";
    fuzz::Input answers(data, size);
    const bool references = input.has('&');
    client.host.before = [&](const torture::Call& call) { return fuzz::checkNews(call, answers, references); };
    client.logIn();
    client.host.onSend = [&](std::uint32_t net, std::string_view bytes) { fuzz::requireWhole(client, net, bytes); };
    while (!input.empty()) client.receive(kNet, std::string(input.take(input.number())));
    client.host.before = nullptr;
    client.unload();
    fuzz::require(client.host.leftovers().empty(), "something is left after unloading");
    return 0;
}
