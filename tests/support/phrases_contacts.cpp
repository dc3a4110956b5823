// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a user does to contacts, and calls of any service.
#include "host/oku/notify.h"
#include "host/oku/pep.h"
#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

/// send chat to JID "text"; send message to JID "text" subject="s"; send to JID "text" flags=4; send null
void sendMessage(Scene& scene, const Line& line, const std::string& rest) {
    if (startsWith(rest, "null"))
        return scene.result(line, scene.stage.service("PFMessageSend", 0, scene.number(line, "flags")));
    const auto flags = startsWith(rest, "chat ") ? 6 : startsWith(rest, "message ") ? 2 : scene.number(line, "flags");
    scene.result(line, scene.stage.sendMessage(scene.fill(line.lastWord()), scene.textOf(line),
                                               scene.field(line, "subject"), static_cast<std::uint32_t>(flags)));
}

void typing(Scene& scene, const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return scene.result(line, scene.stage.service("PFTNSend", 0, 1));
    scene.result(line, scene.stage.sendTyping(scene.fill(line.lastWord()), std::stoll(scene.textOf(line))));
}

void raw(Scene& scene, const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return scene.result(line, scene.stage.service("PFRawSend", 0, 0));
    scene.result(line, scene.stage.sendRaw(scene.textOf(line)));
}

void deleteContact(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.deleteContact(scene.fill(line.lastWord())));
}

void authorize(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.authorize(scene.fill(line.lastWord()), std::stoll(scene.textOf(line))));
}

std::uint32_t pepKind(const std::string& word) {
    return word == "tune" ? OKU_PEP_TUNE : word == "mood" ? OKU_PEP_MOOD : OKU_PEP_LOCATION;
}

/// publish tune artist="a"; publish mood nothing (a null record of data); publish null
void publish(Scene& scene, const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return scene.result(line, scene.stage.service("PFEPublishData", 0, 0));
    const std::string what = rest.substr(0, rest.find(' '));
    if (startsWith(rest, what + " nothing")) return scene.result(line, scene.stage.publishNothing(pepKind(what)));
    const RecordLayout& layout = what == "tune"   ? layouts::kPepTune
                                 : what == "mood" ? layouts::kPepMood
                                                  : layouts::kPepLocation;
    std::map<std::string, std::string> texts;
    for (const auto& field : line.fields) texts[field.name] = scene.fill(field.value.text);
    const auto other = texts.extract("kind");
    const auto kind = other ? static_cast<std::uint32_t>(std::stoul(other.mapped())) : pepKind(what);
    scene.result(line, scene.stage.publish(kind, layout, texts));
}

void popUp(Scene& scene, const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return scene.result(line, scene.stage.popUpNull());
    const auto action = startsWith(rest, "clicked")  ? std::uint32_t{OKU_NOTIFY_CLICKED}
                        : startsWith(rest, "closed") ? std::uint32_t{OKU_NOTIFY_GONE}
                                                     : static_cast<std::uint32_t>(scene.number(line, "action"));
    scene.result(line, scene.stage.popUp(action));
}

void service(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.service(line.lastWord(), scene.number(line, "param"), scene.number(line, "extra")));
}

void raise(Scene& scene, const Line& line, const std::string&) {
    scene.result(line, scene.stage.raise(line.lastWord(), scene.number(line, "param"), scene.number(line, "extra")));
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"send ", sendMessage},
    {"typing ", typing},
    {"raw ", raw},
    {"delete contact ", deleteContact},
    {"authorize ", authorize},
    {"publish ", publish},
    {"pop-up ", popUp},
    {"service ", service},
    {"raise ", raise},
};
// clang-format on

}  // namespace

std::span<const Phrase> contactPhrases() { return kPhrases; }

}  // namespace harness
