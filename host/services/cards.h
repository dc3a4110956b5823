// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's windows of vCards: one for contacts' cards, one for the user's own.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "host/host.h"
#include "host/oku/cards.h"

namespace protolink {

/// A contact's card. The token names the host's request.
class ContactCard {
public:
    explicit ContactCard(const Host& host) : host_(host) {}

    /// A text in the place of a card that has not come, or not yet.
    void setStatus(OKU_WORD token, const std::u16string& text) const;
    /// The card has come; its rows follow.
    void begin(OKU_WORD token) const;
    void addField(OKU_WORD token, const std::u16string& label, const std::u16string& value) const;
    void addSection(OKU_WORD token, const std::u16string& title) const;
    void addImage(OKU_WORD token, const std::u16string& label, const std::u16string& path) const;

private:
    void addVCardRow(OKU_WORD token, std::uint32_t kind, const std::u16string& value,
                     const std::u16string& label) const;

    const Host& host_;
};

/// The user's own card and picture.
class OwnCard {
public:
    explicit OwnCard(const Host& host) : host_(host) {}

    /// Tells whether a request for the card is under way.
    void signalBusyness(bool busy) const { host_.call(u"MyVCard/SignalBusyness", busy ? 1 : 0); }
    void setStatus(std::uint32_t netId, OKU_WORD token, const std::u16string& text) const;
    void setField(OKU_WORD token, const char16_t* key, const std::u16string& value) const;

private:
    const Host& host_;
};

/// Reads the fields of the user's own card one after the other. One buffer serves all of them, so that a field which
/// the host does not fill reads as the one before it.
class OwnCardReader {
public:
    OwnCardReader(const Host& host, OKU_WORD token) : host_(host), token_(token) {}

    std::u16string field(const char16_t* key);

private:
    const Host& host_;
    OKU_WORD token_;
    std::array<char16_t, OKU_OWN_CARD_CAPACITY> buffer_{};
};

}  // namespace protolink
