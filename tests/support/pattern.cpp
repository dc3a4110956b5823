// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/pattern.h"

#include <stdexcept>

#include "tests/support/text.h"

namespace harness {
namespace {
constexpr std::string_view kBase64Prefix = "{base64:";
constexpr std::string_view kBase64Characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=";
}  // namespace

std::vector<Pattern::Segment> Pattern::parseSegments(std::string_view raw, std::size_t& at, bool nested) {
    std::vector<Segment> segments;
    const auto literal = [&](char c) {
        if (segments.empty() || segments.back().kind != Segment::Kind::Literal) segments.push_back({});
        segments.back().text += c;
    };
    while (at < raw.size()) {
        if (raw[at] == '}' && nested) return segments;
        if (raw[at] == '\\') {
            literal(unescapeAt(raw, at));
        } else if (startsWith(raw.substr(at), kBase64Prefix)) {
            at += kBase64Prefix.size();
            segments.push_back({Segment::Kind::Base64, {}, parseSegments(raw, at, true)});
            if (at++ >= raw.size()) throw std::invalid_argument("{base64: without its end");
        } else if (raw[at] == '{') {
            const auto end = raw.find('}', at);
            if (end == std::string_view::npos) throw std::invalid_argument("a { without its }");
            segments.push_back({Segment::Kind::Value, std::string(raw.substr(at + 1, end - at - 1)), {}});
            at = end + 1;
        } else {
            literal(raw[at++]);
        }
    }
    return segments;
}

Pattern Pattern::parse(std::string_view raw) {
    Pattern pattern;
    std::size_t at = 0;
    pattern.segments_ = parseSegments(raw, at, false);
    return pattern;
}

std::string Pattern::fillSegments(const std::vector<Segment>& segments, const Variables& variables) {
    std::string out;
    for (const auto& segment : segments) {
        if (segment.kind == Segment::Kind::Literal) {
            out += segment.text;
        } else if (segment.kind == Segment::Kind::Base64) {
            out += base64Encode(fillSegments(segment.inner, variables));
        } else {
            const auto found = variables.find(segment.text);
            if (found == variables.end()) throw std::runtime_error("nothing is known of {" + segment.text + "} yet");
            out += found->second;
        }
    }
    return out;
}

std::string Pattern::fill(const Variables& variables) const { return fillSegments(segments_, variables); }

bool Pattern::matchValue(const std::vector<Segment>& segments, std::size_t index, std::string_view rest,
                         Variables& variables) {
    const auto& name = segments[index].text;
    if (const auto bound = variables.find(name); bound != variables.end()) {
        return startsWith(rest, bound->second) &&
               matchFrom(segments, index + 1, rest.substr(bound->second.size()), variables);
    }
    const auto limit = std::min(rest.find_first_of("\"'<>"), rest.size());
    for (std::size_t length = 1; length <= limit; ++length) {
        auto attempt = variables;
        attempt[name] = std::string(rest.substr(0, length));
        if (matchFrom(segments, index + 1, rest.substr(length), attempt)) {
            variables = std::move(attempt);
            return true;
        }
    }
    return false;
}

bool Pattern::matchFrom(const std::vector<Segment>& segments, std::size_t index, std::string_view rest,
                        Variables& variables) {
    if (index == segments.size()) return rest.empty();
    const auto& segment = segments[index];
    if (segment.kind == Segment::Kind::Literal) {
        return startsWith(rest, segment.text) &&
               matchFrom(segments, index + 1, rest.substr(segment.text.size()), variables);
    }
    if (segment.kind == Segment::Kind::Value) return matchValue(segments, index, rest, variables);
    const auto length = std::min(rest.find_first_not_of(kBase64Characters), rest.size());
    auto attempt = variables;
    if (!matchFrom(segment.inner, 0, base64Decode(rest.substr(0, length)), attempt)) return false;
    if (!matchFrom(segments, index + 1, rest.substr(length), attempt)) return false;
    variables = std::move(attempt);
    return true;
}

bool Pattern::match(std::string_view actual, Variables& variables) const {
    auto attempt = variables;
    if (!matchFrom(segments_, 0, actual, attempt)) return false;
    variables = std::move(attempt);
    return true;
}

}  // namespace harness
