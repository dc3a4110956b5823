// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Plays a transcript: drives the plugin by its stimuli and compares what happens with its expectations.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/support/scene.h"
#include "tests/support/stage.h"
#include "tests/support/transcript.h"

namespace harness {

/// One entry of what happened, in order.
struct JournalEntry {
    bool isStimulus = false;
    std::string text;
};

struct Outcome {
    bool passed = true;
    std::string report;  // the exchange so far and the line, when it did not pass
    std::size_t calls = 0;
    std::size_t cuts = 0;  // the greatest number of cut positions of a piece
    std::vector<JournalEntry> journal;
};

Outcome play(const PluginExports& exports, const Transcript& transcript, const PlayMode& mode = {});

/// The positions inside a tag or inside a character of several bytes, where a piece is cut in two.
std::vector<std::size_t> cutPositions(const std::string& piece);

class Player {
public:
    Player(const PluginExports& exports, const PlayMode& mode);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    Outcome run(const Transcript& transcript);

private:
    void step(const Step& step);
    void perform(const Step& step);
    void receive(const std::string& raw);
    void note(const std::string& text);
    void checkComplaints();
    void onEvent(Event event);
    bool isShown(const Event& event) const;

    // Comparing.
    void expect(const std::string& text);
    bool sentMatches(const Event& event, const std::string& text, std::string& why);
    static bool isSendExpectation(const std::string& text);
    void expectRealFile(const Line& line);
    void expectLoosely(const std::string& text);

    Scene scene_;
    std::vector<JournalEntry> journal_;
    std::size_t cuts_ = 0;
};

}  // namespace harness
