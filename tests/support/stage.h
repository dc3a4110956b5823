// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin under test between a recording host and a world: what a host, a user and a server can do to it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/recording_host.h"

namespace harness {

/// The three functions that a plugin exports.
struct PluginExports {
    OKU_QUERY_PLUG_INFO query = nullptr;
    OKU_PLUGIN_LOAD load = nullptr;
    OKU_PLUGIN_UNLOAD unload = nullptr;
};

/// What a stimulus wants to use was never registered, or is gone.
struct NotThere : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Stage {
public:
    explicit Stage(PluginExports exports) : exports_(exports) {}
    ~Stage();

    RecordingHost host;
    std::uint32_t account = 1;  // whom the calls below are about, by the host's number

    bool loaded() const { return loaded_; }
    OKU_WORD load();
    /// Unloads and complains about whatever is left behind.
    OKU_WORD unload();

    // The socket.
    OKU_WORD socketEvent(std::uint32_t kind, OKU_WORD data);
    OKU_WORD socketNullEvent();
    /// Received bytes: a buffer of exactly this length and a NUL, gone after the call.
    OKU_WORD receive(const std::string& bytes);
    /// What the server's side makes of these bytes: compressed once the account's stream is, else as they are.
    std::string compressed(const std::string& bytes);
    OKU_WORD tlsState(std::uint32_t state);

    // The user, through the host.
    OKU_WORD setStatus(std::uint32_t status, const std::optional<std::string>& description, OKU_WORD word);
    /// `told` is the id that the item's callback hears, when it is another than the item's own.
    OKU_WORD clickMenu(const std::string& id, const std::string& told = {});
    OKU_WORD statusWindow(std::uint32_t event, std::uint32_t status, const std::string& description,
                          std::uint32_t protect, OKU_WORD window);
    OKU_WORD statusWindowNull();
    OKU_WORD sendMessage(const std::string& jid, const std::string& body, const std::string& subject,
                         std::uint32_t flags);
    OKU_WORD sendTyping(const std::string& jid, OKU_WORD composing);
    OKU_WORD askForCard(const std::string& jid, OKU_WORD token);
    /// Calls a service about the user's own card or picture ("PFSetMyVCard").
    OKU_WORD ownCard(const std::string& shortName, OKU_WORD token);
    /// Tells the listeners that the user's picture is another one; 2 means that one is set.
    OKU_WORD changePicture(const std::optional<std::string>& hash, std::uint32_t action);
    OKU_WORD sendRaw(const std::string& bytes);
    /// "PFEPublishData" with a record that ends before the item's id; texts by the names of the layout's fields.
    OKU_WORD publish(std::uint32_t kind, const RecordLayout& layout, const std::map<std::string, std::string>& texts);
    /// The same with a null record of data.
    OKU_WORD publishNothing(std::uint32_t kind);
    /// The callback of the last pop-up.
    OKU_WORD popUp(std::uint32_t action);
    OKU_WORD popUpNull();
    OKU_WORD deleteContact(const std::string& jid);
    OKU_WORD sendFile(const std::string& jid);
    /// The user answers a chooser: with a path, or with none. `kind` 0 is the one that goes with that.
    OKU_WORD choose(long long chooser, const std::optional<std::string>& path, long long kind);
    /// An event of a transfer's window, open or dropped; a null record without one.
    OKU_WORD transferWindow(OKU_WORD number, std::optional<long long> event);
    OKU_WORD publishedState(long long file, OKU_WORD state);
    OKU_WORD publishedProgress(long long file, OKU_WORD position, OKU_WORD total);
    OKU_WORD authorize(const std::string& jid, OKU_WORD bits);
    /// Calls a service that the plugin registered for this account ("PFStatusSet").
    OKU_WORD service(const std::string& shortName, OKU_WORD param, OKU_WORD extra);
    /// Tells the listeners of a host event; the result is the last one's.
    OKU_WORD raise(const std::string& event, OKU_WORD param, OKU_WORD extra);

    /// An event of one of the plugin's own windows, open or gone.
    struct DialogInput {
        std::uint32_t kind = 0;
        std::uint32_t control = 0;
        std::int64_t number = 0;
        std::int32_t width = 0;
        std::int32_t height = 0;
    };
    OKU_WORD dialogEvent(OKU_WORD window, const DialogInput& input);
    OKU_WORD dialogNull(OKU_WORD window);

    /// An event of one of the account's pages. The host may show it in several of its windows at once.
    enum class PageKind { Options, Properties, Information };
    struct PageInput {
        PageKind kind = PageKind::Options;
        std::uint32_t event = 0;
        std::optional<std::string> contact = {};
        long long page = 1;
        std::array<std::int32_t, 4> place = {};  // x, y, width, height
        bool hasWord = true;
        bool hasTexts = true;
    };
    OKU_WORD page(const PageInput& input);
    OKU_WORD pageNull(PageKind kind);
    std::string pageTitle, pageDescription;  // what the last event filled in

    /// What the host raises about one of its contacts. Without a network number it is of the account.
    struct ContactEvent {
        std::optional<std::string> contact;
        std::string pfClass = "XMPP";
        std::optional<std::uint32_t> net = {};
        std::uint32_t event = 1;
        OKU_WORD extra = 0;
    };
    /// The properties of a contact are about to be shown.
    OKU_WORD showProperties(const ContactEvent& input);
    /// The menu of a contact is about to be shown, which may be one of several that are selected.
    OKU_WORD buildMenu(const ContactEvent& input, const std::string& menu, std::uint32_t count);

    // Time.
    /// Lets time pass; every timer that comes due ticks at its own moment.
    void pass(std::int64_t milliseconds);
    OKU_WORD tick(const std::string& timer, std::uint32_t kind);

    /// The account's flags word as the host reads it; 0 without the account.
    std::uint32_t flags() const;

private:
    const Protocol& protocol() const;
    const Callback& pageCallback(PageKind kind);

    PluginExports exports_;
    bool loaded_ = false;
    std::map<std::pair<PageKind, long long>, OKU_WORD> pageWords_;  // what the host keeps for its pages
};

}  // namespace harness
