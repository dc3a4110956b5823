// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/properties_layout.h"

#include <utility>

namespace protolink::properties {

namespace {

// Nothing is asked of the two groups, so they have numbers only to be told apart.
constexpr std::uint32_t kDataGroup = 1001;
constexpr std::uint32_t kPrivacyGroup = 1002;

constexpr std::int32_t kPageWidth = 420;
constexpr std::int32_t kLine = 26;

Control group(std::uint32_t id, std::u16string text, const Rectangle& place) {
    return {.kind = ControlKind::Group, .id = id, .text = std::move(text), .place = place};
}

/// The `line` counts within the group of the contact's data.
Control label(std::u16string text, std::int32_t line) {
    return {.kind = ControlKind::Label, .text = std::move(text), .place = {20, 30 + line * kLine, 60, 13}};
}
Control field(ControlKind kind, std::uint32_t id, std::int32_t line) {
    return {.kind = kind, .id = id, .place = {85, 26 + line * kLine, kPageWidth - 105, 21}};
}

/// The `line` counts within the group of privacy.
Control check(std::uint32_t id, std::u16string text, std::int32_t line) {
    return {.kind = ControlKind::Check,
            .id = id,
            .text = std::move(text),
            .place = {20, 176 + line * kLine, kPageWidth - 40, 17}};
}

}  // namespace

WindowLayout settings() {
    WindowLayout page{.templateId = 6001, .title = kSettingsTitle, .controls = {}, .width = kPageWidth, .height = 290};
    page.controls = {
        group(kDataGroup, u"Dane kontaktu", {7, 7, kPageWidth - 14, 137}),
        label(u"JID:", 0),
        field(ControlKind::Edit, kJid, 0),
        label(u"Nazwa:", 1),
        field(ControlKind::Edit, kName, 1),
        label(u"Grupa:", 2),
        field(ControlKind::EditDropDown, kGroup, 2),
        {.kind = ControlKind::Button, .id = kAuthorize, .text = u"Autoryzuj", .place = {85, 108, 110, 25}},
        {.kind = ControlKind::Button,
         .id = kAskForAuthorization,
         .text = u"Poproś o autoryzację",
         .place = {205, 108, 150, 25}},
        group(kPrivacyGroup, u"Prywatność (wymaga zgodności serwera z JEP-0016)", {7, 152, kPageWidth - 14, 131}),
        check(kHide, u"Ukryj moją obecność przed tym użytkownikiem", 0),
        check(kIgnore, u"Ignoruj zmiany stanu tego użytkownika", 1),
        check(kBlockMessages, u"Zablokuj wiadomości", 2),
        check(kBlockRequests, u"Zablokuj przychodzące pakiety \"iq\"", 3),
    };
    return page;
}

WindowLayout information() {
    WindowLayout page{
        .templateId = 6006, .title = kInformationTitle, .controls = {}, .width = kPageWidth, .height = 290};
    page.controls = {
        {.kind = ControlKind::Text,
         .id = kResources,
         .name = u"Zalogowane zasoby:",
         .place = {7, 7, kPageWidth - 14, 245},
         .readOnly = true},
        {.kind = ControlKind::Button, .id = kRefresh, .text = u"Odśw.", .place = {kPageWidth - 82, 259, 75, 23}},
    };
    return page;
}

}  // namespace protolink::properties
