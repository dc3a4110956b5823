// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/browser_layout.h"

#include <algorithm>

namespace protolink::browser {

namespace {

constexpr std::int32_t kGap = 5;
constexpr std::int32_t kRightMargin = 7;
constexpr std::int32_t kHeaderHeight = 52;
constexpr std::int32_t kButtonStripHeight = 45;

}  // namespace

std::array<Placed, 7> places(std::int32_t width, std::int32_t height) {
    constexpr Rectangle kAccountSize{.width = 180, .height = 21};
    constexpr Rectangle kCloseSize{.width = 75, .height = 23};
    constexpr Rectangle kGoSize{.width = 75, .height = 23};
    constexpr Rectangle kNodeSize{.width = 150, .height = 21};
    constexpr Rectangle kLabelSize{.width = 45, .height = 13};
    const std::int32_t right = width - kRightMargin;
    const std::int32_t row = kHeaderHeight + kGap;
    const std::int32_t go = right - kGoSize.width;
    const std::int32_t node = go - kGap - kNodeSize.width;
    const std::int32_t label = node - kGap - kLabelSize.width;
    const std::int32_t list = kHeaderHeight + 32;
    // A host may tell a window smaller than the smallest that it was asked for.
    const auto atLeastNone = [](std::int32_t length) { return std::max<std::int32_t>(length, 0); };
    return {{
        {kAccount, {right - kAccountSize.width, 15, kAccountSize.width, kAccountSize.height}},
        {kJid, {7, row, atLeastNone(label - kGap - 7), kNodeSize.height}},
        {kNodeLabel, {label, row, kLabelSize.width, kLabelSize.height}},
        {kNode, {node, row, kNodeSize.width, kNodeSize.height}},
        {kGo, {go, row, kGoSize.width, kGoSize.height}},
        {kItems, {kGap, list, atLeastNone(right - kGap), atLeastNone(height - kButtonStripHeight - kGap - list)}},
        {kClose, {right - kCloseSize.width, height - 11 - kCloseSize.height, kCloseSize.width, kCloseSize.height}},
    }};
}

WindowLayout layout() {
    WindowLayout window{.templateId = 6003,
                        .title = u"Przeglądarka",
                        .controls = {},
                        .width = 642,
                        .height = 482,
                        .minWidth = 640,
                        .minHeight = 480};
    window.controls = {
        {.kind = ControlKind::DropDown, .id = kAccount, .name = u"Konto:"},
        {.kind = ControlKind::EditDropDown, .id = kJid, .name = u"JID:", .tellsReturn = true},
        {.kind = ControlKind::Label, .id = kNodeLabel, .text = u"Gałąź:"},
        {.kind = ControlKind::EditDropDown, .id = kNode},
        {.kind = ControlKind::Button, .id = kGo, .text = u"Przejdź", .isDefault = true},
        {.kind = ControlKind::List,
         .id = kItems,
         .name = u"Elementy:",
         .emptyText = u"Brak elementów",
         .fontName = u"Verdana",
         .fontSize = 8},
        {.kind = ControlKind::Button, .id = kClose, .text = u"&Zamknij"},
    };
    const auto placed = places(window.width, window.height);
    for (Control& control : window.controls) {
        for (const Placed& entry : placed) {
            if (entry.control == control.id) control.place = entry.rectangle;
        }
    }
    return window;
}

}  // namespace protolink::browser
