// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The balance scanner's reading of tags, comments, CDATA sections and instructions.
#include <expat.h>

#include <algorithm>

#include "stream/balance_scanner.h"
#include "stream/xml_characters.h"

namespace protolink {

namespace {

constexpr std::string_view kCommentStart = "<!--";
constexpr std::string_view kCDataStart = "<![CDATA[";

/// How many characters of the text are those wanted.
std::size_t alike(std::string_view text, std::string_view wanted) {
    const auto ends = std::mismatch(text.begin(), text.end(), wanted.begin(), wanted.end());
    return static_cast<std::size_t>(ends.first - text.begin());
}

}  // namespace

BalanceScanner::Step BalanceScanner::scanMarkup() {
    tokenAt_ = pos_;
    if (pos_ + 1 == text_.size()) return Step::NeedMore;
    switch (text_[pos_ + 1]) {
        case '/':
            return beginEndTag();
        case '!':
            return beginDeclaration();
        case '?':
            return beginInstruction();
        default:
            return beginTag();
    }
}

BalanceScanner::Step BalanceScanner::beginTag() {
    const std::size_t start = pos_ + 1;
    const auto [step, end] = scanName(start);
    if (step != Step::GoOn) return step;
    names_->open.push({start, end - start});
    names_->attributes.clear();
    spaced_ = false;
    tagStop_.reset();
    return commit(end, Mode::Tag);
}

BalanceScanner::Step BalanceScanner::scanTag() {
    skipSpace();
    named_ = std::max(named_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    if (text_[pos_] == '>') return tagStop_ ? wrong(*tagStop_) : commit(pos_ + 1, Mode::Content);
    if (text_[pos_] != '/') return scanAttributeName();
    if (pos_ + 1 == text_.size()) return Step::NeedMore;
    if (text_[pos_ + 1] != '>') return wrongToken(pos_ + 1);
    return tagStop_ ? wrong(*tagStop_) : closeInnermost(pos_ + 2);
}

BalanceScanner::Step BalanceScanner::scanAttributeName() {
    if (!spaced_) return wrongToken(pos_);
    const auto [step, end] = scanName(pos_);
    if (step != Step::GoOn) return step;
    // Two attributes of one name are wrong only once the tag is complete.
    if (!tagStop_ && !names_->attributes.add(text_, {pos_, end - pos_}))
        tagIsWrong(stopAt(XML_ERROR_DUPLICATE_ATTRIBUTE, pos_));
    return commit(end, Mode::AfterName);
}

BalanceScanner::Step BalanceScanner::scanAfterName() {
    skipSpace();
    if (pos_ == text_.size()) return Step::NeedMore;
    return text_[pos_] == '=' ? commit(pos_ + 1, Mode::AfterEquals) : wrongToken(pos_);
}

BalanceScanner::Step BalanceScanner::scanAfterEquals() {
    skipSpace();
    if (pos_ == text_.size()) return Step::NeedMore;
    quote_ = text_[pos_];
    return quote_ == '"' || quote_ == '\'' ? commit(pos_ + 1, Mode::Value) : wrongToken(pos_);
}

BalanceScanner::Step BalanceScanner::scanValue() {
    pos_ = xml::skipValue(text_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    const char byte = text_[pos_];
    if (byte == quote_) {
        spaced_ = false;
        return commit(pos_ + 1, Mode::Tag);
    }
    if (byte == '"' || byte == '\'') {
        ++pos_;
        return Step::GoOn;
    }
    if (byte == '<') return wrongToken(pos_);
    return byte == '&' ? scanReference() : scanSequence();
}

BalanceScanner::Step BalanceScanner::beginEndTag() {
    const std::size_t start = pos_ + 2;
    const auto [step, end] = scanName(start);
    if (step != Step::GoOn) return step;
    const NamePlace name{start, end - start};
    // With nothing open it is the wrapper that is closed.
    const std::string_view wanted = names_->open.empty() ? wrapper_ : names_->open.innermost().in(text_);
    mismatched_ = name.in(text_) != wanted;
    return commit(end, Mode::EndTag);
}

BalanceScanner::Step BalanceScanner::scanEndTag() {
    skipSpace();
    if (pos_ == text_.size()) return Step::NeedMore;
    if (text_[pos_] != '>') return wrongToken(pos_);
    // An end tag of another name is wrong only once it is complete.
    if (mismatched_) {
        constexpr std::uint32_t kEndTagOpening = 2;
        const Stop start = stopAt(XML_ERROR_TAG_MISMATCH, tokenAt_);
        return wrong({start.errorCode, start.line, start.column + kEndTagOpening});
    }
    if (!names_->open.empty()) return closeInnermost(pos_ + 1);
    // Behind the document's end expat finds nothing that counts.
    fate_ = Fate::WrapperClosed;
    return Step::Over;
}

BalanceScanner::Step BalanceScanner::beginDeclaration() {
    const std::string_view rest = text_.substr(pos_);
    const bool comment = alike(rest, kCommentStart) > alike(rest, kCDataStart);
    const std::string_view start = comment ? kCommentStart : kCDataStart;
    const std::size_t common = alike(rest, start);
    if (common == start.size()) return commit(pos_ + common, comment ? Mode::Comment : Mode::CData);
    return common == rest.size() ? Step::NeedMore : wrongToken(pos_ + common);
}

BalanceScanner::Step BalanceScanner::beginInstruction() {
    const std::size_t start = pos_ + 2;
    const auto [step, end] = scanName(start);
    if (step != Step::GoOn) return step;
    const std::string_view target = text_.substr(start, end - start);
    declares_ = target == "xml";
    if (xml::isReservedTarget(target) && !declares_) return wrongToken(end);
    if (xml::isIn(text_[end], xml::kSpace)) return commit(end + 1, Mode::Instruction);
    if (text_[end] != '?') return wrongToken(end);
    if (end + 1 == text_.size()) return Step::NeedMore;
    return text_[end + 1] == '>' ? endInstruction(end + 2) : wrongToken(end + 1);
}

/// A declaration stands only before the wrapper.
BalanceScanner::Step BalanceScanner::endInstruction(std::size_t to) {
    return declares_ ? wrong(XML_ERROR_MISPLACED_XML_PI, tokenAt_) : commit(to, Mode::Content);
}

BalanceScanner::Step BalanceScanner::scanComment() {
    pos_ = xml::skipComment(text_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    if (text_[pos_] != '-') return scanSequence();
    if (pos_ + 1 == text_.size()) return Step::NeedMore;
    if (text_[pos_ + 1] != '-') {
        ++pos_;
        return Step::GoOn;
    }
    if (pos_ + 2 == text_.size()) return Step::NeedMore;
    return text_[pos_ + 2] == '>' ? commit(pos_ + 3, Mode::Content) : wrongToken(pos_ + 2);
}

BalanceScanner::Step BalanceScanner::scanCData() {
    pos_ = xml::skipCData(text_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    if (text_[pos_] != ']') return scanSequence();
    const std::string_view rest = text_.substr(pos_, 3);
    if (rest == "]]>") return commit(pos_ + 3, Mode::Content);
    if (alike(rest, "]]>") == rest.size()) return Step::NeedMore;
    ++pos_;
    return Step::GoOn;
}

BalanceScanner::Step BalanceScanner::scanInstruction() {
    pos_ = xml::skipInstruction(text_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    if (text_[pos_] != '?') return scanSequence();
    if (pos_ + 1 == text_.size()) return Step::NeedMore;
    if (text_[pos_ + 1] == '>') return endInstruction(pos_ + 2);
    ++pos_;
    return Step::GoOn;
}

}  // namespace protolink
