// A network that fails: at each piece of a login the socket is cut, goes silent, stalls or drips.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/torture/client.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr int kMinute = 60;

struct Way {
    const char* name;
    ServerTraits traits;
};

class Sockets : public testing::TestWithParam<Way> {
protected:
    std::size_t piecesOfALogin() const {
        Client client(GetParam().traits);
        std::size_t pieces = 0;
        client.deliver = [&](std::uint32_t net, const std::string& bytes) {
            ++pieces;
            client.receive(net, bytes);
        };
        client.logIn();
        EXPECT_TRUE(client.isReady());
        return pieces;
    }

    /// Plays a login for each of its pieces, of which that one meets the trouble, and all later ones of its connection
    /// when `lasting`. What is to be true afterwards is checked by `after`.
    template <typename Trouble, typename After>
    void atEachPiece(Trouble trouble, bool lasting, After after) const {
        const std::size_t pieces = piecesOfALogin();
        for (std::size_t troubled = 0; troubled < pieces; ++troubled) {
            SCOPED_TRACE("piece " + std::to_string(troubled));
            Client client(GetParam().traits);
            std::size_t piece = 0;
            bool over = false;
            const auto connect = client.host.onConnect;
            client.host.onConnect = [&](std::uint32_t net) {
                over = over || piece > troubled;
                connect(net);
            };
            client.deliver = [&](std::uint32_t net, const std::string& bytes) {
                const bool meets = lasting ? piece >= troubled : piece == troubled;
                ++piece;
                if (meets && !over) {
                    trouble(client, bytes);
                } else {
                    client.receive(net, bytes);
                }
            };
            client.logIn();
            after(client);
            EXPECT_LE(client.host.timers.size(), 2u);
            client.unload();
            EXPECT_EQ(client.host.leftovers(), "");
            if (testing::Test::HasFailure()) return;
        }
    }
};

TEST_P(Sockets, ACutConnectionComesBackByItself) {
    atEachPiece([](Client& client, const std::string&) { client.cut(kNet); }, false,
                [](Client& client) { EXPECT_TRUE(client.passUntilReady(5)); });
}

TEST_P(Sockets, AConnectionCutInsideAPieceComesBackByItself) {
    const auto trouble = [](Client& client, const std::string& bytes) {
        client.receive(kNet, bytes.substr(0, bytes.size() / 2));
        client.cut(kNet);
    };
    atEachPiece(trouble, false, [](Client& client) { EXPECT_TRUE(client.passUntilReady(5)); });
}

TEST_P(Sockets, ASilentConnectionIsGivenUpOrLeftByTheUser) {
    const auto trouble = [](Client&, const std::string&) {};
    atEachPiece(trouble, true, [](Client& client) {
        // Behind the login silence is noticed within four minutes; before it only the user can tell.
        if (client.passUntilReady(5 * kMinute)) return;
        EXPECT_EQ(client.flags(kNet) & OKU_FLAG_AUTHORIZED, 0u);
        client.setStatus(kNet, OKU_STATUS_OFFLINE);
        client.pump();
        client.setStatus(kNet, OKU_STATUS_ONLINE);
        EXPECT_TRUE(client.passUntilReady(kMinute));
    });
}

TEST_P(Sockets, AStalledPieceBlowsTheFuseAndTheConnectionComesBack) {
    const auto trouble = [](Client& client, const std::string& bytes) {
        const std::size_t half = bytes.size() / 2;
        client.receive(kNet, bytes.substr(0, half));
        client.pass(40'000);
        client.receive(kNet, bytes.substr(half, half / 2));
        client.receive(kNet, bytes.substr(half + half / 2));
    };
    atEachPiece(trouble, false, [](Client& client) { EXPECT_TRUE(client.passUntilReady(5 * kMinute)); });
}

TEST_P(Sockets, ADrippingConnectionStillLogsIn) {
    const auto trouble = [](Client& client, const std::string& bytes) {
        constexpr std::size_t kDrops = 14;
        const std::size_t drop = bytes.size() / kDrops + 1;
        for (std::size_t at = 0; at < bytes.size(); at += drop) {
            client.receive(kNet, bytes.substr(at, drop));
            client.pass(2000);
        }
    };
    atEachPiece(trouble, true, [](Client& client) {
        EXPECT_TRUE(client.isReady());
        EXPECT_EQ(client.servers.at(kNet).logins(), 1u);
    });
}

TEST_P(Sockets, AByteAtATimeLogsIn) {
    const auto trouble = [](Client& client, const std::string& bytes) {
        for (const char byte : bytes) client.receive(kNet, std::string(1, byte));
    };
    atEachPiece(trouble, true, [](Client& client) { EXPECT_TRUE(client.isReady()); });
}

INSTANTIATE_TEST_SUITE_P(, Sockets,
                         testing::Values(Way{"Plain", {}}, Way{"Encrypted", {.tls = true}},
                                         Way{"ByDigest", {.digest = true}}, Way{"Compressed", {.compression = true}},
                                         Way{"WithEverything", {.tls = true, .digest = true, .compression = true}}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace torture
