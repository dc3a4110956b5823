// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include "messenger/terminal/screen/key.h"

namespace oku::terminal {

/// The part of the line that a display of some width shows.
struct EditorView {
    QString text;
    int cursorColumn = 0;
};

/// Typed or pasted text without control characters, but with line feeds and tabs.
QString editable(const QString& text);

/// A text and the cursor in it, with what keys do to both. A step is what a person takes for one character.
class EditedText {
public:
    [[nodiscard]] const QString& text() const { return text_; }
    [[nodiscard]] qsizetype cursor() const { return cursor_; }
    /// The cursor stands behind it.
    void set(const QString& text);
    /// Sets it and shows it from its beginning.
    void startAnew(const QString& text);

    /// False for a key that does not move the cursor.
    bool move(KeyCode code);
    /// False for a key that takes nothing out. Words and parts of the line are kept for yank(), unless they are secret.
    bool kill(KeyCode code, bool secret);
    /// At the cursor; as much as a line can have.
    void insert(const QString& text);
    void yank() { insert(killed_); }
    /// The characters on both sides of the cursor change their places.
    void transpose();
    /// What stands from `start` up to the cursor becomes this.
    void replaceFrom(qsizetype start, const QString& text);

    /// As shown in `columns`, scrolled so that the cursor is seen; line feeds show as a sign.
    EditorView view(int columns);

private:
    void erase(qsizetype from, qsizetype to, bool keep);
    [[nodiscard]] qsizetype wordStart() const;
    [[nodiscard]] qsizetype wordEnd() const;

    QString text_;
    qsizetype cursor_ = 0;
    qsizetype scroll_ = 0;
    QString killed_;
};

}  // namespace oku::terminal
