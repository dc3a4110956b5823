// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Files as the plugin keeps them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <functional>

#include "platform/platform.h"
#include "tests/platform/temporary_folder.h"

namespace {

using namespace std::string_literals;

/// Permissions do not bind the superuser, so a test of theirs says nothing there.
bool isSuperuser() { return geteuid() == 0; }

TEST(ReadFile, GivesTheWholeContent) {
    const TemporaryFolder folder;
    const std::string content = "first\0second\r\n\xFF"s + std::string(200'000, 'x');
    folder.write("file", content);
    EXPECT_EQ(platform::readFile(folder.wide("file")), content);
    folder.write("empty", "");
    EXPECT_EQ(platform::readFile(folder.wide("empty")), "");
}

TEST(ReadFile, GivesNothingForWhatIsNoFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(platform::readFile(folder.wide("absent")), std::nullopt);
    EXPECT_EQ(platform::readFile(folder.wide("absent/file")), std::nullopt);
    EXPECT_EQ(platform::readFile(folder.directory()), std::nullopt);
    EXPECT_EQ(platform::readFile(u""), std::nullopt);
}

TEST(ReadFile, APipeDoesNotHoldIt) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(platform::readFile(folder.wide("pipe")), std::nullopt);
    EXPECT_FALSE(platform::createFileIfMissing(folder.wide("pipe")));
    EXPECT_FALSE(platform::replaceFile(folder.wide("pipe"), "x"));
}

TEST(ReadFile, ANulInThePathOpensNoOtherFile) {
    const TemporaryFolder folder;
    folder.write("file", "secret");
    const std::u16string path = folder.wide("file") + u"\0.txt"s;
    EXPECT_EQ(platform::readFile(path), std::nullopt);
    EXPECT_FALSE(platform::createFileIfMissing(path));
    EXPECT_FALSE(platform::replaceFile(path, "x"));
    EXPECT_EQ(folder.read("file"), "secret");
}

TEST(ReadFile, ReadsAFileThatTellsNoSize) {
    EXPECT_NE(platform::readFile(u"/proc/self/stat"), std::nullopt);
    EXPECT_NE(platform::readFile(u"/proc/self/stat"), "");
}

TEST(CreateFile, MakesAnEmptyFileForItsOwnerAlone) {
    const TemporaryFolder folder;
    EXPECT_TRUE(platform::createFileIfMissing(folder.wide("żółw")));
    EXPECT_EQ(folder.read("żółw"), "");
    EXPECT_EQ(folder.mode("żółw"), 0600u);
}

TEST(CreateFile, LeavesAFileThatIsThere) {
    const TemporaryFolder folder;
    folder.write("file", "content");
    EXPECT_TRUE(platform::createFileIfMissing(folder.wide("file")));
    EXPECT_EQ(folder.read("file"), "content");
}

TEST(CreateFile, FailsWithoutAFolder) {
    const TemporaryFolder folder;
    EXPECT_FALSE(platform::createFileIfMissing(folder.wide("absent/file")));
    EXPECT_FALSE(platform::createFileIfMissing(folder.directory()));
}

TEST(FileExists, TellsWhatIsThereWhateverItIs) {
    const TemporaryFolder folder;
    folder.write("empty", "");
    EXPECT_TRUE(platform::fileExists(folder.wide("empty")));
    EXPECT_TRUE(platform::fileExists(folder.directory()));
    EXPECT_FALSE(platform::fileExists(folder.wide("absent")));
    EXPECT_FALSE(platform::fileExists(folder.wide("empty") + u"\0"s));
    EXPECT_FALSE(platform::fileExists(u""));
}

TEST(CreateFolder, MakesOneForItsOwnerAloneAndLeavesOneThatIsThere) {
    const TemporaryFolder folder;
    platform::createFolder(folder.wide("new") + u"/");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "new"));
    EXPECT_EQ(folder.mode("new"), 0700u);
    folder.write("new/file", "x");
    platform::createFolder(folder.wide("new") + u"/");
    EXPECT_EQ(folder.read("new/file"), "x");
}

TEST(CreateFolder, FailsWithoutAWord) {
    const TemporaryFolder folder;
    folder.write("file", "x");
    platform::createFolder(folder.wide("file"));
    platform::createFolder(folder.wide("absent/new"));
    platform::createFolder(folder.wide("new") + u"\0"s);
    platform::createFolder(u"");
    EXPECT_EQ(folder.count(), 1u);
}

TEST(EmptyFolder, DeletesEveryFileAndNothingElse) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "full");
    std::filesystem::create_directory(folder / "full/inner");
    folder.write("full/a", "x");
    folder.write("full/.hidden", "x");
    folder.write("full/inner/b", "x");
    folder.write("c", "x");
    std::filesystem::create_symlink(folder / "full/inner", folder / "full/link");
    EXPECT_TRUE(platform::emptyFolder(folder.wide("full") + u"/"));
    EXPECT_FALSE(std::filesystem::exists(folder / "full/a"));
    EXPECT_FALSE(std::filesystem::exists(folder / "full/.hidden"));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder / "full/link")));
    EXPECT_EQ(folder.read("full/inner/b"), "x");
    EXPECT_EQ(folder.read("c"), "x");
    EXPECT_TRUE(platform::emptyFolder(folder.wide("full"))) << "nothing is left in it";
}

TEST(EmptyFolder, TellsWhetherAFileIsLeft) {
    const TemporaryFolder folder;
    EXPECT_TRUE(platform::emptyFolder(folder.wide("absent") + u"/"));
    folder.write("file", "x");
    EXPECT_FALSE(platform::emptyFolder(folder.wide("file"))) << "it is no folder";
    EXPECT_FALSE(platform::emptyFolder(folder.wide("new") + u"\0"s));
    EXPECT_EQ(folder.read("file"), "x");
}

TEST(ReplaceFile, MakesANewFileForItsOwnerAlone) {
    const TemporaryFolder folder;
    EXPECT_TRUE(platform::replaceFile(folder.wide("file"), "a\0b"s));
    EXPECT_EQ(folder.read("file"), "a\0b"s);
    EXPECT_EQ(folder.mode("file"), 0600u);
    EXPECT_EQ(folder.count(), 1u) << "nothing is left beside it";
}

TEST(ReplaceFile, ReplacesContentAndKeepsTheMode) {
    const TemporaryFolder folder;
    folder.write("file", std::string(10'000, 'x'));
    ASSERT_EQ(chmod((folder / "file").c_str(), 0644), 0);
    EXPECT_TRUE(platform::replaceFile(folder.wide("file"), "short"));
    EXPECT_EQ(folder.read("file"), "short");
    EXPECT_EQ(folder.mode("file"), 0644u);
    EXPECT_TRUE(platform::replaceFile(folder.wide("file"), ""));
    EXPECT_EQ(folder.read("file"), "");
    EXPECT_EQ(folder.count(), 1u);
}

TEST(ReplaceFile, WhoReadsMeanwhileHasTheOldFileWhole) {
    const TemporaryFolder folder;
    folder.write("file", "old content");
    std::ifstream reader(folder / "file");
    EXPECT_TRUE(platform::replaceFile(folder.wide("file"), "new"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old content");
}

TEST(ReplaceFile, ALinkStaysAndItsTargetIsReplaced) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "elsewhere");
    folder.write("elsewhere/target", "old");
    std::filesystem::create_symlink("elsewhere/target", folder / "link");
    EXPECT_TRUE(platform::replaceFile(folder.wide("link"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("elsewhere/target"), "new");
}

TEST(ReplaceFile, ALinkToNothingGetsItsTarget) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("target", folder / "link");
    EXPECT_TRUE(platform::replaceFile(folder.wide("link"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("target"), "new");
}

TEST(ReplaceFile, TakesNamesAsLongAsTheSystemDoes) {
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    EXPECT_TRUE(platform::replaceFile(folder.wide(name), "x"));
    EXPECT_EQ(folder.read(name), "x");
    EXPECT_FALSE(platform::replaceFile(folder.wide(name + "n"), "x"));
}

TEST(ReplaceFile, FailsWhereNoFileCanBe) {
    const TemporaryFolder folder;
    EXPECT_FALSE(platform::replaceFile(folder.wide("absent/file"), "x"));
    EXPECT_FALSE(platform::replaceFile(folder.directory(), "x"));
    EXPECT_FALSE(platform::replaceFile(u"", "x"));
    EXPECT_EQ(folder.count(), 0u);
}

TEST(ReplaceFile, WorksWithARelativePath) {
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder / ".");
    const bool replaced = platform::replaceFile(u"file", "x");
    std::filesystem::current_path(before);
    EXPECT_TRUE(replaced);
    EXPECT_EQ(folder.read("file"), "x");
}

/// Does something while no file may grow over four bytes, as on a full disk. The system would also send a signal, which
/// ends programs.
bool withoutRoomForFiles(const std::function<bool()>& act) {
    rlimit limit{};
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{4, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool done = act();
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, handler);
    return done;
}

TEST(ReplaceFile, AFailedWriteLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    EXPECT_FALSE(withoutRoomForFiles([&] { return platform::replaceFile(folder.wide("file"), "new content"); }));
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_EQ(folder.count(), 1u);
}

TEST(ReplaceFile, AFailedWriteOfANewFileLeavesNone) {
    const TemporaryFolder folder;
    EXPECT_FALSE(withoutRoomForFiles([&] { return platform::replaceFile(folder.wide("file"), "new content"); }));
    EXPECT_EQ(folder.count(), 0u);
}

TEST(ReplaceFile, AFileThatMayNotBeWrittenStays) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    ASSERT_EQ(chmod((folder / "file").c_str(), 0400), 0);
    EXPECT_EQ(platform::replaceFile(folder.wide("file"), "new"), isSuperuser());
    EXPECT_EQ(folder.read("file"), isSuperuser() ? "new" : "old");
}

TEST(ReplaceFile, HoldsNoDescriptor) {
    const TemporaryFolder folder;
    // In this folder: threads of other tests may still be closing theirs elsewhere.
    const std::string place = std::filesystem::canonical((folder / "file").parent_path()).string();
    const auto descriptors = [&] {
        return std::count_if(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator(), [&](const auto& entry) {
                                 std::error_code gone;
                                 return std::filesystem::read_symlink(entry, gone).string().starts_with(place);
                             });
    };
    for (int i = 0; i < 20; ++i) {
        platform::replaceFile(folder.wide("file"), "x");
        platform::replaceFile(folder.wide("absent/file"), "x");
        platform::readFile(folder.wide("file"));
        platform::createFileIfMissing(folder.directory());
        platform::filesMatching(folder.directory(), u"", u"");
    }
    EXPECT_EQ(descriptors(), 0);
}

TEST(FilesMatching, GivesNamesThatBeginAndEndSo) {
    const TemporaryFolder folder;
    for (const char* name : {"protoLink.config", "protoLink_work.config", "protoLink_.config", "protoLink_a_b.config",
                             "protoLink_work.roster", "xprotoLink_a.config", "protoLink_a.config.bak"})
        folder.write(name, "");
    std::vector<std::u16string> names = platform::filesMatching(folder.directory(), u"protoLink_", u".config");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names,
              (std::vector<std::u16string>{u"protoLink_.config", u"protoLink_a_b.config", u"protoLink_work.config"}));
}

TEST(FilesMatching, BeginAndEndDoNotOverlap) {
    const TemporaryFolder folder;
    folder.write("aba", "");
    EXPECT_TRUE(platform::filesMatching(folder.directory(), u"ab", u"ba").empty());
    EXPECT_EQ(platform::filesMatching(folder.directory(), u"ab", u"a").size(), 1u);
}

TEST(FilesMatching, OnlyFilesAndLinksToFilesCount) {
    const TemporaryFolder folder;
    folder.write("a.file", "");
    std::filesystem::create_directory(folder / "a.folder");
    std::filesystem::create_symlink("a.file", folder / "a.link");
    std::filesystem::create_symlink("absent", folder / "a.broken");
    std::filesystem::create_symlink("a.folder", folder / "a.to-folder");
    std::vector<std::u16string> names = platform::filesMatching(folder.directory(), u"a.", u"");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::u16string>{u"a.file", u"a.link"}));
}

TEST(FilesMatching, NamesAreWideAndThoseThatAreNoTextAreLeftOut) {
    const TemporaryFolder folder;
    folder.write("a żółw", "");
    folder.write("a \xFF", "");
    EXPECT_EQ(platform::filesMatching(folder.directory(), u"a ", u""), (std::vector<std::u16string>{u"a żółw"}));
}

TEST(FilesMatching, AFolderThatCannotBeReadGivesNone) {
    const TemporaryFolder folder;
    EXPECT_TRUE(platform::filesMatching(folder.wide("absent/"), u"", u"").empty());
    folder.write("file", "");
    EXPECT_TRUE(platform::filesMatching(folder.wide("file"), u"", u"").empty());
    EXPECT_TRUE(platform::filesMatching(folder.directory() + u"\0"s, u"", u"").empty());
}

}  // namespace
