// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a screen reader says of controls.
#include <gtest/gtest.h>

#include "dialogs/browser_layout.h"
#include "dialogs/options_layout.h"

using namespace protolink;

namespace {

bool namesItself(ControlKind kind) {
    return kind == ControlKind::Label || kind == ControlKind::Check || kind == ControlKind::Button ||
           kind == ControlKind::Separator || kind == ControlKind::Group;
}

class NamesOfControls : public testing::TestWithParam<WindowLayout (*)()> {};

TEST_P(NamesOfControls, StandBeforeThemOrGoAlong) {
    const WindowLayout window = GetParam()();
    bool labelled = false;
    for (const Control& control : window.controls) {
        const bool named = namesItself(control.kind) ? !control.text.empty() : labelled || !control.name.empty();
        EXPECT_TRUE(named) << control.id;
        labelled = control.kind == ControlKind::Label;
    }
}

INSTANTIATE_TEST_SUITE_P(, NamesOfControls, testing::Values(&browser::layout, &options::layout));

}  // namespace
