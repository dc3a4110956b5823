// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The lines that only speak to the player.
#include <sstream>
#include <utility>

#include "tests/support/fake_platform.h"
#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

void holds(Scene& scene, const Line& line, const std::string&) {
    const auto found = world().files.find(scene.path(line.lastWord()));
    if (found == world().files.end()) scene.fail("there is no such file");
    if (!line.texts.empty() && !Pattern::parse(line.texts[0].text).match(found->second, scene.variables)) {
        scene.fail("it holds " + found->second);
    }
}

void show(Scene& scene, const Line& line, const std::string& rest) {
    const bool on = startsWith(line.head, "showing");
    if (rest == "settings") {
        scene.showSettings = on;
    } else if (rest == "stream hooks") {
        scene.showStreamHooks = on;
    } else {
        scene.fail("there is nothing of that name to show");
    }
}

void let(Scene& scene, const Line& line, const std::string&) { scene.variables[line.lastWord()] = scene.textOf(line); }

void forget(Scene& scene, const Line&, const std::string& rest) {
    std::istringstream in(rest);
    for (std::string name; in >> name;) scene.variables.erase(name);
}

/// when "call NetLib/Close" then closed
void when(Scene& scene, const Line&, const std::string& rest) {
    const auto end = rest.find("\" then ");
    if (rest.empty() || rest.front() != '"' || end == std::string::npos) scene.fail("when \"EVENT\" then STIMULUS");
    const Step inner{rest.substr(end + 7), "when"};
    scene.stage.host.triggers.push_back({scene.fill(rest.substr(1, end - 1)), [&scene, inner] {
                                             const auto waiting = std::exchange(scene.events, {});
                                             scene.perform(inner);
                                             scene.events.insert(scene.events.begin(), waiting.begin(), waiting.end());
                                         }});
}

void onAccount(Scene& scene, const Line&, const std::string& rest) {
    scene.stage.account = static_cast<std::uint32_t>(std::stoul(rest));
}

void nothing(Scene& scene, const Line&, const std::string&) { scene.checkQuiet("something happened"); }

void flags(Scene& scene, const Line&, const std::string& rest) {
    static constexpr std::pair<std::uint32_t, const char*> kWords[] = {
        {1, "connected"}, {2, "encrypted"}, {4, "connecting"}, {8, "authorized"}, {16, "compressed"}};
    std::string actual;
    for (const auto& [bit, word] : kWords) {
        if (scene.stage.flags() & bit) actual += (actual.empty() ? "" : " ") + std::string(word);
    }
    if (actual.empty()) actual = "none";
    if (actual != rest && !scene.mode.onlyDrive) scene.fail("the flags are: " + actual);
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"holds ", holds, Role::Player},
    {"showing ", show, Role::Player},
    {"hiding ", show, Role::Player},
    {"let ", let, Role::Player},
    {"forget ", forget, Role::Player},
    {"when ", when, Role::World},
    {"on account ", onAccount, Role::Player},
    {"nothing", nothing, Role::Player},
    {"flags ", flags, Role::Player},
};
// clang-format on

}  // namespace

std::span<const Phrase> playerPhrases() { return kPhrases; }

}  // namespace harness
