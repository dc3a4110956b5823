// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A transcript as it is read from its file, with the folded groups of lines put in their places.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace harness {

struct Step {
    std::string text;   // the whole line, continuation lines joined
    std::string where;  // file and line, for failures
};

struct Transcript {
    std::string name;
    std::vector<Step> steps;
    /// Set by the line "pieces as given: REASON": the transcript is about the pieces themselves, and is not played
    /// with other cuts.
    bool piecesAsGiven = false;
};

/// A group of lines with a phrase of its own, such as "log in as $jid".
struct Fold {
    std::vector<std::string> phrase;  // words; those that begin with $ are parameters
    std::vector<Step> steps;
};

class FoldBook {
public:
    /// Reads every *.fold file of a directory. Throws std::runtime_error when one is malformed.
    explicit FoldBook(const std::filesystem::path& directory);

    /// Reads a transcript. Throws std::runtime_error when a file cannot be read or folds go in a circle.
    Transcript read(const std::filesystem::path& file) const;
    Transcript readText(const std::string& name, const std::string& text) const;

private:
    void append(const Step& step, std::vector<Step>& to, int depth) const;

    std::vector<Fold> folds_;
};

}  // namespace harness
