// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/line_editor.h"

#include <gtest/gtest.h>

namespace oku::terminal::test {
namespace {

// Types keys into an editor and shows the line with the cursor as a bar.
class LineEditorTest : public testing::Test {
protected:
    void type(const QString& text) { editor.handle({KeyCode::Text, text}); }
    EditResult press(KeyCode code) { return editor.handle({code, {}}); }
    QString enter(const QString& text) {
        type(text);
        EXPECT_EQ(press(KeyCode::Enter), EditResult::Submitted);
        return editor.takeSubmitted();
    }
    std::string line() const {
        QString text = editor.text();
        return text.insert(editor.cursor(), u'|').toStdString();
    }
    void complete(const QStringList& candidates) { offered = candidates; }

    QStringList offered;
    LineEditor editor{[this](const QString& text, qsizetype cursor) {
        const qsizetype start = text.left(cursor).lastIndexOf(u' ') + 1;
        Completion completion{start, {}};
        for (const QString& one : offered)
            if (one.startsWith(text.mid(start, cursor - start), Qt::CaseInsensitive)) completion.candidates.append(one);
        return completion;
    }};
};

TEST_F(LineEditorTest, MovesAndErasesWholeCharacters) {
    type(QString::fromUtf8("z\u0307李👩‍👩‍👧x"));
    press(KeyCode::Left);
    press(KeyCode::Left);
    EXPECT_EQ(line(), "z\u0307李|👩‍👩‍👧x");
    press(KeyCode::Delete);
    EXPECT_EQ(line(), "z\u0307李|x");
    press(KeyCode::Backspace);
    press(KeyCode::Backspace);
    EXPECT_EQ(line(), "|x");
    press(KeyCode::Backspace);
    press(KeyCode::Left);
    EXPECT_EQ(line(), "|x");
    press(KeyCode::Right);
    press(KeyCode::Right);
    press(KeyCode::Delete);
    EXPECT_EQ(line(), "x|");
    press(KeyCode::Home);
    type("ą");
    EXPECT_EQ(line(), "ą|x");
    press(KeyCode::End);
    EXPECT_EQ(line(), "ąx|");
}

TEST_F(LineEditorTest, MovesAndKillsWords) {
    type("raz, dwa (żółć) 🦆");
    press(KeyCode::WordLeft);
    EXPECT_EQ(line(), "raz, dwa (żółć) |🦆");
    press(KeyCode::WordLeft);
    EXPECT_EQ(line(), "raz, dwa (|żółć) 🦆");
    press(KeyCode::KillWordBack);
    EXPECT_EQ(line(), "raz, |żółć) 🦆");
    press(KeyCode::KillWord);
    EXPECT_EQ(line(), "raz, |) 🦆");
    press(KeyCode::Yank);
    EXPECT_EQ(line(), "raz, żółć|) 🦆");
    press(KeyCode::KillToEnd);
    EXPECT_EQ(line(), "raz, żółć|");
    press(KeyCode::KillToStart);
    EXPECT_EQ(line(), "|");
    press(KeyCode::KillToStart);
    press(KeyCode::Yank);
    EXPECT_EQ(line(), "raz, żółć|");
    press(KeyCode::Home);
    press(KeyCode::WordRight);
    EXPECT_EQ(line(), "raz|, żółć");
}

TEST_F(LineEditorTest, Transposes) {
    type("ab");
    press(KeyCode::Transpose);
    EXPECT_EQ(line(), "ba|");
    press(KeyCode::Home);
    press(KeyCode::Transpose);
    EXPECT_EQ(line(), "|ba");
    press(KeyCode::Right);
    press(KeyCode::Transpose);
    EXPECT_EQ(line(), "ab|");
}

TEST_F(LineEditorTest, PastesSeveralLinesAndSendsThemAsOne) {
    editor.handle({KeyCode::Paste, "raz\ndwa\t\x1b[2Jtrzy\x07"});
    EXPECT_EQ(line(), "raz\ndwa\t[2Jtrzy|");
    press(KeyCode::NewLine);
    type("cztery");
    EXPECT_EQ(editor.view(80).text, "raz⏎dwa [2Jtrzy⏎cztery");
    press(KeyCode::Enter);
    EXPECT_EQ(editor.takeSubmitted(), "raz\ndwa\t[2Jtrzy\ncztery");
    EXPECT_EQ(line(), "|");
}

TEST_F(LineEditorTest, KeepsAHistory) {
    EXPECT_EQ(press(KeyCode::Up), EditResult::Changed);
    EXPECT_EQ(enter("raz"), "raz");
    enter("dwa");
    enter("dwa");
    enter("  ");
    type("szkic");
    press(KeyCode::Up);
    EXPECT_EQ(line(), "dwa|");
    press(KeyCode::Up);
    press(KeyCode::Up);
    EXPECT_EQ(line(), "raz|");
    press(KeyCode::Down);
    press(KeyCode::Down);
    press(KeyCode::Down);
    EXPECT_EQ(line(), "szkic|");
    press(KeyCode::Up);
    type("!");
    EXPECT_EQ(line(), "dwa!|");
    press(KeyCode::Enter);
    press(KeyCode::Up);
    EXPECT_EQ(line(), "dwa!|");
    press(KeyCode::Up);
    EXPECT_EQ(line(), "dwa|");
}

TEST_F(LineEditorTest, SearchesTheHistory) {
    enter("/msg Olek cześć");
    enter("/roster");
    enter("/msg Ewa hej");
    type("szkic");
    press(KeyCode::Search);
    EXPECT_TRUE(editor.searching());
    type("MSG");
    EXPECT_EQ(line(), "/msg Ewa hej|");
    press(KeyCode::Search);
    EXPECT_EQ(line(), "/msg Olek cześć|");
    press(KeyCode::Search);
    EXPECT_EQ(line(), "/msg Olek cześć|");
    press(KeyCode::Cancel);
    EXPECT_FALSE(editor.searching());
    EXPECT_EQ(line(), "szkic|");
    press(KeyCode::Search);
    type("rosx");
    press(KeyCode::Backspace);
    EXPECT_EQ(line(), "/roster|");
    EXPECT_EQ(press(KeyCode::Enter), EditResult::Submitted);
    EXPECT_EQ(editor.takeSubmitted(), "/roster");
}

TEST_F(LineEditorTest, CompletesTheOnlyCandidateAtOnce) {
    complete({"/roster ", "/rename "});
    type("/ros");
    press(KeyCode::Tab);
    EXPECT_EQ(line(), "/roster |");
    EXPECT_TRUE(editor.candidates().isEmpty());
    complete({});
    press(KeyCode::Tab);
    EXPECT_EQ(line(), "/roster |");
}

TEST_F(LineEditorTest, CompletesWhatAllHaveInCommonThenGoesThroughThem) {
    complete({"Olek ", "olimpia ", "Ola "});
    type("hej o");
    press(KeyCode::Tab);
    EXPECT_EQ(line(), "hej Ol|");
    EXPECT_EQ(editor.candidates().size(), 3);
    press(KeyCode::Tab);
    EXPECT_EQ(line(), "hej Olek |");
    press(KeyCode::Tab);
    EXPECT_EQ(line(), "hej olimpia |");
    press(KeyCode::BackTab);
    EXPECT_EQ(line(), "hej Olek |");
    press(KeyCode::BackTab);
    EXPECT_EQ(line(), "hej Ola |");
    type("x");
    EXPECT_TRUE(editor.candidates().isEmpty());
    EXPECT_EQ(line(), "hej Ola x|");
}

TEST_F(LineEditorTest, CompletesInTheMiddleOfALine) {
    complete({"Olek "});
    type("o koniec");
    press(KeyCode::Home);
    press(KeyCode::Right);
    press(KeyCode::Tab);
    EXPECT_EQ(line(), "Olek | koniec");
}

TEST_F(LineEditorTest, HidesASecretAndForgetsIt) {
    enter("/account add");
    editor.setSecret(true);
    type("tajne");
    EXPECT_EQ(editor.view(40).text, "");
    EXPECT_EQ(editor.view(40).cursorColumn, 0);
    press(KeyCode::KillToStart);
    type("tajne2");
    press(KeyCode::Search);
    press(KeyCode::Up);
    press(KeyCode::Enter);
    EXPECT_EQ(editor.takeSubmitted(), "tajne2");
    editor.setSecret(false);
    press(KeyCode::Yank);
    EXPECT_EQ(line(), "|");
    press(KeyCode::Up);
    EXPECT_EQ(line(), "/account add|");
}

TEST_F(LineEditorTest, ScrollsALongLineSoThatTheCursorIsSeen) {
    type("0123456789");
    EXPECT_EQ(editor.view(5).text, "6789");
    EXPECT_EQ(editor.view(5).cursorColumn, 4);
    press(KeyCode::Home);
    EXPECT_EQ(editor.view(5).text, "01234");
    EXPECT_EQ(editor.view(5).cursorColumn, 0);
    editor.setText("李梅李梅");
    EXPECT_EQ(editor.view(6).text, "李梅");
    EXPECT_EQ(editor.view(6).cursorColumn, 4);
    for (int columns = 2; columns < 12; ++columns) {
        for (const auto code : {KeyCode::Home, KeyCode::Right, KeyCode::Right, KeyCode::End, KeyCode::Left}) {
            press(code);
            EXPECT_LT(editor.view(columns).cursorColumn, columns);
            EXPECT_GE(editor.view(columns).cursorColumn, 0);
        }
    }
    EXPECT_EQ(editor.view(1).text, "");
}

TEST_F(LineEditorTest, StaysQuickWithAPasteOfAMegabyte) {
    editor.handle({KeyCode::Paste, QString("zażółć\n").repeated(200000)});
    EXPECT_EQ(editor.text().size(), 1 << 20);
    EXPECT_LT(editor.view(80).cursorColumn, 80);
    press(KeyCode::Left);
    press(KeyCode::Backspace);
    type("x");
    EXPECT_LT(editor.view(80).cursorColumn, 80);
}

}  // namespace
}  // namespace oku::terminal::test
