// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/key.h"

#include <gtest/gtest.h>

namespace oku::terminal::test {
namespace {

struct KeyCase {
    const char* bytes;
    KeyCode code;
};

TEST(KeyDecoderTest, KnowsTheKeysOfCommonTerminals) {
    const KeyCase cases[] = {
        {"\x01", KeyCode::Home},
        {"\x05", KeyCode::End},
        {"\x03", KeyCode::Cancel},
        {"\x04", KeyCode::EndOfInput},
        {"\x08", KeyCode::Backspace},
        {"\x7f", KeyCode::Backspace},
        {"\t", KeyCode::Tab},
        {"\r", KeyCode::Enter},
        {"\n", KeyCode::Enter},
        {"\x0b", KeyCode::KillToEnd},
        {"\x0c", KeyCode::Redraw},
        {"\x12", KeyCode::Search},
        {"\x15", KeyCode::KillToStart},
        {"\x17", KeyCode::KillWordBack},
        {"\x19", KeyCode::Yank},
        {"\x14", KeyCode::Transpose},
        {"\x1b[A", KeyCode::Up},
        {"\x1b[B", KeyCode::Down},
        {"\x1b[C", KeyCode::Right},
        {"\x1b[D", KeyCode::Left},
        {"\x1bOA", KeyCode::Up},
        {"\x1bOH", KeyCode::Home},
        {"\x1bOF", KeyCode::End},
        {"\x1b[H", KeyCode::Home},
        {"\x1b[1~", KeyCode::Home},
        {"\x1b[4~", KeyCode::End},
        {"\x1b[3~", KeyCode::Delete},
        {"\x1b[5~", KeyCode::PageUp},
        {"\x1b[6~", KeyCode::PageDown},
        {"\x1b[Z", KeyCode::BackTab},
        {"\x1b[1;5C", KeyCode::WordRight},
        {"\x1b[1;5D", KeyCode::WordLeft},
        {"\x1bOQ", KeyCode::PaneToggle},
        {"\x1b[12~", KeyCode::PaneToggle},
        {"\x1b[[B", KeyCode::PaneToggle},
        {"\x1bOR", KeyCode::PaneFocus},
        {"\x1b[[C", KeyCode::PaneFocus},
        {"\x1bOS", KeyCode::PaneReachable},
        {"\x1b[5;3~", KeyCode::PanePageUp},
        {"\x1b[6;3~", KeyCode::PanePageDown},
        {"\x1b[1;3A", KeyCode::PreviousWindow},
        {"\x1b[15~", KeyCode::PreviousWindow},
        {"\x1b[1;3B", KeyCode::NextWindow},
        {"\x1b[17~", KeyCode::NextWindow},
        {"\x1b"
         "b",
         KeyCode::WordLeft},
        {"\x1b"
         "f",
         KeyCode::WordRight},
        {"\x1b"
         "d",
         KeyCode::KillWord},
        {"\x1b\x7f", KeyCode::KillWordBack},
        {"\x1b\r", KeyCode::NewLine},
    };
    for (const KeyCase& one : cases) {
        KeyDecoder decoder;
        const auto keys = decoder.feed(one.bytes);
        ASSERT_EQ(keys.size(), 1U) << one.bytes + 1;
        EXPECT_EQ(keys[0], (Key{one.code, {}})) << one.bytes + 1;
    }
}

TEST(KeyDecoderTest, GivesTypedTextAndAltWithACharacter) {
    KeyDecoder decoder;
    EXPECT_EQ(decoder.feed("zaż 🦆"), (std::vector<Key>{{KeyCode::Text, "zaż 🦆"}}));
    EXPECT_EQ(decoder.feed("\x1b"
                           "3"),
              (std::vector<Key>{{KeyCode::Alt, "3"}}));
    EXPECT_EQ(decoder.feed("a\rb"),
              (std::vector<Key>{{KeyCode::Text, "a"}, {KeyCode::Enter, {}}, {KeyCode::Text, "b"}}));
}

TEST(KeyDecoderTest, TakesPiecesCutAnywhere) {
    const QByteArray bytes = "ż🦆\x1b[1;5C\x1b[200~raz\rdwa\x1b[201~\x1bOFx";
    KeyDecoder whole;
    const auto expected = whole.feed(bytes);
    for (qsizetype cut = 1; cut < bytes.size(); ++cut) {
        KeyDecoder decoder;
        auto keys = decoder.feed(bytes.left(cut));
        for (const Key& key : decoder.feed(bytes.mid(cut))) {
            const bool continues = key.code == KeyCode::Text && !keys.empty() && keys.back().code == KeyCode::Text;
            if (continues)
                keys.back().text += key.text;
            else
                keys.push_back(key);
        }
        EXPECT_EQ(keys, expected) << cut;
    }
}

TEST(KeyDecoderTest, GivesAPasteAsOneTextWithLineFeeds) {
    KeyDecoder decoder;
    EXPECT_EQ(decoder.feed("\x1b[200~raz\r\ndwa\rtrzy\n\x1b[A\t\x1b[201~"),
              (std::vector<Key>{{KeyCode::Paste, "raz\ndwa\ntrzy\n\x1b[A\t"}}));
    EXPECT_EQ(decoder.feed("x"), (std::vector<Key>{{KeyCode::Text, "x"}}));
}

TEST(KeyDecoderTest, TellsTheEscapeKeyFromASequenceByThePauseBehindIt) {
    KeyDecoder decoder;
    EXPECT_TRUE(decoder.feed("\x1b").empty());
    EXPECT_TRUE(decoder.pending());
    EXPECT_EQ(decoder.flush(), (std::vector<Key>{{KeyCode::Escape, {}}}));
    EXPECT_FALSE(decoder.pending());
    EXPECT_TRUE(decoder.flush().empty());
    decoder.feed("\x1b");
    EXPECT_EQ(decoder.feed("[A"), (std::vector<Key>{{KeyCode::Up, {}}}));
    EXPECT_EQ(decoder.feed("\x1b\x1b[A"), (std::vector<Key>{{KeyCode::Escape, {}}, {KeyCode::Up, {}}}));
}

TEST(KeyDecoderTest, SurvivesRubbish) {
    KeyDecoder decoder;
    EXPECT_TRUE(decoder.feed("\x1b[99;99z").empty());
    EXPECT_EQ(decoder.feed("\x1b[A").back().code, KeyCode::Up);
    EXPECT_EQ(decoder.feed("\xff").at(0), (Key{KeyCode::Text, "\uFFFD"}));
    decoder.feed("\x1b[200~" + QByteArray(3 << 20, 'x'));
    const auto keys = decoder.feed("\x1b[201~y");
    ASSERT_EQ(keys.size(), 2U);
    EXPECT_LE(keys[0].text.size(), 1 << 20);
    EXPECT_EQ(keys[1].text, "y");
}

}  // namespace
}  // namespace oku::terminal::test
