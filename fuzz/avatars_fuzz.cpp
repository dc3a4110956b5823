// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pictures that are announced, published and asked for: answers of any kind, for any hash, in any order.
#include "fuzz/cards_world.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CardsWorld().play(fuzz::Input(data, size));
    return 0;
}
