// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a screen reader says of controls.
#include <gtest/gtest.h>

#include <vector>

#include "dialogs/browser_layout.h"
#include "dialogs/form_field.h"
#include "dialogs/options_layout.h"

using namespace protolink;

namespace {

constexpr std::u16string_view kShownTypes[] = {u"text-single", u"jid-single", u"text-private", u"text-multi",
                                               u"fixed",       u"boolean",    u"list-single"};

std::vector<Control> controlsOf(std::u16string_view type, const char16_t* label) {
    std::vector<Control> page;
    CWndFormField(*CWndFormField::typeOf(type), u"var", label, u"").addControls(page, 25);
    return page;
}

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
        labelled = control.kind == ControlKind::Label && !control.text.empty();
    }
}

INSTANTIATE_TEST_SUITE_P(, NamesOfControls, testing::Values(&browser::layout, &options::layout));

TEST(NamesOfFormFields, AreTheFormsOwnWhereItGivesNoLabel) {
    for (const std::u16string_view type : kShownTypes) {
        const std::vector<Control> page = controlsOf(type, u"");
        ASSERT_FALSE(page.empty());
        EXPECT_EQ(page.back().name, u"var") << std::string(type.begin(), type.end());
        EXPECT_EQ(page.back().text, u"");
        EXPECT_EQ(page.front().text, u"") << "nothing more is to be seen";
    }
}

TEST(NamesOfFormFields, AreTheLabelsWhereThereIsOne) {
    for (const std::u16string_view type : kShownTypes) {
        const std::vector<Control> page = controlsOf(type, u"Etykieta");
        ASSERT_FALSE(page.empty());
        const bool unseen = type == u"fixed";
        EXPECT_EQ(page.back().name, unseen ? u"Etykieta" : u"") << std::string(type.begin(), type.end());
        EXPECT_EQ(page.front().text, unseen ? u"" : u"Etykieta");
    }
}

}  // namespace
