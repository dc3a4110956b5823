// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/texts.h"

#include <gtest/gtest.h>

#include "messenger/core/texts.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/commands.h"

namespace oku::terminal::test {
namespace {

TEST(TextsTest, CountsWithTheFormsOfTheLanguage) {
    const auto lines = [](qsizetype count) { return sayCounted(Text::ScrolledBack, count); };
    setLanguage(Language::English);
    EXPECT_EQ(lines(1), "↑ 1 line up, End returns");
    EXPECT_EQ(lines(2), "↑ 2 lines up, End returns");
    setLanguage(Language::Polish);
    EXPECT_EQ(lines(1), "↑ 1 wiersz wyżej, End wraca");
    EXPECT_EQ(lines(3), "↑ 3 wiersze wyżej, End wraca");
    EXPECT_EQ(lines(12), "↑ 12 wierszy wyżej, End wraca");
    EXPECT_EQ(lines(24), "↑ 24 wiersze wyżej, End wraca");
    EXPECT_EQ(sayCounted(Text::TextCut, 100'001), "… (całość: 100001 znaków, zobacz /export)");
}

TEST(TextsTest, FillsBlanksInOneGo) {
    setLanguage(Language::English);
    EXPECT_EQ(say(Text::AccountRefused, "%2", "x"), "account %2: x");
    EXPECT_EQ(say(Text::DeliverySent, 5, "Olek"), "message 5 to Olek was sent");
    setLanguage(Language::Polish);
    EXPECT_EQ(say(Text::DeliverySent, 5, "Olek"), "wiadomość 5 do Olek wysłana");
}

TEST(TextsTest, TakesTheLanguageFromTheEnvironment) {
    qunsetenv("LC_ALL");
    qunsetenv("LC_MESSAGES");
    for (const auto& [value, wanted] : {std::pair{"en_GB.UTF-8", Language::English},
                                        {"pl_PL.UTF-8", Language::Polish},
                                        {"pl", Language::Polish},
                                        {"pl@quot", Language::Polish},
                                        {"plt_MG.UTF-8", Language::English},
                                        {"C.UTF-8", Language::English},
                                        {"C", Language::English},
                                        {"POSIX", Language::English},
                                        {"", Language::English}}) {
        qputenv("LANG", value);
        EXPECT_EQ(languageOfEnvironment(), wanted) << value;
    }
    qputenv("LC_ALL", "C");
    qputenv("LANG", "pl_PL.UTF-8");
    EXPECT_EQ(languageOfEnvironment(), Language::English) << "the first that is set decides";
    qunsetenv("LC_ALL");
}

TEST(TextsTest, NamesStatusesButtonsAndAddresses) {
    setLanguage(Language::English);
    EXPECT_EQ(statusText(Status::xa), "away for long");
    EXPECT_EQ(statusText(static_cast<Status>(77)), "error");
    EXPECT_EQ(buttonFromWord("TAK"), BoxButton::yes);
    EXPECT_EQ(buttonFromWord("no"), BoxButton::no);
    EXPECT_FALSE(buttonFromWord("").has_value());
    EXPECT_EQ(bareJid(" Ala@Localhost/Dom/x "), "ala@localhost");
    Contact contact;
    EXPECT_EQ(subscriptionText(contact), "authorization unknown");
    contact.subscription = QStringLiteral("to");
    contact.waiting = true;
    EXPECT_EQ(subscriptionText(contact), "you see them, they do not see you, waits for consent");
    setLanguage(Language::Polish);
}

}  // namespace
}  // namespace oku::terminal::test
