// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/torture/client.h"

#include <cstring>
#include <memory>

#include "host/oku/message.h"
#include "host/oku/netlib.h"
#include "host/oku/timer.h"
#include "host/util/utf.h"
#include "plugin/module.h"
#include "tests/support/fake_platform.h"

namespace torture {
namespace {

constexpr OKU_WORD kModule = 77;

template <typename Record>
Record sized() {
    Record record{};
    record.size = sizeof record;
    return record;
}

template <typename T>
OKU_WORD word(T* pointer) {
    return reinterpret_cast<OKU_WORD>(pointer);
}

std::u16string accountFile(int account) {
    return account == 1 ? u"/profile/protoLink.config"
                        : u"/profile/protoLink_" + utow(std::to_string(account)) + u".config";
}

}  // namespace

Client::Client(ServerTraits traits, int accounts) {
    harness::world() = harness::FakeWorld();
    for (int account = 1; account <= accounts; ++account) {
        const std::u16string path = accountFile(account);
        host.settings[path] = {{u"XMPP/User", u"alice" + utow(std::to_string(account)) + u"@example.org/home"},
                               {u"XMPP/Pass", std::u16string(u"secret")},
                               {u"protoUUID", std::u16string(u"0b5f4a4e-6f0e-4b6b-9d0a-0a1b2c3d4e5f")}};
        if (account > 1) harness::world().files[narrow(path)] = {};
        servers.emplace(account, MiniServer(traits));
    }
    deliver = [this](std::uint32_t net, const std::string& bytes) { receive(net, bytes); };
    host.onConnect = [this](std::uint32_t net) {
        if (servers.count(net)) events_.push_back({Event::Kind::Connected, net});
    };
    host.onTls = [this](std::uint32_t net) { events_.push_back({Event::Kind::Tls, net}); };
    host.onClose = [this](std::uint32_t net) {
        if (open_[net]) events_.push_back({Event::Kind::Closed, net});
        open_[net] = false;
    };
    host.onSend = [this](std::uint32_t net, std::string_view bytes) {
        if (open_[net]) servers.at(net).onReceived(bytes);
    };
}

Client::~Client() {
    host.before = nullptr;
    if (loaded_) unload();
}

void Client::load() {
    loaded_ = true;
    ++loads_;
    const Side plugin(true);
    pluginLoad(kModule, QuickHost::table());
}

void Client::unload() {
    loaded_ = false;
    {
        const Side plugin(true);
        pluginUnload();
    }
    events_.clear();
    open_.clear();
    host.forgetPlugin();
}

void Client::logIn() {
    load();
    for (const auto& [net, server] : servers) setStatus(net, OKU_STATUS_ONLINE);
    pump();
}

bool Client::isReady() const {
    for (const auto& [net, server] : servers)
        if ((flags(net) & OKU_FLAG_AUTHORIZED) == 0 || !server.isReady()) return false;
    return true;
}

bool Client::pumpOne() {
    if (!events_.empty()) {
        const Event event = events_.front();
        events_.erase(events_.begin());
        switch (event.kind) {
            case Event::Kind::Connected:
                open_[event.net] = true;
                servers.at(event.net).onConnected();
                raise(event.net, NL_EVENT_CONNECTED);
                break;
            case Event::Kind::Closed:
                raise(event.net, NL_EVENT_CLOSED);
                break;
            case Event::Kind::Tls: {
                NL_TLS_STATE state{sizeof(NL_TLS_STATE), 1};
                raise(event.net, NL_EVENT_TLS, word(&state));
                break;
            }
        }
        return true;
    }
    for (auto& [net, server] : servers) {
        if (server.pieces.empty()) continue;
        const std::string piece = server.pieces.front();
        server.pieces.pop_front();
        if (open_[net]) deliver(net, piece);
        return true;
    }
    return false;
}

void Client::pump() {
    // What comes while a piece is delivered waits behind it.
    if (pumping_) return;
    pumping_ = true;
    while (pumpOne()) continue;
    pumping_ = false;
}

void Client::pass(std::int64_t milliseconds) {
    const std::int64_t end = host.clock + milliseconds;
    for (;;) {
        std::u16string next;
        std::int64_t due = end;
        for (const auto& [name, timer] : host.timers)
            if (timer.due < due || (timer.due == due && next.empty())) next = name, due = timer.due;
        harness::world().advance(due - host.clock);
        host.clock = due;
        if (next.empty()) return;
        Timer& timer = host.timers.at(next);
        const Callback callback = timer.callback;
        timer.due += timer.interval;
        if (timer.oneShot) host.timers.erase(next);
        auto event = sized<OKU_TIMER_EVENT>();
        event.kind = OKU_TIMER_TICK;
        callback(word(&event));
        pump();
    }
}

bool Client::passUntilReady(int seconds) {
    pump();
    for (int second = 0; second < seconds && !isReady(); ++second) pass(1000);
    return isReady();
}

void Client::setStatus(std::uint32_t net, std::uint32_t status) {
    auto record = sized<OKU_STATUS_SET>();
    record.status = status;
    record.description = u"opis";
    callService(net, u"PFStatusSet", word(&record), 0);
}

OKU_WORD Client::callService(std::uint32_t net, std::u16string_view shortName, OKU_WORD param, OKU_WORD extra) {
    const auto found = host.services.find(u"XMPP/" + utow(std::to_string(net)) + u"/" + std::u16string(shortName));
    if (found == host.services.end()) return 0;
    const Callback callback = found->second;
    return callback(param, extra);
}

void Client::tellListeners(std::u16string_view event, OKU_WORD param) {
    std::vector<Callback> listeners;
    for (const auto& [handle, hook] : host.hooks)
        if (hook.first == event) listeners.push_back(hook.second);
    for (const Callback& listener : listeners) listener(param);
}

OKU_WORD Client::raise(std::uint32_t net, std::uint32_t kind, OKU_WORD data) {
    const auto found = host.sockets.find(u"XMPP/Socket/" + utow(std::to_string(net)));
    if (found == host.sockets.end()) return 0;
    const Callback callback = found->second;
    NL_EVENT event{sizeof(NL_EVENT), kind};
    return callback(word(&event), data);
}

OKU_WORD Client::receive(std::uint32_t net, const std::string& bytes) {
    const std::unique_ptr<char[]> buffer(new char[bytes.size() + 1]);
    std::memcpy(buffer.get(), bytes.c_str(), bytes.size() + 1);
    NL_RECEIVED piece{sizeof(NL_RECEIVED), static_cast<std::int32_t>(bytes.size()), buffer.get()};
    return raise(net, NL_EVENT_RECEIVED, word(&piece));
}

void Client::say(std::uint32_t net, const std::string& text) { deliver(net, servers.at(net).onTheWire(text)); }

OKU_WORD Client::sendMessage(std::uint32_t net, const std::u16string& jid, const std::u16string& body) {
    auto record = sized<OKU_MESSAGE_SEND>();
    record.contact = sized<OKU_CONTACT_RECORD>();
    record.contact.id = jid.c_str();
    record.contact.pfClass = u"XMPP";
    record.contact.netId = net;
    record.body = body.c_str();
    record.subject = u"";
    record.flags = OKU_MESSAGE_SEND_FLAG | OKU_MESSAGE_CHAT_FLAG;
    return callService(net, u"PFMessageSend", word(&record), static_cast<OKU_WORD>(record.flags));
}

void Client::cut(std::uint32_t net, bool expected) {
    open_[net] = false;
    servers.at(net).pieces.clear();
    raise(net, NL_EVENT_CLOSED, expected ? 0 : 1);
}

std::uint32_t Client::flags(std::uint32_t net) const {
    const auto found = host.protocols.find(net);
    return found == host.protocols.end() || !found->second.flags ? 0 : *found->second.flags;
}

}  // namespace torture
