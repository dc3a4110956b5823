// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A host that is gone, and one that fills every buffer to its last character.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/host.h"
#include "host/oku/netlib.h"
#include "host/oku/settings.h"
#include "host/oku/windows.h"
#include "host/services/contact_list.h"
#include "host/services/directories.h"
#include "host/services/settings_store.h"
#include "host/services/sockets.h"

using namespace protolink;

namespace {

OKU_WORD OKU_CALL handler(OKU_WORD, OKU_WORD, OKU_WORD) { return 1; }

void expectSilence(const Host& host) {
    EXPECT_EQ(host.call(u"OKU/Log", 1, 2), 0);
    EXPECT_EQ(host.createNetService(1, u"PFRawSend", handler, 1), 0);
    EXPECT_EQ(host.addHook(u"OKU/OnMenuRebuild", handler, 1), 0);
    EXPECT_EQ(host.createEvent(u"XMPP/OnPEPEvent"), 0);
    EXPECT_EQ(host.notifyEvent(7, 1, 2), 0);
    host.destroyService(7);
    host.removeHook(7);
    host.destroyEvent(7);
    host.log(LogLevel::Error, tag::kGeneral, u"text");
    host.logUser(u"text");
}

TEST(HostThatIsNotThere, AnswersNothing) { expectSilence(Host()); }

TEST(HostThatLacksItsFunctions, AnswersNothing) {
    const OKU_FUNCTION_TABLE empty{};
    expectSilence(Host(&empty, 1));
}

/// What the host was called for, in order.
std::vector<std::u16string> g_calls;

OKU_WORD OKU_CALL record(const char16_t* name, OKU_WORD, OKU_WORD) {
    g_calls.emplace_back(name);
    return 7;
}
OKU_WORD OKU_CALL recordCreation(const char16_t* name, OKU_HANDLER, OKU_WORD) { return record(name, 0, 0); }
OKU_WORD OKU_CALL recordEvent(const char16_t* name) { return record(name, 0, 0); }
OKU_WORD OKU_CALL recordHandle(OKU_WORD) { return record(u"handle", 0, 0); }
OKU_WORD OKU_CALL recordNotice(OKU_WORD, OKU_WORD, OKU_WORD) { return record(u"notice", 0, 0); }

OKU_FUNCTION_TABLE recordingTable() {
    OKU_FUNCTION_TABLE table{};
    table.fnCreate = recordCreation;
    table.fnDestroy = recordHandle;
    table.fnCall = record;
    table.evCreate = recordEvent;
    table.evDestroy = recordHandle;
    table.evNotify = recordNotice;
    table.hookAdd = recordCreation;
    table.hookRemove = recordHandle;
    return table;
}

TEST(HostThatIsMuted, HearsNothing) {
    g_calls.clear();
    const OKU_FUNCTION_TABLE table = recordingTable();
    Host host(&table, 1);
    EXPECT_EQ(host.call(u"first", 0), 7);
    host.mute();
    expectSilence(host);
    EXPECT_EQ(g_calls, std::vector<std::u16string>{u"first"});
}

/// Whether the list was told to be drawn, call by call.
std::vector<bool> g_drawn;

OKU_WORD OKU_CALL recordDrawing(const char16_t* name, OKU_WORD param, OKU_WORD) {
    if (std::u16string_view(name) == u"OKU/CTL/EnableDrawing") g_drawn.push_back(param != 0);
    return 0;
}

OKU_FUNCTION_TABLE tableOf(OKU_WORD(OKU_CALL* call)(const char16_t*, OKU_WORD, OKU_WORD)) {
    OKU_FUNCTION_TABLE table{};
    table.fnCall = call;
    return table;
}

TEST(ContactListThatEnds, IsDrawnAgainIfItWasNot) {
    g_drawn.clear();
    const OKU_FUNCTION_TABLE table = tableOf(recordDrawing);
    const Host host(&table, 1);
    ContactList list(host);
    list.endPauses();
    EXPECT_TRUE(g_drawn.empty());
    {
        const DrawingPause pause(list);
        list.endPauses();
        EXPECT_EQ(g_drawn, (std::vector<bool>{false, true}));
    }
    g_drawn.clear();
    list.endPauses();
    EXPECT_TRUE(g_drawn.empty());
}

void fill(char16_t* text, std::size_t capacity) { std::fill_n(text, capacity, u'x'); }

OKU_WORD OKU_CALL fillAll(const char16_t* name, OKU_WORD param, OKU_WORD) {
    const std::u16string_view service = name;
    if (service.starts_with(u"OKU/Info/Get")) {
        const auto* directory = reinterpret_cast<const OKU_DIRECTORY*>(param);
        fill(directory->buffer, directory->capacity);
    } else if (service == u"OKU/Settings/Get") {
        const auto* setting = reinterpret_cast<const OKU_SETTINGS_RECORD*>(param);
        fill(reinterpret_cast<char16_t*>(setting->value), setting->length);
    } else if (service == u"OKU/NL/GetDefaultSettings") {
        auto* defaults = reinterpret_cast<NL_PROXY_DEFAULTS*>(param);
        for (char16_t* text : {defaults->host, defaults->user, defaults->password}) fill(text, 256);
    }
    return 1;
}

/// The last character gives way to the end of the text, and no other.
class FullBuffer : public testing::Test {
protected:
    static std::u16string letters(std::size_t count) { return std::u16string(count, u'x'); }

    OKU_FUNCTION_TABLE table = tableOf(fillAll);
    Host host{&table, 1};
};

TEST_F(FullBuffer, OfADirectory) {
    const Directories directories = askDirectories(host);
    EXPECT_EQ(directories.cache, letters(260));
    EXPECT_EQ(directories.profile, letters(260));
}

TEST_F(FullBuffer, OfASetting) {
    EXPECT_EQ(SettingsStore(host).settingsGetString(u"key", u""), letters(OKU_SETTING_CAPACITY - 1));
}

TEST_F(FullBuffer, OfTheProxysTexts) {
    const NL_PROXY_DEFAULTS defaults = Sockets(host).proxyDefaults();
    EXPECT_EQ(std::u16string(defaults.host), letters(255));
    EXPECT_EQ(std::u16string(defaults.user), letters(255));
    EXPECT_EQ(std::u16string(defaults.password), letters(255));
}

}  // namespace
