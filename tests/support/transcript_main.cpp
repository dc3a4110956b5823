// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Plays every transcript of the folders given as arguments: as given, byte by byte, and cut in two.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <vector>

#include "plugin/module.h"
#include "tests/support/player.h"
#include "tests/support/writer.h"

namespace {

using harness::PlayMode;

/// So many of the cuts of each transcript are played, evenly spread, unless PROTOLINK_ALL_CUTS is set.
constexpr std::size_t kCutSamples = 12;
constexpr std::size_t kFirstCuts = 512;

constexpr harness::PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};

class TranscriptTest : public testing::Test {
public:
    TranscriptTest(const harness::FoldBook& folds, std::filesystem::path file, PlayMode::Pieces pieces)
        : folds_(folds), file_(std::move(file)), pieces_(pieces) {}

    void TestBody() override {
        const auto transcript = folds_.read(file_);
        if (pieces_ == PlayMode::Pieces::Cut && !transcript.piecesAsGiven) return playCuts(transcript);
        if (pieces_ == PlayMode::Pieces::AsGiven || !transcript.piecesAsGiven) {
            expectToPass(transcript, {.pieces = pieces_});
        }
    }

private:
    void playCuts(const harness::Transcript& transcript) const {
        // Where the first cut is made tells how many there are.
        const std::size_t shift = std::hash<std::string>{}(transcript.name) % kFirstCuts;
        const std::size_t cuts = expectToPass(transcript, {.pieces = pieces_, .cut = shift}).cuts;
        const std::size_t wanted = std::getenv("PROTOLINK_ALL_CUTS") ? cuts : std::min(cuts, kCutSamples);
        for (std::size_t i = 1; i < wanted && !HasFailure(); ++i) {
            expectToPass(transcript, {.pieces = pieces_, .cut = shift + i * cuts / wanted});
        }
    }

    static harness::Outcome expectToPass(const harness::Transcript& transcript, const PlayMode& mode) {
        auto outcome = harness::play(kExports, transcript, mode);
        EXPECT_TRUE(outcome.passed) << outcome.report << (mode.cut ? "\n(cut " + std::to_string(mode.cut) + ")" : "");
        return outcome;
    }

    const harness::FoldBook& folds_;
    std::filesystem::path file_;
    PlayMode::Pieces pieces_;
};

std::string testName(const std::filesystem::path& file) {
    auto name = file.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

void registerTest(const harness::FoldBook& folds, const std::filesystem::path& file, const std::string& suite,
                  PlayMode::Pieces pieces) {
    testing::RegisterTest(
        suite.c_str(), testName(file).c_str(), nullptr, nullptr, file.c_str(), 1,
        [&folds, file, pieces]() -> TranscriptTest* { return new TranscriptTest(folds, file, pieces); });
}

/// Prints the transcript that the player's own journal gives: what a recorder at the boundary would write.
int printRecording(const harness::FoldBook& folds, const char* file) {
    const auto outcome = harness::play(kExports, folds.read(file));
    std::cout << harness::writeTranscript(outcome.journal);
    if (!outcome.passed) std::cerr << outcome.report << "\n";
    return outcome.passed ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const harness::FoldBook folds(PROTOLINK_FOLDS);
    if (argc == 3 && std::string(argv[1]) == "--record") return printRecording(folds, argv[2]);
    for (int i = 1; i < argc; ++i) {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            if (entry.path().extension() == ".transcript") files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        const auto suite = std::filesystem::path(argv[i]).filename().string();
        for (const auto& file : files) registerTest(folds, file, suite, PlayMode::Pieces::AsGiven);
        for (const auto& file : files) registerTest(folds, file, suite + "_bytes", PlayMode::Pieces::Bytes);
        for (const auto& file : files) registerTest(folds, file, suite + "_cut", PlayMode::Pieces::Cut);
    }
    return RUN_ALL_TESTS();
}
