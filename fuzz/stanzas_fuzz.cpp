// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What servers, users and listeners may do to two accounts, in any order, before a host that refuses, vetoes, calls
// back and unloads from within its own calls.
#include <functional>
#include <string>

#include "fuzz/input.h"
#include "host/oku/netlib.h"
#include "host/oku/protocol.h"
#include "host/util/utf.h"
#include "tests/torture/client.h"

namespace {

using torture::Client;

constexpr std::uint32_t kAccounts = 2;

OKU_WORD contactCall(Client& client, std::uint32_t net, bool removes, const std::u16string& jid, OKU_WORD extra) {
    OKU_CONTACT_RECORD record{};
    record.size = sizeof record;
    record.id = jid.c_str();
    record.pfClass = u"XMPP";
    record.netId = net;
    const auto found = client.host.protocols.find(net);
    if (found == client.host.protocols.end()) return 0;
    const torture::Callback callback = removes ? found->second.remove : found->second.authorize;
    return callback(reinterpret_cast<OKU_WORD>(&record), extra);
}

struct Deed {
    void (*act)(Client& client, std::uint32_t net, fuzz::Input& input);
};

const Deed kDeeds[] = {
    {[](Client& client, std::uint32_t net, fuzz::Input& input) { client.receive(net, std::string(input.text())); }},
    {[](Client& client, std::uint32_t net, fuzz::Input& input) { client.setStatus(net, input.byte() % 10); }},
    {[](Client& client, std::uint32_t net, fuzz::Input& input) {
        client.sendMessage(net, utow(input.text()), input.wide());
    }},
    {[](Client& client, std::uint32_t net, fuzz::Input& input) { client.cut(net, input.byte() & 1); }},
    {[](Client& client, std::uint32_t net, fuzz::Input& input) { client.raise(net, input.byte() % 12); }},
    {[](Client& client, std::uint32_t, fuzz::Input& input) { client.pass(input.number() * 10); }},
    {[](Client& client, std::uint32_t net, fuzz::Input& input) {
        contactCall(client, net, input.byte() & 1, utow(input.text()), input.byte() % 8);
    }},
    {[](Client& client, std::uint32_t net, fuzz::Input& input) {
        const std::string bytes(input.text());
        OKU_RAW_SEND record{sizeof(OKU_RAW_SEND), 0, bytes.data(), static_cast<std::uint32_t>(bytes.size()), 0};
        client.callService(net, u"PFRawSend", reinterpret_cast<OKU_WORD>(&record), 0);
    }},
    {[](Client& client, std::uint32_t, fuzz::Input&) { client.pump(); }},
    {[](Client& client, std::uint32_t, fuzz::Input&) {
        if (client.loaded()) client.unload();
    }},
    {[](Client& client, std::uint32_t, fuzz::Input&) {
        if (!client.loaded()) client.load();
    }},
};

void doOne(Client& client, fuzz::Input& input) {
    const std::uint8_t what = input.byte();
    kDeeds[what / kAccounts % std::size(kDeeds)].act(client, what % kAccounts + 1, input);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    constexpr int kDeepest = 3;
    int depth = 0;
    bool lostByTheHost = false;
    {
        Client client({.compression = (input.byte() & 1) != 0}, kAccounts);
        client.logIn();
        std::uint32_t quiet = input.byte();
        client.host.before = [&](const torture::Call& call) -> std::optional<OKU_WORD> {
            if (quiet > 0 || depth >= kDeepest || input.empty()) {
                quiet -= quiet > 0;
                return std::nullopt;
            }
            const std::uint8_t what = input.byte();
            quiet = what >> 2;
            if (what & 1) {
                ++depth;
                const std::size_t loads = client.loads();
                const bool wasLoaded = client.loaded();
                doOne(client, input);
                --depth;
                if (!wasLoaded || (client.loaded() && client.loads() == loads)) return std::nullopt;
                // A host does nothing more for a plugin that went while it asked, nor for one that went before and was
                // still taking back what it had.
                lostByTheHost = lostByTheHost || call.takesBack();
                return 0;
            }
            lostByTheHost = lostByTheHost || call.takesBack();
            return what & 2 ? 1 : 0;
        };
        while (!input.empty()) doOne(client, input);
        client.host.before = nullptr;
        if (client.loaded()) client.unload();
        fuzz::require(lostByTheHost || client.host.leftovers().empty(), "something is left after unloading");
        client.pass(120'000);
    }
    Client next;
    next.logIn();
    fuzz::require(next.isReady(), "the next load does not log in");
    return 0;
}
