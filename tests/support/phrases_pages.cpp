// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pages of the plugin in the host's own windows, and the menus of contacts.
#include <map>

#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using Kind = Stage::PageKind;

Kind kindOf(const Line& line) {
    if (startsWith(line.head, "options")) return Kind::Options;
    return startsWith(line.head, "properties") ? Kind::Properties : Kind::Information;
}

std::optional<std::string> contactOf(Scene& scene, const Line& line) {
    return line.find("of") ? std::optional(scene.field(line, "of")) : std::nullopt;
}

/// options page show; also hide, destroy, apply, ok, add, place, or a number; page=2 in another window of the host's;
/// of=JID about a contact; x=, y=, width=, height=; without=word, without=texts, null=1
void pageEvent(Scene& scene, const Line& line, const std::string&) {
    if (line.find("null")) return scene.result(line, scene.stage.pageNull(kindOf(line)));
    static const std::map<std::string, std::uint32_t> kEvents = {{"show", 1}, {"hide", 2}, {"destroy", 3}, {"apply", 4},
                                                                 {"ok", 5},   {"add", 7},  {"place", 10}};
    const auto named = kEvents.find(line.lastWord());
    const auto missing = scene.field(line, "without");
    const auto hint = [&](const char* name) { return static_cast<std::int32_t>(scene.number(line, name)); };
    Stage::PageInput input{.kind = kindOf(line), .contact = contactOf(scene, line)};
    input.event = named == kEvents.end() ? static_cast<std::uint32_t>(std::stoul(line.lastWord())) : named->second;
    input.page = scene.number(line, "page", 1);
    input.place = {hint("x"), hint("y"), hint("width"), hint("height")};
    input.hasWord = missing != "word";
    input.hasTexts = missing != "texts";
    scene.result(line, scene.stage.page(input));
}

/// the page is titled "title" "description"
void pageTitled(Scene& scene, const Line& line, const std::string&) {
    if (scene.mode.onlyDrive) return;
    const auto& stage = scene.stage;
    if (scene.textOf(line) != stage.pageTitle) scene.fail("the title is " + harness::quoted(stage.pageTitle));
    if (scene.textOf(line, 1) != stage.pageDescription)
        scene.fail("the description is " + harness::quoted(stage.pageDescription));
}

Stage::ContactEvent contactEvent(Scene& scene, const Line& line) {
    Stage::ContactEvent event{.contact = contactOf(scene, line)};
    event.pfClass = scene.field(line, "class", "XMPP");
    if (line.find("net")) event.net = static_cast<std::uint32_t>(scene.number(line, "net"));
    event.event = static_cast<std::uint32_t>(scene.number(line, "event", 1));
    event.extra = scene.number(line, "word");
    return event;
}

/// the host shows properties of=JID; word=5 is the host's own, event=2, class="ICQ", net=2
void showsProperties(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.showProperties(contactEvent(scene, line)));
}

/// the host builds a menu of=JID; menu="OKU/Loc/ChatWND", count=2 contacts, class="ICQ", net=2
void buildsMenu(Scene& scene, const Line& line, const std::string&) {
    const auto count = static_cast<std::uint32_t>(scene.number(line, "count", 1));
    scene.result(line, scene.stage.buildMenu(contactEvent(scene, line), scene.field(line, "menu"), count));
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"options page ", pageEvent},
    {"properties page ", pageEvent},
    {"information page ", pageEvent},
    {"the page is titled ", pageTitled, Role::Player},
    {"the host shows properties", showsProperties},
    {"the host builds a menu", buildsMenu},
};
// clang-format on

}  // namespace

std::span<const Phrase> pagePhrases() { return kPhrases; }

}  // namespace harness
