// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "events.h"

#include <array>
#include <cstdio>

namespace {

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += {'\\', c};
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
            result += escape.data();
        } else {
            result += c;
        }
    }
    return result + '"';
}

}  // namespace

Event::~Event() {
    std::puts((line_ + '}').c_str());
    std::fflush(stdout);
}

Event& Event::text(std::string_view key, const char* value) { return text(key, std::string_view(value ? value : "")); }

Event& Event::text(std::string_view key, std::string_view value) { return raw(key, quoted(value)); }

Event& Event::number(std::string_view key, std::uint64_t value) { return raw(key, std::to_string(value)); }

Event& Event::flag(std::string_view key, bool value) { return raw(key, value ? "true" : "false"); }

Event& Event::raw(std::string_view key, std::string_view value) {
    line_ += line_.empty() ? '{' : ',';
    line_ += quoted(key) + ':';
    line_ += value;
    return *this;
}
