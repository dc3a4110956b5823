// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Many and awkward pictures and cards: each costs what the first one cost, and what peers send stays within its folder.
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>
#include <utility>

#include "host/oku/avatar.h"
#include "host/oku/cards.h"
#include "tests/support/fake_platform.h"
#include "tests/torture/allocations.h"
#include "tests/torture/client.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr std::size_t kMany = 5000;
constexpr std::size_t kKibibyte = 1024;
constexpr char kFolder[] = "/profile/.xmppAvatar/";

std::string repeated(std::size_t times, const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

std::string photo(std::size_t number) {
    const std::string digits = std::to_string(100000 + number);
    return "<presence from='contact" + digits + "@example.org/r'><x xmlns='vcard-temp:x:update'><photo>hash" + digits +
           "</photo></x></presence>";
}

std::string hash(const std::string& value) {
    return "<presence from='contact1@example.org/r'><x xmlns='jabber:x:avatar'><hash>" + value +
           "</hash></x></presence>";
}

std::string picture(const std::string& base64) {
    return "<iq type='result' from='contact1@example.org/r'><query xmlns='jabber:x:avatar'><data>" + base64 +
           "</data></query></iq>";
}

class Pictures : public testing::Test {
protected:
    Pictures() {
        client.logIn();
        client.host.before = [this](const Call& call) -> std::optional<OKU_WORD> {
            ++calls[narrow(call.name)];
            return std::nullopt;
        };
    }

    /// The allocations of the plugin for so many announcements, and their answers.
    std::size_t costOf(std::size_t from, std::size_t count) {
        const FailingAllocation counter(std::numeric_limits<std::size_t>::max());
        for (std::size_t i = from; i < from + count; ++i) {
            client.say(kNet, photo(i));
            client.pump();
        }
        return counter.count();
    }

    void askForCard(const std::string& card) {
        OKU_CONTACT_CARD_REQUEST request{};
        request.size = sizeof request;
        request.token = 5;
        request.jid = u"eve@example.org";
        std::string id;
        const auto serve = std::exchange(client.host.onSend, [&id](auto, std::string_view text) { id = idIn(text); });
        client.callService(kNet, u"PFGetContactVCard", reinterpret_cast<OKU_WORD>(&request), 0);
        client.host.onSend = serve;
        calls.clear();
        client.receive(kNet, "<iq type='result' from='eve@example.org' id='" + id + "'><vCard xmlns='vcard-temp'>" +
                                 card + "</vCard></iq>");
    }

    static std::string stored(const std::string& hash) {
        const auto found = harness::world().files.find(kFolder + ("L" + hash));
        return found == harness::world().files.end() ? "none" : found->second;
    }

    Client client;
    std::map<std::string, int> calls;
};

TEST_F(Pictures, TheLastOfThousandsCostsAsMuchAsTheFirst) {
    constexpr std::size_t kSample = 100;
    costOf(0, kSample);  // buffers have grown
    const std::size_t early = costOf(kSample, kSample);
    costOf(2 * kSample, kMany);
    const std::size_t late = costOf(2 * kSample + kMany, kSample);
    EXPECT_EQ(late, early);
    EXPECT_EQ(calls["OKU/CTL/SetAvatar"], static_cast<int>(kMany + 3 * kSample));
    EXPECT_EQ(stored("hash100000"), "a face");
}

TEST_F(Pictures, ThatNobodySendsKeepLittleEach) {
    client.host.onSend = [](std::uint32_t, std::string_view) {};
    const std::size_t before = living().bytes;
    costOf(0, kMany);
    EXPECT_LT((living().bytes - before) / kMany, kKibibyte);
    EXPECT_EQ(calls["NetLib/Send"], static_cast<int>(kMany));
    // With the connection goes all but what each of them announced last, and the entry that each presence makes.
    const std::size_t waiting = living().bytes;
    client.cut(kNet);
    EXPECT_LT(living().bytes, waiting - kMany * kKibibyte / 8);
}

TEST_F(Pictures, OfStrangersThatArePublishedGoWithTheConnection) {
    const auto publish = [this] {
        for (std::size_t i = 0; i < kMany; ++i)
            client.receive(kNet, "<message from='eve" + std::to_string(i) +
                                     "@example.com'><event xmlns='http://jabber.org/protocol/pubsub#event'><items "
                                     "node='urn:xmpp:avatar:metadata'><item><metadata xmlns='urn:xmpp:avatar:metadata'>"
                                     "<info id='" +
                                     std::to_string(i) + "'/></metadata></item></items></event></message>");
    };
    const std::size_t before = living().bytes;
    publish();
    EXPECT_EQ(calls["NetLib/Send"], 0);
    // Each is looked up among the contacts, which makes an entry for the length of the connection.
    EXPECT_LT((living().bytes - before) / kMany, kKibibyte);
    client.cut(kNet);
    ASSERT_TRUE(client.passUntilReady(10));
    EXPECT_LT(living().bytes, before + 16 * kKibibyte);
}

TEST_F(Pictures, MayBeLarge) {
    client.receive(kNet, hash("large"));
    client.receive(kNet, picture(std::string(8 << 20, 'A')));
    EXPECT_EQ(stored("large"), std::string(6 << 20, '\0'));
    const std::size_t before = living().bytes;
    client.receive(kNet, picture(std::string(8 << 20, 'A')));
    EXPECT_LT(living().bytes, before + 16 * kKibibyte);
}

TEST_F(Pictures, OfNoBase64AreEmptyOrCutShort) {
    for (const auto& [text, content] : {std::pair<const char*, const char*>{"<b/>YQ==", "a"},
                                        {"====", ""},
                                        {"\xC5\x82", ""},
                                        {"YSBm\xC5\x82YWNl", "a f"},
                                        {"Y", ""},
                                        {" Y S B\n", "a "}}) {
        client.receive(kNet, hash("broken"));
        client.receive(kNet, picture(text));
        EXPECT_EQ(stored("broken"), content) << text;
    }
}

TEST_F(Pictures, StayInTheirFolderWhateverTheirHash) {
    const std::string shapes[] = {"/etc/passwd",
                                  "../../x",
                                  "..\\..\\x",
                                  "x/../../y",
                                  "C:\\x",
                                  "a:stream",
                                  "a&#10;b",
                                  std::string(300, 'n'),
                                  std::string(1 << 20, 'n')};
    for (const std::string& shape : shapes) {
        client.receive(kNet, hash(shape));
        client.receive(kNet, picture("YSBmYWNl"));
    }
    EXPECT_EQ(calls["OKU/CTL/SetAvatar"], 0);
    for (const auto& [path, content] : harness::world().files) EXPECT_NE(content, "a face") << path;
    client.receive(kNet, hash("...."));
    client.receive(kNet, picture("YSBmYWNl"));
    EXPECT_EQ(stored("...."), "a face");
}

TEST_F(Pictures, MetadataOfThousandsOfFormsAsksForTheFirst) {
    client.receive(kNet,
                   "<message from='contact1@example.org'><event xmlns='http://jabber.org/protocol/pubsub#event'>"
                   "<items node='urn:xmpp:avatar:metadata'><item><metadata xmlns='urn:xmpp:avatar:metadata'>" +
                       repeated(kMany, "<info id='a'/>") + repeated(kMany, "<a>") + repeated(kMany, "</a>") +
                       "</metadata></item></items></event></message>");
    EXPECT_EQ(calls["NetLib/Send"], 1);
}

TEST_F(Pictures, CardOfThousandsOfFieldsShowsTheFirst) {
    askForCard(repeated(kMany, "<FN>Bob</FN><EMAIL><USERID>a@b</USERID></EMAIL><X-OTHER>x</X-OTHER>") +
               repeated(kMany, "<N>") + repeated(kMany, "</N>"));
    EXPECT_EQ(calls["VCard/AddElement"], 4);
    EXPECT_EQ(calls["VCard/SetStatus"], 1);
}

TEST_F(Pictures, CardMayBeLong) {
    askForCard("<DESC>" + std::string(4 << 20, 'd') + "</DESC><PHOTO><TYPE>t</TYPE><BINVAL>" +
               std::string(4 << 20, 'A') + "</BINVAL></PHOTO>");
    EXPECT_EQ(calls["VCard/AddElement"], 4);
    EXPECT_EQ(calls["OKU/CTL/SetAvatar"], 1);
}

}  // namespace
}  // namespace torture
