// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// 2,000 kills at random moments: what is on disk afterwards is the old or the new content, whole.
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <random>

#include "tests/messenger/kill/kept_files.h"
#include "tests/messenger/kill/victim.h"

namespace oku::test {
namespace {

constexpr int kKills = OKU_KILLS;  // of each of the four
constexpr int kKillsAFolder = 25;  // then a new one: what grows must not make the test slow

struct Subject {
    const char* name;
    std::unique_ptr<Kept> (*make)();
};

/// OKU_KILL_SEED repeats a run as far as the machine lets it.
std::uint32_t seed() {
    const char* given = std::getenv("OKU_KILL_SEED");
    return given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10)) : std::random_device()();
}

/// A kill takes nothing back that the kernel has taken, so the files need no real disk, and the test does not wait for
/// one.
QString placeOfFolders() {
    const QString memory = QStringLiteral("/dev/shm");
    return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
}

class Kill : public testing::TestWithParam<Subject> {};

TEST_P(Kill, LeavesTheOldOrTheNewContentWhole) {
    const std::uint32_t used = seed();
    std::cout << GetParam().name << ": OKU_KILL_SEED=" << used << std::endl;
    std::mt19937 random(used);
    const auto kept = GetParam().make();
    std::unique_ptr<QTemporaryDir> directory;
    std::uint32_t next = 1;
    int midway = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        if (kill % kKillsAFolder == 0) {
            directory = std::make_unique<QTemporaryDir>(placeOfFolders() + QStringLiteral("/oku-kill-XXXXXX"));
            next = 1;
        }
        const QString folder = directory->path() + u'/';
        const auto save = [&](std::uint32_t number) { return kept->save(number, folder); };
        const Interrupted at = killWhileSaving(next, save, random);
        ASSERT_GE(at.done, next) << "the child did not save, or ended by itself, at kill " << kill;
        ASSERT_EQ(kept->fault(at.done, at.begun, folder), "") << "kill " << kill << " in save " << at.begun;
        midway += at.begun > at.done;
        next = kept->newest(folder) + 1;
    }
    std::cout << GetParam().name << ": " << midway << " of " << kKills << " kills fell into a save" << std::endl;
    EXPECT_GT(midway, kKills / 2) << "kills that fall between two saves show nothing";
}

INSTANTIATE_TEST_SUITE_P(, Kill,
                         testing::Values(Subject{"Settings", &keptSettings}, Subject{"ContactList", &keptContactList},
                                         Subject{"History", &keptHistory}, Subject{"Plugin", &keptByThePlugin}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace oku::test

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    // The plugin looks for its client database in the current directory first, which must hold none.
    QDir::setCurrent(QDir::rootPath());
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
