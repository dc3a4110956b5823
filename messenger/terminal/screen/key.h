// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Keys of a terminal: what the bytes that it sends stand for.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <vector>

namespace oku::terminal {

enum class KeyCode {
    Text,   ///< `text` holds what was typed
    Paste,  ///< `text` holds what was pasted in one piece, with line feeds
    Alt,    ///< Alt with the character in `text`
    Enter,
    NewLine,
    Tab,
    BackTab,
    Backspace,
    Delete,
    Left,
    Right,
    WordLeft,
    WordRight,
    Home,
    End,
    Up,
    Down,
    PageUp,
    PageDown,
    KillWordBack,
    KillWord,
    KillToEnd,
    KillToStart,
    Yank,
    Transpose,
    Search,
    Cancel,
    Escape,
    EndOfInput,
    Redraw,
    PaneToggle,
    PaneFocus,
    PaneReachable,
    PanePageUp,
    PanePageDown,
    PreviousWindow,
    NextWindow,
};

struct Key {
    KeyCode code;
    QString text;

    bool operator==(const Key&) const = default;
};

/// Turns the bytes of a terminal (UTF-8, control characters, CSI and SS3 sequences, bracketed paste) into keys. Pieces
/// may be cut anywhere. Unknown sequences give nothing; bytes that are not UTF-8 give U+FFFD.
class KeyDecoder {
public:
    std::vector<Key> feed(const QByteArray& bytes);

    /// True while an escape sequence is incomplete: a lone Escape key looks like that.
    bool pending() const { return state_ == State::Escape; }

    /// Called when nothing followed for a moment: a pending escape was the Escape key.
    std::vector<Key> flush();

private:
    enum class State { Ground, Escape, Sequence, SingleShift, Paste };

    void take(QChar c, std::vector<Key>& keys);
    void ground(QChar c, std::vector<Key>& keys);
    void afterEscape(QChar c, std::vector<Key>& keys);
    void inSequence(QChar c, std::vector<Key>& keys);
    void inPaste(QChar c, std::vector<Key>& keys);

    QStringDecoder decoder_{QStringDecoder::Utf8};
    State state_ = State::Ground;
    QString sequence_;
    QString pasted_;
};

}  // namespace oku::terminal
