// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A network that fails: at each piece that reaches the plugin in a scenario the socket is cut, goes silent, stalls or
// drips. Whatever happened, the account has to work again, by itself or when its user tries anew.
#include <gtest/gtest.h>

#include <deque>
#include <limits>
#include <tuple>

#include "tests/torture/scenarios.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr int kMinute = 60;

struct Way {
    const char* name;
    ServerTraits traits;
};

struct Trouble {
    void (*meet)(Client& client, const std::string& bytes);
    /// All later pieces of the connection meet it too.
    bool lasting;
};

/// Between server and plugin: counts the pieces, of which one meets the trouble.
class Network {
public:
    static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

    explicit Network(Client& client, std::size_t troubled = kNever, Trouble trouble = {})
        : client_(client), troubled_(troubled), trouble_(trouble), connect_(client.host.onConnect) {
        client.deliver = [this](std::uint32_t, const std::string& bytes) { take(bytes); };
        client.host.onConnect = [this](std::uint32_t net) {
            over_ = over_ || pieces_ > troubled_;
            waiting_.clear();
            connect_(net);
        };
    }

    std::size_t pieces() const { return pieces_; }

private:
    /// What comes while a piece is on its way stands behind it.
    void take(const std::string& bytes) {
        waiting_.push_back(bytes);
        if (busy_) return;
        busy_ = true;
        while (!waiting_.empty()) {
            const std::string piece = waiting_.front();
            waiting_.pop_front();
            if (client_.isOpen(kNet)) hand(piece);
        }
        busy_ = false;
    }

    void hand(const std::string& piece) {
        const bool meets = trouble_.lasting ? pieces_ >= troubled_ : pieces_ == troubled_;
        ++pieces_;
        if (meets && !over_) {
            trouble_.meet(client_, piece);
        } else {
            client_.receive(kNet, piece);
        }
    }

    Client& client_;
    std::size_t troubled_;
    Trouble trouble_;
    std::function<void(std::uint32_t)> connect_;
    std::deque<std::string> waiting_;
    std::size_t pieces_ = 0;
    bool busy_ = false;
    bool over_ = false;
};

/// Whether a message of the server reaches the host, once.
bool works(Client& client) {
    if (!client.isReady()) return false;
    int heard = 0;
    client.host.onMessage = [&heard](const OKU_MESSAGE_DATA& message) { heard += textAt(message.body) == u"probe"; };
    client.say(kNet, "<message from='contact0@example.org/r'><body>probe</body></message>");
    client.host.onMessage = nullptr;
    EXPECT_LE(heard, 1);
    return heard == 1;
}

bool worksWithin(Client& client, int seconds) {
    client.pump();
    for (int second = 0; second < seconds && !works(client); ++second) client.pass(1000);
    return works(client);
}

class Sockets : public testing::TestWithParam<std::tuple<Scenario, Way>> {
protected:
    static void play(Client& client) {
        // Trouble may stand before all that the scenario does, too.
        if (client.loaded()) client.say(kNet, "<message from='contact1@example.org/r'><body>first</body></message>");
        std::get<Scenario>(GetParam()).run(client);
    }

    static ServerTraits traits() { return std::get<Way>(GetParam()).traits; }

    static std::size_t piecesOfTheScenario() {
        Client client(traits());
        std::get<Scenario>(GetParam()).prepare(client);
        const Network network(client);
        play(client);
        return network.pieces();
    }

    /// Plays the scenario for each of its pieces. What is to be true afterwards is checked by `after`.
    template <typename After>
    static void atEachPiece(Trouble trouble, After after) {
        const std::size_t pieces = piecesOfTheScenario();
        ASSERT_GT(pieces, 0u);
        for (std::size_t troubled = 0; troubled < pieces; ++troubled) {
            SCOPED_TRACE("piece " + std::to_string(troubled));
            Client client(traits());
            std::get<Scenario>(GetParam()).prepare(client);
            const Network network(client, troubled, trouble);
            play(client);
            ASSERT_GT(network.pieces(), troubled);
            EXPECT_LE(client.host.timers.size(), 2u);
            if (!client.loaded()) {
                EXPECT_EQ(client.host.leftovers(), "");
                client.logIn();
            }
            after(client);
            // The keepalive timer; nobody waits for a reconnection.
            EXPECT_EQ(client.host.timers.size(), 1u);
            client.unload();
            EXPECT_EQ(client.host.leftovers(), "");
            if (HasFailure()) return;
        }
    }
};

TEST_P(Sockets, ACutConnectionComesBackByItself) {
    atEachPiece({[](Client& client, const std::string&) { client.cut(kNet); }, false},
                [](Client& client) { EXPECT_TRUE(worksWithin(client, 5)); });
}

TEST_P(Sockets, AConnectionCutInsideAPieceComesBackByItself) {
    const auto meet = [](Client& client, const std::string& bytes) {
        client.receive(kNet, bytes.substr(0, bytes.size() / 2));
        client.cut(kNet);
    };
    atEachPiece({meet, false}, [](Client& client) { EXPECT_TRUE(worksWithin(client, 5)); });
}

TEST_P(Sockets, ASilentConnectionIsGivenUpOrLeftByTheUser) {
    const auto meet = [](Client&, const std::string&) {};
    atEachPiece({meet, true}, [](Client& client) {
        // Behind the login silence is noticed within four minutes; before it only the user can tell.
        if (worksWithin(client, 5 * kMinute)) return;
        EXPECT_EQ(client.flags(kNet) & OKU_FLAG_AUTHORIZED, 0u);
        client.setStatus(kNet, OKU_STATUS_OFFLINE);
        client.pump();
        client.setStatus(kNet, OKU_STATUS_ONLINE);
        EXPECT_TRUE(worksWithin(client, kMinute));
    });
}

TEST_P(Sockets, AStalledPieceBlowsTheFuseAndTheConnectionComesBack) {
    const auto meet = [](Client& client, const std::string& bytes) {
        const std::size_t half = bytes.size() / 2;
        client.receive(kNet, bytes.substr(0, half));
        client.pass(40'000);
        client.receive(kNet, bytes.substr(half, half / 2));
        client.receive(kNet, bytes.substr(half + half / 2));
    };
    atEachPiece({meet, false}, [](Client& client) { EXPECT_TRUE(worksWithin(client, 5 * kMinute)); });
}

TEST_P(Sockets, ADrippingConnectionIsNotLost) {
    const auto meet = [](Client& client, const std::string& bytes) {
        constexpr std::size_t kDrops = 14;
        const std::size_t drop = bytes.size() / kDrops + 1;
        for (std::size_t at = 0; at < bytes.size(); at += drop) {
            client.receive(kNet, bytes.substr(at, drop));
            client.pass(2000);
        }
    };
    atEachPiece({meet, true}, [](Client& client) {
        const std::size_t logins = client.servers.at(kNet).logins();
        EXPECT_TRUE(worksWithin(client, kMinute));
        EXPECT_EQ(client.servers.at(kNet).logins(), logins);
    });
}

TEST_P(Sockets, AByteAtATimeIsNotLost) {
    const auto meet = [](Client& client, const std::string& bytes) {
        for (const char byte : bytes) client.receive(kNet, std::string(1, byte));
    };
    atEachPiece({meet, true}, [](Client& client) { EXPECT_TRUE(works(client)); });
}

INSTANTIATE_TEST_SUITE_P(
    , Sockets,
    testing::Combine(testing::ValuesIn(kScenarios),
                     testing::Values(Way{"Plain", {}}, Way{"Encrypted", {.tls = true}},
                                     Way{"ByDigest", {.digest = true}}, Way{"Compressed", {.compression = true}},
                                     Way{"WithEverything", {.tls = true, .digest = true, .compression = true}})),
    [](const auto& test) { return std::string(std::get<0>(test.param).name) + "_" + std::get<1>(test.param).name; });

}  // namespace
}  // namespace torture
