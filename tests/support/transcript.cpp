// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/transcript.h"

#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "tests/support/text.h"

namespace harness {
namespace {

constexpr int kDeepest = 10;
constexpr std::string_view kAsGiven = "pieces as given:";
constexpr std::string_view kRepeat = "repeat ";
constexpr std::string_view kTimes = " times: ";
constexpr unsigned long kMostTimes = 1000;

std::string slurp(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + file.string());
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

/// Lines without comments and blank lines; an indented line goes on with the one before it.
std::vector<Step> readSteps(const std::string& name, const std::string& text) {
    std::vector<Step> steps;
    std::istringstream in(text);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        const auto content = trim(line);
        if (content.empty() || content.front() == '#') continue;
        if (line.front() == ' ' || line.front() == '\t') {
            if (steps.empty()) throw std::runtime_error(name + ": an indented line goes on with nothing");
            // What is sent and received goes on as it stands; all else is words.
            const bool data = steps.back().text.front() == 'S' || steps.back().text.front() == 'C';
            steps.back().text += (data ? "" : " ") + std::string(content);
        } else {
            steps.push_back({std::string(content), name + ":" + std::to_string(number)});
        }
    }
    return steps;
}

struct Repetition {
    unsigned long times;
    std::string line;
};

/// What "repeat 10 times: LINE" stands for; nothing for any other line.
std::optional<Repetition> repetitionOf(const Step& step) {
    if (!startsWith(step.text, kRepeat)) return std::nullopt;
    const auto colon = step.text.find(kTimes);
    const auto number = colon == std::string::npos ? "" : step.text.substr(kRepeat.size(), colon - kRepeat.size());
    const bool digits = !number.empty() && number.size() < 5 && number.find_first_not_of("0123456789") == number.npos;
    const auto times = digits ? std::stoul(number) : 0;
    if (times < 1 || times > kMostTimes) throw std::runtime_error(step.where + ": repeat NUMBER times: LINE");
    return Repetition{times, step.text.substr(colon + kTimes.size())};
}

std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> out;
    std::string word;
    bool inside = false;
    for (const char c : text) {
        if (c == '"') inside = !inside;
        if (c == ' ' && !inside) {
            if (!word.empty()) out.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    if (!word.empty()) out.push_back(word);
    return out;
}

using Parameters = std::map<std::string, std::string, std::greater<>>;  // longer names before their beginnings

/// A JID's parts can be named too: $jid.bare, $jid.node, $jid.domain, $jid.resource.
void addParts(Parameters& parameters, const std::string& name, const std::string& value) {
    parameters[name] = value;
    const auto at = value.find('@');
    const auto slash = value.find('/');
    if (at == std::string::npos) return;
    parameters[name + ".bare"] = value.substr(0, slash);
    parameters[name + ".node"] = value.substr(0, at);
    parameters[name + ".domain"] = value.substr(at + 1, slash == std::string::npos ? slash : slash - at - 1);
    parameters[name + ".resource"] = slash == std::string::npos ? "" : value.substr(slash + 1);
}

std::optional<Parameters> fits(const Fold& fold, const std::vector<std::string>& line) {
    if (fold.phrase.size() != line.size()) return std::nullopt;
    Parameters parameters;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (fold.phrase[i].front() == '$') {
            const bool quotes = line[i].size() >= 2 && line[i].front() == '"' && line[i].back() == '"';
            addParts(parameters, fold.phrase[i], quotes ? line[i].substr(1, line[i].size() - 2) : line[i]);
        } else if (fold.phrase[i] != line[i]) {
            return std::nullopt;
        }
    }
    return parameters;
}

}  // namespace

FoldBook::FoldBook(const std::filesystem::path& directory) {
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        if (entry.path().extension() != ".fold") continue;
        auto steps = readSteps(entry.path().filename().string(), slurp(entry.path()));
        if (steps.empty() || !startsWith(steps.front().text, "phrase ")) {
            throw std::runtime_error(entry.path().string() + " does not begin with its phrase");
        }
        Fold fold{words(steps.front().text.substr(7)), {}};
        steps.erase(steps.begin());
        fold.steps = std::move(steps);
        folds_.push_back(std::move(fold));
    }
}

void FoldBook::append(const Step& step, std::vector<Step>& to, int depth) const {
    if (depth > kDeepest) throw std::runtime_error(step.where + ": folds go in a circle");
    if (const auto repetition = repetitionOf(step)) {
        for (unsigned long i = 0; i < repetition->times; ++i)
            append({repetition->line, step.where + " (time " + std::to_string(i + 1) + ")"}, to, depth + 1);
        return;
    }
    const auto line = words(step.text);
    for (const auto& fold : folds_) {
        const auto parameters = fits(fold, line);
        if (!parameters) continue;
        for (auto inner : fold.steps) {
            for (const auto& [name, value] : *parameters) inner.text = replaceAll(inner.text, name, value);
            inner.where = step.where + " (" + inner.where + ")";
            append(inner, to, depth + 1);
        }
        return;
    }
    to.push_back(step);
}

Transcript FoldBook::readText(const std::string& name, const std::string& text) const {
    Transcript transcript{name, {}, false};
    for (const auto& step : readSteps(name, text)) {
        if (startsWith(step.text, kAsGiven)) {
            if (trim(std::string_view(step.text).substr(kAsGiven.size())).empty()) {
                throw std::runtime_error(step.where + ": no reason is given");
            }
            transcript.piecesAsGiven = true;
        } else {
            append(step, transcript.steps, 0);
        }
    }
    return transcript;
}

Transcript FoldBook::read(const std::filesystem::path& file) const {
    return readText(file.filename().string(), slurp(file));
}

}  // namespace harness
