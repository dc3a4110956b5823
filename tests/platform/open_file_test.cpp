// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Files piece by piece.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/file.h"
#include "tests/platform/temporary_folder.h"

namespace {

TEST(OpenFile, ReadsPieceByPiece) {
    const TemporaryFolder folder;
    folder.write("file", "0123456789");
    const auto file = platform::openForReading(folder.wide("file"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->length(), 10u);
    EXPECT_EQ(file->read(4), "0123");
    EXPECT_EQ(file->position(), 4u);
    EXPECT_EQ(file->read(100), "456789");
    EXPECT_EQ(file->read(100), "");
    EXPECT_EQ(file->position(), 10u);
    EXPECT_FALSE(file->write("x"));
}

TEST(OpenFile, WritesInPlaceAndBeginsAnew) {
    const TemporaryFolder folder;
    folder.write("file", "what was there before");
    const auto file = platform::openForWriting(folder.wide("file"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->length(), 0u);
    EXPECT_TRUE(file->write("ab"));
    EXPECT_TRUE(file->write(""));
    EXPECT_TRUE(file->write("c"));
    EXPECT_EQ(file->position(), 3u);
    EXPECT_EQ(file->length(), 3u);
    EXPECT_EQ(folder.read("file"), "abc");
    EXPECT_TRUE(file->close());
    EXPECT_TRUE(file->close());
}

TEST(OpenFile, MakesItsOwnersFile) {
    const TemporaryFolder folder;
    ASSERT_TRUE(platform::openForWriting(folder.wide("za\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87 file")));
    EXPECT_EQ(folder.mode("za\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87 file"), 0600u);
}

TEST(OpenFile, OpensNothingElse) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const std::u16string& path :
         {folder.wide("absent/file"), folder.wide("pipe"), folder.directory(), std::u16string()}) {
        EXPECT_FALSE(platform::openForReading(path));
        EXPECT_FALSE(platform::openForWriting(path));
    }
    EXPECT_FALSE(platform::openForReading(folder.wide("absent")));
}

TEST(OpenFile, TellsItsSize) {
    const TemporaryFolder folder;
    folder.write("file", "0123456789");
    std::filesystem::resize_file(folder / "file", std::uintmax_t{5} << 30);
    EXPECT_EQ(platform::fileSize(folder.wide("file")), std::uint64_t{5} << 30);
    EXPECT_EQ(platform::fileSize(folder.wide("absent")), 0u);
    EXPECT_EQ(platform::fileSize(folder.directory()), 0u);
}

}  // namespace
