// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a list of rows costs: adding, finding and showing one takes the same little work among any number of others.
#include <gtest/gtest.h>

#include <string>

#include "tests/dialogs/recording_windows.h"
#include "tests/growth/work_counter.h"
#include "ui/list_control.h"

namespace growth {
namespace {

using namespace protolink;

class NoListener final : public WindowListener {
    bool onWindowEvent(const WindowEvent&) override { return false; }
};

std::u16string keyOf(std::size_t row) {
    const std::string number = std::to_string(row);
    return u"conference.example.org/" + std::u16string(number.begin(), number.end());
}

double stepsForEachRow(std::size_t rows) {
    NoListener listener;
    dialogs_test::RecordedWindow window({}, {}, listener, 1);
    CUIListCtrl list(1);
    const std::uint64_t before = workDone();
    for (std::size_t i = 0; i < rows; ++i) list.InsertItem(window, keyOf(i), CUITreeNode(u"text"));
    for (std::size_t i = 0; i < rows; ++i) {
        CUITreeNode* const found = list.FindItem(keyOf(i));
        found->addDataField(u"type", u"Typ:", false, u"text");
        list.RedrawItem(window, *found);
        EXPECT_EQ(list.FindRow(static_cast<std::int64_t>(i + 1)), found);
    }
    return static_cast<double>(workDone() - before) / static_cast<double>(rows);
}

TEST(Growth, OfAListFindsARowAmongAnyNumber) {
    const double few = stepsForEachRow(200);
    EXPECT_GT(few, 10);
    EXPECT_LT(stepsForEachRow(20'000), 4 * few);
}

}  // namespace
}  // namespace growth
