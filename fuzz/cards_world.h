// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// An account whose contacts and server answer for cards and pictures whatever the input says. What goes to the wire, to
// the host and to the disk has to hold together all the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/avatar.h"
#include "host/oku/cards.h"
#include "host/util/utf.h"
#include "tests/support/fake_platform.h"
#include "tests/torture/client.h"

namespace fuzz {

class CardsWorld {
public:
    CardsWorld() {
        harness::world().files["/profile/_avatar"] = "my face";
        harness::world().onFile = [](const std::string& verb, const std::string& path, const std::string&) {
            if (verb == "writes" && !path.starts_with("/profile/protoLink") && path != "/profile/XMPPClientDB.xml")
                requirePicture(path);
        };
        client_.servers.at(kNet).abilities = "<feature var='http://jabber.org/protocol/pubsub'/>";
        client_.logIn();
        client_.host.onSend = [this](std::uint32_t, std::string_view sent) {
            requireWhole(client_, kNet, sent);
            asked_ = torture::idIn(sent);
        };
        client_.host.before = [this](const torture::Call& call) -> std::optional<OKU_WORD> { return look(call); };
    }
    ~CardsWorld() {
        client_.host.before = nullptr;
        client_.unload();
        require(client_.host.leftovers().empty(), "something is left after unloading");
        harness::world().onFile = nullptr;
    }
    CardsWorld(const CardsWorld&) = delete;
    CardsWorld& operator=(const CardsWorld&) = delete;

    void play(Input input) {
        while (!input.empty()) {
            const std::uint8_t what = input.byte();
            const std::string_view text = input.take(input.number());
            doOne(what, text);
        }
    }

private:
    static constexpr std::uint32_t kNet = 1;

    /// "@ID@" in a text stands for the id of the newest request.
    void receive(std::string_view text) {
        constexpr std::string_view kMark = "@ID@";
        std::string answer(text);
        for (std::size_t at = 0; (at = answer.find(kMark, at)) != std::string::npos; at += asked_.size())
            answer.replace(at, kMark.size(), asked_);
        client_.receive(kNet, answer);
    }

    void askForCard(std::string_view jid) {
        const std::u16string wide = utow(jid);
        OKU_CONTACT_CARD_REQUEST request{};
        request.size = sizeof request;
        request.token = static_cast<OKU_WORD>(jid.size());
        request.jid = wide.c_str();
        client_.callService(kNet, u"PFGetContactVCard", reinterpret_cast<OKU_WORD>(&request), 0);
    }

    void askForOwn(std::u16string_view service, std::string_view text) {
        form_ = utow(text);
        OKU_OWN_CARD_REQUEST request{sizeof request, 0, static_cast<OKU_WORD>(text.size())};
        client_.callService(kNet, service, reinterpret_cast<OKU_WORD>(&request), 0);
    }

    void changePicture(std::string_view hash) {
        const std::u16string wide = utow(hash);
        OKU_AVATAR_CHANGED event{};
        event.size = sizeof event;
        event.hash = wide.c_str();
        event.action = OKU_AVATAR_SET;
        client_.tellListeners(u"OKU/OnAvatarChanged", reinterpret_cast<OKU_WORD>(&event));
    }

    void doOne(std::uint8_t what, std::string_view text) {
        switch (what % 8) {
            case 1:
                return askForCard(text);
            case 2:
                return askForOwn(u"PFGetMyVCard", text);
            case 3:
                return askForOwn(u"PFSetMyVCard", text);
            case 4:
                return askForOwn(u"PFGetMyAvatar", text);
            case 5:
                return askForOwn(u"PFSetMyAvatar", text);
            case 6:
                return changePicture(text);
            default:
                return receive(text);
        }
    }

    std::optional<OKU_WORD> look(const torture::Call& call) const {
        if (call.name == u"OKU/CTL/SetAvatar") {
            const auto& record = *reinterpret_cast<const OKU_CONTACT_AVATAR*>(call.param);
            const std::string path = wtou(record.path);
            requirePicture(path);
            require(harness::world().files.contains(path), "a picture is told that is not there");
        } else if (call.name == u"VCard/AddElement") {
            const auto& record = *reinterpret_cast<const OKU_CARD_ELEMENT*>(call.param);
            require(record.token != 0 && record.value && *record.value, "a row is empty");
        } else if (call.name == u"MyVCard/GetFieldValue") {
            auto& record = *reinterpret_cast<OKU_OWN_CARD_FIELD_GET*>(call.param);
            // Up to the last place of the buffer, and without a NUL when the text is longer.
            form_.copy(record.buffer, record.capacity);
            if (form_.size() < record.capacity) record.buffer[form_.size()] = u'\0';
        }
        return std::nullopt;
    }

    static void requirePicture(const std::string& path) {
        constexpr std::string_view kFolder = "/profile/.xmppAvatar/L";
        require(path.starts_with(kFolder) && path.find_first_of("/\\:", kFolder.size()) == std::string::npos,
                "a picture outside of its folder");
    }

    torture::Client client_;
    std::string asked_;    // the id of the newest request
    std::u16string form_;  // what the host has for each field of the own card
};

}  // namespace fuzz
