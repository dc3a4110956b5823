// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's windows of vCards.
#include "tests/support/host_services.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

OKU_WORD giveField(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto found = host.cardForm.find(textAt(param, 8));
    if (found == host.cardForm.end()) return 0;
    copyWide(peek<void*>(recordAt(param), 16), found->second, peek<std::uint32_t>(recordAt(param), 24));
    return 1;
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"VCard/AddElement", {K::Record, "", &layouts::kCardElement}, {}, nothing},
    {"VCard/SetStatus", {K::Record, "", &layouts::kCardStatus}, {}, nothing},
    {"MyVCard/SetFieldValue", {K::Record, "", &layouts::kOwnCardField}, {}, nothing},
    {"MyVCard/GetFieldValue", {K::Record, "", &layouts::kOwnCardFieldGet}, {}, giveField},
    {"MyVCard/SetStatus", {K::Record, "", &layouts::kOwnCardStatus}, {}, nothing},
    {"MyVCard/SignalBusyness", {K::Number, "busy"}, {}, nothing},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> cardServices() { return kRows; }

}  // namespace harness
