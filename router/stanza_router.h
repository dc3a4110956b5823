// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One decision chain for all received top-level elements: each goes to exactly one handler, and the order decides.
#pragma once

#include <span>

#include "host/util/xml_parse.h"
#include "router/route.h"

namespace protolink {

/// The walk over the rows that it is given.
template <typename Parts>
class StanzaRouter {
public:
    StanzaRouter(Parts& parts, std::span<const Route<Parts>> routes) : parts_(parts), routes_(routes) {}

    /// Routes the elements of one received text in order. An element that fits nowhere is dropped without a word;
    /// senders are not checked, and nothing unknown is answered.
    void routeElements(XmlSequence& batch) {
        xmlElement element;
        while (batch.next(element))
            if (route(Stanza::of(element)) == Routing::Abandon) return;
    }

private:
    Routing route(const Stanza& stanza) {
        for (const Route<Parts>& row : routes_) {
            if (!row.takes(stanza)) continue;
            const Routing routing = row.handle(parts_, stanza);
            if (routing != Routing::Next) return routing;
        }
        return Routing::Done;
    }

    Parts& parts_;
    std::span<const Route<Parts>> routes_;
};

}  // namespace protolink
