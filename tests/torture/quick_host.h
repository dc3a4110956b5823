// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A host that serves the plugin with little work, so that it can be called millions of times: it keeps what is
// registered, hands over what is sent, and lets a test stand in front of every call.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

#include "host/oku/contact.h"
#include "host/oku/message.h"
#include "host/oku/table.h"

namespace torture {

/// One call of the host's table. Functions other than fnCall have names of their own: "fnCreate", "hookAdd" and so on.
struct Call {
    std::u16string_view name;
    OKU_WORD param;
    OKU_WORD extra;
    std::size_t index;  // counted from 0

    /// Whether it takes something back that the plugin had registered or opened.
    bool takesBack() const;
};

/// Whether the plugin's own code runs, and not the test's or the host's: what is allocated then is the plugin's.
extern bool g_inPlugin;

/// Sets `g_inPlugin` for a while.
class Side {
public:
    explicit Side(bool plugin) : before_(g_inPlugin) { g_inPlugin = plugin; }
    ~Side() { g_inPlugin = before_; }
    Side(const Side&) = delete;
    Side& operator=(const Side&) = delete;

private:
    bool before_;
};

struct Callback {
    OKU_HANDLER handler = nullptr;
    OKU_WORD context = 0;
    OKU_WORD operator()(OKU_WORD param, OKU_WORD extra = 0) const {
        const Side plugin(true);
        return handler ? handler(param, extra, context) : 0;
    }
};

struct Timer {
    Callback callback;
    std::int64_t due = 0;  // milliseconds on the host's clock
    std::uint32_t interval = 0;
    bool oneShot = false;
};

struct Protocol {
    Callback authorize;
    Callback remove;
    const std::uint32_t* flags = nullptr;
};

class QuickHost {
public:
    QuickHost();
    ~QuickHost();
    QuickHost(const QuickHost&) = delete;
    QuickHost& operator=(const QuickHost&) = delete;
    static const OKU_FUNCTION_TABLE* table();

    /// Settings by file and key.
    using File = std::map<std::u16string, std::variant<std::int32_t, std::u16string>, std::less<>>;
    std::map<std::u16string, File, std::less<>> settings;
    std::u16string directory = u"/profile/";
    std::u16string ownProxyHost;

    /// Called before each call; a value is the call's result, and the host then does nothing.
    std::function<std::optional<OKU_WORD>(const Call&)> before;
    /// What an account's socket is told to do; the socket's result is 1.
    std::function<void(std::uint32_t net, std::string_view bytes)> onSend;
    std::function<void(std::uint32_t net)> onConnect, onClose, onTls;
    std::function<void(const OKU_MESSAGE_DATA&)> onMessage;
    /// When it is set, every call is written here with its texts.
    std::string* trace = nullptr;

    std::unordered_map<std::u16string, Callback> services;
    std::unordered_map<std::u16string, Callback> sockets;
    std::unordered_map<std::u16string, Callback> menuItems;
    std::map<OKU_WORD, std::pair<std::u16string, Callback>> hooks;
    std::map<std::u16string, Timer> timers;
    std::map<std::uint32_t, Protocol> protocols;
    std::map<std::uint32_t, Callback> statusWindows;
    /// Of file transfers: windows that are open or were dropped, file choosers, published files with their states.
    std::vector<Callback> transferWindows;
    std::vector<Callback> choosers;
    std::vector<Callback> publications;
    std::map<OKU_WORD, std::u16string> stores;
    std::set<OKU_WORD> events;
    std::map<std::uint32_t, std::unordered_map<std::u16string, OKU_WORD>> contacts;
    std::int64_t clock = 0;
    std::size_t calls = 0;
    std::uint32_t netsEverAdded = 0;
    /// The contact list may be drawn; also when a test took the call that says so.
    bool drawing = true;

    /// What the plugin has not taken back or switched on again, one name a line; empty when nothing is left.
    std::string leftovers() const;
    /// A host drops menus and windows together with the plugin.
    void forgetPlugin();

private:
    friend struct QuickTable;
    friend struct QuickServices;
    std::optional<OKU_WORD> enter(std::u16string_view name, OKU_WORD param, OKU_WORD extra);
    void write(std::u16string_view name, OKU_WORD param, OKU_WORD extra);

    std::map<OKU_WORD, std::u16string> serviceHandles_;
    OKU_WORD nextHandle_ = 1000;
};

/// The number at the end of "XMPP/Socket/3".
std::uint32_t netOf(std::u16string_view socket);
std::u16string textAt(const void* text);
std::string narrow(std::u16string_view text);

}  // namespace torture
