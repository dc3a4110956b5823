// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A file is replaced in steps, and any of them can fail: on a full disk, on a broken one, or on one behind a network,
// which tells only at the end that it did not keep what was written.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "platform/platform.h"
#include "tests/platform/temporary_folder.h"

namespace {

/// A call of the system that this thread cannot make.
struct Failure {
    std::string_view call;
    int error = 0;
};
thread_local Failure g_failure;

bool fails(std::string_view call) {
    if (g_failure.call != call) return false;
    errno = g_failure.error;
    return true;
}

}  // namespace

extern "C" {
int __real_close(int file);
int __real_fchmod(int file, mode_t mode);
int __real_fsync(int file);
int __real_rename(const char* from, const char* to);

int __wrap_close(int file) {
    // A close that fails has closed all the same.
    const int result = __real_close(file);
    return fails("close") ? -1 : result;
}
int __wrap_fchmod(int file, mode_t mode) { return fails("fchmod") ? -1 : __real_fchmod(file, mode); }
int __wrap_fsync(int file) { return fails("fsync") ? -1 : __real_fsync(file); }
int __wrap_rename(const char* from, const char* to) { return fails("rename") ? -1 : __real_rename(from, to); }
}

namespace {

bool replacedDespite(const Failure& failure, const std::u16string& path) {
    g_failure = failure;
    const bool replaced = platform::replaceFile(path, "new");
    g_failure = {};
    return replaced;
}

class ReplaceFileStep : public testing::TestWithParam<Failure> {};

TEST_P(ReplaceFileStep, ThatFailsIsToldAndLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    EXPECT_FALSE(replacedDespite(GetParam(), folder.wide("file")));
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_EQ(folder.count(), 1u);
}

TEST_P(ReplaceFileStep, ThatFailsForANewFileIsToldAndLeavesNone) {
    const TemporaryFolder folder;
    EXPECT_FALSE(replacedDespite(GetParam(), folder.wide("file")));
    EXPECT_EQ(folder.count(), 0u);
}

INSTANTIATE_TEST_SUITE_P(, ReplaceFileStep,
                         testing::Values(Failure{"fchmod", EPERM}, Failure{"fsync", EIO}, Failure{"close", ENOSPC},
                                         Failure{"rename", ENOSPC}),
                         [](const auto& test) { return std::string(test.param.call); });

}  // namespace
