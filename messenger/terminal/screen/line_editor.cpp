// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/line_editor.h"

#include <algorithm>
#include <utility>

#include "messenger/terminal/screen/display_width.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kHistoryLength = 500;

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
    if (line_.move(key.code) || line_.kill(key.code, secret_)) return EditResult::Changed;
    switch (key.code) {
        case KeyCode::Text:
        case KeyCode::Paste:
            line_.insert(editable(key.text));
            break;
        case KeyCode::NewLine:
            line_.insert(QStringLiteral("\n"));
            break;
        case KeyCode::Enter:
            return submit();
        case KeyCode::Yank:
            line_.yank();
            break;
        case KeyCode::Transpose:
            line_.transpose();
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
            draft_ = text();
            break;
        default:
            return EditResult::Ignored;
    }
    return EditResult::Changed;
}

void LineEditor::setText(const QString& text) {
    line_.startAnew(editable(text));
    historyAt_ = history_.size();
    candidates_.clear();
    candidateAt_ = -1;
    searching_ = false;
}

void LineEditor::setSecret(bool secret) {
    secret_ = secret;
    clear();
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
    const Completion found = completer_(text(), line_.cursor());
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
    if (common.size() > line_.cursor() - completionStart_) placeCandidate(common);
}

void LineEditor::placeCandidate(const QString& candidate) { line_.replaceFrom(completionStart_, candidate); }

void LineEditor::walkHistory(int step) {
    const qsizetype wanted = historyAt_ + step;
    if (secret_ || wanted < 0 || wanted > history_.size()) return;
    if (historyAt_ == history_.size()) draft_ = text();
    historyAt_ = wanted;
    line_.set(wanted == history_.size() ? draft_ : history_.at(wanted));
}

EditResult LineEditor::submit() {
    submitted_ = text();
    keptSubmitted_ = !secret_ && !text().trimmed().isEmpty() && (history_.isEmpty() || history_.last() != text());
    if (keptSubmitted_) {
        history_.append(text());
        if (history_.size() > kHistoryLength) history_.removeFirst();
    }
    clear();
    return EditResult::Submitted;
}

void LineEditor::forgetSubmitted() {
    if (std::exchange(keptSubmitted_, false)) history_.removeLast();
    historyAt_ = history_.size();
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
        line_.set(history_.at(at));
        historyAt_ = at;
        searchFound_ = true;
        return;
    }
    searchFound_ = false;
}

}  // namespace oku::terminal
