// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the plugin keeps in memory for each account, contact and resource. See docs/performance.md.
//
// A host that remembers nothing itself logs accounts in and gives one of them a roster and presences. Every block that
// the plugin takes and gives back is counted where the C library gives it, those of expat and zlib too, with the eight
// bytes that the C library keeps before each.
#include <malloc.h>

#include <cstddef>
#include <cstdio>
#include <string>

#include "tests/support/fake_platform.h"
#include "tests/torture/client.h"

extern "C" {
void* __libc_malloc(std::size_t size) noexcept;
void __libc_free(void* block) noexcept;
void* __libc_calloc(std::size_t count, std::size_t size) noexcept;
void* __libc_realloc(void* block, std::size_t size) noexcept;
}

namespace {

struct Held {
    std::ptrdiff_t blocks = 0;
    std::ptrdiff_t bytes = 0;
};

Held g_held;

// The host gives the plugin no block to free, and frees none of the plugin's, so who runs tells whose block it is.
void count(void* block, std::ptrdiff_t sign) {
    if (!block || !torture::g_inPlugin) return;
    g_held.blocks += sign;
    g_held.bytes += sign * static_cast<std::ptrdiff_t>(malloc_usable_size(block) + sizeof(std::size_t));
}

}  // namespace

extern "C" {
void* malloc(std::size_t size) noexcept {
    void* const block = __libc_malloc(size);
    count(block, 1);
    return block;
}
void free(void* block) noexcept {
    count(block, -1);
    __libc_free(block);
}
void* calloc(std::size_t number, std::size_t size) noexcept {
    void* const block = __libc_calloc(number, size);
    count(block, 1);
    return block;
}
void* realloc(void* block, std::size_t size) noexcept {
    count(block, -1);
    void* const moved = __libc_realloc(block, size);
    count(moved ? moved : block, 1);
    return moved;
}
}

namespace {

constexpr int kAccounts = 1000;
constexpr int kContacts = 10'000;
constexpr int kResourcesOfEach = 2;
constexpr std::uint32_t kNet = 1;

struct Step {
    const char* what;
    int number;
    const char* unit;
};

/// Prints what has been added since `before`, and gives what is held now.
Held tell(const Step& step, const Held& before) {
    const Held added{g_held.blocks - before.blocks, g_held.bytes - before.bytes};
    std::printf("%-44s %12td bytes %9td blocks %10.1f bytes %6.1f blocks for each %s\n", step.what, added.bytes,
                added.blocks, static_cast<double>(added.bytes) / step.number,
                static_cast<double>(added.blocks) / step.number, step.unit);
    return g_held;
}

void letHostForget(torture::Client& client) {
    client.host.before = [](const torture::Call& call) -> std::optional<OKU_WORD> {
        if (call.name == u"OKU/CTL/AddContact" || call.name == u"OKU/CTL/FndContact") return 1;
        return std::nullopt;
    };
}

/// The files that the plugin has written stand in memory here.
void forgetFiles() {
    const torture::Side plugin(true);
    std::erase_if(harness::world().files, [](const auto& file) { return !file.first.ends_with(".config"); });
}

void measureAccounts(const char* login, torture::ServerTraits traits) {
    traits.contacts = 0;
    torture::Client client(traits, kAccounts);
    letHostForget(client);
    Held held = g_held;
    client.load();
    held = tell({"accounts, offline", kAccounts, "account"}, held);
    for (const auto& [net, server] : client.servers) client.setStatus(net, OKU_STATUS_ONLINE);
    client.pump();
    if (!client.isReady()) std::puts("NOT LOGGED IN");
    tell({login, kAccounts, "account"}, held);
    client.unload();
    forgetFiles();
}

void measureContacts() {
    torture::Client client({.contacts = kContacts});
    letHostForget(client);
    client.load();
    client.setStatus(kNet, OKU_STATUS_ONLINE);
    Held held = g_held;
    client.pump();
    if (!client.isReady()) std::puts("NOT LOGGED IN");
    held = tell({"a login with a roster", kContacts, "contact"}, held);
    const auto presences = [&client](int resource) {
        for (int contact = 0; contact < kContacts; ++contact)
            client.receive(kNet, "<presence from='contact" + std::to_string(contact) + "@example.org/resource" +
                                     std::to_string(resource) +
                                     "'><show>away</show><status>I am away, back at six</status><priority>5</priority>"
                                     "<c xmlns='http://jabber.org/protocol/caps' hash='sha-1' node='https://c.example' "
                                     "ver='QgayPKawpkPSDYmwT/WM94uAlu0='/></presence>");
    };
    for (int resource = 0; resource < kResourcesOfEach; ++resource) {
        presences(resource);
        held = tell({"each contact comes with a resource more", kContacts, "resource"}, held);
    }
    presences(0);
    tell({"each tells its presence again", kContacts, "resource"}, held);
    client.unload();
    forgetFiles();
}

}  // namespace

int main() {
    measureAccounts("they log in, in clear", {});
    measureAccounts("they log in, with compression", {.compression = true});
    measureContacts();
    std::printf("%-44s %12td bytes %9td blocks\n", "what is left at the end", g_held.bytes, g_held.blocks);
    return 0;
}
