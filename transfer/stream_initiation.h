// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The offer of a file and the choice of the method to move it (stream initiation, XEP-0095; file transfer, XEP-0096;
// feature negotiation, XEP-0020): writing and reading.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/util/xml_element.h"
#include "router/stanza.h"

namespace protolink {

namespace si {

struct Offer {
    std::u16string_view id;
    std::u16string_view to;
    std::u16string_view sid;
    std::u16string_view name;
    std::uint64_t size = 0;
    bool outOfBand = false;  // offered before the bytes in the stream
};

std::u16string composeOffer(const Offer& offer);
/// The answer to `offer` that takes it by `method`.
std::u16string composeAcceptance(const Stanza& offer, std::u16string_view method);
/// The user does not want the file.
std::u16string composeRefusal(const Stanza& offer);
/// None of the methods is one that this client has.
std::u16string composeNoValidStreams(const Stanza& offer);

/// The method that an answer to an offer names; empty when it names none. It lies in the answer.
std::u16string_view chosenMethod(const xmlElement& answer);

/// What a peer offers, as far as this client can take it.
struct Methods {
    bool outOfBand = false;
    bool inBand = false;

    /// The one to take; empty for none.
    std::u16string_view best() const;
};
Methods offeredMethods(const xmlElement& si);

}  // namespace si

}  // namespace protolink
