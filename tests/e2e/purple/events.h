// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// One event for whoever drives the program: a line with a JSON object, written to standard output by its destructor.
class Event {
public:
    explicit Event(std::string_view name) { text("event", name); }
    ~Event();
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    /// A null text is told as an empty one. Texts are UTF-8.
    Event& text(std::string_view key, const char* value);
    Event& text(std::string_view key, std::string_view value);
    Event& number(std::string_view key, std::uint64_t value);
    Event& flag(std::string_view key, bool value);

private:
    Event& raw(std::string_view key, std::string_view value);

    std::string line_;
};
