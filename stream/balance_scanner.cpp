// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/balance_scanner.h"

#include <expat.h>

#include <algorithm>

#include "stream/xml_characters.h"

namespace protolink {

bool BalanceScanner::scan(std::string_view text) {
    if (fate_ != Fate::Open) return fate_ == Fate::WrapperClosed;
    text_ = text;
    looked_ = text.size();
    broken_ = false;
    Step result = Step::GoOn;
    while (result == Step::GoOn) result = step();
    const bool balanced = result == Step::NeedMore ? isBalanced() : fate_ == Fate::WrapperClosed;
    text_ = {};
    return balanced;
}

BalanceScanner::Step BalanceScanner::step() {
    switch (mode_) {
        case Mode::Content:
            return scanContent();
        case Mode::Tag:
            return scanTag();
        case Mode::AfterName:
            return scanAfterName();
        case Mode::AfterEquals:
            return scanAfterEquals();
        case Mode::Value:
            return scanValue();
        case Mode::EndTag:
            return scanEndTag();
        case Mode::Comment:
            return scanComment();
        case Mode::CData:
            return scanCData();
        case Mode::Instruction:
            return scanInstruction();
    }
    return Step::Over;
}

BalanceScanner::Step BalanceScanner::commit(std::size_t to, Mode mode) {
    pos_ = to;
    named_ = to;
    mode_ = mode;
    return Step::GoOn;
}

BalanceScanner::Step BalanceScanner::closeInnermost(std::size_t to) {
    names_->open.pop();
    return commit(to, Mode::Content);
}

void BalanceScanner::skipSpace() {
    const std::size_t end = xml::skip(text_, pos_, xml::kSpace);
    if (end != pos_) spaced_ = true;
    pos_ = end;
}

BalanceScanner::Step BalanceScanner::scanContent() {
    pos_ = xml::skipContent(text_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    switch (text_[pos_]) {
        case '<':
            return scanMarkup();
        case '&':
            return scanReference();
        case ']':
            if (at(pos_ + 1, ']')) {
                if (pos_ + 2 == text_.size()) return Step::NeedMore;
                if (text_[pos_ + 2] == '>') return wrongToken(pos_ + 2);
            } else if (pos_ + 1 == text_.size()) {
                return Step::NeedMore;
            }
            ++pos_;
            return Step::GoOn;
        default:
            return scanSequence();
    }
}

/// A character of several bytes. The caller's mode goes on behind it.
BalanceScanner::Step BalanceScanner::scanSequence() {
    const int length = xml::sequenceLength(text_, pos_);
    if (length == xml::kInvalidSequence) return wrongToken(pos_);
    if (length == xml::kCutSequence) {
        broken_ = true;
        brokenAt_ = pos_;
        return Step::NeedMore;
    }
    pos_ += static_cast<std::size_t>(length);
    return Step::GoOn;
}

BalanceScanner::Step BalanceScanner::scanReference() {
    if (at(pos_ + 1, '#')) return scanNumber();
    const auto [result, end] = scanName(pos_ + 1);
    if (result != Step::GoOn) return result;
    if (text_[end] != ';') return wrongToken(end);
    const std::string_view name = text_.substr(pos_ + 1, end - pos_ - 1);
    if (!xml::isPredefinedEntity(name) && wrongReference(XML_ERROR_UNDEFINED_ENTITY) != Step::GoOn) return Step::Over;
    pos_ = end + 1;
    return Step::GoOn;
}

BalanceScanner::Step BalanceScanner::scanNumber() {
    const std::size_t known = named_ > pos_ ? named_ - pos_ : 0;
    const xml::NumberReference reference = xml::readNumberReference(text_.substr(pos_), known);
    switch (reference.kind) {
        case xml::NumberReference::Kind::Cut:
            named_ = text_.size();
            return Step::NeedMore;
        case xml::NumberReference::Kind::None:
            return wrongToken(pos_ + reference.length);
        case xml::NumberReference::Kind::WrongNumber:
            if (wrongReference(XML_ERROR_BAD_CHAR_REF) != Step::GoOn) return Step::Over;
            [[fallthrough]];
        case xml::NumberReference::Kind::Whole:
            pos_ += reference.length;
            return Step::GoOn;
    }
    return Step::Over;
}

BalanceScanner::NameEnd BalanceScanner::scanName(std::size_t from) {
    std::size_t end = std::max(from, named_);
    if (end < text_.size() && xml::isIn(text_[end], end == from ? xml::kNameStart : xml::kNamePart))
        end = xml::skip(text_, end + 1, xml::kNamePart);
    for (; end < text_.size(); ++end) {
        const char byte = text_[end];
        if (xml::isAscii(byte)) {
            if (!xml::isIn(byte, end == from ? xml::kNameStart : xml::kNamePart)) break;
            continue;
        }
        const int length = xml::sequenceLength(text_, end);
        if (length == xml::kCutSequence) {
            broken_ = true;
            brokenAt_ = end;
            named_ = end;
            return {Step::NeedMore, end};
        }
        if (length == xml::kInvalidSequence) return {wrongToken(end), end};
        const auto bytes = static_cast<std::size_t>(length);
        if (!xml::canBeInName(text_.substr(end, bytes), end == from)) return {wrongToken(end), end};
        end += bytes - 1;
    }
    named_ = end;
    if (end == text_.size()) return {Step::NeedMore, end};
    return {end == from ? wrongToken(end) : Step::GoOn, end};
}

BalanceScanner::Step BalanceScanner::wrong(const Stop& stop) {
    stop_ = stop;
    fate_ = Fate::Wrong;
    return Step::Over;
}

BalanceScanner::Step BalanceScanner::wrong(std::uint32_t code, std::size_t place) { return wrong(stopAt(code, place)); }

BalanceScanner::Step BalanceScanner::wrongToken(std::size_t place) { return wrong(XML_ERROR_INVALID_TOKEN, place); }

BalanceScanner::Step BalanceScanner::wrongReference(std::uint32_t code) {
    if (mode_ != Mode::Value) return wrong(code, pos_);
    // Expat tells the place of a number, and of a name only the tag that it stands in.
    tagIsWrong(stopAt(code, code == XML_ERROR_UNDEFINED_ENTITY ? tokenAt_ : pos_));
    return Step::GoOn;
}

void BalanceScanner::tagIsWrong(const Stop& stop) {
    if (!tagStop_) tagStop_ = stop;
}

/// Counts up to that place, and remembers where the present markup began.
void BalanceScanner::countTo(std::size_t to) {
    if (counted_ <= tokenAt_ && tokenAt_ <= to) {
        position_.advance(text_.substr(counted_, tokenAt_ - counted_));
        counted_ = tokenAt_;
        tokenStart_ = {XML_ERROR_NONE, position_.line(), position_.column()};
    }
    position_.advance(text_.substr(counted_, to - counted_));
    counted_ = to;
}

BalanceScanner::Stop BalanceScanner::stopAt(std::uint32_t code, std::size_t place) {
    countTo(pos_);
    if (place == tokenAt_) return {code, tokenStart_.line, tokenStart_.column};
    if (place == pos_) return {code, position_.line(), position_.column()};
    if (countedAhead_ < pos_ || countedAhead_ > place) {
        ahead_ = position_;
        countedAhead_ = pos_;
    }
    ahead_.advance(text_.substr(countedAhead_, place - countedAhead_));
    countedAhead_ = place;
    return {code, ahead_.line(), ahead_.column()};
}

bool BalanceScanner::stopAtEnd(std::uint32_t code, std::uint32_t beyond) {
    stop_ = stopAt(code, broken_ ? brokenAt_ : text_.size());
    stop_.column += beyond;
    return false;
}

bool BalanceScanner::isBalanced() {
    constexpr std::uint32_t kEndTagOpening = 2;  // "</" of the wrapper's end
    const auto wrapperEnd = static_cast<std::uint32_t>(wrapper_.size() + 3);
    if (broken_) return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
    switch (mode_) {
        case Mode::Content:
            if (pos_ < text_.size() && text_[pos_] != ']') return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
            if (names_->open.empty()) return true;
            // The wrapper's end closes an element that happens to have its name, and the wrapper stays open.
            if (names_->open.innermost().length == wrapper_.size() && names_->open.innermost().in(text_) == wrapper_)
                return stopAtEnd(XML_ERROR_NO_ELEMENTS, wrapperEnd);
            return stopAtEnd(XML_ERROR_TAG_MISMATCH, kEndTagOpening);
        case Mode::CData:
            return stopAtEnd(XML_ERROR_UNCLOSED_CDATA_SECTION, wrapperEnd);
        case Mode::Comment:
            if (text_.size() - pos_ >= 2) return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
            [[fallthrough]];
        case Mode::Instruction:
            stop_ = stopAt(XML_ERROR_UNCLOSED_TOKEN, tokenAt_);
            return false;
        default:
            return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
    }
}

}  // namespace protolink
