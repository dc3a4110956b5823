// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/negotiation.h"

namespace protolink {

Routing Negotiation::onFeatures(const Stanza& stanza) {
    const xmlElement& features = stanza.element;
    if (progress_.authStep != 0) {
        if (steps_.compression.begin(features)) return Routing::Abandon;
        steps_.binding.begin();
        return Routing::Done;
    }
    if (steps_.encryption.begin(features)) return Routing::Done;
    if (connection_.registerMode) return steps_.registration.begin(features);
    steps_.authentication.begin(features);
    return Routing::Done;
}

}  // namespace protolink
