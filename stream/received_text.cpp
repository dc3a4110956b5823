#include "stream/received_text.h"

#include <algorithm>
#include <functional>

namespace {

constexpr std::string_view kOpenTag = "<stream:stream ";
constexpr std::string_view kDeclarationStart = "<?";
constexpr std::string_view kDeclarationEnd = "?>";

/// Where a search for `wanted` goes on once more text has come: its beginning may stand at the text's end.
std::size_t resumeAt(std::size_t textSize, std::string_view wanted) {
    return textSize < wanted.size() ? 0 : textSize - wanted.size() + 1;
}

std::size_t findOpenTag(std::string_view text, std::size_t from) {
    static const std::boyer_moore_horspool_searcher kSearcher(kOpenTag.begin(), kOpenTag.end());
    if (from >= text.size()) return std::string_view::npos;
    const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), kSearcher);
    return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
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

std::size_t ReceivedText::closeOpenTag() {
    if (openTagDone_) return text_.size();
    const std::size_t start = findOpenTag(text_, openTagFrom_);
    if (start == std::string::npos) {
        openTagFrom_ = resumeAt(text_.size(), kOpenTag);
        return text_.size();
    }
    openTagFrom_ = start;
    const std::size_t end = text_.find('>', std::max(start, openTagEndFrom_));
    openTagEndFrom_ = std::min(end, text_.size());
    if (end == std::string::npos) return text_.size();
    openTagDone_ = true;
    if (text_[end - 1] == '/') return text_.size();
    text_.insert(end, 1, '/');
    return end;
}

std::size_t ReceivedText::removeDeclarations() {
    const std::size_t end = text_.find(kDeclarationEnd, declarationEndFrom_);
    declarationEndFrom_ = end == std::string::npos ? resumeAt(text_.size(), kDeclarationEnd) : end;
    std::size_t start = findDeclaration(text_, declarationStartFrom_);
    if (start == std::string::npos) {
        declarationStartFrom_ = resumeAt(text_.size(), kDeclarationStart);
        return text_.size();
    }
    if (end == std::string::npos) {
        declarationStartFrom_ = start;
        return text_.size();
    }
    std::size_t kept = start;
    for (std::size_t at = start; at < text_.size();) {
        if (text_.compare(at, kDeclarationStart.size(), kDeclarationStart) == 0) {
            at += kDeclarationStart.size();
        } else {
            text_[kept++] = text_[at++];
        }
    }
    text_.resize(kept);
    // What stood on both sides of a removed pair may have joined to a new one, which waits for the next piece.
    declarationStartFrom_ = start == 0 ? 0 : start - 1;
    openTagFrom_ = std::min(openTagFrom_, start < kOpenTag.size() ? 0 : start - kOpenTag.size());
    openTagEndFrom_ = std::min(openTagEndFrom_, start);
    openTagDone_ = false;
    // The end may have gone with the beginning, which it shares a character with in "<?>".
    declarationEndFrom_ = std::min(declarationEndFrom_, declarationStartFrom_);
    return start;
}
