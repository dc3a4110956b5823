// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The rows of the routing chain: which elements go where.
#pragma once

#include <string_view>
#include <type_traits>

#include "router/routing.h"
#include "router/stanza.h"

namespace protolink {

/// What a row wants of an element. All that is named has to hold.
struct Question {
    enum class About { Nothing, Child, FirstChild, Query } about = About::Nothing;
    std::u16string_view name = {};   // of the child
    std::u16string_view xmlns = {};  // of the child or the query
    std::u16string_view type = {};   // of the element; any when empty

    constexpr Question ofType(std::u16string_view wanted) const { return {about, name, xmlns, wanted}; }

    bool holds(const Stanza& stanza) const {
        if (!type.empty() && stanza.type != type) return false;
        switch (about) {
            case About::Child:
                return xmlns.empty() ? stanza.child(name) : stanza.child(name, xmlns);
            case About::FirstChild:
                return stanza.beginsWith(xmlns);
            case About::Query:
                return stanza.asks(xmlns);
            default:
                return true;
        }
    }
};

inline constexpr Question always{};

/// A child of that name; in that namespace when one is given.
constexpr Question hasChild(std::u16string_view name, std::u16string_view xmlns = {}) {
    return {Question::About::Child, name, xmlns};
}
constexpr Question firstChildIs(std::u16string_view xmlns) { return {Question::About::FirstChild, {}, xmlns}; }
/// A `query` in that namespace.
constexpr Question asks(std::u16string_view xmlns) { return {Question::About::Query, {}, xmlns}; }
constexpr Question ofType(std::u16string_view type) { return always.ofType(type); }

template <typename Parts>
struct Route {
    const char* name;
    std::u16string_view element;  // the element's name; any when empty
    Question question;
    Routing (*handle)(Parts& parts, const Stanza& stanza);

    bool takes(const Stanza& stanza) const {
        return (element.empty() || element == stanza.element.name) && question.holds(stanza);
    }
};

template <auto Part, auto Member>
struct PartHandler;

template <typename Parts, typename Type, Type Parts::*Part, auto Member>
struct PartHandler<Part, Member> {
    static Routing handle(Parts& parts, const Stanza& stanza) {
        const auto call = [&]() -> decltype(auto) {
            if constexpr (std::is_invocable_v<decltype(Member), Type&, const Stanza&>) {
                return (parts.*Part.*Member)(stanza);
            } else {
                return (parts.*Part.*Member)(stanza.element);
            }
        };
        if constexpr (std::is_same_v<decltype(call()), Routing>) {
            return call();
        } else {
            call();
            return Routing::Done;
        }
    }
};

/// The handler of a row: a part, and its member that takes the stanza or its element. A member that returns no
/// `Routing` has done with what it was given.
template <auto Part, auto Member>
inline constexpr auto to = &PartHandler<Part, Member>::handle;

/// A row whose feature the plugin does not have claims its element all the same, and it goes no further.
template <typename Parts>
Routing drop(Parts&, const Stanza&) {
    return Routing::Done;
}

}  // namespace protolink
