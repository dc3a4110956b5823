// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Events that others publish (XEP-0060, XEP-0163): each payload goes to the part that knows its node.
#pragma once

#include <span>
#include <string_view>

#include "router/namespaces.h"
#include "router/stanza.h"

namespace protolink {

/// One payload of an event. All of it lies in the received message.
struct PubSubItem {
    const xmlElement& payload;
    std::u16string_view from;
    std::u16string_view id;  // empty when the item has none
};

/// A node whose events the account takes. The payload's namespace is the node's name.
template <typename Parts>
struct EventNode {
    std::u16string_view node;
    std::u16string_view payload;  // the name of the element in each item
    void (*handle)(Parts& parts, const PubSubItem& item);
};

template <auto Part, auto Member>
struct ItemHandler;

template <typename Parts, typename Type, Type Parts::*Part, auto Member>
struct ItemHandler<Part, Member> {
    static void handle(Parts& parts, const PubSubItem& item) { (parts.*Part.*Member)(item); }
};

/// The handler of a node: a part, and its member that takes the item.
template <auto Part, auto Member>
inline constexpr auto itemTo = &ItemHandler<Part, Member>::handle;

/// The walk over the nodes that it is given: one pass for each, in their order.
template <typename Parts>
class PubSubEvents {
public:
    PubSubEvents(Parts& parts, std::span<const EventNode<Parts>> nodes) : parts_(parts), nodes_(nodes) {}

    /// A message with an `event`. One that failed, or that the server had kept, tells nothing of the present: it is
    /// dropped.
    void onPubsubEvent(const Stanza& message) const {
        if (message.type == u"error" || isLate(message.element)) return;
        const xmlElement& event = *message.child(u"event", ns::kPubSubEvent);
        for (const EventNode<Parts>& row : nodes_) deliver(event, row, message.from);
    }

private:
    /// In the older form what counts is an attribute named x of a `delay`, not the namespace.
    static bool isLate(const xmlElement& message) {
        return message.GetChildPtr(u"delay", ns::kDelay) || message.GetChildPtr(u"delay", u"x", ns::kLegacyDelay);
    }

    /// What holds no payload, a retraction for one, is passed over.
    void deliver(const xmlElement& event, const EventNode<Parts>& row, std::u16string_view from) const {
        const xmlElement* items = event.GetChildPtr(u"items", u"node", row.node);
        if (!items) return;
        for (const xmlElement& item : items->children)
            if (const xmlElement* payload = item.GetChildPtr(row.payload, row.node))
                row.handle(parts_, {*payload, from, item.GetAttribute(u"id")});
    }

    Parts& parts_;
    std::span<const EventNode<Parts>> nodes_;
};

}  // namespace protolink
