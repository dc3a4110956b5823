// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Downloads as the system makes them.
#include "platform/download.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <netdb.h>
#include <stdlib.h>

#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <vector>

#include "host/util/utf.h"
#include "tests/support/web_server.h"

namespace {

using harness::WebServer;

/// Names whose look-up takes until a test lets it end.
class HangingNames {
public:
    static HangingNames& all() {
        static HangingNames names;
        return names;
    }
    void wait() {
        std::unique_lock lock(mutex_);
        ++waiting_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return released_; });
        --waiting_;
        changed_.notify_all();
    }
    void untilSomebodyWaits() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return waiting_ > 0; });
    }
    void release() {
        std::unique_lock lock(mutex_);
        released_ = true;
        changed_.notify_all();
        changed_.wait(lock, [this] { return waiting_ == 0; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int waiting_ = 0;
    bool released_ = false;
};

}  // namespace

/// In the place of the system's: every program that fetches something looks names up with this.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char* name, const char* service,
                                                                  const addrinfo* hints, addrinfo** result) {
    if (name && std::strcmp(name, "hangs.example") == 0) {
        HangingNames::all().wait();
        return EAI_FAIL;
    }
    static const auto real = reinterpret_cast<int (*)(const char*, const char*, const addrinfo*, addrinfo**)>(
        dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(name, service, hints, result);
}

namespace {

/// Keeps what it is told, for the thread of the test.
class Told final : public platform::DownloadListener {
public:
    void onBegin() override { note("begin"); }
    bool onAnswer(int status) override {
        note(std::to_string(status));
        if (throws) throw std::runtime_error("of the test");
        return goesOn;
    }
    bool onBytes(std::string_view bytes) override {
        const std::lock_guard lock(mutex_);
        longest_ = std::max(longest_, bytes.size());
        body_ += bytes;
        changed_.notify_all();
        return true;
    }
    void onEnd() noexcept override { note("end"); }

    std::string untilTheEnd() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return words_.ends_with("end "); });
        return words_;
    }
    void untilBytesCame() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !body_.empty(); });
    }
    std::string words() {
        const std::lock_guard lock(mutex_);
        return words_;
    }
    std::string body() {
        const std::lock_guard lock(mutex_);
        return body_;
    }
    std::size_t longest() {
        const std::lock_guard lock(mutex_);
        return longest_;
    }

    bool goesOn = true;
    bool throws = false;

private:
    void note(const std::string& word) {
        const std::lock_guard lock(mutex_);
        words_ += word + " ";
        changed_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::string words_;
    std::string body_;
    std::size_t longest_ = 0;
};

class Downloads : public testing::Test {
protected:
    Downloads() {
        for (const char* name : {"http_proxy", "all_proxy", "no_proxy", "HTTP_PROXY", "ALL_PROXY", "NO_PROXY"})
            unsetenv(name);
    }

    void fetch(const std::string& url) { download = platform::startDownload(utow(url), u"Test/1.0 (a b)", told); }
    /// Ends it, told to stop so many times before: it says these words and is gone. A thread that stands still for five
    /// seconds is given up, and says its last word later.
    void end(const std::string& words, int stops = 0) {
        const auto begin = std::chrono::steady_clock::now();
        for (int at = 0; at < stops; ++at) download->stop();
        download.reset();
        if (std::chrono::steady_clock::now() - begin < std::chrono::seconds(4)) {
            EXPECT_EQ(told->words(), words);
        }
        EXPECT_EQ(told->untilTheEnd(), words);
    }

    std::shared_ptr<Told> told = std::make_shared<Told>();
    std::unique_ptr<platform::Download> download;
};

WebServer::Serve saying(const std::string& text) {
    return [text](const WebServer::Connection& client) { client.send(text); };
}

TEST_F(Downloads, GiveTheDocument) {
    std::string body;
    for (int i = 0; body.size() < 3'000'000; ++i) body += std::to_string(i) + '\n';
    const WebServer server(
        saying("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body));
    fetch(server.at("/file?a=1&b=2"));
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(told->body(), body);
    // Not all of it was kept first.
    EXPECT_LT(told->longest(), body.size() / 10);
    ASSERT_EQ(server.requests().size(), 1u);
    const std::string request = server.requests().front();
    EXPECT_EQ(request.substr(0, request.find('\r')), "GET /file?a=1&b=2 HTTP/1.1");
    EXPECT_NE(request.find("\r\nUser-Agent: Test/1.0 (a b)\r\n"), std::string::npos) << request;
    EXPECT_NE(request.find("\r\nCache-Control: no-cache\r\n"), std::string::npos) << request;
    EXPECT_EQ(request.find("\r\nAccept"), std::string::npos) << request;
}

TEST_F(Downloads, TellAnEmptyDocument) {
    const WebServer server(saying("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"));
    fetch(server.at("/"));
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(told->body(), "");
}

TEST_F(Downloads, FollowNoRedirect) {
    const WebServer server([](const WebServer::Connection& client) {
        client.send("HTTP/1.1 302 Found\r\nLocation: /other\r\nContent-Length: 0\r\n\r\n");
    });
    told->goesOn = false;
    fetch(server.at("/"));
    EXPECT_EQ(told->untilTheEnd(), "begin 302 end ");
    download.reset();
    EXPECT_EQ(server.requests().size(), 1u);
}

TEST_F(Downloads, PassOverInterimAnswers) {
    const WebServer server(saying("HTTP/1.1 103 Early Hints\r\n\r\nHTTP/1.1 200 OK\r\nConnection: close\r\n\r\nabc"));
    fetch(server.at("/"));
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(told->body(), "abc");
}

TEST_F(Downloads, AskOverPlainHttpOnTheAddresssPort) {
    const WebServer server(saying("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx"));
    fetch(server.at("/a", "https"));
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(told->body(), "x");
}

TEST_F(Downloads, EndWhereNobodyListens) {
    const int bound = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);  // holds its port
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    ASSERT_TRUE(::bind(bound, any, length) == 0 && ::getsockname(bound, any, &length) == 0);
    fetch("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/");
    EXPECT_EQ(told->untilTheEnd(), "begin end ");
    ::close(bound);
}

TEST_F(Downloads, EndAtWhatIsNoAddress) {
    for (const char* url : {"", "no address", "http://", "file:///etc/passwd", "/etc/passwd"}) {
        told = std::make_shared<Told>();
        fetch(url);
        EXPECT_EQ(told->untilTheEnd(), "begin end ") << url;
    }
}

TEST_F(Downloads, EndAtWhatIsNoAnswer) {
    const WebServer server(saying("HELLO\r\n\r\n"));
    fetch(server.at("/"));
    EXPECT_EQ(told->untilTheEnd(), "begin end ");
    EXPECT_EQ(told->body(), "");
}

TEST_F(Downloads, GiveWhatCameOfADocumentThatBreaksOff) {
    const WebServer server(saying("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"));
    fetch(server.at("/"));
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(told->body(), "half");
}

TEST_F(Downloads, EndWhenTheListenerThrows) {
    const WebServer server(saying("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx"));
    told->throws = true;
    fetch(server.at("/"));
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(told->body(), "");
}

TEST_F(Downloads, GoThroughTheProxyOfTheEnvironment) {
    const WebServer proxy(saying("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx"));
    setenv("http_proxy", proxy.at("").c_str(), 1);
    fetch("http://files.example:81/a%20b");
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    unsetenv("http_proxy");
    const std::string request = proxy.requests().at(0);
    EXPECT_EQ(request.substr(0, request.find('\r')), "GET http://files.example:81/a%20b HTTP/1.1");
}

TEST_F(Downloads, StopWhileTheServerDrips) {
    const WebServer server([](const WebServer::Connection& client) {
        client.send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
        while (client.send("x")) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    });
    fetch(server.at("/"));
    told->untilBytesCame();
    end("begin 200 end ");
}

TEST_F(Downloads, StopWhileTheServerIsSilent) {
    std::atomic<bool> asked{false};
    const WebServer server([&](const WebServer::Connection& client) {
        asked = true;
        client.waitForItsEnd();
    });
    fetch(server.at("/"));
    while (!asked) std::this_thread::yield();
    end("begin end ", 2);
}

TEST_F(Downloads, StopWhileANameIsLookedUp) {
    fetch("http://hangs.example/");
    HangingNames::all().untilSomebodyWaits();
    end("begin end ");
    // The look-up ends later, and finds nobody.
    HangingNames::all().release();
}

TEST_F(Downloads, SeveralAtOnce) {
    const WebServer first(saying("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\na"));
    const WebServer second(saying("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nb"));
    const auto other = std::make_shared<Told>();
    fetch(first.at("/"));
    const auto download2 = platform::startDownload(utow(second.at("/")), u"", other);
    EXPECT_EQ(told->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(other->untilTheEnd(), "begin 200 end ");
    EXPECT_EQ(told->body() + other->body(), "ab");
}

/// A listener that does not come back before it is let go.
class Held final : public platform::DownloadListener {
public:
    void onBegin() override {
        std::unique_lock lock(mutex_);
        held_ = true;
        changed_.notify_all();
        changed_.wait(lock, [this] { return !held_; });
    }
    bool onAnswer(int) override { return true; }
    bool onBytes(std::string_view) override { return true; }
    void onEnd() noexcept override {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        changed_.notify_all();
    }
    void untilHeld() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return held_; });
    }
    void letGo() {
        std::unique_lock lock(mutex_);
        held_ = false;
        changed_.notify_all();
        changed_.wait(lock, [this] { return ended_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool held_ = false;
    bool ended_ = false;
};

TEST_F(Downloads, AThreadThatIsHeldUpElsewhereIsGivenUp) {
    const auto held = std::make_shared<Held>();
    auto stuck = platform::startDownload(u"http://127.0.0.1:9/", u"", held);
    held->untilHeld();
    stuck.reset();
    // It goes on with what is its own.
    held->letGo();
}

}  // namespace
