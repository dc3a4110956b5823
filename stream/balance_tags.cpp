// The balance scanner's reading of tags, comments, CDATA sections and instructions.
#include "stream/balance_scanner.h"
#include "stream/xml_characters.h"

namespace {

constexpr std::string_view kCommentStart = "<!--";
constexpr std::string_view kCDataStart = "<![CDATA[";

bool startsAlike(std::string_view text, std::string_view wanted) {
    const std::size_t common = std::min(text.size(), wanted.size());
    return text.substr(0, common) == wanted.substr(0, common);
}

}  // namespace

BalanceScanner::Step BalanceScanner::scanMarkup() {
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
    openStarts_.push_back(openNames_.size());
    openNames_.append(text_.substr(start, end - start));
    attributes_.clear();
    manyAttributes_.clear();
    spaced_ = false;
    repeated_ = false;
    return commit(end, Mode::Tag);
}

BalanceScanner::Step BalanceScanner::scanTag() {
    skipSpace();
    named_ = std::max(named_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    // Two attributes of one name are wrong only once the tag is complete.
    if (text_[pos_] == '>') return repeated_ ? Step::Unsure : commit(pos_ + 1, Mode::Content);
    if (text_[pos_] != '/') return scanAttributeName();
    if (pos_ + 1 == text_.size()) return Step::NeedMore;
    if (text_[pos_ + 1] != '>' || repeated_) return Step::Unsure;
    closeInnermost();
    return commit(pos_ + 2, Mode::Content);
}

BalanceScanner::Step BalanceScanner::scanAttributeName() {
    if (!spaced_) return Step::Unsure;
    const auto [step, end] = scanName(pos_);
    if (step != Step::GoOn) return step;
    if (!addAttribute(text_.substr(pos_, end - pos_))) repeated_ = true;
    return commit(end, Mode::AfterName);
}

BalanceScanner::Step BalanceScanner::scanAfterName() {
    skipSpace();
    if (pos_ == text_.size()) return Step::NeedMore;
    return text_[pos_] == '=' ? commit(pos_ + 1, Mode::AfterEquals) : Step::Unsure;
}

BalanceScanner::Step BalanceScanner::scanAfterEquals() {
    skipSpace();
    if (pos_ == text_.size()) return Step::NeedMore;
    quote_ = text_[pos_];
    return quote_ == '"' || quote_ == '\'' ? commit(pos_ + 1, Mode::Value) : Step::Unsure;
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
    if (byte == '<') return Step::Unsure;
    return byte == '&' ? scanReference() : scanSequence();
}

BalanceScanner::Step BalanceScanner::beginEndTag() {
    const std::size_t start = pos_ + 2;
    const auto [step, end] = scanName(start);
    if (step != Step::GoOn) return start == text_.size() ? Step::NeedMore : step;
    mismatched_ = openStarts_.empty() || innermost() != text_.substr(start, end - start);
    return commit(end, Mode::EndTag);
}

BalanceScanner::Step BalanceScanner::scanEndTag() {
    skipSpace();
    if (pos_ == text_.size()) return Step::NeedMore;
    // An end tag of another name is wrong only once it is complete.
    if (text_[pos_] != '>' || mismatched_) return Step::Unsure;
    closeInnermost();
    return commit(pos_ + 1, Mode::Content);
}

BalanceScanner::Step BalanceScanner::beginDeclaration() {
    const std::string_view rest = text_.substr(pos_);
    for (const auto& [start, mode] : {std::pair(kCommentStart, Mode::Comment), std::pair(kCDataStart, Mode::CData)}) {
        if (!startsAlike(rest, start)) continue;
        return rest.size() < start.size() ? Step::NeedMore : begin(mode, start.size());
    }
    return Step::Unsure;
}

BalanceScanner::Step BalanceScanner::beginInstruction() {
    const std::size_t start = pos_ + 2;
    const auto [step, end] = scanName(start);
    if (step != Step::GoOn) return start == text_.size() ? Step::NeedMore : step;
    if (xml::isReservedTarget(text_.substr(start, end - start))) return Step::Unsure;
    if (xml::isIn(text_[end], xml::kSpace)) return begin(Mode::Instruction, end + 1 - pos_);
    if (text_[end] != '?') return Step::Unsure;
    if (end + 1 == text_.size()) return Step::NeedMore;
    return text_[end + 1] == '>' ? commit(end + 2, Mode::Content) : Step::Unsure;
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
    return text_[pos_ + 2] == '>' ? commit(pos_ + 3, Mode::Content) : Step::Unsure;
}

BalanceScanner::Step BalanceScanner::scanCData() {
    pos_ = xml::skipCData(text_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    if (text_[pos_] != ']') return scanSequence();
    const std::string_view rest = text_.substr(pos_, 3);
    if (rest == "]]>") return commit(pos_ + 3, Mode::Content);
    if (rest.size() < 3 && startsAlike(rest, "]]>")) return Step::NeedMore;
    ++pos_;
    return Step::GoOn;
}

BalanceScanner::Step BalanceScanner::scanInstruction() {
    pos_ = xml::skipInstruction(text_, pos_);
    if (pos_ == text_.size()) return Step::NeedMore;
    if (text_[pos_] != '?') return scanSequence();
    if (pos_ + 1 == text_.size()) return Step::NeedMore;
    if (text_[pos_ + 1] == '>') return commit(pos_ + 2, Mode::Content);
    ++pos_;
    return Step::GoOn;
}
