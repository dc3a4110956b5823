// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>

namespace oku::test {

/// What was on its way when a process was killed: numbers of saves, counted from 1.
struct Interrupted {
    std::uint32_t done = 0;   ///< the last save that had returned
    std::uint32_t begun = 0;  ///< the last one that was begun: the same, or the next
};

/// Runs `save` with `first`, `first` + 1 and so on in a child process, and kills it at a random moment after the first
/// one. A child that ends by itself, or has saved nothing after 10 s, gives nothing done and nothing begun.
Interrupted killWhileSaving(std::uint32_t first, const std::function<bool(std::uint32_t number)>& save,
                            std::mt19937& random);

/// The text of a save: tells its number, and is never the same for two numbers.
std::string textOfSave(std::uint32_t number);
/// The number in the first such text; 0 without one.
std::uint32_t numberIn(const std::string& content);

}  // namespace oku::test
