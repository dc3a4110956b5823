// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/key.h"

#include <algorithm>
#include <array>
#include <optional>

namespace oku::terminal {
namespace {

constexpr char16_t kEscape = 0x1B;
constexpr qsizetype kLongestSequence = 32;
constexpr qsizetype kLongestPaste = 1 << 20;

struct ControlKey {
    char16_t character;
    KeyCode code;
};

constexpr std::array kControls = std::to_array<ControlKey>({
    {0x01, KeyCode::Home},        // Ctrl-A
    {0x02, KeyCode::Left},        // Ctrl-B
    {0x03, KeyCode::Cancel},      // Ctrl-C
    {0x04, KeyCode::EndOfInput},  // Ctrl-D
    {0x05, KeyCode::End},         // Ctrl-E
    {0x06, KeyCode::Right},       // Ctrl-F
    {0x07, KeyCode::Cancel},      // Ctrl-G
    {0x08, KeyCode::Backspace},   // Ctrl-H
    {0x09, KeyCode::Tab},
    {0x0A, KeyCode::Enter},      // what was typed before the program listened has its returns changed to this
    {0x0B, KeyCode::KillToEnd},  // Ctrl-K
    {0x0C, KeyCode::Redraw},     // Ctrl-L
    {0x0D, KeyCode::Enter},
    {0x0E, KeyCode::Down},          // Ctrl-N
    {0x10, KeyCode::Up},            // Ctrl-P
    {0x12, KeyCode::Search},        // Ctrl-R
    {0x14, KeyCode::Transpose},     // Ctrl-T
    {0x15, KeyCode::KillToStart},   // Ctrl-U
    {0x17, KeyCode::KillWordBack},  // Ctrl-W
    {0x19, KeyCode::Yank},          // Ctrl-Y
    {0x7F, KeyCode::Backspace},
});

struct SequenceKey {
    const char16_t* sequence;  // behind the introducer
    KeyCode code;
};

constexpr std::array kSequences = std::to_array<SequenceKey>({
    {u"A", KeyCode::Up},
    {u"B", KeyCode::Down},
    {u"C", KeyCode::Right},
    {u"D", KeyCode::Left},
    {u"H", KeyCode::Home},
    {u"F", KeyCode::End},
    {u"Z", KeyCode::BackTab},
    {u"M", KeyCode::Enter},
    {u"1~", KeyCode::Home},
    {u"7~", KeyCode::Home},
    {u"4~", KeyCode::End},
    {u"8~", KeyCode::End},
    {u"3~", KeyCode::Delete},
    {u"5~", KeyCode::PageUp},
    {u"6~", KeyCode::PageDown},
    {u"3;5~", KeyCode::KillWord},
    {u"1;5C", KeyCode::WordRight},
    {u"1;5D", KeyCode::WordLeft},
    {u"1;3C", KeyCode::WordRight},
    {u"1;3D", KeyCode::WordLeft},
    {u"5C", KeyCode::WordRight},
    {u"5D", KeyCode::WordLeft},
    {u"5;2~", KeyCode::PageUp},
    {u"6;2~", KeyCode::PageDown},
    {u"1;3A", KeyCode::PreviousWindow},
    {u"1;3B", KeyCode::NextWindow},
    {u"5;3~", KeyCode::PanePageUp},
    {u"6;3~", KeyCode::PanePageDown},
    // The function keys of terminals of today, of older ones, and of the console of Linux.
    {u"Q", KeyCode::PaneToggle},
    {u"12~", KeyCode::PaneToggle},
    {u"[B", KeyCode::PaneToggle},
    {u"R", KeyCode::PaneFocus},
    {u"13~", KeyCode::PaneFocus},
    {u"[C", KeyCode::PaneFocus},
    {u"S", KeyCode::PaneReachable},
    {u"14~", KeyCode::PaneReachable},
    {u"[D", KeyCode::PaneReachable},
    {u"15~", KeyCode::PreviousWindow},
    {u"[E", KeyCode::PreviousWindow},
    {u"17~", KeyCode::NextWindow},
});

std::optional<KeyCode> controlKey(QChar c) {
    const auto* found = std::find_if(kControls.begin(), kControls.end(),
                                     [c](const ControlKey& key) { return key.character == c.unicode(); });
    if (found == kControls.end()) return std::nullopt;
    return found->code;
}

}  // namespace

std::vector<Key> KeyDecoder::feed(const QByteArray& bytes) {
    std::vector<Key> keys;
    const QString text = decoder_.decode(bytes);
    for (const QChar c : text) take(c, keys);
    return keys;
}

std::vector<Key> KeyDecoder::flush() {
    if (state_ != State::Escape) return {};
    state_ = State::Ground;
    return {{KeyCode::Escape, {}}};
}

void KeyDecoder::take(QChar c, std::vector<Key>& keys) {
    switch (state_) {
        case State::Ground:
            ground(c, keys);
            break;
        case State::Escape:
            afterEscape(c, keys);
            break;
        case State::Sequence:
        case State::SingleShift:
            inSequence(c, keys);
            break;
        case State::Paste:
            inPaste(c, keys);
            break;
    }
}

void KeyDecoder::ground(QChar c, std::vector<Key>& keys) {
    if (c == QChar(kEscape)) {
        state_ = State::Escape;
        return;
    }
    if (const auto code = controlKey(c)) {
        keys.push_back({*code, {}});
        return;
    }
    if (c.unicode() < 0x20) return;
    // What was typed in one piece stays one key, so that both halves of a surrogate pair come together.
    if (keys.empty() || keys.back().code != KeyCode::Text) keys.push_back({KeyCode::Text, {}});
    keys.back().text += c;
}

void KeyDecoder::afterEscape(QChar c, std::vector<Key>& keys) {
    state_ = State::Ground;
    if (c == u'[' || c == u'O') {
        state_ = c == u'[' ? State::Sequence : State::SingleShift;
        sequence_.clear();
    } else if (c == QChar(kEscape)) {
        keys.push_back({KeyCode::Escape, {}});
        state_ = State::Escape;
    } else if (c == u'\r' || c == u'\n') {
        keys.push_back({KeyCode::NewLine, {}});
    } else if (c.unicode() == 0x7F || c.unicode() == 0x08) {
        keys.push_back({KeyCode::KillWordBack, {}});
    } else if (c == u'b' || c == u'f') {
        keys.push_back({c == u'b' ? KeyCode::WordLeft : KeyCode::WordRight, {}});
    } else if (c == u'd') {
        keys.push_back({KeyCode::KillWord, {}});
    } else if (c.unicode() >= 0x20) {
        keys.push_back({KeyCode::Alt, c});
    }
}

void KeyDecoder::inSequence(QChar c, std::vector<Key>& keys) {
    sequence_ += c;
    if (sequence_ == QStringView(u"[") && state_ == State::Sequence) return;  // the console's function keys go on
    const bool ends = c.unicode() >= 0x40 && c.unicode() <= 0x7E;
    if (!ends && sequence_.size() < kLongestSequence && c.unicode() >= 0x20 && c.unicode() < 0x40) return;
    state_ = State::Ground;
    if (sequence_ == QStringLiteral("200~")) {
        state_ = State::Paste;
        pasted_.clear();
        return;
    }
    const auto* found = std::find_if(kSequences.begin(), kSequences.end(),
                                     [this](const SequenceKey& key) { return sequence_ == QStringView(key.sequence); });
    if (found != kSequences.end()) keys.push_back({found->code, {}});
}

void KeyDecoder::inPaste(QChar c, std::vector<Key>& keys) {
    static const QString end = QStringLiteral("\x1B[201~");
    pasted_ += c;
    if (!pasted_.endsWith(end)) {
        if (pasted_.size() > kLongestPaste + end.size()) pasted_.remove(kLongestPaste, 1);
        return;
    }
    state_ = State::Ground;
    pasted_.chop(end.size());
    pasted_.truncate(kLongestPaste);
    pasted_.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    pasted_.replace(u'\r', u'\n');
    keys.push_back({KeyCode::Paste, pasted_});
    pasted_.clear();
}

}  // namespace oku::terminal
