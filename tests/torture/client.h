// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin between a quick host and a small server for each account: what the tests of hardship drive.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/oku/protocol.h"
#include "tests/torture/mini_server.h"
#include "tests/torture/quick_host.h"

namespace torture {

class Client {
public:
    /// A world without files but the accounts' settings, at a fixed time. The plugin is not loaded yet.
    explicit Client(ServerTraits traits = {}, int accounts = 1);
    ~Client();

    QuickHost host;
    std::map<std::uint32_t, MiniServer> servers;
    /// What the server says reaches the plugin through this; as one piece unless a test sets it.
    std::function<void(std::uint32_t net, const std::string& bytes)> deliver;

    bool loaded() const { return loaded_; }
    /// How often it has been loaded.
    std::size_t loads() const { return loads_; }
    void load();
    void unload();
    /// Loads, and brings every account online.
    void logIn();
    /// Every account has been logged in up to its roster.
    bool isReady() const;

    /// Delivers what waits on both sides until nothing is left.
    void pump();
    /// One event that waits; false when there was none.
    bool pumpOne();
    void pass(std::int64_t milliseconds);
    /// Lets time pass until all accounts are ready again; false when they are not within `seconds`.
    bool passUntilReady(int seconds);

    // The host's side of one account.
    void setStatus(std::uint32_t net, std::uint32_t status);
    OKU_WORD raise(std::uint32_t net, std::uint32_t kind, OKU_WORD data = 0);
    OKU_WORD receive(std::uint32_t net, const std::string& bytes);
    /// The server of the account says a text, which goes to the plugin at once through `deliver`.
    void say(std::uint32_t net, const std::string& text);
    OKU_WORD sendMessage(std::uint32_t net, const std::u16string& jid, const std::u16string& body);
    /// The connection ends, without the plugin's wish unless `expected`.
    void cut(std::uint32_t net, bool expected = false);
    bool isOpen(std::uint32_t net) const { return open_.count(net) && open_.at(net); }
    std::uint32_t flags(std::uint32_t net) const;
    /// Tells the listeners of one of the host's events.
    void tellListeners(std::u16string_view event, OKU_WORD param);
    OKU_WORD callService(std::uint32_t net, std::u16string_view shortName, OKU_WORD param, OKU_WORD extra);

private:
    struct Event {
        enum class Kind { Connected, Closed, Tls } kind;
        std::uint32_t net;
    };

    bool loaded_ = false;
    std::size_t loads_ = 0;
    bool pumping_ = false;
    std::vector<Event> events_;
    std::map<std::uint32_t, bool> open_;
};

}  // namespace torture
