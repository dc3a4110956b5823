#include "messenger/terminal/screen/line_editor.h"

#include <algorithm>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/printable.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kHistoryLength = 500;
constexpr qsizetype kLongestLine = 1 << 20;

// Typed or pasted text without control characters, but with line feeds and tabs.
QString editable(const QString& text) {
    QString result = text;
    result.removeIf([](QChar c) {
        return (c.unicode() < 0x20 && c != u'\n' && c != u'\t') || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
    });
    return result;
}

QString commonBeginning(const QStringList& texts) {
    QString common = texts.first();
    for (const QString& text : texts) {
        qsizetype same = 0;
        while (same < common.size() && same < text.size() && common.at(same).toLower() == text.at(same).toLower())
            ++same;
        common.truncate(same);
    }
    return common;
}

}  // namespace

EditResult LineEditor::handle(const Key& key) {
    if (searching_) return handleSearch(key);
    if (key.code == KeyCode::Tab || key.code == KeyCode::BackTab) {
        complete(key.code == KeyCode::BackTab);
        return EditResult::Changed;
    }
    candidates_.clear();
    candidateAt_ = -1;
    return edit(key);
}

EditResult LineEditor::edit(const Key& key) {
    if (move(key.code) || kill(key.code)) return EditResult::Changed;
    switch (key.code) {
        case KeyCode::Text:
        case KeyCode::Paste:
            insert(editable(key.text));
            break;
        case KeyCode::NewLine:
            insert(QStringLiteral("\n"));
            break;
        case KeyCode::Enter:
            return submit();
        case KeyCode::Yank:
            insert(killed_);
            break;
        case KeyCode::Transpose:
            transpose();
            break;
        case KeyCode::Up:
            walkHistory(-1);
            break;
        case KeyCode::Down:
            walkHistory(1);
            break;
        case KeyCode::Search:
            if (secret_) return EditResult::Ignored;
            searching_ = true;
            searchText_.clear();
            searchFound_ = true;
            searchAt_ = history_.size();
            draft_ = text_;
            break;
        default:
            return EditResult::Ignored;
    }
    return EditResult::Changed;
}

bool LineEditor::move(KeyCode code) {
    switch (code) {
        case KeyCode::Left:
            moveTo(previousBoundary(text_, cursor_));
            return true;
        case KeyCode::Right:
            moveTo(nextBoundary(text_, cursor_));
            return true;
        case KeyCode::WordLeft:
            moveTo(wordStart());
            return true;
        case KeyCode::WordRight:
            moveTo(wordEnd());
            return true;
        case KeyCode::Home:
            moveTo(0);
            return true;
        case KeyCode::End:
            moveTo(text_.size());
            return true;
        default:
            return false;
    }
}

bool LineEditor::kill(KeyCode code) {
    switch (code) {
        case KeyCode::Backspace:
            erase(previousBoundary(text_, cursor_), cursor_, false);
            return true;
        case KeyCode::Delete:
            erase(cursor_, nextBoundary(text_, cursor_), false);
            return true;
        case KeyCode::KillWordBack:
            erase(wordStart(), cursor_, true);
            return true;
        case KeyCode::KillWord:
            erase(cursor_, wordEnd(), true);
            return true;
        case KeyCode::KillToEnd:
            erase(cursor_, text_.size(), true);
            return true;
        case KeyCode::KillToStart:
            erase(0, cursor_, true);
            return true;
        default:
            return false;
    }
}

void LineEditor::setText(const QString& text) {
    text_ = editable(text);
    cursor_ = text_.size();
    scroll_ = 0;
    historyAt_ = history_.size();
    candidates_.clear();
    candidateAt_ = -1;
    searching_ = false;
}

void LineEditor::setSecret(bool secret) {
    secret_ = secret;
    clear();
}

void LineEditor::insert(const QString& text) {
    const QString taken = text.left(std::max<qsizetype>(0, kLongestLine - text_.size()));
    text_.insert(cursor_, taken);
    cursor_ += taken.size();
}

void LineEditor::erase(qsizetype from, qsizetype to, bool keep) {
    if (keep && to > from && !secret_) killed_ = text_.mid(from, to - from);
    text_.remove(from, to - from);
    cursor_ = from;
}

qsizetype LineEditor::wordStart() const {
    qsizetype at = cursor_;
    while (at > 0 && !text_.at(at - 1).isLetterOrNumber() && !text_.at(at - 1).isSurrogate()) --at;
    while (at > 0 &&
           (text_.at(at - 1).isLetterOrNumber() || text_.at(at - 1).isMark() || text_.at(at - 1).isSurrogate()))
        --at;
    return at;
}

qsizetype LineEditor::wordEnd() const {
    qsizetype at = cursor_;
    while (at < text_.size() && !text_.at(at).isLetterOrNumber() && !text_.at(at).isSurrogate()) ++at;
    while (at < text_.size() &&
           (text_.at(at).isLetterOrNumber() || text_.at(at).isMark() || text_.at(at).isSurrogate()))
        ++at;
    return at;
}

void LineEditor::transpose() {
    const qsizetype middle = cursor_ == text_.size() ? previousBoundary(text_, cursor_) : cursor_;
    const qsizetype start = previousBoundary(text_, middle);
    const qsizetype end = nextBoundary(text_, middle);
    if (start == middle || middle == end) return;
    text_ = text_.left(start) + text_.mid(middle, end - middle) + text_.mid(start, middle - start) + text_.mid(end);
    cursor_ = end;
}

// The first Tab writes what all candidates have in common, the next ones go through them in turn.
void LineEditor::complete(bool backwards) {
    if (!completer_ || secret_) return;
    if (candidates_.size() > 1) {
        const qsizetype count = candidates_.size();
        candidateAt_ =
            backwards ? (std::max<qsizetype>(candidateAt_, 0) + count - 1) % count : (candidateAt_ + 1) % count;
        placeCandidate(candidates_.at(candidateAt_));
        return;
    }
    const Completion found = completer_(text_, cursor_);
    candidates_.clear();
    if (found.candidates.isEmpty()) return;
    completionStart_ = found.start;
    if (found.candidates.size() == 1) {
        placeCandidate(found.candidates.first());
        return;
    }
    candidates_ = found.candidates;
    candidateAt_ = -1;
    const QString common = commonBeginning(candidates_);
    if (common.size() > cursor_ - completionStart_) placeCandidate(common);
}

void LineEditor::placeCandidate(const QString& candidate) {
    text_.replace(completionStart_, cursor_ - completionStart_, candidate);
    cursor_ = completionStart_ + candidate.size();
}

void LineEditor::walkHistory(int step) {
    const qsizetype wanted = historyAt_ + step;
    if (secret_ || wanted < 0 || wanted > history_.size()) return;
    if (historyAt_ == history_.size()) draft_ = text_;
    historyAt_ = wanted;
    text_ = wanted == history_.size() ? draft_ : history_.at(wanted);
    cursor_ = text_.size();
}

EditResult LineEditor::submit() {
    submitted_ = text_;
    if (!secret_ && !text_.trimmed().isEmpty() && (history_.isEmpty() || history_.last() != text_)) {
        history_.append(text_);
        if (history_.size() > kHistoryLength) history_.removeFirst();
    }
    clear();
    return EditResult::Submitted;
}

EditResult LineEditor::handleSearch(const Key& key) {
    switch (key.code) {
        case KeyCode::Text:
            searchText_ += editable(key.text);
            search(false);
            return EditResult::Changed;
        case KeyCode::Backspace:
            searchText_.truncate(previousBoundary(searchText_, searchText_.size()));
            searchAt_ = history_.size();
            search(false);
            return EditResult::Changed;
        case KeyCode::Search:
            search(true);
            return EditResult::Changed;
        case KeyCode::Cancel:
        case KeyCode::Escape:
            setText(draft_);
            return EditResult::Changed;
        default:
            searching_ = false;
            return edit(key);
    }
}

void LineEditor::search(bool next) {
    for (qsizetype at = std::min(searchAt_ - (next ? 1 : 0), history_.size() - 1); at >= 0; --at) {
        if (!history_.at(at).contains(searchText_, Qt::CaseInsensitive)) continue;
        searchAt_ = at;
        text_ = history_.at(at);
        cursor_ = text_.size();
        historyAt_ = at;
        searchFound_ = true;
        return;
    }
    searchFound_ = false;
}

EditorView LineEditor::view(int columns) {
    if (secret_ || columns < 2) return {};
    scroll_ = std::min(scroll_, text_.size());
    if (cursor_ <= scroll_) scroll_ = previousBoundary(text_, cursor_);
    if (cursor_ - scroll_ > columns * 4) scroll_ = previousBoundary(text_, cursor_ - columns * 4);
    const auto columnsToCursor = [this] { return displayWidth(printable(text_.mid(scroll_, cursor_ - scroll_))); };
    // The cursor needs a column of its own behind the text.
    while (columnsToCursor() >= columns) scroll_ = nextBoundary(text_, scroll_);
    return {cutToWidth(printable(text_.mid(scroll_, columns * 16)), columns), columnsToCursor()};
}

}  // namespace oku::terminal
