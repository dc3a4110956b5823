// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Files that fail: every call of the system about a file fails once, in each way that it can, while the plugin runs on
// real files. A file is then the old one or the new one as a whole, and nothing lies beside it.
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "host/oku/transfer.h"
#include "host/util/utf.h"
#include "platform/platform.h"
#include "plugin/account_files.h"
#include "tests/torture/client.h"

using namespace protolink;

namespace {

struct Failure {
    const char* name;
    int error;
    bool half;  // no error: reads and writes do half of what is asked for
};

constexpr std::array<Failure, 5> kFailures{{{"NoSpace", ENOSPC, false},
                                            {"NoRight", EACCES, false},
                                            {"Broken", EIO, false},
                                            {"Interrupted", EINTR, false},
                                            {"HalfADeed", 0, true}}};

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
std::size_t g_count = 0;
std::size_t g_failing = kNever;
Failure g_failure{};
std::string g_failed;

/// Whether the call that is about to happen is the one that fails; only the plugin's own calls count.
bool fails(const char* name) {
    if (!torture::g_inPlugin || g_count++ != g_failing) return false;
    g_failed = name;
    errno = g_failure.error;
    return !g_failure.half;
}

/// How much of `size` the call that is about to happen does.
std::size_t doable(std::size_t size) {
    return g_failure.half && torture::g_inPlugin && g_count == g_failing ? (size + 1) / 2 : size;
}

}  // namespace

extern "C" {
int __real_open(const char* path, int flags, ...);
int __real_close(int file);
int __real_fchmod(int file, mode_t mode);
int __real_fstat(int file, struct stat* state);
int __real_fsync(int file);
int __real_mkostemp(char* path, int flags);
int __real_lstat(const char* path, struct stat* state);
int __real_mkdir(const char* path, mode_t mode);
DIR* __real_opendir(const char* path);
ssize_t __real_read(int file, void* buffer, size_t size);
char* __real_realpath(const char* path, char* resolved);
int __real_rename(const char* from, const char* to);
ssize_t __real_write(int file, const void* buffer, size_t size);

int __wrap_open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return fails("open") ? -1 : __real_open(path, flags, mode);
}
int __wrap_close(int file) {
    // A close that fails has closed all the same.
    const int result = __real_close(file);
    return fails("close") ? -1 : result;
}
int __wrap_fchmod(int file, mode_t mode) { return fails("fchmod") ? -1 : __real_fchmod(file, mode); }
int __wrap_fstat(int file, struct stat* state) { return fails("fstat") ? -1 : __real_fstat(file, state); }
int __wrap_fsync(int file) { return fails("fsync") ? -1 : __real_fsync(file); }
int __wrap_mkostemp(char* path, int flags) { return fails("mkostemp") ? -1 : __real_mkostemp(path, flags); }
int __wrap_lstat(const char* path, struct stat* state) { return fails("lstat") ? -1 : __real_lstat(path, state); }
int __wrap_mkdir(const char* path, mode_t mode) { return fails("mkdir") ? -1 : __real_mkdir(path, mode); }
DIR* __wrap_opendir(const char* path) { return fails("opendir") ? nullptr : __real_opendir(path); }
ssize_t __wrap_read(int file, void* buffer, size_t size) {
    const std::size_t part = doable(size);
    return fails("read") ? -1 : __real_read(file, buffer, part);
}
char* __wrap_realpath(const char* path, char* resolved) {
    return fails("realpath") ? nullptr : __real_realpath(path, resolved);
}
int __wrap_rename(const char* from, const char* to) { return fails("rename") ? -1 : __real_rename(from, to); }
ssize_t __wrap_write(int file, const void* buffer, size_t size) {
    const std::size_t part = doable(size);
    return fails("write") ? -1 : __real_write(file, buffer, part);
}
}

namespace torture {
namespace {

namespace fs = std::filesystem;

class Files : public testing::TestWithParam<Failure> {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "torture-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder_ = name;
        start_ = fs::current_path();
        // The client database is looked for in the current directory at first.
        fs::current_path(folder_);
        setenv("HOME", name.c_str(), 1);
    }
    void TearDown() override {
        fs::current_path(start_);
        fs::remove_all(folder_);
    }

    /// Gives the client the real folder, with the files of an earlier run in it.
    void prepare(Client& client) const {
        for (const auto& entry : fs::directory_iterator(folder_)) fs::remove_all(entry);
        client.host.directory = utow(folder_.string() + "/");
        write("XMPPClientDB.xml", kOldDatabase);
        for (auto& [path, file] : std::map(client.host.settings)) {
            const std::u16string name = path.substr(path.rfind(u'/') + 1);
            client.host.settings[client.host.directory + moduleName() + u".config"] = file;
        }
        write(narrow(moduleName()) + ".roster", kOldRoster);
        fs::create_directory(folder_ / ".xmppAvatar");
        write(".xmppAvatar/Lknown", "old face");
    }

    /// The files are named after the program, as they are after a module.
    static std::u16string moduleName() { return moduleBaseName(platform::modulePath()); }

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }

    /// A contact announces a picture, and sends it.
    static void tellPicture(Client& client, const std::string& hash) {
        client.receive(1, "<presence from='contact0@example.org/r'><x xmlns='jabber:x:avatar'><hash>" + hash +
                              "</hash></x></presence>");
        client.receive(1,
                       "<iq type='result' from='contact0@example.org/r'><query xmlns='jabber:x:avatar'>"
                       "<data>YSBmYWNl</data></query></iq>");
    }

    static void live(Client& client) {
        client.logIn();
        client.receive(1, "<presence from='contact0@example.org/r'/>");
        client.receive(1,
                       "<iq type='result' from='contact0@example.org/r' id='x'><query "
                       "xmlns='http://jabber.org/protocol/disco#info' node='n#new'/></iq>");
        tellPicture(client, "known");
        tellPicture(client, "fresh");
        client.unload();
    }

    static constexpr char kOldRoster[] =
        "<roster><element name=\"Stary\" jid=\"old@example.org\" auth=\"both\" group=\"Praca\"/></roster>";
    static constexpr char kOldDatabase[] = "<dbRoot><entry hash=\"old\"><query/></entry></dbRoot>";

    fs::path folder_;
    fs::path start_;
};

TEST_P(Files, EachCallFailsOnce) {
    std::string newRoster, newDatabase, learntDatabase, newPictures;
    std::size_t calls = 0;
    {
        Client client;
        prepare(client);
        fs::remove(folder_ / "XMPPClientDB.xml");
        live(client);
        learntDatabase = read("XMPPClientDB.xml");
    }
    {
        Client client;
        prepare(client);
        g_count = 0;
        g_failing = kNever;
        live(client);
        calls = g_count;
        newRoster = read(narrow(moduleName()) + ".roster");
        newDatabase = read("XMPPClientDB.xml");
        newPictures = read(".xmppAvatar/Lknown") + read(".xmppAvatar/Lfresh");
    }
    ASSERT_GT(calls, 20u);
    ASSERT_EQ(newPictures, "a facea face");
    ASSERT_NE(newRoster, kOldRoster);
    ASSERT_NE(newDatabase, kOldDatabase);
    ASSERT_NE(newDatabase, learntDatabase);
    for (std::size_t failing = 0; failing < calls; ++failing) {
        Client client;
        prepare(client);
        g_count = 0;
        g_failing = failing;
        g_failure = GetParam();
        g_failed.clear();
        live(client);
        g_failing = kNever;
        g_failure = {};
        SCOPED_TRACE("call " + std::to_string(failing) + ", " + g_failed);
        EXPECT_EQ(client.host.leftovers(), "");
        const std::string roster = read(narrow(moduleName()) + ".roster");
        EXPECT_TRUE(roster == kOldRoster || roster == newRoster) << roster;
        // A database that could not be read is replaced by what this run has learnt.
        const std::string database = read("XMPPClientDB.xml");
        EXPECT_TRUE(database == kOldDatabase || database == newDatabase || database == learntDatabase) << database;
        const std::string picture = read(".xmppAvatar/Lknown");
        EXPECT_TRUE(picture == "old face" || picture == "a face") << picture;
        EXPECT_TRUE(!fs::exists(folder_ / ".xmppAvatar/Lfresh") || read(".xmppAvatar/Lfresh") == "a face");
        for (const auto& entry : fs::recursive_directory_iterator(folder_))
            EXPECT_EQ(entry.path().filename().string().find(".protolink-"), std::string::npos) << entry.path();
        client.logIn();
        EXPECT_TRUE(client.isReady());
        client.unload();
        if (HasFailure()) return;
    }
}

/// A file in the stream, from the offer to the answer to each block.
void receiveFile(Client& client, const fs::path& folder) {
    client.host.before = [&folder](const Call& call) -> std::optional<OKU_WORD> {
        if (call.name != u"OKU/FTAskForConfirmation") return std::nullopt;
        const auto& record = *reinterpret_cast<const OKU_FT_ASK_RECORD*>(call.param);
        const std::u16string path = utow(folder.string() + "/");
        std::copy_n(path.c_str(), path.size() + 1, record.path);
        return 1;
    };
    const auto hear = [&client](const std::string& id, const std::string& child) {
        client.receive(1, "<iq type='set' from='contact1@example.org/r' id='" + id + "'>" + child + "</iq>");
    };
    hear("o1",
         "<si xmlns='http://jabber.org/protocol/si' id='s1'><file name='plik' size='6' "
         "xmlns='http://jabber.org/protocol/si/profile/file-transfer'/><feature "
         "xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field><option><value>"
         "http://jabber.org/protocol/ibb</value></option></field></x></feature></si>");
    hear("s1", "<open xmlns='http://jabber.org/protocol/ibb' sid='s1'/>");
    hear("d1", "<data xmlns='http://jabber.org/protocol/ibb' sid='s1'>Y3pl</data>");
    hear("d2", "<data xmlns='http://jabber.org/protocol/ibb' sid='s1'>YWJj</data>");
    client.host.before = nullptr;
}

TEST_P(Files, OfAReceivedOneEachConfirmedBlockIsThere) {
    std::size_t calls = 1;
    for (std::size_t failing = 0; failing < calls; ++failing) {
        Client client;
        prepare(client);
        client.logIn();
        client.servers.at(1).keepHeard = true;
        g_count = 0;
        g_failing = failing == 0 ? kNever : failing - 1;
        g_failure = GetParam();
        g_failed.clear();
        receiveFile(client, folder_);
        if (failing == 0) calls = g_count + 1;
        g_failing = kNever;
        g_failure = {};
        SCOPED_TRACE("call " + std::to_string(failing) + ", " + g_failed);
        const std::string said = client.servers.at(1).heard();
        const bool first =
            said.find("<iq id=\"d1\" to=\"contact1@example.org/r\" type=\"result\"/>") != std::string::npos;
        const bool second =
            said.find("<iq id=\"d2\" to=\"contact1@example.org/r\" type=\"result\"/>") != std::string::npos;
        EXPECT_TRUE(failing > 0 || (first && second));
        EXPECT_TRUE(!first || read("plik").starts_with("cze")) << read("plik");
        EXPECT_TRUE(!second || read("plik") == "czeabc") << read("plik");
        client.unload();
        EXPECT_EQ(client.host.leftovers(), "");
        if (HasFailure()) return;
    }
    EXPECT_GT(calls, 5u);
}

INSTANTIATE_TEST_SUITE_P(, Files, testing::ValuesIn(kFailures), [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace torture
