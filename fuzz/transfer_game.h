// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// An account with file transfers, which peers, the web and a host with a mind of its own play against.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/protocol.h"
#include "host/oku/transfer.h"
#include "tests/support/fake_platform.h"
#include "tests/torture/client.h"
#include "tests/torture/transfers.h"

namespace fuzz {

class TransferGame {
public:
    TransferGame() {
        client.servers.at(kNet).keepHeard = true;
        client.host.settings[u"/profile/protoLink.config"][u"XMPP/Serv/Compress"] = 0;
        client.logIn();
        const auto server = client.host.onSend;
        client.host.onSend = [this, server](std::uint32_t net, std::string_view bytes) {
            requireWhole(client, net, bytes);
            server(net, bytes);
        };
        client.host.before = [this](const torture::Call& call) -> std::optional<OKU_WORD> {
            if (call.name == u"OK7/IsEnabled") return publishes;
            // 0 stands for the host's own answer: the file is accepted, and goes into a folder.
            if (call.name == u"OKU/FTAskForConfirmation" && answer != 0) return answer;
            return std::nullopt;
        };
    }

    /// A stanza of the peer, in which {offer}, {sid}, {block} and {close} stand for what was sent last.
    void say(std::string_view raw) {
        std::string text(raw);
        for (const auto& [name, marker] :
             {std::pair{"{offer}", "<iq type=\"set\" id=\""}, std::pair{"{block}", "<iq type=\"set\" id=\""},
              std::pair{"{sid}", "sid=\""}, std::pair{"{close}", "type=\"set\"><close"}}) {
            const std::string last = heard(marker);  // which may hold the name itself
            for (std::size_t at = 0; (at = text.find(name, at)) != std::string::npos; at += last.size())
                text.replace(at, std::string_view(name).size(), last);
        }
        client.receive(kNet, text);
    }

    void cancel() { torture::cancelAll(client); }
    void offer() { torture::offerFile(client); }

    void web(std::uint8_t what, std::string_view bytes) const {
        const auto downloads = harness::world().downloads;
        if (downloads.empty()) return;
        harness::FakeDownload& download = *downloads[what / 4 % downloads.size()];
        switch (what % 4) {
            case 0:
                return download.answer(200);
            case 1:
                return download.answer(302);
            case 2:
                return download.block(std::string(bytes));
            default:
                return download.end();
        }
    }

    void published(OKU_WORD state) {
        const auto publications = client.host.publications;
        for (const torture::Callback& publication : publications) publication(state);
    }

    void pass() { client.pass(500); }

    void reload() {
        client.unload();
        require(client.host.leftovers().empty(), "something is left after unloading");
        client.logIn();
    }

    /// The last word: whatever was done, no file lies anywhere but in the folder that the host gave, and the offered
    /// one is as it was.
    void finish() {
        client.unload();
        require(client.host.leftovers().empty(), "something is left after unloading");
        for (const auto& [path, content] : harness::world().files) {
            if (path == "/home/file") require(content == std::string(5000, 'x'), "the offered file was written to");
            if (path.starts_with("/profile/") || path == "/home/file" || path.find('/') == std::string::npos) continue;
            // A host that accepts and names no folder leaves the one of the settings.
            const std::string_view folder = path.starts_with(kSetting) ? kSetting : kFolder;
            require(path.starts_with(folder), "a file lies outside of the folder");
            const std::string name = path.substr(folder.size());
            require(!name.empty() && name != "." && name != ".." && name.find_first_of("/\\:\n") == std::string::npos,
                    "a file's name leads elsewhere");
        }
        client.pass(1000);
    }

    static constexpr std::uint32_t kNet = 1;
    torture::Client client;
    OKU_WORD publishes = 0;
    OKU_WORD answer = 0;

private:
    static constexpr std::string_view kFolder = "/received/";
    static constexpr std::string_view kSetting = "%documents%/Odebrane Pliki/%from%/";

    std::string heard(std::string_view marker) const {
        const std::string& text = client.servers.at(kNet).heard();
        const std::size_t at = text.rfind(marker);
        if (at == std::string::npos) return "none";
        const std::size_t begin = marker.ends_with('"') ? at + marker.size() : text.rfind("id=\"", at) + 4;
        return text.substr(begin, text.find('"', begin) - begin);
    }
};

}  // namespace fuzz
