// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A host that keeps to none of the rules of its windows.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

#include "host/oku/dialogs.h"
#include "ui/dialog.h"
#include "ui/host_windows.h"

using namespace protolink;

namespace {

/// What the host knows of the window that it was asked for last.
struct Asked {
    OKU_HANDLER callback = nullptr;
    OKU_WORD context = 0;
    std::string destroyed;
};
Asked g_asked;

OKU_WORD tell(std::uint32_t kind, std::uint32_t control = 0) {
    OKU_WINDOW_EVENT event;
    std::memset(&event, 0, sizeof event);
    event.size = sizeof event;
    event.kind = kind;
    event.control = control;
    return g_asked.callback(reinterpret_cast<OKU_WORD>(&event), 0, g_asked.context);
}

/// Raises every kind of event while it opens a window, before anybody knows the window's handle.
OKU_WORD OKU_CALL call(const char16_t* name, OKU_WORD param, OKU_WORD) {
    if (name == std::u16string_view(u"UI/WindowDestroy")) g_asked.destroyed += std::to_string(param);
    if (name != std::u16string_view(u"UI/WindowOpen")) return 0;
    const auto& window = *reinterpret_cast<const OKU_WINDOW*>(param);
    g_asked.callback = window.callback;
    g_asked.context = window.context;
    for (std::uint32_t kind = 0; kind <= OKU_WINDOW_POSTED + 1; ++kind) EXPECT_EQ(tell(kind, kOkButton), 0U);
    return 7;
}

class CountingDialog final : public CUIWin7Dialog {
public:
    using CUIWin7Dialog::CUIWin7Dialog;
    int events = 0;

private:
    WindowLayout layout() override { return {}; }
    void OnCommand(std::uint32_t) override { ++events; }
    void OnCancel() override { ++events; }
    bool OnEvent(const WindowEvent&) override {
        ++events;
        return true;
    }
};

class HostWindowsTest : public testing::Test {
protected:
    HostWindowsTest() { g_asked = {}; }

    OKU_FUNCTION_TABLE table = [] {
        OKU_FUNCTION_TABLE made{};
        made.fnCall = call;
        return made;
    }();
    Host host{&table, 1};
    HostWindows windows{host};
    CountingDialog dialog{windows};
};

TEST_F(HostWindowsTest, WhatIsToldOfAWindowThatOpensReachesNobody) {
    ASSERT_TRUE(dialog.Create());
    EXPECT_EQ(dialog.events, 0);
    EXPECT_EQ(tell(OKU_WINDOW_SIZED), 1U);
    EXPECT_EQ(dialog.events, 1);
}

TEST_F(HostWindowsTest, WhatIsToldOfAWindowThatHasGoneReachesNobody) {
    ASSERT_TRUE(dialog.Create());
    dialog.DestroyWindow();
    EXPECT_EQ(g_asked.destroyed, "7");
    for (std::uint32_t kind = 0; kind <= OKU_WINDOW_POSTED + 1; ++kind) EXPECT_EQ(tell(kind), 0U);
    EXPECT_EQ(dialog.events, 0);
}

}  // namespace
