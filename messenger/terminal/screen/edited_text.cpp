// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/screen/edited_text.h"

#include <algorithm>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/printable.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kLongestLine = 1 << 20;

}  // namespace

QString editable(const QString& text) {
    QString result = text;
    result.removeIf([](QChar c) {
        return (c.unicode() < 0x20 && c != u'\n' && c != u'\t') || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
    });
    return result;
}

void EditedText::set(const QString& text) {
    text_ = text;
    cursor_ = text_.size();
}

void EditedText::startAnew(const QString& text) {
    set(text);
    scroll_ = 0;
}

bool EditedText::move(KeyCode code) {
    switch (code) {
        case KeyCode::Left:
            cursor_ = previousBoundary(text_, cursor_);
            return true;
        case KeyCode::Right:
            cursor_ = nextBoundary(text_, cursor_);
            return true;
        case KeyCode::WordLeft:
            cursor_ = wordStart();
            return true;
        case KeyCode::WordRight:
            cursor_ = wordEnd();
            return true;
        case KeyCode::Home:
            cursor_ = 0;
            return true;
        case KeyCode::End:
            cursor_ = text_.size();
            return true;
        default:
            return false;
    }
}

bool EditedText::kill(KeyCode code, bool secret) {
    switch (code) {
        case KeyCode::Backspace:
            erase(previousBoundary(text_, cursor_), cursor_, false);
            return true;
        case KeyCode::Delete:
            erase(cursor_, nextBoundary(text_, cursor_), false);
            return true;
        case KeyCode::KillWordBack:
            erase(wordStart(), cursor_, !secret);
            return true;
        case KeyCode::KillWord:
            erase(cursor_, wordEnd(), !secret);
            return true;
        case KeyCode::KillToEnd:
            erase(cursor_, text_.size(), !secret);
            return true;
        case KeyCode::KillToStart:
            erase(0, cursor_, !secret);
            return true;
        default:
            return false;
    }
}

void EditedText::insert(const QString& text) {
    const QString taken = text.left(std::max<qsizetype>(0, kLongestLine - text_.size()));
    text_.insert(cursor_, taken);
    cursor_ += taken.size();
}

void EditedText::erase(qsizetype from, qsizetype to, bool keep) {
    if (keep && to > from) killed_ = text_.mid(from, to - from);
    text_.remove(from, to - from);
    cursor_ = from;
}

qsizetype EditedText::wordStart() const {
    qsizetype at = cursor_;
    while (at > 0 && !text_.at(at - 1).isLetterOrNumber() && !text_.at(at - 1).isSurrogate()) --at;
    while (at > 0 &&
           (text_.at(at - 1).isLetterOrNumber() || text_.at(at - 1).isMark() || text_.at(at - 1).isSurrogate()))
        --at;
    return at;
}

qsizetype EditedText::wordEnd() const {
    qsizetype at = cursor_;
    while (at < text_.size() && !text_.at(at).isLetterOrNumber() && !text_.at(at).isSurrogate()) ++at;
    while (at < text_.size() &&
           (text_.at(at).isLetterOrNumber() || text_.at(at).isMark() || text_.at(at).isSurrogate()))
        ++at;
    return at;
}

void EditedText::transpose() {
    const qsizetype middle = cursor_ == text_.size() ? previousBoundary(text_, cursor_) : cursor_;
    const qsizetype start = previousBoundary(text_, middle);
    const qsizetype end = nextBoundary(text_, middle);
    if (start == middle || middle == end) return;
    text_ = text_.left(start) + text_.mid(middle, end - middle) + text_.mid(start, middle - start) + text_.mid(end);
    cursor_ = end;
}

void EditedText::replaceFrom(qsizetype start, const QString& text) {
    text_.replace(start, cursor_ - start, text);
    cursor_ = start + text.size();
}

EditorView EditedText::view(int columns) {
    if (columns < 2) return {};
    scroll_ = std::min(scroll_, text_.size());
    if (cursor_ <= scroll_) scroll_ = previousBoundary(text_, cursor_);
    if (cursor_ - scroll_ > columns * 4) scroll_ = previousBoundary(text_, cursor_ - columns * 4);
    const auto columnsToCursor = [this] { return displayWidth(printable(text_.mid(scroll_, cursor_ - scroll_))); };
    // The cursor needs a column of its own behind the text.
    while (columnsToCursor() >= columns) scroll_ = nextBoundary(text_, scroll_);
    return {cutToWidth(printable(text_.mid(scroll_, columns * 16)), columns), columnsToCursor()};
}

}  // namespace oku::terminal
