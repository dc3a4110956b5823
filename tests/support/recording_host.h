// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A strict host behind a real OKU_FUNCTION_TABLE. It records every call in order as a line of a transcript, checks each
// record, keeps just enough state to answer as a host does, and complains about a call that names something dead.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/oku/table.h"
#include "tests/support/compression.h"
#include "tests/support/dialog_windows.h"
#include "tests/support/records.h"

namespace harness {

/// What happened at the boundary. Settings reads and stream hooks are so many that transcripts leave them out unless
/// they ask for them.
struct Event {
    enum class Category { Plain, SettingsRead, StreamHook, Sent } category = Category::Plain;
    Line line;
    std::string data;  // of Sent: the bytes
};
/// The event as a transcript has it.
std::string render(const Event& event);

/// A value in a settings file.
struct Setting {
    bool isText = false;
    std::int64_t number = 0;
    std::string text;
    bool operator==(const Setting&) const = default;
};
using SettingsFile = std::map<std::string, Setting>;

/// A settings file that the plugin has open.
struct OpenSettings {
    std::string path;
    SettingsFile values;
    bool read = false;
};

/// A callback that the plugin gave, with its context word.
struct Callback {
    OKU_HANDLER handler = nullptr;
    OKU_WORD context = 0;
    OKU_WORD operator()(OKU_WORD param, OKU_WORD extra) const { return handler(param, extra, context); }
};

struct Timer {
    Callback callback;
    std::int64_t due = 0;  // milliseconds on the host's own clock
    std::uint32_t interval = 0;
    bool oneShot = false;
};

struct Protocol {
    Callback authorize;
    Callback remove;
    const std::uint32_t* flags = nullptr;
};

/// A window of a file transfer; `number` counts from 1 in the order of opening.
struct TransferWindow {
    Callback callback;
    OKU_WORD number = 0;
    OKU_WORD data = 0;  // what updates come with
};

/// A file that the host publishes.
struct Publication {
    Callback state;
    Callback progress;
};

/// The host's own proxy settings.
struct ProxyDefaults {
    std::string host, user, password;
    std::uint32_t port = 0, enabled = 0, type = 0, auth = 0;
};

class RecordingHost {
public:
    RecordingHost();
    ~RecordingHost();
    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;

    /// The table of the one current host.
    const OKU_FUNCTION_TABLE* table() const;

    // The world as the host gives it. Set before the plugin is loaded.
    std::string profileDirectory = "/profile/";
    std::string cacheDirectory = "/cache/";
    OKU_WORD module = 0x4D4F44;
    std::function<std::int64_t()> now;  // seconds since the epoch
    std::map<std::string, SettingsFile> settingsFiles;
    ProxyDefaults proxy;
    std::map<std::string, std::string> cardForm;                    // the user's own card as the host's form holds it
    std::vector<std::string> groups = {"Kontakty", "Praca"};        // of the host's contacts
    std::string receivedFolder = "/received/";                      // where an accepted file goes
    std::string publishedUrl = "http://host.example/file?a=1&b=2";  // of a file that the host publishes
    OKU_WORD pageIcon = 0;  // what the host leaves in the record of an options page

    // What the test tells the host to do.
    std::map<std::string, std::deque<OKU_WORD>> answersOnce;  // by service: results instead of the host's own
    std::map<std::string, OKU_WORD> answersAlways;
    std::set<std::string> absent;            // services that this host does not have
    std::multiset<std::uint32_t> vetoes;     // kinds of hooks whose next phase 1 is vetoed
    std::vector<std::string> blanks;         // texts that a listener blanks in received data
    std::optional<std::size_t> failingCall;  // this call of the table, counted from 0, answers 0 and does nothing
    std::vector<std::pair<std::string, std::function<void()>>> triggers;  // once, during an event so beginning

    // What the plugin registered, and what the host recorded.
    std::map<std::string, Timer> timers;
    std::map<std::string, Callback> sockets;
    std::map<std::string, Callback> menuItems;
    std::map<std::string, Callback> services;
    std::vector<std::pair<std::string, Callback>> hooks;
    std::map<std::uint32_t, Protocol> protocols;
    std::map<std::uint32_t, Callback> statusWindows;
    std::map<std::string, Callback> optionPages;         // by id
    std::map<std::string, Callback> propertyPages;       // by id, those of all contacts
    std::map<std::string, Callback> contactPages;        // by id, those of one contact
    Callback popUp;                                      // the last one; its context is its user data
    std::map<OKU_WORD, TransferWindow> transferWindows;  // by handle
    std::map<OKU_WORD, Callback> droppedWindows;         // by number
    OKU_WORD windowsOpened = 0;
    std::vector<Publication> publications;             // in order
    std::vector<Callback> choosers;                    // in order
    std::map<std::uint32_t, Compression> compression;  // the server's side of each account's stream
    std::int64_t clock = 0;                            // milliseconds
    std::size_t calls = 0;                             // calls of the table so far
    std::function<void(Event)> onEvent;
    std::vector<std::string> complaints;

    /// Sets, or takes away, a value of a settings file, also in a store that the plugin has open.
    void change(const std::string& path, const std::string& key, const std::optional<Setting>& value);
    /// Complains about everything that an unloaded plugin must have taken back.
    void checkUnloaded();
    /// Forgets menus and windows, which a host drops with the plugin.
    void forgetPlugin();

    // For the families of its services: telling what happens, and the state that answers stand on.
    void complain(const std::string& what) { complaints.push_back(what); }
    /// Complains about something dead. A host that refuses to make things hears of them again, so it keeps quiet.
    void complainDead(const std::string& what) {
        if (!failingCall) complain(what);
    }
    ReadContext context();
    void record(Event event);
    void plain(Line line) { record({Event::Category::Plain, std::move(line), {}}); }
    /// The result that the test scripted for a service.
    std::optional<OKU_WORD> scripted(const std::string& service);

    DialogWindows dialogs;           // the plugin's own windows
    std::set<OKU_WORD> pageParents;  // the words of pages of the host's that windows lie in
    std::map<OKU_WORD, OpenSettings> stores;
    std::map<OKU_WORD, std::string> contacts;  // "net jid"
    std::string lastOut[2];                    // what the stream hooks of phase 1 and 2 were last told is sent
    OKU_WORD nextHandle = 100;
    std::uint32_t nextNet = 1;
    OKU_WORD nextStore = 1;

private:
    friend struct HostTable;

    OKU_WORD create(const char16_t* name, OKU_HANDLER handler, OKU_WORD context);
    OKU_WORD destroy(OKU_WORD handle);
    OKU_WORD call(const char16_t* name, OKU_WORD param, OKU_WORD extra);
    OKU_WORD createEvent(const char16_t* name);
    OKU_WORD destroyEvent(OKU_WORD event);
    OKU_WORD notify(OKU_WORD event, OKU_WORD param, OKU_WORD extra);
    OKU_WORD addHook(const char16_t* name, OKU_HANDLER handler, OKU_WORD context);
    OKU_WORD removeHook(OKU_WORD handle);

    /// Whether this call of the table is the one that the test makes fail.
    bool fails() { return failingCall && calls++ == *failingCall; }

    std::map<OKU_WORD, std::string> serviceHandles_;
    std::map<OKU_WORD, std::string> hookHandles_;
    std::map<OKU_WORD, std::string> events_;
};

/// The words of hook kinds and phases in transcripts.
std::string hookWord(std::uint32_t kind);
std::uint32_t hookKind(const std::string& word);

}  // namespace harness
