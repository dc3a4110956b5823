// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Cards of contacts and the user's own: answers of any kind, in any order, to what windows ask for.
#include "fuzz/cards_world.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CardsWorld().play(fuzz::Input(data, size));
    return 0;
}
