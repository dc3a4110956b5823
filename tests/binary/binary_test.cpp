// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>

#include "tests/support/player.h"

namespace {

namespace fs = std::filesystem;

std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string out;
    std::array<char, 4096> buffer;
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) out.append(buffer.data(), count);
    return out;
}

/// The module, loaded as a host loads it.
class Module {
public:
    Module() : handle_(dlopen(PROTOLINK_MODULE, RTLD_NOW | RTLD_LOCAL)) {
        if (!handle_) throw std::runtime_error(dlerror());
    }
    ~Module() { dlclose(handle_); }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    harness::PluginExports exports() const {
        return {reinterpret_cast<OKU_QUERY_PLUG_INFO>(dlsym(handle_, "queryPlugInfo")),
                reinterpret_cast<OKU_PLUGIN_LOAD>(dlsym(handle_, "pluginLoad")),
                reinterpret_cast<OKU_PLUGIN_UNLOAD>(dlsym(handle_, "pluginUnload"))};
    }
    static bool isMapped() {
        void* handle = dlopen(PROTOLINK_MODULE, RTLD_NOW | RTLD_NOLOAD);
        if (handle) dlclose(handle);
        return handle != nullptr;
    }

private:
    void* handle_;
};

/// An own folder with a profile and a cache directory, which is the current directory too; gone afterwards.
class TemporaryFolder {
public:
    TemporaryFolder() : before_(fs::current_path()) {
        std::string name = (fs::temp_directory_path() / "protolink-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        path_ = name;
        fs::create_directories(path_ / "profile");
        fs::create_directories(path_ / "cache");
        fs::current_path(path_);
    }
    ~TemporaryFolder() {
        fs::current_path(before_);
        fs::remove_all(path_);
    }
    std::string path() const { return path_.string(); }

private:
    fs::path before_;
    fs::path path_;
};

TEST(Binary, ExportsTheThreeFunctionsAndNothingElse) {
    std::istringstream lines(outputOf(std::string(PROTOLINK_NM) + " -D --defined-only " + PROTOLINK_MODULE));
    std::set<std::string> names;
    for (std::string line; std::getline(lines, line);) names.insert(line.substr(line.rfind(' ') + 1));
    EXPECT_EQ(names, (std::set<std::string>{"pluginLoad", "pluginUnload", "queryPlugInfo"}));
}

// Libcurl is not among them: it would make each start take twice as long.
TEST(Binary, NeedsOnlyTheSystemAndTwoLibraries) {
    std::istringstream lines(outputOf(std::string(PROTOLINK_READELF) + " -d " + PROTOLINK_MODULE));
    const std::set<std::string> allowed = {"libexpat",        "libz",    "libstdc++", "libm", "libgcc_s", "libc",
                                           "ld-linux-x86-64", "libasan", "libubsan"};
    int needed = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("(NEEDED)") == std::string::npos) continue;
        const auto start = line.find('[') + 1;
        const auto library = line.substr(start, line.find(".so") - start);
        EXPECT_TRUE(allowed.count(library)) << line;
        ++needed;
    }
    EXPECT_GT(needed, 3);
}

TEST(Binary, DescribesItselfBeforeItIsLoaded) {
    const Module module;
    const auto* info = module.exports().query();
    EXPECT_EQ(info->size, 120u);
    EXPECT_EQ(std::u16string(info->name), u"Protokół XMPP");
}

TEST(Binary, IsLoadedAndUnloadedTwiceInOneProcess) {
    const harness::FoldBook folds(PROTOLINK_FOLDS);
    for (int round = 0; round < 2; ++round) {
        {
            const Module module;
            for (int again = 0; again < 2; ++again) {
                const TemporaryFolder folder;
                const auto outcome = harness::play(
                    module.exports(), folds.readText("login", "log in as alice@example.org/home\nunload -> 0\n"),
                    {.onlyDrive = true, .realDirectory = folder.path()});
                EXPECT_TRUE(outcome.passed) << outcome.report;
            }
        }
        EXPECT_FALSE(Module::isMapped()) << "something in the module keeps it from being unloaded";
    }
}

/// Whether a transcript needs nothing that only the fake world can give.
bool playsInTheRealWorld(const harness::Transcript& transcript) {
    for (const auto& step : transcript.steps) {
        for (const std::string_view word : {"after ", "random ", "file ", "no file ", "cannot ", "holds ",
                                            "module path ", "directories ", "host leaves icon "}) {
            if (step.text.compare(0, word.size(), word) == 0) return false;
        }
        for (const std::string_view deed : {"then file ", "then no file "}) {
            if (step.text.find(deed) != std::string::npos) return false;
        }
    }
    return true;
}

TEST(Binary, PlaysTranscriptsInTheRealWorld) {
    const harness::FoldBook folds(PROTOLINK_FOLDS);
    const Module module;
    int played = 0;
    for (const char* name : {"plugin", "stream", "router", "profile"}) {
        for (const auto& entry : fs::directory_iterator(fs::path(PROTOLINK_SOURCE_DIR) / "tests" / name)) {
            if (entry.path().extension() != ".transcript") continue;
            const auto transcript = folds.read(entry.path());
            if (!playsInTheRealWorld(transcript)) continue;
            const TemporaryFolder folder;
            const auto outcome = harness::play(module.exports(), transcript, {.realDirectory = folder.path()});
            EXPECT_TRUE(outcome.passed) << entry.path() << "\n" << outcome.report;
            ++played;
        }
    }
    EXPECT_GT(played, 100);
}

}  // namespace
