// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/screen.h"

#include <gtest/gtest.h>
#include <ctime>
#include <QStringList>

#include "messenger/core/texts.h"
#include "messenger/terminal/screen/display_width.h"

namespace oku::terminal::test {
namespace {

const QDateTime kTime(QDate(2026, 11, 21), QTime(9, 5));

LogEntry message(EntryKind kind, const char* who, const char* text) {
    LogEntry entry;
    entry.time = kTime;
    entry.kind = kind;
    entry.who = QString::fromUtf8(who);
    entry.text = QString::fromUtf8(text);
    entry.peer = {"ala@localhost", "olek@localhost"};
    return entry;
}

std::string shown(const LogEntry& entry, LogLayout layout) {
    QStringList lines;
    for (const Line& line : layOut(entry, layout)) {
        EXPECT_LE(lineWidth(line), layout.columns);
        lines.append(lineText(line));
    }
    return lines.join(u'\n').toStdString();
}

LogLayout columns(int count) {
    LogLayout layout;
    layout.columns = count;
    layout.me = QStringLiteral("ala");
    return layout;
}

TEST(LogEntryTest, AlignsTimeWriterAndTextWhereThereIsRoom) {
    const LogEntry entry = message(EntryKind::Incoming, "Olek", "Cześć, jak się masz dziś rano po tej nocy?");
    EXPECT_EQ(shown(entry, columns(62)), "09:05       Olek │ Cześć, jak się masz dziś rano po tej nocy?");
    EXPECT_EQ(shown(entry, columns(56)),
              "09:05      Olek │ Cześć, jak się masz dziś rano po tej\n"
              "                │ nocy?");
    EXPECT_EQ(shown(entry, columns(40)),
              "09:05 Olek: Cześć, jak się masz dziś\n"
              "      rano po tej nocy?");
    EXPECT_EQ(shown(entry, columns(20)),
              "Olek: Cześć, jak się\n"
              "      masz dziś rano\n"
              "      po tej nocy?");
}

TEST(LogEntryTest, NamesTheReceiverInTheMainWindowAndMeInAConversation) {
    const LogEntry entry = message(EntryKind::Outgoing, "Olek", "hej");
    EXPECT_EQ(shown(entry, columns(60)), "09:05      →Olek │ hej");
    LogLayout layout = columns(60);
    layout.conversation = true;
    EXPECT_EQ(shown(entry, layout), "09:05        ala │ hej");
}

TEST(LogEntryTest, NamesTheAccountWhereThereAreSeveral) {
    LogLayout layout = columns(60);
    layout.manyAccounts = true;
    EXPECT_EQ(shown(message(EntryKind::Incoming, "Olek", "hej"), layout), "09:05       Olek │ [ala] hej");
    layout.conversation = true;
    EXPECT_EQ(shown(message(EntryKind::Incoming, "Olek", "hej"), layout), "09:05       Olek │ hej");
}

TEST(LogEntryTest, CutsLongNamesAndKeepsLines) {
    EXPECT_EQ(shown(message(EntryKind::Incoming, "Bardzo Długie Imię 李梅", "raz\ndwa"), columns(60)),
              "09:05 Bardzo Dł… │ raz\n"
              "                 │ dwa");
    EXPECT_EQ(shown(message(EntryKind::Incoming, "Bardzo Długie Imię", "raz"), columns(20)), "Bardzo Dł…: raz");
}

TEST(LogEntryTest, SetsListingsInByTwo) {
    LogEntry entry = message(EntryKind::Listing, "", "raz dwa trzy cztery pięć");
    EXPECT_EQ(shown(entry, columns(12)), "raz dwa trzy\n  cztery\n  pięć");
}

TEST(LogEntryTest, SetsFurtherLinesOfAListingInAsFarAsItSays) {
    LogEntry entry = message(EntryKind::Listing, "", "/pin  raz dwa trzy");
    entry.hang = 6;
    EXPECT_EQ(shown(entry, columns(14)), "/pin  raz dwa\n      trzy");
    entry.hang = 10;
    EXPECT_EQ(shown(entry, columns(14)), "/pin  raz dwa\n       trzy");
}

TEST(LogEntryTest, CutsAnEndlessMessage) {
    const LogEntry entry = message(EntryKind::Incoming, "Olek", QByteArray(3 << 20, 'x').constData());
    EXPECT_LT(layOut(entry, columns(80)).size(), 400U);
}

TEST(LogEntryTest, FitsEveryWidth) {
    const LogEntry entry =
        message(EntryKind::Incoming, "李梅 🦆", "Zażółć 李梅 👩‍👩‍👧 gęślą jaźń\nz\u0307");
    for (int count = 1; count < 130; ++count)
        if (count >= 2) shown(entry, columns(count));
    for (int count = 1; count < 130; ++count) EXPECT_LE(lineWidth(dayLine(kTime.date(), count)), count);
}

class ScreenTest : public testing::Test {
protected:
    Frame compose(int width, int height) {
        content.entries.clear();
        for (const LogEntry& entry : log) content.entries.push_back(&entry);
        return composeFrame(content, editor, {width, height});
    }
    static std::string text(const Frame& frame) {
        QStringList rows;
        for (const Line& row : frame.rows) rows.append(lineText(row));
        return rows.join(u'\n').toStdString();
    }

    void SetUp() override {
        content.title = {{" Olek", Style::Bar}};
        content.status = {{" ala@localhost", Style::Bar}};
        content.prompt = QStringLiteral("Olek> ");
        for (int number = 1; number <= 12; ++number)
            log.push_back(message(EntryKind::Incoming, "Olek", ("wiersz " + std::to_string(number)).c_str()));
    }

    std::vector<LogEntry> log;
    ScreenContent content;
    LineEditor editor;
};

TEST_F(ScreenTest, StandsOnTitleLogStatusAndPrompt) {
    editor.setText("cześć");
    const Frame frame = compose(60, 6);
    EXPECT_EQ(text(frame),
              " Olek                                                       \n"
              "09:05       Olek │ wiersz 10\n"
              "09:05       Olek │ wiersz 11\n"
              "09:05       Olek │ wiersz 12\n"
              " ala@localhost                                              \n"
              "Olek> cześć");
    EXPECT_EQ(frame.cursorRow, 5);
    EXPECT_EQ(frame.cursorColumn, 11);
}

TEST_F(ScreenTest, BeginsEachDayWithItsName) {
    setLanguage(Language::Polish);
    log.erase(log.begin() + 2, log.end());
    log[1].time = kTime.addDays(1);
    EXPECT_EQ(text(compose(60, 9)),
              " Olek                                                       \n"
              "───── sobota, 21 listopada 2026 ────────────────────────────\n"
              "09:05       Olek │ wiersz 1\n"
              "───── niedziela, 22 listopada 2026 ─────────────────────────\n"
              "09:05       Olek │ wiersz 2\n"
              "\n\n"
              " ala@localhost                                              \n"
              "Olek> ");
}

TEST_F(ScreenTest, ScrollsUpToTheFirstLineAndSaysSo) {
    setLanguage(Language::English);
    content.scroll = 3;
    Frame frame = compose(60, 6);
    EXPECT_NE(text(frame).find("wiersz 7\n"), std::string::npos);
    EXPECT_NE(text(frame).find("wiersz 9\n"), std::string::npos);
    EXPECT_EQ(text(frame).find("wiersz 10"), std::string::npos);
    EXPECT_NE(text(frame).find(" ↑ 3 lines up, End returns "), std::string::npos);
    EXPECT_NE(text(compose(40, 6)).find(" ↑ 3  ala@localhost"), std::string::npos);
    content.scroll = 1000;
    frame = compose(60, 6);
    EXPECT_EQ(frame.scroll, 10);
    EXPECT_NE(text(frame).find("wiersz 1\n"), std::string::npos);
    setLanguage(Language::Polish);
}

TEST_F(ScreenTest, PutsTheListBesideTheLog) {
    content.paneColumns = 12;
    content.pane = {{{"▾ Praca", Style::Heading}}, {{" ● ❤️", Style::Online}}};
    const Frame frame = compose(60, 6);
    EXPECT_EQ(text(frame),
              " Olek                                                       \n"
              "▾ Praca     │09:05 Olek: wiersz 10\n"
              " ● ❤️        │09:05 Olek: wiersz 11\n"
              "            │09:05 Olek: wiersz 12\n"
              " ala@localhost                                              \n"
              "Olek> ");
    EXPECT_TRUE(paint(frame.rows[2], Colours::Monochrome).contains("\x1B[13G\x1B[2m│"))
        << "whatever the width of an emoji";
    content.paneColumns = 60;
    EXPECT_EQ(lineText(compose(60, 6).rows[1]), "▾ Praca");
}

TEST_F(ScreenTest, KeepsItsPartsOnAnySize) {
    editor.setText("Zażółć gęślą 李梅 jaźń 🦆");
    for (int width = 1; width < 100; width += 3) {
        for (int height = 1; height < 12; ++height) {
            const Frame frame = compose(width, height);
            EXPECT_EQ(static_cast<int>(frame.rows.size()), height);
            EXPECT_LT(frame.cursorColumn, width);
            for (const Line& row : frame.rows) EXPECT_LE(lineWidth(row), std::max(width, 2)) << width;
        }
    }
    EXPECT_EQ(logRows({80, 24}), 21);
    EXPECT_EQ(logRows({80, 1}), 0);
}

TEST_F(ScreenTest, ShowsCandidatesInPlaceOfTheStatus) {
    LineEditor completing([](const QString&, qsizetype) { return Completion{0, {"Olek ", "Ola "}}; });
    completing.handle({KeyCode::Tab, {}});
    content.entries.clear();
    const Frame frame = composeFrame(content, completing, {40, 6});
    EXPECT_TRUE(lineText(frame.rows[4]).startsWith(" Olek  Ola "));
}

TEST_F(ScreenTest, MarksTheCandidateThatStandsInTheLineAndKeepsItInSight) {
    LineEditor completing([](const QString&, qsizetype) { return Completion{0, {"/account ", "/add ", "/answer "}}; });
    content.entries.clear();
    for (int tabs = 0; tabs < 4; ++tabs) completing.handle({KeyCode::Tab, {}});
    const Line wide = composeFrame(content, completing, {40, 6}).rows[4];
    EXPECT_TRUE(lineText(wide).startsWith(" /account  /add  /answer "));
    EXPECT_EQ(wide[2], (Span{" /answer ", Style::BarAlert}));
    EXPECT_EQ(wide[0].style, Style::Bar);
    EXPECT_EQ(lineText(composeFrame(content, completing, {20, 6}).rows[4]), " … /add  /answer    ");
}

TEST_F(ScreenTest, ShowsAQuestionForASecretWhole) {
    content.prompt = QStringLiteral("password of ala@localhost (not shown): ");
    editor.setSecret(true);
    const Frame frame = compose(44, 6);
    EXPECT_EQ(lineText(frame.rows[5]), content.prompt);
    EXPECT_EQ(frame.cursorColumn, 39);
    editor.setSecret(false);
    EXPECT_LE(lineWidth(compose(44, 6).rows[5]), 22);
}

TEST_F(ScreenTest, SaysThatNoEarlierLineHasWhatIsSearched) {
    setLanguage(Language::English);
    editor.handle({KeyCode::Text, "/roster"});
    editor.handle({KeyCode::Enter, {}});
    editor.handle({KeyCode::Search, {}});
    editor.handle({KeyCode::Text, "ro"});
    EXPECT_TRUE(lineText(compose(60, 6).rows[5]).startsWith("(search) ro: "));
    editor.handle({KeyCode::Text, "x"});
    EXPECT_TRUE(lineText(compose(60, 6).rows[5]).startsWith("(search: nothing) rox: "));
    editor.handle({KeyCode::Backspace, {}});
    EXPECT_TRUE(lineText(compose(60, 6).rows[5]).startsWith("(search) ro: "));
    setLanguage(Language::Polish);
}

TEST(FramePainterTest, WritesOnlyTheRowsThatChanged) {
    FramePainter painter(Colours::None);
    Frame frame;
    frame.rows = {{{"raz", Style::Error}}, {{"dwa", Style::Plain}}};
    frame.cursorRow = 1;
    EXPECT_EQ(painter.paintFrame(frame),
              "\x1B[?25l\x1B[0m\x1B[2J\x1B[1;1H\x1B[2Kraz\x1B[2;1H\x1B[2Kdwa\x1B[2;1H\x1B[?25h");
    frame.rows[1] = {{"trzy", Style::Plain}};
    frame.cursorColumn = 4;
    EXPECT_EQ(painter.paintFrame(frame), "\x1B[?25l\x1B[2;1H\x1B[2Ktrzy\x1B[2;5H\x1B[?25h");
    EXPECT_EQ(painter.paintFrame(frame), "");
    frame.cursorColumn = 2;
    EXPECT_EQ(painter.paintFrame(frame), "\x1B[?25l\x1B[2;3H\x1B[?25h");
    painter.forget();
    EXPECT_TRUE(painter.paintFrame(frame).contains("\x1B[2J"));
}

TEST(StyleTest, PaintsByWhatTheTerminalMayShow) {
    const Line line{{"a", Style::Error}, {"b", Style::Plain}, {"c", Style::Mine}};
    EXPECT_EQ(paint(line, Colours::Full), "\x1B[1;31ma\x1B[0mb\x1B[36mc\x1B[0m");
    EXPECT_EQ(paint(line, Colours::Monochrome), "\x1B[1ma\x1B[0mbc");
    EXPECT_EQ(paint(line, Colours::None), "abc");
}

TEST(StyleTest, AsksTheEnvironmentForColours) {
    qputenv("TERM", "xterm-256color");
    qunsetenv("NO_COLOR");
    EXPECT_EQ(coloursOfEnvironment(), Colours::Full);
    qputenv("NO_COLOR", "1");
    EXPECT_EQ(coloursOfEnvironment(), Colours::Monochrome);
    qputenv("NO_COLOR", "");
    EXPECT_EQ(coloursOfEnvironment(), Colours::Full);
    qputenv("TERM", "dumb");
    EXPECT_EQ(coloursOfEnvironment(), Colours::None);
    qunsetenv("TERM");
    EXPECT_EQ(coloursOfEnvironment(), Colours::None);
}

TEST(StyleTest, CutsALineWithItsStyles) {
    const Line line{{"raz", Style::Bar}, {"李梅", Style::BarAlert}};
    EXPECT_EQ(cutLine(line, 7), line);
    EXPECT_EQ(cutLine(line, 6), (Line{{"raz", Style::Bar}, {"李…", Style::BarAlert}}));
    EXPECT_EQ(cutLine(line, 3), (Line{{"raz", Style::Bar}}));
    EXPECT_EQ(cutLine(line, 0), Line{});
}

TEST(LogEntryTest, ShowsLocalTime) {
    qputenv("TZ", "XYZ-3");  // three hours before Greenwich
    ::tzset();
    LogEntry entry;
    entry.time = QDateTime::fromString(QStringLiteral("2026-01-31T22:30:00Z"), Qt::ISODate);
    entry.text = QStringLiteral("tekst");
    LogLayout layout;
    layout.columns = 80;
    EXPECT_TRUE(lineText(layOut(entry, layout).front()).startsWith(QStringLiteral("01:30 ")));
    qunsetenv("TZ");
    ::tzset();
}

}  // namespace
}  // namespace oku::terminal::test
