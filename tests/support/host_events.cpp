// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The records of the plugin's own event.
#include <array>

#include "tests/support/host_services.h"

namespace harness {
namespace {

struct Kind {
    const char* word;
    const RecordLayout& data;
};

const Kind* kindOf(std::uint32_t number) {
    static const std::array<Kind, 3> kKinds{
        {{"tune", layouts::kPepTune}, {"mood", layouts::kPepMood}, {"location", layouts::kPepLocation}}};
    return number >= 1 && number <= kKinds.size() ? &kKinds[number - 1] : nullptr;
}

}  // namespace

std::vector<Field> personalEvent(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    constexpr std::size_t kKindOffset = 120;
    auto fields = readRecord(layouts::kPepEvent, recordAt(param), host.context());
    const Kind* kind = param ? kindOf(peek<std::uint32_t>(recordAt(param), kKindOffset)) : nullptr;
    if (!kind) {
        host.complain("OKU_PEP_EVENT is of no known kind");
        return fields;
    }
    fields.push_back({"kind", {kind->word, false}});
    for (auto& field : readRecord(kind->data, recordAt(extra), host.context())) fields.push_back(std::move(field));
    return fields;
}

}  // namespace harness
