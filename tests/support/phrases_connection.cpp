// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host does with the plugin, an account and its socket, and what time does.
#include <sstream>

#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

void load(Scene& scene, const Line& line, const std::string&) { scene.result(line, scene.stage.load()); }

void unload(Scene& scene, const Line& line, const std::string&) { scene.result(line, scene.stage.unload()); }

void status(Scene& scene, const Line& line, const std::string&) {
    const auto description = line.texts.empty() ? std::nullopt : std::optional(scene.textOf(line));
    scene.result(line, scene.stage.setStatus(statusCode(line.lastWord()), description, scene.number(line, "word")));
}

void statusWindow(Scene& scene, const Line& line, const std::string& rest) {
    if (rest == "null" || startsWith(rest, "null ")) return scene.result(line, scene.stage.statusWindowNull());
    const auto what = line.lastWord();
    const auto event = what == "confirms" ? 1 : what == "asks" ? 4 : scene.number(line, "event");
    scene.result(line, scene.stage.statusWindow(
                           static_cast<std::uint32_t>(event), statusCode(scene.field(line, "status", "0")),
                           scene.field(line, "description"), static_cast<std::uint32_t>(scene.number(line, "protect")),
                           scene.number(line, "window")));
}

void menu(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.clickMenu(line.lastWord(), scene.textOf(line)));
}

void socketEvent(Scene& scene, const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return scene.result(line, scene.stage.socketNullEvent());
    scene.result(line, scene.stage.socketEvent(static_cast<std::uint32_t>(std::stoul(line.lastWord())),
                                               scene.number(line, "data")));
}

void connected(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.socketEvent(2, 0));
}

void closed(Scene& scene, const Line& line, const std::string&) { scene.result(line, scene.stage.socketEvent(3, 0)); }

void dropped(Scene& scene, const Line& line, const std::string&) { scene.result(line, scene.stage.socketEvent(3, 1)); }

void certificate(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.socketEvent(10, 0));
}

void tls(Scene& scene, const Line& line, const std::string&) {
    const auto word = line.lastWord();
    scene.result(line, scene.stage.tlsState(word == "up" ? 1 : static_cast<std::uint32_t>(std::stoul(word))));
}

void after(Scene& scene, const Line&, const std::string& rest) {
    std::istringstream in(rest);
    double amount = 0;
    std::string unit;
    in >> amount >> unit;
    const double factor = unit == "ms" ? 1 : unit == "s" ? 1000 : unit == "min" ? 60000 : 0;
    if (factor == 0) scene.fail("after wants a number and ms, s or min");
    scene.stage.pass(static_cast<std::int64_t>(amount * factor));
}

void tick(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.tick(line.lastWord(), static_cast<std::uint32_t>(scene.number(line, "kind", 3))));
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"load", load},
    {"unload", unload},
    {"status window ", statusWindow},
    {"status ", status},
    {"menu ", menu},
    {"socket ", socketEvent},
    {"connected", connected},
    {"closed", closed},
    {"dropped", dropped},
    {"tls ", tls},
    {"certificate", certificate},
    {"after ", after},
    {"tick ", tick},
};
// clang-format on

}  // namespace

std::span<const Phrase> connectionPhrases() { return kPhrases; }

}  // namespace harness
