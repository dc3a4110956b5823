// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/element_scanner.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace oku::net {

namespace {

constexpr qsizetype kLongestName = 64;

bool startsName(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || code == '_' || code == ':' || code >= 0x80;
}

/// Position of the next `wanted` in the bytes, or their end.
qsizetype findByte(QByteArrayView bytes, qsizetype from, char wanted) {
    const void* found = std::memchr(bytes.data() + from, wanted, static_cast<size_t>(bytes.size() - from));
    return found ? static_cast<const char*>(found) - bytes.data() : bytes.size();
}

/// Where each stretch of bytes ends that means nothing by itself.
enum Stop : std::uint8_t { nameEnd = 1, tagPart = 2, endTagEnd = 4, singleQuote = 8, doubleQuote = 16 };

constexpr auto stops = [] {
    std::array<std::uint8_t, 256> table{};
    const auto mark = [&table](const char* bytes, Stop stop) {
        for (; *bytes; ++bytes) table[static_cast<unsigned char>(*bytes)] |= stop;
    };
    mark(" \t\r\n/><", nameEnd);
    mark("\"'/><", tagPart);
    mark("><", endTagEnd);
    mark("'<", singleQuote);
    mark("\"<", doubleQuote);
    return table;
}();

/// Position of the next byte at which `stop` ends, or the bytes' end.
qsizetype findStop(QByteArrayView bytes, qsizetype from, Stop stop) {
    while (from < bytes.size() && !(stops[static_cast<unsigned char>(bytes[from])] & stop)) ++from;
    return from;
}

}  // namespace

ElementScanner::Mark ElementScanner::next(QByteArrayView bytes, qsizetype& position) {
    while (position < bytes.size() && !broken_) {
        position = skipStretch(bytes, position);
        if (position == bytes.size()) break;
        const Mark mark = step(bytes[position++]);
        if (mark != Mark::None) return mark;
    }
    if (broken_) position = bytes.size();
    return Mark::None;
}

/// Behind the bytes that leave the state as it is.
qsizetype ElementScanner::skipStretch(QByteArrayView bytes, qsizetype from) {
    switch (state_) {
        case State::Text:
            return findByte(bytes, from, '<');
        case State::Name: {
            const qsizetype end = findStop(bytes, from, nameEnd);
            if (depth_ == 0) name_.append(bytes.sliced(from, qMin(end - from, kLongestName - name_.size())));
            return end;
        }
        case State::Tag:
            return findStop(bytes, from, tagPart);
        case State::Quoted:
            return findStop(bytes, from, quote_ == '"' ? doubleQuote : singleQuote);
        case State::EndTag:
            return findStop(bytes, from, endTagEnd);
        default:
            return from;
    }
}

ElementScanner::Mark ElementScanner::step(char byte) {
    switch (state_) {
        case State::Text:
            state_ = State::Opened;
            return depth_ == 0 ? Mark::Open : Mark::None;
        case State::Opened:
            return opened(byte);
        case State::Name:
            state_ = State::Tag;
            return inTag(byte);
        case State::Tag:
            return inTag(byte);
        case State::Quoted:
            if (byte == '<') return fail();
            state_ = State::Tag;
            return Mark::None;
        case State::Slash:
            return byte == '>' ? tagEnds(true) : fail();
        case State::EndTag:
            if (byte == '<') return fail();
            return byte == '>' ? endTagEnds() : Mark::None;
        case State::Bang:
            bang(byte);
            return Mark::None;
        case State::Comment:
            skipTo('-', 2, byte);
            return Mark::None;
        case State::CData:
            skipTo(']', 2, byte);
            return Mark::None;
        case State::Instruction:
            skipTo('?', 1, byte);
            return Mark::None;
    }
    return Mark::None;
}

ElementScanner::Mark ElementScanner::opened(char byte) {
    matched_ = 0;
    if (byte == '/') {
        state_ = State::EndTag;
    } else if (byte == '!') {
        section_.clear();
        state_ = State::Bang;
    } else if (byte == '?') {
        state_ = State::Instruction;
    } else if (startsName(byte)) {
        if (depth_ == 0) {
            name_.resize(0);
            name_.append(byte);
        }
        state_ = State::Name;
    } else {
        return fail();
    }
    return Mark::None;
}

ElementScanner::Mark ElementScanner::inTag(char byte) {
    switch (byte) {
        case '"':
        case '\'':
            quote_ = byte;
            state_ = State::Quoted;
            return Mark::None;
        case '/':
            state_ = State::Slash;
            return Mark::None;
        case '>':
            return tagEnds(false);
        case '<':
            return fail();
        default:
            return Mark::None;
    }
}

ElementScanner::Mark ElementScanner::tagEnds(bool selfClosing) {
    state_ = State::Text;
    if (depth_ == 0 && name_ == "stream:stream") return Mark::Header;
    if (!selfClosing) {
        ++depth_;
        return Mark::None;
    }
    return depth_ == 0 ? Mark::Element : Mark::None;
}

ElementScanner::Mark ElementScanner::endTagEnds() {
    state_ = State::Text;
    if (depth_ == 0) return Mark::End;
    return --depth_ == 0 ? Mark::Element : Mark::None;
}

void ElementScanner::bang(char byte) {
    static const QByteArray comment("--");
    static const QByteArray cdata("[CDATA[");
    section_.append(byte);
    if (section_ == comment) {
        state_ = State::Comment;
    } else if (section_ == cdata) {
        state_ = State::CData;
    } else if (!comment.startsWith(section_) && !cdata.startsWith(section_)) {
        fail();
    }
}

void ElementScanner::skipTo(char closing, int repeats, char byte) {
    if (byte == closing) {
        matched_ = qMin(matched_ + 1, repeats);
        return;
    }
    if (byte == '>' && matched_ == repeats) state_ = State::Text;
    matched_ = 0;
}

ElementScanner::Mark ElementScanner::fail() {
    broken_ = true;
    return Mark::None;
}

}  // namespace oku::net
