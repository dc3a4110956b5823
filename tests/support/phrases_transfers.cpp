// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a user does to file transfers, what becomes of a published file, and what the web answers.
#include "tests/support/fake_platform.h"
#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

/// send file to JID; send file to null
void sendFile(Scene& scene, const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return scene.result(line, scene.stage.service("PFInitSendFile", 0, 0));
    scene.result(line, scene.stage.sendFile(scene.fill(line.lastWord())));
}

void choose(Scene& scene, const Line& line, const std::string& rest) {
    const bool cancels = startsWith(rest, "nothing");
    const auto path = cancels ? std::nullopt : std::optional(scene.textOf(line));
    scene.result(line, scene.stage.choose(scene.number(line, "chooser", 1), path, scene.number(line, "kind")));
}

void windowEvent(Scene& scene, const Line& line, const std::string& rest) {
    const auto event = startsWith(rest, "null") ? std::nullopt : std::optional(scene.number(line, "event", 2));
    scene.result(line, scene.stage.transferWindow(scene.number(line, "window", 1), event));
}

void published(Scene& scene, const Line& line, const std::string&) {
    const auto number = scene.number(line, "file", 1);
    if (line.find("position")) {
        scene.result(
            line, scene.stage.publishedProgress(number, scene.number(line, "position"), scene.number(line, "total")));
    } else {
        scene.result(line, scene.stage.publishedState(number, scene.number(line, "state")));
    }
}

FakeDownload& download(Scene& scene, const Line& line) {
    const auto number = static_cast<std::size_t>(scene.number(line, "download", 1));
    if (number == 0 || number > world().downloads.size()) throw NotThere("there is no such download");
    return *world().downloads[number - 1];
}

void webBegins(Scene& scene, const Line& line, const std::string&) { download(scene, line).begin(); }
void webAnswers(Scene& scene, const Line& line, const std::string&) {
    download(scene, line).answer(static_cast<int>(std::stol(line.lastWord())));
}
void webSends(Scene& scene, const Line& line, const std::string&) { download(scene, line).block(scene.textOf(line)); }
void webEnds(Scene& scene, const Line& line, const std::string&) { download(scene, line).end(); }

void receivedFolder(Scene& scene, const Line& line, const std::string&) {
    scene.stage.host.receivedFolder = scene.textOf(line);
}
void publishedUrl(Scene& scene, const Line& line, const std::string&) {
    scene.stage.host.publishedUrl = scene.textOf(line);
}
void noThreads(Scene&, const Line&, const std::string&) { world().threads = false; }

// clang-format off
constexpr Phrase kPhrases[] = {
    {"send file to ", sendFile},
    {"the user chooses ", choose},
    {"the user cancels", windowEvent},
    {"the window tells ", windowEvent},
    {"the published file tells ", published},
    {"the web thread begins", webBegins},
    {"the web answers ", webAnswers},
    {"the web sends ", webSends},
    {"the web ends", webEnds},
    {"host saves in ", receivedFolder, Role::World},
    {"host publishes under ", publishedUrl, Role::World},
    {"no thread can be started", noThreads, Role::World},
};
// clang-format on

}  // namespace

std::span<const Phrase> transferPhrases() { return kPhrases; }

}  // namespace harness
