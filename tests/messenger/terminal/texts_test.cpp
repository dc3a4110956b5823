#include "messenger/terminal/texts.h"

#include <gtest/gtest.h>
#include <QRegularExpression>
#include <QSet>

#include "messenger/terminal/commands.h"
#include "messenger/terminal/wording.h"

namespace oku::terminal::test {
namespace {

QSet<QString> placeholders(const char* text) {
    static const QRegularExpression pattern(QStringLiteral("%[1-9]"));
    QSet<QString> found;
    auto matches = pattern.globalMatch(QString::fromUtf8(text));
    while (matches.hasNext()) found.insert(matches.next().captured());
    return found;
}

TEST(TextsTest, EachTextHasBothLanguagesWithTheSameBlanks) {
    for (const TextRow& row : allTexts()) {
        EXPECT_STRNE(row.words.polish, "");
        EXPECT_STRNE(row.words.english, "");
        EXPECT_EQ(placeholders(row.words.polish), placeholders(row.words.english)) << row.words.english;
    }
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
                                        {"C.UTF-8", Language::Polish},
                                        {"", Language::Polish}}) {
        qputenv("LANG", value);
        EXPECT_EQ(languageOfEnvironment(), wanted) << value;
    }
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
