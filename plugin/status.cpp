// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/status.h"

#include <array>
#include <utility>

#include "host/util/letter_case.h"

namespace protolink {

namespace {

using StatusWord = std::pair<std::u16string_view, Status>;

constexpr std::array<StatusWord, 8> kWords{{
    {u"available", Status::Online},
    {u"unavailable", Status::Offline},
    {u"chat", Status::Chat},
    {u"away", Status::Away},
    {u"xa", Status::Xa},
    {u"dnd", Status::Dnd},
    {u"invisible", Status::Invisible},
    {u"error", Status::Error},
}};

}  // namespace

const char16_t* statusToName(Status status) {
    if (status == Status::Error) return u"available";
    for (const auto& [word, code] : kWords)
        if (code == status) return word.data();
    return u"available";
}

Status statusFromName(std::u16string_view word) {
    if (word.empty()) return Status::Online;
    const std::u16string lower = lowerCase(word);
    for (const auto& [name, code] : kWords)
        if (name == lower) return code;
    return Status::Online;
}

}  // namespace protolink
