// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a user does with cards and pictures.
#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

/// form holds nick = "x"
void formHolds(Scene& scene, const Line& line, const std::string&) {
    scene.stage.host.cardForm[line.lastWord()] = scene.textOf(line);
}

void askForCard(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.askForCard(scene.fill(line.lastWord()), scene.number(line, "token")));
}

template <const char* const& ShortName>
void ownCard(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.ownCard(ShortName, scene.number(line, "token")));
}

constexpr const char* kFetchCard = "PFGetMyVCard";
constexpr const char* kStoreCard = "PFSetMyVCard";
constexpr const char* kFetchPicture = "PFGetMyAvatar";
constexpr const char* kPublishPicture = "PFSetMyAvatar";

/// picture becomes "hash" action=2; without a text the record has none
void pictureBecomes(Scene& scene, const Line& line, const std::string&) {
    const auto hash = line.texts.empty() ? std::nullopt : std::optional(scene.textOf(line));
    scene.result(line, scene.stage.changePicture(hash, static_cast<std::uint32_t>(scene.number(line, "action", 2))));
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"form holds ", formHolds, Role::World},
    {"ask for the card of ", askForCard},
    {"fetch the own card", ownCard<kFetchCard>},
    {"store the own card", ownCard<kStoreCard>},
    {"fetch the own picture", ownCard<kFetchPicture>},
    {"publish the own picture", ownCard<kPublishPicture>},
    {"the own picture becomes", pictureBecomes},
};
// clang-format on

}  // namespace

std::span<const Phrase> cardPhrases() { return kPhrases; }

}  // namespace harness
