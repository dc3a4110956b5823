// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Offers of files and answers to them, in any order and of any shape.
#include "fuzz/transfer_game.h"

namespace {

std::string option(std::string_view method) { return "<option><value>" + std::string(method) + "</value></option>"; }

std::string offerOf(fuzz::Input& input) {
    constexpr std::string_view kMethods[] = {"jabber:iq:oob", "http://jabber.org/protocol/ibb",
                                             "http://jabber.org/protocol/bytestreams", "urn:other"};
    std::string methods;
    for (std::uint8_t count = input.byte() % 4; count > 0; --count) methods += option(kMethods[input.byte() % 4]);
    const std::string name(input.text()), size(input.text());
    return "<iq type='set' from='contact1@example.org/desk' id='o1'><si xmlns='http://jabber.org/protocol/si' id='s1'>"
           "<file xmlns='http://jabber.org/protocol/si/profile/file-transfer' name='" +
           name + "' size='" + size +
           "'/><feature xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field>" + methods +
           "</field></x></feature></si></iq>";
}

void doOne(fuzz::TransferGame& game, fuzz::Input& input) {
    switch (input.byte() % 11) {
        case 0:
            return game.say(input.take(input.number() % 2048));
        case 1:
            return game.say(offerOf(input));
        case 2:
            return game.offer();
        case 3:
            return torture::takeOffer(game.client, std::string(input.text()));
        case 4:
            return game.cancel();
        case 5:
            game.answer = input.byte() % 9;
            return;
        case 6:
            game.publishes = input.byte() & 1;
            return;
        case 7:
            return game.published(input.byte() % 4);
        case 8: {
            const std::uint8_t what = input.byte();
            return game.web(what, input.text());
        }
        case 9:
            return game.pass();
        default:
            return game.reload();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    fuzz::TransferGame game;
    while (!input.empty()) doOne(game, input);
    game.finish();
    return 0;
}
