// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a transcript plays in: the plugin on its stage, the values that were captured, and what has happened and not
// been told yet.
#pragma once

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>

#include "tests/support/stage.h"
#include "tests/support/transcript.h"

namespace harness {

struct PlayMode {
    /// How a received piece reaches the plugin: as it stands, one byte at a time, or in two parts.
    enum class Pieces { AsGiven, Bytes, Cut } pieces = Pieces::AsGiven;
    std::size_t cut = 0;  // which of a piece's cut positions, counted round

    /// Compare nothing: only drive the plugin, and look for complaints. For hosts and files that fail.
    bool onlyDrive = false;
    std::optional<std::size_t> failingCall = std::nullopt;

    /// The plugin runs on the real platform: time and files are the system's, below this directory.
    std::string realDirectory = {};
};

/// A transcript does not hold.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Scene {
    PlayMode mode;
    Stage stage;
    Variables variables = {};
    std::deque<Event> events = {};
    bool showSettings = false;
    bool showStreamHooks = false;
    std::function<void(const Step&)> perform = {};  // plays one more line

    // Reading a line's values, with captured ones filled in.
    std::string fill(const std::string& raw) const;
    std::string textOf(const Line& line, std::size_t index = 0) const;
    std::string field(const Line& line, const char* name, const std::string& otherwise = "") const;
    long long number(const Line& line, const char* name, long long otherwise = 0) const;
    std::string path(const std::string& name) const;

    /// Compares the result of a stimulus with the one that its line tells.
    void result(const Line& line, OKU_WORD actual) const;
    /// Fails when something happened that was not told.
    void checkQuiet(const std::string& why) const;
    [[noreturn]] void fail(const std::string& why) const;
};

}  // namespace harness
