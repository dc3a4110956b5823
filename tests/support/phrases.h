// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The phrases that a transcript's lines begin with. Each family tells its own; one file joins them.
#pragma once

#include <span>
#include <string>

#include "tests/support/scene.h"

namespace harness {

struct Phrase {
    /// What a line does: prepares the world, only speaks to the player, or runs the plugin.
    enum class Role { World, Player, Drive };

    const char* text;
    /// `rest` is what stands behind the phrase.
    void (*act)(Scene& scene, const Line& line, const std::string& rest);
    Role role = Role::Drive;
};

using Role = Phrase::Role;

std::span<const Phrase> cardPhrases();
std::span<const Phrase> connectionPhrases();
std::span<const Phrase> contactPhrases();
std::span<const Phrase> dialogPhrases();
std::span<const Phrase> hostPhrases();
std::span<const Phrase> pagePhrases();
std::span<const Phrase> playerPhrases();
std::span<const Phrase> transferPhrases();
std::span<const Phrase> worldPhrases();

/// The longest phrase that a line begins with, or null.
const Phrase* findPhrase(const std::string& line);

}  // namespace harness
