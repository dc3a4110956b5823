#include "stream/balance_scanner.h"

#include <expat.h>

#include <algorithm>

#include "stream/xml_characters.h"

namespace {

/// As many attributes are compared with each other; more are looked up.
constexpr std::size_t kFewAttributes = 16;
/// Open elements, and bytes of their names, that stanzas rarely exceed.
constexpr std::size_t kFewLevels = 16;
constexpr std::size_t kFewBytes = 256;

}  // namespace

void BalanceScanner::changed(std::size_t from) {
    if (from >= pos_) {
        named_ = std::min(named_, from);
        if (countedAhead_ > from) countedAhead_ = 0;
    } else {
        reset();
    }
}

void BalanceScanner::reset() {
    // A text of ordinary size leaves room for the names in the next.
    const bool small = openNames_.capacity() <= kFewBytes && openStarts_.capacity() <= kFewLevels &&
                       attributes_.capacity() <= kFewAttributes;
    std::string openNames = std::move(openNames_);
    auto openStarts = std::move(openStarts_);
    auto attributes = std::move(attributes_);
    *this = BalanceScanner(startColumn_, wrapper_);
    if (!small) return;
    openNames_ = std::move(openNames);
    openStarts_ = std::move(openStarts);
    attributes_ = std::move(attributes);
    openNames_.clear();
    openStarts_.clear();
    attributes_.clear();
}

BalanceScanner::Verdict BalanceScanner::scan(std::string_view text) {
    text_ = text;
    broken_ = false;
    Step result = Step::GoOn;
    while (result == Step::GoOn) result = step();
    const Verdict verdict = result == Step::Unsure ? Verdict::Unsure : incomplete();
    text_ = {};
    return verdict;
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
    return Step::Unsure;
}

BalanceScanner::Step BalanceScanner::commit(std::size_t to, Mode mode) {
    pos_ = to;
    named_ = to;
    mode_ = mode;
    return Step::GoOn;
}

/// A comment, a CDATA section or an instruction begins; expat may have to name the place where it did.
BalanceScanner::Step BalanceScanner::begin(Mode mode, std::size_t length) {
    countTo(pos_);
    tokenStart_ = {XML_ERROR_UNCLOSED_TOKEN, position_.line(), position_.column()};
    return commit(pos_ + length, mode);
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
                if (text_[pos_ + 2] == '>') return Step::Unsure;
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
    if (length == xml::kInvalidSequence) return Step::Unsure;
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
    const std::string_view name = text_.substr(pos_ + 1, end - pos_ - 1);
    if (text_[end] != ';' || !xml::isPredefinedEntity(name)) return Step::Unsure;
    pos_ = end + 1;
    return Step::GoOn;
}

BalanceScanner::Step BalanceScanner::scanNumber() {
    const std::size_t known = named_ > pos_ ? named_ - pos_ : 0;
    const std::size_t length = xml::numberReferenceLength(text_.substr(pos_), known);
    if (length == xml::kWrongReference) return Step::Unsure;
    if (length == xml::kCutReference) {
        named_ = text_.size();
        return Step::NeedMore;
    }
    pos_ += length;
    return Step::GoOn;
}

BalanceScanner::NameEnd BalanceScanner::scanName(std::size_t from) {
    std::size_t end = std::max(from, named_);
    if (end < text_.size() && xml::isIn(text_[end], end == from ? xml::kNameStart : xml::kNamePart))
        end = xml::skip(text_, end + 1, xml::kNamePart);
    for (; end < text_.size(); ++end) {
        const char byte = text_[end];
        if (xml::isAscii(byte)) {
            if (!xml::isIn(byte, xml::kNamePart)) break;
            if (end == from && !xml::isIn(byte, xml::kNameStart)) return {Step::Unsure, end};
            continue;
        }
        const int length = xml::sequenceLength(text_, end);
        if (length == xml::kCutSequence) {
            broken_ = true;
            brokenAt_ = end;
            named_ = end;
            return {Step::NeedMore, end};
        }
        if (length == xml::kInvalidSequence) return {Step::Unsure, end};
        const auto bytes = static_cast<std::size_t>(length);
        if (!xml::canBeInName(text_.substr(end, bytes), end == from)) return {Step::Unsure, end};
        end += bytes - 1;
    }
    named_ = end;
    if (end == text_.size()) return {Step::NeedMore, end};
    return {end == from ? Step::Unsure : Step::GoOn, end};
}

std::string_view BalanceScanner::innermost() const {
    return openStarts_.empty() ? std::string_view() : std::string_view(openNames_).substr(openStarts_.back());
}

void BalanceScanner::closeInnermost() {
    openNames_.resize(openStarts_.back());
    openStarts_.pop_back();
}

void BalanceScanner::countTo(std::size_t to) {
    position_.advance(text_.substr(counted_, to - counted_));
    counted_ = to;
}

BalanceScanner::Verdict BalanceScanner::stopAtEnd(std::uint32_t code, std::uint32_t beyond) {
    countTo(pos_);
    if (countedAhead_ < pos_) {
        ahead_ = position_;
        countedAhead_ = pos_;
    }
    const std::size_t end = broken_ ? brokenAt_ : text_.size();
    ahead_.advance(text_.substr(countedAhead_, end - countedAhead_));
    countedAhead_ = end;
    stop_ = {code, ahead_.line(), ahead_.column() + beyond};
    return Verdict::Incomplete;
}

BalanceScanner::Verdict BalanceScanner::incomplete() {
    constexpr std::uint32_t kEndTagOpening = 2;  // "</" of the wrapper's end
    const auto wrapperEnd = static_cast<std::uint32_t>(wrapper_.size() + 3);
    if (broken_) return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
    switch (mode_) {
        case Mode::Content:
            if (pos_ < text_.size() && text_[pos_] != ']') return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
            if (openStarts_.empty()) return Verdict::Balanced;
            // The wrapper's end closes an element that happens to have its name, and the wrapper stays open.
            if (innermost() == wrapper_) return stopAtEnd(XML_ERROR_NO_ELEMENTS, wrapperEnd);
            return stopAtEnd(XML_ERROR_TAG_MISMATCH, kEndTagOpening);
        case Mode::CData:
            return stopAtEnd(XML_ERROR_UNCLOSED_CDATA_SECTION, wrapperEnd);
        case Mode::Comment:
            if (text_.size() - pos_ >= 2) return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
            [[fallthrough]];
        case Mode::Instruction:
            stop_ = tokenStart_;
            return Verdict::Incomplete;
        default:
            return stopAtEnd(XML_ERROR_INVALID_TOKEN, 0);
    }
}

bool BalanceScanner::addAttribute(std::string_view name) {
    const auto same = [&](const std::pair<std::size_t, std::size_t>& known) {
        return text_.substr(known.first, known.second) == name;
    };
    if (attributes_.size() < kFewAttributes) {
        if (std::any_of(attributes_.begin(), attributes_.end(), same)) return false;
        attributes_.emplace_back(static_cast<std::size_t>(name.data() - text_.data()), name.size());
        return true;
    }
    if (manyAttributes_.empty()) {
        for (const auto& [start, length] : attributes_) manyAttributes_.emplace(text_.substr(start, length));
    }
    return manyAttributes_.emplace(name).second;
}
