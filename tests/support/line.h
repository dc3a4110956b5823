// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One line of a transcript, and one event at the host's boundary: the same form for both.
//
//     call OKU/CTL/AddContact jid="bob@example.org" kind=3 -> 1
//
// is a head ("call OKU/CTL/AddContact"), fields, texts without a name, and a result.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/pattern.h"

namespace harness {

/// A value; of a transcript's line it holds the raw text, in which captured values and escapes still stand.
struct Value {
    std::string text;
    bool quoted = false;
};

struct Field {
    std::string name;
    Value value;
};

struct Line {
    std::string head;
    std::vector<Field> fields;
    std::vector<Value> texts;           // quoted texts and numbers after "=" that have no name
    std::optional<std::string> result;  // what stands after "->"

    Line& text(const std::string& value) { return texts.push_back({value, true}), *this; }
    Line& number(long long value) { return texts.push_back({std::to_string(value), false}), *this; }
    Line& field(const std::string& name, const std::string& value) {
        return fields.push_back({name, {value, true}}), *this;
    }
    Line& field(const std::string& name, long long value) {
        return fields.push_back({name, {std::to_string(value), false}}), *this;
    }

    /// The last word of the head.
    std::string lastWord() const { return head.substr(head.rfind(' ') + 1); }
    /// The field's raw text, or nothing.
    const Value* find(std::string_view name) const;
};

/// Reads a transcript's line. Throws std::invalid_argument when it is malformed.
Line parseLine(std::string_view text);

/// An event as a transcript's line.
std::string render(const Line& event);

/// Whether an event is what a transcript's line expects: the same head, fields in any order and texts in order. A field
/// that the event lacks equals `0` and `none`. The result is compared only when the line tells one.
bool matches(const Line& expected, const Line& event, Variables& variables);

}  // namespace harness
