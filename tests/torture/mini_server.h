// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The server's side of one account, as small as a login needs it.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "tests/support/compression.h"

namespace torture {

struct ServerTraits {
    bool tls = false;
    bool digest = false;
    bool compression = false;
    int contacts = 3;
};

/// The first `id` attribute in a text, empty without one.
std::string idIn(std::string_view text);

class MiniServer {
public:
    explicit MiniServer(ServerTraits traits = {}) : traits_(traits) {}

    /// A connection begins, all that was before is forgotten.
    void onConnected();
    /// Bytes of the client; answers go behind the other pieces that wait.
    void onReceived(std::string_view bytes);
    /// A text as it stands in the stream: compressed when that is.
    std::string onTheWire(const std::string& text);
    /// Says a text as one piece, behind those that wait.
    void say(const std::string& text);

    bool isReady() const { return rosterSent_; }
    std::size_t logins() const { return logins_; }
    /// The client's texts of this connection, when `keepHeard` is set.
    const std::string& heard() const { return heard_; }
    bool keepHeard = false;

    /// What the server can do beside telling that, as children of its answer.
    std::string abilities;

    /// What is on its way to the client.
    std::deque<std::string> pieces;

private:
    void answer(std::string_view text);
    void openStream();
    bool negotiate(std::string_view text);
    void serve(std::string_view text);
    std::string roster() const;

    ServerTraits traits_;
    bool encrypted_ = false;
    bool authorized_ = false;
    bool rosterSent_ = false;
    std::size_t logins_ = 0;
    std::optional<harness::Compression> compression_;
    bool clientCompresses_ = false;
    std::string heard_;
};

}  // namespace torture
