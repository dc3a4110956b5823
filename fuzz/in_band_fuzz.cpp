// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Bytes of files in the stream: what a peer may send of them, in any order, to sessions that send and receive.
#include "fuzz/transfer_game.h"

namespace {

constexpr char kOffer[] =
    "<iq type='set' from='contact1@example.org/desk' id='o1'><si xmlns='http://jabber.org/protocol/si' id='s1'>"
    "<file xmlns='http://jabber.org/protocol/si/profile/file-transfer' name='plik' size='12'/>"
    "<feature xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field><option><value>"
    "http://jabber.org/protocol/ibb</value></option></field></x></feature></si></iq>";

std::string streamOf(fuzz::Input& input) {
    constexpr const char* kStreams[] = {"s1", "{sid}", "other", ""};
    return kStreams[input.byte() % 4];
}

std::string idOf(fuzz::Input& input) {
    constexpr const char* kIds[] = {"s1", "{sid}", "{block}", "{close}", "d1", ""};
    return kIds[input.byte() % 6];
}

/// One stanza: its child, the type, the id and the stream that it is about.
std::string stanzaOf(fuzz::Input& input) {
    constexpr const char* kChildren[] = {"open", "data", "close", "other"};
    constexpr const char* kTypes[] = {"set", "result", "error", ""};
    const std::string child = kChildren[input.byte() % 4];
    const std::string head = std::string("<iq from='contact1@example.org/desk' type='") + kTypes[input.byte() % 4] +
                             "' id='" + idOf(input) + "'>";
    const std::string stream = streamOf(input);
    return head + "<" + child + " xmlns='http://jabber.org/protocol/ibb' sid='" + stream + "' seq='" +
           std::to_string(input.byte()) + "'>" + std::string(input.text()) + "</" + child + "></iq>";
}

void doOne(fuzz::TransferGame& game, fuzz::Input& input) {
    switch (input.byte() % 9) {
        case 0:
            return game.say(input.take(input.number() % 2048));
        case 1:
        case 2:
            return game.say(stanzaOf(input));
        case 3:
            return game.say("<iq from='contact1@example.org/desk' type='result' id='" + idOf(input) + "'/>");
        case 4:
            return game.say(kOffer);
        case 5:
            game.offer();
            return torture::takeOffer(game.client, "http://jabber.org/protocol/ibb");
        case 6:
            return game.cancel();
        case 7: {
            // The disk is full, or the file cannot be read or opened any more.
            harness::FakeWorld& world = harness::world();
            const std::string path = input.byte() & 1 ? "/received/plik" : "/home/file";
            auto& fails = input.byte() % 2 ? world.unwritable : input.byte() % 2 ? world.unreadable : world.unopenable;
            if (!fails.erase(path)) fails.insert(path);
            return;
        }
        default:
            return game.client.cut(fuzz::TransferGame::kNet);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    fuzz::TransferGame game;
    game.say(kOffer);
    while (!input.empty()) doOne(game, input);
    game.finish();
    return 0;
}
