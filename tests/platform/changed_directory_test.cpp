// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the platform tells when the current directory is not the one that the program began in.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "platform/platform.h"
#include "tests/platform/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

/// Stands in another directory for a while.
class StandingIn {
public:
    explicit StandingIn(const fs::path& directory) : before_(fs::current_path()) { fs::current_path(directory); }
    StandingIn(const StandingIn&) = delete;
    StandingIn& operator=(const StandingIn&) = delete;
    ~StandingIn() { fs::current_path(before_); }

private:
    fs::path before_;
};

struct CloseLibrary {
    void operator()(void* library) const { dlclose(library); }
};

/// A library opened by the path given, which tells where it believes itself to lie.
class PathTeller {
public:
    explicit PathTeller(const char* path) : library_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {}
    std::string tell() const {
        if (!library_) return std::string("not opened: ") + dlerror();
        const auto function = reinterpret_cast<const char* (*)()>(dlsym(library_.get(), "tellPath"));
        return function ? function() : "no function";
    }

private:
    std::unique_ptr<void, CloseLibrary> library_;
};

class ChangedDirectory : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(folder_ / "modules");
        fs::create_directories(folder_ / "profile");
        fs::copy_file(PROTOLINK_PATH_TELLER, folder_ / "modules/teller.module");
    }
    std::string whole() const { return (fs::canonical(folder_ / "modules") / "teller.module").string(); }

    TemporaryFolder folder_;
};

TEST_F(ChangedDirectory, AModuleOfARelativePathIsFoundWhileTheDirectoryStays) {
    const StandingIn here(folder_ / "");
    EXPECT_EQ(PathTeller("modules/teller.module").tell(), whole());
    EXPECT_EQ(PathTeller("./modules/teller.module").tell(), whole());
}

TEST_F(ChangedDirectory, AModuleOfARelativePathKeepsItsName) {
    std::unique_ptr<PathTeller> teller;
    {
        const StandingIn here(folder_ / "");
        teller = std::make_unique<PathTeller>("modules/teller.module");
    }
    const StandingIn there(folder_ / "profile");
    EXPECT_EQ(teller->tell(), "teller.module");
}

TEST_F(ChangedDirectory, AModuleOfAWholePathIsWhereItWas) {
    const PathTeller teller(whole().c_str());
    const StandingIn there(folder_ / "profile");
    EXPECT_EQ(teller.tell(), whole());
}

TEST_F(ChangedDirectory, AModuleWhoseFolderIsGoneKeepsItsName) {
    const PathTeller teller(whole().c_str());
    fs::rename(folder_ / "modules", folder_ / "elsewhere");
    EXPECT_EQ(teller.tell(), "teller.module");
}

TEST_F(ChangedDirectory, FilesOfRelativeNamesLieInTheCurrentDirectory) {
    folder_.write("profile/database.xml", "<dbRoot/>");
    const StandingIn there(folder_ / "profile");
    EXPECT_EQ(platform::readFile(u"database.xml"), "<dbRoot/>");
    EXPECT_TRUE(platform::createFileIfMissing(u"new.roster"));
    EXPECT_TRUE(platform::replaceFile(u"database.xml", "<other/>"));
    EXPECT_EQ(folder_.read("profile/database.xml"), "<other/>");
    EXPECT_EQ(folder_.read("profile/new.roster"), "");
    EXPECT_EQ(platform::filesMatching(u"./", u"new", u".roster"), std::vector<std::u16string>{u"new.roster"});
}

}  // namespace
