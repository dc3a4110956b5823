// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Transfers on real files, with real threads and a real web server on loopback.
#include <errno.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/oku/transfer.h"
#include "host/util/utf.h"
#include "tests/support/web_server.h"
#include "tests/torture/client.h"

namespace torture {
namespace {

namespace fs = std::filesystem;
using harness::WebServer;

constexpr std::uint32_t kNet = 1;

/// The windows of the host: what other threads write to them is kept under a lock, as a host carries it over.
class Windows {
public:
    static OKU_WORD OKU_CALL update(OKU_WORD param, OKU_WORD, OKU_WORD data) {
        const auto& record = *reinterpret_cast<const OKU_FT_UPDATE_RECORD*>(param);
        auto& windows = *reinterpret_cast<Windows*>(data);
        const std::lock_guard lock(windows.mutex_);
        ++windows.updates_;
        if (record.mask == OKU_FT_STATUS_TEXT) windows.texts_ += wtou(record.status) + "|";
        if (record.mask == OKU_FT_POSITION) {
            windows.backwards_ = windows.backwards_ || record.position < windows.position_;
            windows.position_ = record.position;
        }
        return 0;
    }

    std::string texts() const {
        const std::lock_guard lock(mutex_);
        return texts_;
    }
    std::uint64_t position() const {
        const std::lock_guard lock(mutex_);
        return backwards_ ? 0 : position_;
    }
    std::size_t updates() const {
        const std::lock_guard lock(mutex_);
        return updates_;
    }

private:
    mutable std::mutex mutex_;
    std::string texts_;
    std::uint64_t position_ = 0;
    bool backwards_ = false;
    std::size_t updates_ = 0;
};

class RealTransfers : public testing::Test {
protected:
    RealTransfers() {
        std::string name = (fs::temp_directory_path() / "transfer-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        folder_ = name;
        for (const char* proxy : {"http_proxy", "all_proxy", "no_proxy", "HTTP_PROXY", "ALL_PROXY", "NO_PROXY"})
            unsetenv(proxy);
        client.host.directory = utow(folder_.string() + "/");
        // The settings are called as the module is, which here is the program.
        const std::u16string own = utow(program_invocation_short_name) + u".config";
        for (auto& [path, file] : std::map(client.host.settings))
            client.host.settings[client.host.directory + own] = file;
        client.host.before = [this](const Call& call) { return answer(call); };
        client.logIn();
        client.servers.at(kNet).keepHeard = true;
    }
    ~RealTransfers() override {
        if (client.loaded()) client.unload();
        fs::remove_all(folder_);
    }

    std::optional<OKU_WORD> answer(const Call& call) {
        if (call.name == u"OKU/FTInitWindow") {
            auto& record = *reinterpret_cast<OKU_FT_INIT_RECORD*>(call.param);
            window = {record.callback, record.callbackData};
            record.updateFn = Windows::update;
            record.updateData = reinterpret_cast<OKU_WORD>(&windows);
            return 5;
        }
        if (call.name == u"OKU/FTAskForConfirmation") {
            const auto& record = *reinterpret_cast<const OKU_FT_ASK_RECORD*>(call.param);
            const std::u16string folder = utow(folder_.string() + "/");
            std::copy_n(folder.c_str(), folder.size() + 1, record.path);
            return 1;
        }
        return std::nullopt;
    }

    void hear(const std::string& id, const std::string& child) {
        client.say(kNet, "<iq type='set' from='contact1@example.org/desk' id='" + id + "'>" + child + "</iq>");
        client.pump();
    }

    /// Accepts a file and hears where it is.
    void fetch(const std::string& url, const std::string& name, const std::string& sid) {
        hear("o1",
             "<si xmlns='http://jabber.org/protocol/si' id='" + sid +
                 "'><file xmlns='http://jabber.org/protocol/si/profile/file-transfer' name='" + name +
                 "' size='6'/><feature xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field>"
                 "<option><value>jabber:iq:oob</value></option></field></x></feature></si>");
        hear(sid, "<query xmlns='jabber:iq:oob'><url>" + url + "</url></query>");
    }

    void untilSaid(const std::string& text) {
        while (client.servers.at(kNet).heard().find(text) == std::string::npos) {
            client.pass(100);
            std::this_thread::yield();
        }
    }

    std::string read(const std::string& name) const {
        std::ostringstream content;
        content << std::ifstream(folder_ / name, std::ios::binary).rdbuf();
        return content.str();
    }

    fs::path folder_;
    Windows windows;
    Callback window;  // the last one's
    Client client;
};

TEST_F(RealTransfers, ADownloadArrives) {
    std::string body;
    while (body.size() < 1'000'000) body += std::to_string(body.size());
    const WebServer server([&](const WebServer::Connection& web) {
        web.send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    });
    fetch(server.at("/file"), "plik", "s1");
    untilSaid("<iq id=\"s1\" type=\"result\" to=\"contact1@example.org/desk\"/>");
    EXPECT_EQ(read("plik"), body);
    EXPECT_EQ(windows.position(), body.size());
    EXPECT_EQ(windows.texts(), "Łączenie...|Przesyłanie...|Odebrano|");
    EXPECT_EQ(server.requests().at(0).find("Mozilla/5.0 (Windows; U; Windows NT 6.1; en-GB; rv:1.9.0.11) "
                                           "Gecko/2009060215 Firefox/3.0.11\r\n"),
              server.requests().at(0).find("Mozilla"));
}

TEST_F(RealTransfers, ARedirectFails) {
    const WebServer server([&](const WebServer::Connection& web) {
        web.send("HTTP/1.1 302 Found\r\nLocation: /other\r\nContent-Length: 0\r\n\r\n");
    });
    fetch(server.at("/file"), "plik", "s1");
    untilSaid("<iq id=\"s1\" type=\"error\"");
    EXPECT_EQ(server.requests().size(), 1u);
    EXPECT_EQ(windows.texts(), "Łączenie...|Błąd|");
}

TEST_F(RealTransfers, ANameThatLeadsUpIsNotWritten) {
    const WebServer server(
        [&](const WebServer::Connection& web) { web.send("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx"); });
    const std::string up = "../" + folder_.filename().string() + "-plik";
    fetch(server.at("/file"), up, "s1");
    untilSaid("<iq id=\"s1\" type=\"error\"");
    EXPECT_FALSE(fs::exists(folder_ / up));
}

TEST_F(RealTransfers, AWindowThatWentIsWrittenToNoMore) {
    const WebServer server([](const WebServer::Connection& web) {
        web.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        while (web.send("x")) continue;
    });
    fetch(server.at("/"), "a", "s1");
    while (windows.position() == 0) std::this_thread::yield();
    OKU_FT_EVENT cancel{sizeof cancel, OKU_FT_EVENT_CANCELLED};
    window(reinterpret_cast<OKU_WORD>(&cancel));
    const std::size_t updates = windows.updates();
    const std::string texts = windows.texts();
    untilSaid("<iq id=\"s1\" type=\"result\"");
    EXPECT_EQ(windows.updates(), updates);
    EXPECT_EQ(windows.texts(), texts);
    EXPECT_GE(fs::file_size(folder_ / "a"), 100000u);
}

TEST_F(RealTransfers, UnloadingEndsWhatDripsAndWhatIsSilent) {
    std::atomic<int> dripping{0};
    const auto serve = [&](const WebServer::Connection& web) {
        web.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        ++dripping;
        while (web.send("x")) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    };
    const WebServer first(serve), second(serve);
    const WebServer silent([&](const WebServer::Connection& web) {
        ++dripping;
        web.waitForItsEnd();
    });
    fetch(first.at("/"), "a", "s1");
    fetch(second.at("/"), "b", "s2");
    fetch(silent.at("/"), "c", "s3");
    while (dripping < 3) std::this_thread::yield();
    client.unload();
    EXPECT_EQ(client.host.leftovers(), "");
    // No thread is left that could write to a window.
    const std::size_t updates = windows.updates();
    client.logIn();
    EXPECT_TRUE(client.passUntilReady(60));
    EXPECT_EQ(windows.updates(), updates);
}

// A quarter of a gibibyte takes minutes where each access is checked: the number stays below 65536 there.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::uintmax_t kBlocks = 257;
#else
constexpr std::uintmax_t kBlocks = 65537;
#endif

TEST_F(RealTransfers, BlocksBehind65535KeepCounting) {
    std::ofstream(folder_ / "big");
    fs::resize_file(folder_ / "big", kBlocks * 4096);
    MiniServer& server = client.servers.at(kNet);
    server.keepHeard = false;
    std::string last;
    client.host.onSend = [&](std::uint32_t, std::string_view text) {
        if (text.find("<iq ") != std::string_view::npos) last = text;
    };
    const auto valueOf = [&](const std::string& name) {
        const std::size_t at = last.find(" " + name + "=\"") + name.size() + 3;
        return last.substr(at, last.find('"', at) - at);
    };
    OKU_CONTACT_RECORD contact{};
    contact.size = sizeof contact;
    contact.id = u"contact1@example.org";
    Callback chooser;
    client.host.before = [&](const Call& call) -> std::optional<OKU_WORD> {
        if (call.name != u"UI/FileChooser")
            return call.name == u"OK7/IsEnabled" ? std::optional<OKU_WORD>(0) : answer(call);
        const auto& record = *reinterpret_cast<const OKU_FILE_CHOOSER*>(call.param);
        chooser = {record.callback, record.context};
        return 1;
    };
    client.callService(kNet, u"PFInitSendFile", reinterpret_cast<OKU_WORD>(&contact), 0);
    const std::u16string path = utow((folder_ / "big").string());
    OKU_FILE_CHOICE choice{sizeof choice, OKU_FILE_CHOSEN, path.c_str(), {}};
    chooser(reinterpret_cast<OKU_WORD>(&choice));
    client.receive(
        kNet, "<iq type='result' id='" + valueOf("id") +
                  "'><si xmlns='http://jabber.org/protocol/si'><feature "
                  "xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field "
                  "var='stream-method'><value>http://jabber.org/protocol/ibb</value></field></x></feature></si></iq>");
    std::string seq;
    while (last.find("<close") == std::string::npos) {
        if (last.find("<data") != std::string::npos) seq = valueOf("seq");
        const std::string before = std::exchange(last, {});
        client.receive(kNet, "<iq type='result' id='" + before.substr(before.find(" id=\"") + 5, 16) + "'/>");
        ASSERT_FALSE(last.empty());
    }
    EXPECT_EQ(seq, std::to_string(kBlocks - 1));
}

}  // namespace
}  // namespace torture
