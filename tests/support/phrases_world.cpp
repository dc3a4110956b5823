// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The lines that prepare settings, files and the platform.
#include <sstream>

#include "tests/support/fake_platform.h"
#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

void setting(Scene& scene, const Line& line, const std::string&) {
    if (line.texts.size() != 1) scene.fail("a setting wants one value");
    Setting value{line.texts[0].quoted, 0, {}};
    if (value.isText) {
        value.text = scene.textOf(line);
    } else {
        value.number = std::stoll(scene.textOf(line));
    }
    const auto file = scene.path(scene.field(line, "file", "protoLink.config"));
    scene.stage.host.change(file, line.lastWord(), value);
}

void noSetting(Scene& scene, const Line& line, const std::string&) {
    scene.stage.host.change(scene.path(scene.field(line, "file", "protoLink.config")), line.lastWord(), std::nullopt);
}

void file(Scene& scene, const Line& line, const std::string&) {
    const auto name = scene.path(line.lastWord());
    if (startsWith(line.head, "no ")) {
        world().files.erase(name);
        world().folders.erase(name);
    } else {
        world().files[name] = scene.textOf(line);
    }
}

void fileFails(Scene& scene, const Line& line, const std::string&) {
    const auto name = scene.path(line.lastWord());
    world().unopenable.erase(name);
    world().unwritable.erase(name);
    world().unreadable.erase(name);
    if (startsWith(line.head, "cannot open")) world().unopenable.insert(name);
    if (startsWith(line.head, "cannot write")) world().unwritable.insert(name);
    if (startsWith(line.head, "cannot read")) world().unreadable.insert(name);
}

/// size of NAME = 5368709120
void fileSize(Scene& scene, const Line& line, const std::string&) {
    world().sizes[scene.path(line.lastWord())] = std::stoull(scene.textOf(line));
}

void modulePath(Scene& scene, const Line& line, const std::string&) { world().modulePath = scene.textOf(line); }

void directories(Scene& scene, const Line& line, const std::string&) {
    auto& host = scene.stage.host;
    scene.variables["profile"] = host.profileDirectory = scene.field(line, "profile", host.profileDirectory);
    scene.variables["cache"] = host.cacheDirectory = scene.field(line, "cache", host.cacheDirectory);
}

void random(Scene&, const Line&, const std::string& rest) {
    std::istringstream in(rest);
    for (std::string word; in >> word;) {
        world().randoms.push_back(static_cast<std::uint32_t>(std::stoul(word, nullptr, 0)));
    }
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"setting ", setting, Role::World},
    {"no setting ", noSetting, Role::World},
    {"file ", file, Role::World},
    {"no file ", file, Role::World},
    {"cannot open ", fileFails, Role::World},
    {"cannot write ", fileFails, Role::World},
    {"cannot read ", fileFails, Role::World},
    {"size of ", fileSize, Role::World},
    {"can open and write ", fileFails, Role::World},
    {"module path ", modulePath, Role::World},
    {"directories ", directories, Role::World},
    {"random ", random, Role::World},
};
// clang-format on

}  // namespace

std::span<const Phrase> worldPhrases() { return kPhrases; }

}  // namespace harness
