// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/scene.h"

#include "tests/support/text.h"

namespace harness {

std::string Scene::fill(const std::string& raw) const {
    if (!mode.onlyDrive) return Pattern::parse(raw).fill(variables);
    try {
        return Pattern::parse(raw).fill(variables);
    } catch (const std::runtime_error&) {
        return raw;
    }
}

std::string Scene::textOf(const Line& line, std::size_t index) const {
    return index < line.texts.size() ? fill(line.texts[index].text) : std::string();
}

std::string Scene::field(const Line& line, const char* name, const std::string& otherwise) const {
    const auto* value = line.find(name);
    return value ? fill(value->text) : otherwise;
}

long long Scene::number(const Line& line, const char* name, long long otherwise) const {
    const auto* value = line.find(name);
    return value ? std::stoll(fill(value->text)) : otherwise;
}

std::string Scene::path(const std::string& name) const {
    const auto filled = fill(name);
    if (startsWith(filled, "cwd:")) return filled.substr(4);
    return filled.find('/') == std::string::npos ? stage.host.profileDirectory + filled : filled;
}

void Scene::result(const Line& line, OKU_WORD actual) const {
    if (!line.result || mode.onlyDrive) return;
    if (std::to_string(actual) != *line.result) fail("the result is " + std::to_string(actual));
}

void Scene::fail(const std::string& why) const { throw Failure(why); }

void Scene::checkQuiet(const std::string& why) const {
    if (events.empty() || mode.onlyDrive) return;
    fail(why + ": " + render(events.front()));
}

}  // namespace harness
