// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A web server on loopback that says what a test wants said, to one client after the other.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace harness {

class WebServer {
public:
    /// The server's side of one connection, whose request has been read.
    class Connection {
    public:
        Connection(const WebServer& server, int socket) : server_(server), socket_(socket) {}

        /// False when the client has gone, or the server ends.
        bool send(std::string_view bytes) const {
            while (!bytes.empty() && !server_.ending_) {
                const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
                if (sent <= 0) return false;
                bytes.remove_prefix(static_cast<std::size_t>(sent));
            }
            return !server_.ending_;
        }
        /// Says nothing more until the client has gone.
        void waitForItsEnd() const {
            char byte;
            while (!server_.ending_ && ::recv(socket_, &byte, 1, 0) > 0) continue;
        }

    private:
        const WebServer& server_;
        int socket_;
    };
    using Serve = std::function<void(const Connection&)>;

    explicit WebServer(Serve serve)
        : serve_(std::move(serve)), listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        if (listener_ < 0 || bind(listener_, any, length) != 0 || listen(listener_, 8) != 0 ||
            getsockname(listener_, any, &length) != 0)
            throw std::runtime_error("no web server can be started");
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { run(); });
    }
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;
    ~WebServer() {
        ending_ = true;
        ::shutdown(listener_, SHUT_RDWR);
        {
            const std::lock_guard lock(mutex_);
            if (client_ >= 0) ::shutdown(client_, SHUT_RDWR);
        }
        thread_.join();
        ::close(listener_);
    }

    std::string at(const std::string& path, const std::string& scheme = "http") const {
        return scheme + "://127.0.0.1:" + std::to_string(port_) + path;
    }
    /// The requests that were read so far.
    std::vector<std::string> requests() const {
        const std::lock_guard lock(mutex_);
        return requests_;
    }

private:
    void run() {
        while (!ending_) {
            const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
            if (client < 0) continue;
            serves(client);
            if (!ending_ && readRequest(client)) serve_(Connection(*this, client));
            serves(-1);
            ::close(client);
        }
    }
    /// Whose connection the destructor may end; -1 for nobody's.
    void serves(int client) {
        const std::lock_guard lock(mutex_);
        client_ = client;
    }

    bool readRequest(int client) {
        std::string request;
        char byte;
        while (!request.ends_with("\r\n\r\n")) {
            if (::recv(client, &byte, 1, 0) != 1) return false;
            request += byte;
        }
        const std::lock_guard lock(mutex_);
        requests_.push_back(request);
        return true;
    }

    Serve serve_;
    int listener_;
    std::uint16_t port_ = 0;
    std::atomic<bool> ending_{false};
    mutable std::mutex mutex_;
    int client_ = -1;
    std::vector<std::string> requests_;
    std::thread thread_;
};

}  // namespace harness
