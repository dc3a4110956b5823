// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The lines that tell the host how to answer.
#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

void hostLacks(Scene& scene, const Line&, const std::string& rest) { scene.stage.host.absent.insert(rest); }

void hostHas(Scene& scene, const Line&, const std::string& rest) {
    scene.stage.host.absent.erase(rest);
    scene.stage.host.answersAlways.erase(rest);
}

void hostAnswers(Scene& scene, const Line& line, const std::string&) {
    scene.stage.host.answersOnce[line.lastWord()].push_back(std::stoll(scene.textOf(line)));
}

void hostAlwaysAnswers(Scene& scene, const Line& line, const std::string&) {
    scene.stage.host.answersAlways[line.lastWord()] = std::stoll(scene.textOf(line));
}

void hostProxy(Scene& scene, const Line& line, const std::string&) {
    const auto value = [&](const char* name) { return static_cast<std::uint32_t>(scene.number(line, name)); };
    scene.stage.host.proxy = {scene.field(line, "host"),
                              scene.field(line, "user"),
                              scene.field(line, "password"),
                              value("port"),
                              value("enabled"),
                              value("type"),
                              value("auth")};
}

void hostIcon(Scene& scene, const Line&, const std::string& rest) { scene.stage.host.pageIcon = std::stoll(rest); }

void veto(Scene& scene, const Line&, const std::string& rest) { scene.stage.host.vetoes.insert(hookKind(rest)); }

void blanks(Scene& scene, const Line& line, const std::string&) {
    scene.stage.host.blanks.push_back(scene.textOf(line));
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"host lacks ", hostLacks, Role::World},
    {"host has ", hostHas, Role::World},
    {"host answers ", hostAnswers, Role::World},
    {"host always answers ", hostAlwaysAnswers, Role::World},
    {"host proxy ", hostProxy, Role::World},
    {"host leaves icon ", hostIcon, Role::World},
    {"veto ", veto, Role::World},
    {"listener blanks ", blanks, Role::World},
};
// clang-format on

}  // namespace

std::span<const Phrase> hostPhrases() { return kPhrases; }

}  // namespace harness
