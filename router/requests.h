// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Requests that wait for an answer.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "plugin/identifiers.h"
#include "router/event_dispatcher.h"
#include "router/routing.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

/// An answer is known by its id alone and comes once, or never: what is not answered goes with the connection.
class Requests {
public:
    using Answer = std::function<void(xmlElement& reply)>;

    Requests(CProtoEventDispatcher& dispatcher, StreamOutput& output) : dispatcher_(dispatcher), output_(output) {}

    /// Takes a fresh id, awaits its answer, and sends the stanza that `compose` makes with the id, in this order.
    template <typename Compose>
    void ask(Compose&& compose, Answer answer) {
        const std::u16string id = await(std::move(answer));
        output_.sendText(compose(id));
    }

    /// Sends first and awaits the answer then. False when nothing went out, and nothing is awaited: the socket or a
    /// listener refused it.
    template <typename Compose>
    bool sendThenAwait(Compose&& compose, Answer answer) {
        const std::u16string id = generateId();
        if (output_.sendText(compose(id)) <= 0) return false;
        await(id, std::move(answer));
        return true;
    }

    /// The first half of `ask`, for a request that goes out later: its fresh id, which is awaited already.
    std::u16string await(Answer answer);

    /// An element that somebody waits for goes to him, whatever it is named.
    Routing onStanza(const Stanza& stanza) {
        return dispatcher_.dispatch(stanza.element) ? Routing::Done : Routing::Next;
    }

    /// Nobody waits any more.
    void forgetAll() { dispatcher_.clear(); }

private:
    void await(const std::u16string& id, Answer answer);

    CProtoEventDispatcher& dispatcher_;
    StreamOutput& output_;
};

}  // namespace protolink
