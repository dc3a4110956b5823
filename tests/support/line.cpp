// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/line.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include "tests/support/text.h"

namespace harness {
namespace {

struct Token {
    std::string text;
    bool quoted = false;
    std::string name;   // of name=value
    bool bare = false;  // no quotation mark and no name
};

std::string takeQuoted(std::string_view text, std::size_t& at) {
    std::string out;
    for (++at; at < text.size(); ++at) {
        if (text[at] == '"') return ++at, out;
        if (text[at] == '\\' && at + 1 < text.size()) out += text[at++];
        out += text[at];
    }
    throw std::invalid_argument("a text without its closing quotation mark");
}

bool isName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '.'; });
}

Token takeToken(std::string_view text, std::size_t& at) {
    Token token;
    if (text[at] == '"') {
        token.quoted = true;
        token.text = takeQuoted(text, at);
        return token;
    }
    const auto start = at;
    while (at < text.size() && text[at] != ' ') {
        if (text[at] == '=' && at > start && isName(text.substr(start, at - start)) && token.name.empty()) {
            token.name = text.substr(start, at - start);
            if (++at < text.size() && text[at] == '"') {
                token.quoted = true;
                token.text = takeQuoted(text, at);
                return token;
            }
            const auto end = std::min(text.find(' ', at), text.size());
            token.text = text.substr(at, end - at);
            at = end;
            return token;
        }
        ++at;
    }
    token.text = text.substr(start, at - start);
    token.bare = true;
    return token;
}

std::string renderValue(const Value& value) { return value.quoted ? quoted(value.text) : value.text; }

/// What a field that is not shown stands for: the first account and its settings, or nothing.
bool isUnshown(const std::string& name, const Value& expected) {
    if (expected.quoted) return false;
    if (name == "net" || name == "store") return expected.text == "1";
    return expected.text == "0" || expected.text == "none";
}

bool valueMatches(const std::string& name, const Value& expected, const Value* actual, Variables& variables) {
    if (!actual) return isUnshown(name, expected);
    if (expected.quoted != actual->quoted) return false;
    return Pattern::parse(expected.text).match(actual->text, variables);
}

bool isSet(const Field& field, const Line& expected) { return expected.find(field.name) != nullptr; }

}  // namespace

const Value* Line::find(std::string_view name) const {
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const Field& f) { return f.name == name; });
    return found == fields.end() ? nullptr : &found->value;
}

Line parseLine(std::string_view text) {
    Line line;
    bool afterEquals = false;
    bool afterArrow = false;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == ' ') {
            ++at;
            continue;
        }
        Token token = takeToken(text, at);
        if (afterArrow) {
            line.result = token.quoted ? '"' + token.text + '"' : token.text;
        } else if (!token.name.empty()) {
            line.fields.push_back({token.name, {token.text, token.quoted}});
        } else if (token.bare && token.text == "->") {
            afterArrow = true;
        } else if (token.bare && token.text == "=") {
            afterEquals = true;
        } else if (token.quoted || afterEquals) {
            line.texts.push_back({token.text, token.quoted});
        } else {
            line.head += (line.head.empty() ? "" : " ") + token.text;
        }
    }
    return line;
}

std::string render(const Line& event) {
    std::string out = event.head;
    const bool assigns = startsWith(event.head, "stores ");
    for (const auto& text : event.texts) out += (assigns ? " = " : " ") + renderValue(text);
    for (const auto& field : event.fields) out += " " + field.name + "=" + renderValue(field.value);
    if (event.result) out += " -> " + *event.result;
    return out;
}

bool matches(const Line& expected, const Line& event, Variables& variables) {
    auto attempt = variables;
    if (expected.head != event.head && !Pattern::parse(expected.head).match(event.head, attempt)) return false;
    if (expected.texts.size() != event.texts.size()) return false;
    for (std::size_t i = 0; i < expected.texts.size(); ++i) {
        if (!valueMatches("", expected.texts[i], &event.texts[i], attempt)) return false;
    }
    for (const auto& field : expected.fields) {
        if (!valueMatches(field.name, field.value, event.find(field.name), attempt)) return false;
    }
    for (const auto& field : event.fields) {
        if (!isSet(field, expected)) return false;
    }
    if (expected.result) {
        if (!event.result || !Pattern::parse(*expected.result).match(*event.result, attempt)) return false;
    }
    variables = std::move(attempt);
    return true;
}

}  // namespace harness
