// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/received_text.h"

#include <algorithm>

namespace protolink {

namespace {

constexpr std::string_view kOpenTag = "<stream:stream ";
constexpr std::string_view kDeclarationStart = "<?";
constexpr std::string_view kDeclarationEnd = "?>";

/// Where a search for `wanted` goes on once more text has come: its beginning may stand at the text's end.
std::size_t resumeAt(std::size_t textSize, std::string_view wanted) {
    return textSize < wanted.size() ? 0 : textSize - wanted.size() + 1;
}

/// Looks for the colon, which is rare where `<` stands before every tag.
std::size_t findOpenTag(std::string_view text, std::size_t from) {
    constexpr std::size_t kColon = kOpenTag.find(':');
    for (std::size_t mark = text.find(':', from + kColon); mark != std::string_view::npos;
         mark = text.find(':', mark + 1))
        if (text.substr(mark - kColon).starts_with(kOpenTag)) return mark - kColon;
    return std::string_view::npos;
}

/// Looks for the question mark, which is rare where the other character stands before every tag.
std::size_t findDeclaration(std::string_view text, std::size_t from) {
    for (std::size_t mark = text.find('?', from + 1); mark != std::string_view::npos; mark = text.find('?', mark + 1))
        if (text[mark - 1] == '<') return mark - 1;
    return std::string_view::npos;
}

}  // namespace

void ReceivedText::clear() { *this = ReceivedText(); }

std::size_t ReceivedText::append(std::string_view piece) {
    const std::size_t before = text_.size();
    text_.append(piece);
    const std::size_t closed = closeOpenTag();
    return std::min({before, closed, removeDeclarations()});
}

/// Each "<" before a declaration may begin one once that is gone.
void ReceivedText::settle(std::size_t place) {
    const std::string_view text = view();
    const std::size_t known = std::min(lessThanEnd_, place);
    std::size_t start = place;
    while (start > known && text[start - 1] == '<') --start;
    if (start == known) start = std::min(lessThanStart_, known);
    while (start > 0 && text[start - 1] == '<') --start;
    lessThanStart_ = start;
    lessThanEnd_ = place;
}

std::size_t ReceivedText::closeOpenTag() {
    const std::string_view text = view();
    if (openTagDone_) return text.size();
    const std::size_t start = findOpenTag(text, openTagFrom_);
    if (start == std::string_view::npos) {
        openTagFrom_ = resumeAt(text.size(), kOpenTag);
        return text.size();
    }
    openTagFrom_ = start;
    const std::size_t end = text.find('>', std::max(start, openTagEndFrom_));
    openTagEndFrom_ = std::min(end, text.size());
    if (end == std::string_view::npos) return text.size();
    openTagDone_ = true;
    if (text[end - 1] == '/') return text.size();
    text_.insert(end, '/');
    return end;
}

std::size_t ReceivedText::removeDeclarations() {
    const std::string_view text = view();
    const std::size_t end = text.find(kDeclarationEnd, declarationEndFrom_);
    declarationEndFrom_ = end == std::string_view::npos ? resumeAt(text.size(), kDeclarationEnd) : end;
    const std::size_t start = findDeclaration(text, declarationStartFrom_);
    if (start == std::string_view::npos) {
        declarationStartFrom_ = resumeAt(text.size(), kDeclarationStart);
        settle(text.size());
        return text.size();
    }
    settle(start);
    if (end == std::string_view::npos) {
        declarationStartFrom_ = start;
        return text.size();
    }
    std::size_t kept = start;
    for (std::size_t at = start; at < text.size();) {
        if (text.substr(at).starts_with(kDeclarationStart)) {
            at += kDeclarationStart.size();
        } else {
            data()[kept++] = text[at++];
        }
    }
    text_.truncate(kept);
    // What stood on both sides of a removed pair may have joined to a new one, which waits for the next piece.
    declarationStartFrom_ = start == 0 ? 0 : start - 1;
    openTagFrom_ = std::min(openTagFrom_, start < kOpenTag.size() ? 0 : start - kOpenTag.size());
    openTagEndFrom_ = std::min(openTagEndFrom_, start);
    openTagDone_ = false;
    // The end may have gone with the beginning, which it shares a character with in "<?>".
    declarationEndFrom_ = std::min(declarationEndFrom_, declarationStartFrom_);
    return start;
}

}  // namespace protolink
