// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A host that serves protoLink.module with the least work that a host can do, so that what is measured is the plugin.
// It logs in as bench@localhost at the host and port of its two arguments, in clear and without compression, hands
// over what each read gave, and prints what reached it when the server ends the stream.
//
// The chat message "!send N" makes it send N messages. See docs/performance.md.
#include <arpa/inet.h>
#include <dlfcn.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/oku/contact.h"
#include "host/oku/log.h"
#include "host/oku/message.h"
#include "host/oku/netlib.h"
#include "host/oku/protocol.h"
#include "host/oku/settings.h"
#include "host/oku/table.h"
#include "host/oku/windows.h"

namespace {

constexpr std::size_t kReadBuffer = 256 * 1024;
constexpr std::size_t kWriteBuffer = 64 * 1024;
constexpr std::uint32_t kNetId = 1;
constexpr std::size_t kOutgoingBodyLength = 100;
constexpr std::size_t kOutgoingContacts = 1000;

/// The services that this host really serves; all others answer 0.
enum class Service { None, ProtocolAdd, SettingsGet, Directory, SocketCreate, Connect, Send, Hooks, AddContact, State };

struct Counts {
    std::size_t messages = 0, body = 0, presences = 0, roster = 0;
};

struct BenchHost {
    std::string serverHost;
    int port = 0;
    int socket = -1;
    std::string unsent;     // what the plugin gave since the last write
    std::u16string server;  // as a setting of the account
    std::u16string directory;
    OKU_HANDLER socketEvent = nullptr;
    OKU_WORD socketContext = 0;
    std::unordered_map<std::u16string, std::pair<OKU_HANDLER, OKU_WORD>> services;
    // The plugin names a service by the same constant each time, so the address of the name is enough after the first.
    std::unordered_map<const char16_t*, Service> serviceByAddress;
    std::unordered_set<std::size_t> resources;
    Counts counts;
};

BenchHost g_host;

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

Service serviceOf(const char16_t* name) {
    if (const auto found = g_host.serviceByAddress.find(name); found != g_host.serviceByAddress.end())
        return found->second;
    static const std::unordered_map<std::u16string_view, Service> kServices{
        {u"OKU/ProtocolAdd", Service::ProtocolAdd},
        {u"OKU/Settings/Get", Service::SettingsGet},
        {u"OKU/Info/GetCacheDir", Service::Directory},
        {u"OKU/Info/GetProfileDir", Service::Directory},
        {u"NetLib/Create", Service::SocketCreate},
        {u"NetLib/ConnectService", Service::Connect},
        {u"NetLib/Send", Service::Send},
        {u"OKU/CallProtolHooks", Service::Hooks},
        {u"OKU/CTL/AddContact", Service::AddContact},
        {u"OKU/CTL/SetContactState", Service::State},
    };
    const auto found = kServices.find(name);
    const Service service = found == kServices.end() ? Service::None : found->second;
    g_host.serviceByAddress.emplace(name, service);
    return service;
}

OKU_WORD getSetting(OKU_SETTINGS_RECORD& record) {
    static const std::unordered_map<std::u16string_view, std::u16string> kTexts{
        {u"XMPP/User", u"bench@localhost/bench"}, {u"XMPP/Pass", u"bench"}, {u"XMPP/Serv/Host", g_host.server}};
    static const std::unordered_map<std::u16string_view, OKU_WORD> kNumbers{
        {u"XMPP/Serv/Enable", 1}, {u"XMPP/Serv/SSL", 0}, {u"XMPP/Serv/Compress", 0}};
    if (record.type == OKU_SETTING_STRING) {
        const auto found = kTexts.find(record.key);
        if (found == kTexts.end()) return 0;
        std::memcpy(reinterpret_cast<char16_t*>(record.value), found->second.c_str(),
                    (found->second.size() + 1) * sizeof(char16_t));
        return 1;
    }
    const auto found = kNumbers.find(record.key);
    if (found == kNumbers.end()) return 0;
    record.value = found->second;
    return 1;
}

OKU_WORD giveDirectory(const OKU_DIRECTORY& record) {
    std::memcpy(record.buffer, g_host.directory.c_str(), (g_host.directory.size() + 1) * sizeof(char16_t));
    return 1;
}

void connectToServer() {
    g_host.socket = ::socket(AF_INET, SOCK_STREAM, 0);
    if (g_host.socket < 0) fail("socket");
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(g_host.port));
    if (inet_pton(AF_INET, g_host.serverHost.c_str(), &address.sin_addr) != 1) fail("address");
    if (::connect(g_host.socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) fail("connect");
    const int one = 1;
    setsockopt(g_host.socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
}

void flush() {
    for (std::size_t sent = 0; sent < g_host.unsent.size();) {
        const ssize_t count =
            ::send(g_host.socket, g_host.unsent.data() + sent, g_host.unsent.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) break;  // the server has gone; the next read tells
        sent += static_cast<std::size_t>(count);
    }
    g_host.unsent.clear();
}

/// As the event loops of other hosts do, it writes when the plugin has returned, or when much has gathered.
OKU_WORD send(const NL_SEND_RECORD& record) {
    g_host.unsent.append(record.data, record.length);
    if (g_host.unsent.size() >= kWriteBuffer) flush();
    return static_cast<OKU_WORD>(record.length);
}

void sendMessages(std::size_t count) {
    const auto [handler, context] = g_host.services.at(u"XMPP/1/PFMessageSend");
    for (std::size_t i = 0; i < count; ++i) {
        char text[128];
        std::snprintf(text, sizeof text, "contact%05zu@localhost", i % kOutgoingContacts);
        const std::u16string jid(text, text + std::strlen(text));
        std::snprintf(text, sizeof text, "Answer %07zu: I'll bring the draft <today> & the rest of it follows tomorrow",
                      i);
        std::u16string body(text, text + std::strlen(text));
        body.resize(kOutgoingBodyLength, u'.');
        OKU_MESSAGE_SEND record{};
        record.size = sizeof record;
        record.contact.size = sizeof record.contact;
        record.contact.id = jid.c_str();
        record.contact.pfClass = u"XMPP";
        record.contact.netId = kNetId;
        record.body = body.c_str();
        record.flags = OKU_MESSAGE_SEND_FLAG | OKU_MESSAGE_CHAT_FLAG;
        handler(reinterpret_cast<OKU_WORD>(&record), static_cast<OKU_WORD>(record.flags), context);
    }
}

/// Looks at four units at a time, as the C library's strlen does with bytes.
std::size_t lengthOf(const char16_t* text) {
    constexpr std::uint64_t kOnes = 0x0001'0001'0001'0001, kHighs = 0x8000'8000'8000'8000;
    const char16_t* at = text;
    for (; reinterpret_cast<std::uintptr_t>(at) % sizeof(std::uint64_t); ++at)
        if (!*at) return static_cast<std::size_t>(at - text);
    for (;; at += sizeof(std::uint64_t) / sizeof(char16_t)) {
        std::uint64_t units = 0;
        std::memcpy(&units, at, sizeof units);
        if ((units - kOnes) & ~units & kHighs) break;
    }
    while (*at) ++at;
    return static_cast<std::size_t>(at - text);
}

void onMessage(const OKU_MESSAGE_DATA& message) {
    const std::u16string_view body(message.body, lengthOf(message.body));
    ++g_host.counts.messages;
    g_host.counts.body += body.size();
    constexpr std::u16string_view kOrder = u"!send ";
    if (body.substr(0, kOrder.size()) != kOrder) return;
    --g_host.counts.messages;
    g_host.counts.body -= body.size();
    const std::string number(body.begin() + kOrder.size(), body.end());
    sendMessages(std::strtoul(number.c_str(), nullptr, 10));
}

OKU_WORD callHooks(const OKU_PROTOCOL_HOOK& hook, OKU_WORD extra) {
    if (hook.kind == OKU_HOOK_MESSAGE_IN && hook.phase == OKU_PHASE_AFTER)
        onMessage(*reinterpret_cast<const OKU_MESSAGE_DATA*>(extra));
    return 0;
}

void onContactState(const OKU_CONTACT_STATE& state) {
    ++g_host.counts.presences;
    const std::hash<std::u16string_view> hash;
    const std::size_t resource = hash(state.contact->id) * 31 + hash(state.resource->resource);
    if (state.status == OKU_STATUS_OFFLINE) {
        g_host.resources.erase(resource);
    } else {
        g_host.resources.insert(resource);
    }
}

OKU_WORD fnCall(const char16_t* name, OKU_WORD param, OKU_WORD extra) {
    switch (serviceOf(name)) {
        case Service::None:
            return 0;
        case Service::ProtocolAdd:
            reinterpret_cast<OKU_PROTOCOL_RECORD*>(param)->netId = kNetId;
            return 1;
        case Service::SettingsGet:
            return getSetting(*reinterpret_cast<OKU_SETTINGS_RECORD*>(param));
        case Service::Directory:
            return giveDirectory(*reinterpret_cast<const OKU_DIRECTORY*>(param));
        case Service::SocketCreate: {
            const auto* record = reinterpret_cast<const NL_CREATE_RECORD*>(param);
            g_host.socketEvent = record->callback;
            g_host.socketContext = record->context;
            return 1;
        }
        case Service::Connect:
            connectToServer();
            return 1;
        case Service::Send:
            return send(*reinterpret_cast<const NL_SEND_RECORD*>(param));
        case Service::Hooks:
            return callHooks(*reinterpret_cast<const OKU_PROTOCOL_HOOK*>(param), extra);
        case Service::AddContact:
            ++g_host.counts.roster;
            return 1;
        case Service::State:
            onContactState(*reinterpret_cast<const OKU_CONTACT_STATE*>(param));
            return 1;
    }
    return 0;
}

OKU_WORD fnCreate(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) {
    g_host.services[name] = {handler, context};
    return static_cast<OKU_WORD>(g_host.services.size());
}

OKU_WORD ignoreHandle(OKU_WORD) { return 0; }
OKU_WORD createEvent(const char16_t*) { return 1; }
OKU_WORD notify(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }
OKU_WORD addHook(const char16_t*, OKU_HANDLER, OKU_WORD) { return 1; }

void raise(std::uint32_t kind, OKU_WORD data) {
    NL_EVENT event{sizeof(NL_EVENT), kind};
    g_host.socketEvent(reinterpret_cast<OKU_WORD>(&event), data, g_host.socketContext);
    flush();
}

void serve() {
    const auto [setStatus, context] = g_host.services.at(u"XMPP/1/PFStatusSet");
    OKU_STATUS_SET status{};
    status.size = sizeof status;
    status.status = OKU_STATUS_ONLINE;
    status.description = u"";
    setStatus(reinterpret_cast<OKU_WORD>(&status), 0, context);
    raise(NL_EVENT_CONNECTED, 0);
    std::vector<char> buffer(kReadBuffer + 1);
    for (;;) {
        const ssize_t count = ::recv(g_host.socket, buffer.data(), kReadBuffer, 0);
        if (count <= 0) break;
        buffer[static_cast<std::size_t>(count)] = '\0';
        NL_RECEIVED piece{sizeof(NL_RECEIVED), static_cast<std::int32_t>(count), buffer.data()};
        raise(NL_EVENT_RECEIVED, reinterpret_cast<OKU_WORD>(&piece));
    }
    raise(NL_EVENT_CLOSED, 0);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s HOST PORT\n", argv[0]);
        return 2;
    }
    g_host.serverHost = argv[1];
    g_host.port = std::atoi(argv[2]);
    const std::string server = g_host.serverHost + ":" + argv[2];
    g_host.server.assign(server.begin(), server.end());
    char folder[] = "/tmp/bench-client-XXXXXX";
    if (!mkdtemp(folder)) fail("mkdtemp");
    const std::string directory = std::string(folder) + "/";
    g_host.directory.assign(directory.begin(), directory.end());

    const auto module = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "protoLink.module";
    void* const library = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    const auto load = reinterpret_cast<OKU_PLUGIN_LOAD>(dlsym(library, "pluginLoad"));
    const auto unload = reinterpret_cast<OKU_PLUGIN_UNLOAD>(dlsym(library, "pluginUnload"));
    const OKU_FUNCTION_TABLE table{fnCreate,    ignoreHandle, fnCall, 0,       0,
                                   createEvent, ignoreHandle, notify, addHook, ignoreHandle};
    load(1, &table);
    serve();
    unload();
    const Counts& counts = g_host.counts;
    std::printf("BENCH-COUNTS messages=%zu body=%zu presences=%zu roster=%zu resources=%zu\n", counts.messages,
                counts.body, counts.presences, counts.roster, g_host.resources.size());
    std::filesystem::remove_all(folder);
    return 0;
}
