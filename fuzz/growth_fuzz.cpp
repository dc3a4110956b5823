// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Texts whose cost for each byte grows with their length.
#include "fuzz/input.h"
#include "tests/growth/growing_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLength = 6'000;
    fuzz::Input input(data, size);
    const growth::Reader& reader = growth::kReaders[input.byte() % growth::kReaders.size()];
    const std::uint8_t piece = input.byte();
    growth::Shape shape;
    shape.begin = input.text();
    for (std::string& part : shape.repeated) part = input.text();
    shape.rest = input.rest();
    const std::string text = shape.text(kLength).substr(0, 2 * kLength);
    // A short one shows no growth, only what any text costs once.
    if (text.size() < kLength / 2) return 0;
    fuzz::require(
        growth::stepsForEachByte(reader, text, piece % 8 == 7 ? text.size() : piece % 8 + 1u) < growth::kMostSteps,
        "a text that costs more than its length");
    return 0;
}
