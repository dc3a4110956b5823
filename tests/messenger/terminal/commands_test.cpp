// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/command_families.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include "messenger/core/texts.h"
#include "messenger/terminal/talk/session.h"
#include "tests/messenger/terminal/fake_messenger.h"

namespace oku::terminal::test {
namespace {

const QString kMe = QStringLiteral("ala@localhost");

class NotingDisplay final : public Display {
public:
    QStringList lines;
    int width = 80;

    void appended(const LogEntry& entry) override { lines.append(entry.text); }
    void changed() override {}
    int columns() const override { return width; }
    void ended() override {}
};

class CommandsTest : public testing::Test {
protected:
    void SetUp() override {
        setLanguage(Language::English);
        messenger.accountList = {account("ala@localhost"), account("druga@localhost")};
        messenger.contactLists[kMe] = {contact("olek@localhost", "Olek", "Znajomi", Status::away),
                                       contact("ewa@localhost", "Ewa Żółć", "Praca"),
                                       contact("ola@localhost", "Ola", "Praca")};
        messenger.contactLists[kMe][0].resources = {resource("dom", Status::away, 5, "Zaraz wracam"),
                                                    resource("", Status::dnd)};
        messenger.contactLists[kMe][1].subscription = QStringLiteral("none");
        messenger.contactLists[kMe][1].unread = 2;
        session.start();
        display.lines.clear();
    }
    void TearDown() override { setLanguage(Language::Polish); }

    // Types a command; gives what the messenger was asked for, and what was told behind an arrow.
    std::string type(const char* line) {
        messenger.calls.clear();
        display.lines.clear();
        session.submit(QString::fromUtf8(line));
        static const QRegularExpression changes("^(?!settingValue|markRead)");
        QString result = messenger.takeCalls().filter(changes).join(u'\n');
        if (!display.lines.isEmpty()) result += QStringLiteral(" > ") + display.lines.join(u'\n');
        return result.toStdString();
    }

    FakeMessenger messenger;
    NotingDisplay display;
    Session session{messenger, display, {{}, {}, {}, false, false, QStringLiteral("/start")}};
};

TEST_F(CommandsTest, CancelTakesBackTheLastThatWaitsInTheConversation) {
    for (const qint64 number : {7, 8, 9}) {
        Message message;
        message.number = number;
        message.account = kMe;
        message.contact = QStringLiteral("olek@localhost");
        message.direction = Direction::out;
        message.state = number == 9 ? DeliveryState::sent : DeliveryState::queued;
        messenger.messages.append(message);
    }
    EXPECT_EQ(type("/cancel").find("cancelMessage"), std::string::npos) << "in no conversation";
    type("/chat-with Olek");
    EXPECT_NE(type("/cancel").find("cancelMessage|8"), std::string::npos);
    messenger.messages.clear();
    EXPECT_NE(type("/cancel").find("no message of this conversation waits"), std::string::npos);
}

TEST_F(CommandsTest, AccountRemoveWantsTheAddress) {
    EXPECT_EQ(type("/account remove druga@localhost"), "removeAccount|druga@localhost|");
    EXPECT_EQ(type("/account remove druga@localhost history"), "removeAccount|druga@localhost|history");
    EXPECT_EQ(type("/account remove").find("removeAccount"), std::string::npos);
    EXPECT_EQ(type("/account remove druga@localhost all").find("removeAccount"), std::string::npos);
    emit messenger.accounts().accountRemoved(kMe);
    EXPECT_NE(display.lines.join(u'\n').indexOf(QStringLiteral("the account ala@localhost was removed")), -1);
}

TEST_F(CommandsTest, ExportAsksBeforeItReplacesAFile) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("there.txt"));
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    const std::string command = "/export " + path.toStdString();
    const std::string question =
        " > the file " + path.toStdString() + " is there already. Replace it? Then repeat the command.";
    EXPECT_EQ(type(command.c_str()), question);
    EXPECT_EQ(type("/export /start/other").find("exportHistory|ala@localhost||/start/other >"), 0U);
    EXPECT_EQ(type(command.c_str()), question) << "another command lay between";
    EXPECT_EQ(type(command.c_str()).find("exportHistory|ala@localhost||" + path.toStdString() + " (replaced) >"), 0U);
    EXPECT_EQ(type(command.c_str()), question) << "each time anew";
}

TEST_F(CommandsTest, HasATableWithoutGaps) {
    QSet<QString> names;
    for (const CommandRow& row : commandTable()) {
        EXPECT_FALSE(names.contains(row.name)) << row.name;
        names.insert(row.name);
        EXPECT_STRNE(row.help, "") << row.name;
        EXPECT_EQ(findCommand(row.name), &row);
        EXPECT_EQ(findCommand(QString(row.name).toUpper()), &row);
    }
    EXPECT_EQ(findCommand("nothing"), nullptr);
}

TEST_F(CommandsTest, HelpsWithEveryCommand) {
    const std::string all = type("/help");
    for (const CommandRow& row : commandTable()) {
        EXPECT_NE(all.find(std::string("/") + row.name), std::string::npos) << row.name;
        const std::string help = QCoreApplication::translate("Commands", row.help).toStdString();
        EXPECT_NE(type((std::string("/help ") + row.name).c_str()).find(help), std::string::npos) << row.name;
    }
    EXPECT_EQ(type("/help /away"), " > /away [DESCRIPTION]\n  status: away");
    EXPECT_EQ(type("/help fly"), " > there is no command /fly; list: /help");
    display.width = 40;
    EXPECT_NE(type("/help").find("\n/away       status: away\n"), std::string::npos);
    // What is longer than the line goes on below itself.
    const auto entries = session.log().entries();
    const auto away = std::find_if(entries.rbegin(), entries.rend(),
                                   [](const LogEntry* entry) { return entry->text.startsWith("/away "); });
    ASSERT_NE(away, entries.rend());
    EXPECT_EQ((*away)->hang, 12);
}

TEST_F(CommandsTest, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(type("/fly"), " > there is no command /fly; list: /help");
    EXPECT_EQ(type("/"), " > there is no command /; list: /help");
    EXPECT_EQ(type("hej"), " > no conversation is open; /chat-with WHO opens one");
    EXPECT_EQ(type("   "), "");
}

TEST_F(CommandsTest, TellsTheUsageWhereArgumentsAreMissing) {
    for (const char* line : {"/add",
                             "/rename",
                             "/rename Olek",
                             "/group Olek",
                             "/remove",
                             "/subscribe",
                             "/msg",
                             "/msg Olek",
                             "/chat-with",
                             "/history",
                             "/export",
                             "/resend",
                             "/info",
                             "/answer",
                             "/console",
                             "/console x",
                             "/raw",
                             "/set",
                             "/set XMPP/Priority",
                             "/typing",
                             "/account add"}) {
        const QString command = QString(line).section(u' ', 0, 0).mid(1);
        EXPECT_EQ(type(line).find(" > usage: /" + command.toStdString() + " "), 0U) << line;
    }
}

TEST_F(CommandsTest, SetsStatuses) {
    EXPECT_EQ(type("/online"), "setStatus|ala@localhost|online|");
    EXPECT_EQ(type("/away  na  chwilę "), "setStatus|ala@localhost|away|na  chwilę");
    EXPECT_EQ(type("/XA"), "setStatus|ala@localhost|xa|");
    EXPECT_EQ(type("/dnd \"cytat\""), "setStatus|ala@localhost|dnd|\"cytat\"");
    EXPECT_EQ(type("/chat"), "setStatus|ala@localhost|chat|");
    EXPECT_EQ(type("/invisible"), "setStatus|ala@localhost|invisible|");
    EXPECT_EQ(type("/offline pa"), "setStatus|ala@localhost|offline|pa");
    messenger.refusals["setStatus"] = "no password is set";
    EXPECT_EQ(type("/online"), "setStatus|ala@localhost|online| > no password is set");
}

TEST_F(CommandsTest, ListsAddsAndPicksAccounts) {
    EXPECT_EQ(type("/account"), " > > 1. ○ ala@localhost offline, offline\n  2. ○ druga@localhost offline, offline");
    EXPECT_EQ(type("/account 2"), " > commands mean the account druga@localhost (/online connects)");
    EXPECT_EQ(type("/online"), "setStatus|druga@localhost|online|");
    EXPECT_EQ(type("/account Ala@localhost"), " > commands mean the account ala@localhost (/online connects)");
    EXPECT_EQ(type("/account 3"), " > there is no account \"3\"; list: /account");
    EXPECT_EQ(type("/account add nowa"), " > \"nowa\" is not an address (user@server)");
    EXPECT_EQ(type("/account add nowa@localhost 127.0.0.1:5555"), "");
    EXPECT_EQ(type("tajne hasło"),
              "addAccount|nowa@localhost|tajne hasło|XMPP/Serv/Enable=int:1|XMPP/Serv/Host=QString:127.0.0.1:5555"
              " > account nowa@localhost saved\ncommands mean the account nowa@localhost (/online connects)");
    type("/account password");
    EXPECT_EQ(type("inne").find("addAccount|nowa@localhost|inne"), 0U);
    type("/account add zła@localhost");
    messenger.refusals["addAccount"] = "no";
    EXPECT_EQ(type("x"), "addAccount|zła@localhost|x > account zła@localhost: no");
}

TEST_F(CommandsTest, ShowsTheListByGroupsWithEachResource) {
    EXPECT_EQ(type("/roster"),
              " > Praca (0/2)\n"
              "  ○ Ewa Żółć             ewa@localhost (2) [you do not see each other]\n"
              "  ○ Ola                  ola@localhost\n"
              "Znajomi (1/1)\n"
              "  ◐ Olek                 olek@localhost\n"
              "      ◐ dom (5): away — Zaraz wracam\n"
              "      ⊘ no name (0): busy");
    EXPECT_EQ(type("/roster online").find(" > Znajomi (1/1)\n  ◐ Olek"), 0U);
    EXPECT_EQ(type("/roster prac").find(" > Praca (0/2)\n"), 0U);
    EXPECT_EQ(type("/roster ola@"), " > Praca (0/1)\n  ○ Ola                  ola@localhost");
    EXPECT_EQ(type("/roster nikt"), " > no contact fits");
    messenger.contactLists.clear();
    EXPECT_EQ(type("/roster"), " > the contact list is empty; /add adds a contact");
}

TEST_F(CommandsTest, ChangesContacts) {
    EXPECT_EQ(type("/add Nowy@Localhost/x"), "addContact|ala@localhost|nowy@localhost||");
    EXPECT_EQ(type("/add n@l \"Jan Nowak\" Nowi znajomi"), "addContact|ala@localhost|n@l|Jan Nowak|Nowi znajomi");
    EXPECT_EQ(type("/add nowy"), " > \"nowy\" is not an address (user@server)");
    EXPECT_EQ(type("/rename olek Jan \"Mały\" Nowak"), "renameContact|ala@localhost|olek@localhost|Jan \"Mały\" Nowak");
    EXPECT_EQ(type("/rename \"Ewa Żółć\" \"Ewa\""), "renameContact|ala@localhost|ewa@localhost|Ewa");
    EXPECT_EQ(type("/group EWA Dom"), "moveContact|ala@localhost|ewa@localhost|Dom");
    EXPECT_EQ(type("/remove olek@localhost"), "removeContact|ala@localhost|olek@localhost");
    EXPECT_EQ(type("/remove nikt"), " > there is no contact \"nikt\"");
    EXPECT_EQ(type("/remove o"), " > \"o\" fits several contacts: olek@localhost, ola@localhost");
    EXPECT_EQ(type("/subscribe Ewa"), "subscribe|ala@localhost|ewa@localhost > asked Ewa Żółć for authorization");
    messenger.refusals["removeContact"] = "not logged in";
    EXPECT_EQ(type("/remove Olek"), "removeContact|ala@localhost|olek@localhost > not logged in");
}

TEST_F(CommandsTest, AnswersRequestsForAuthorization) {
    EXPECT_EQ(type("/authorize"), " > nobody asks for authorization");
    messenger.requests = {"obcy@localhost"};
    EXPECT_EQ(type("/authorize"), "authorize|ala@localhost|obcy@localhost| > obcy@localhost will see your presence");
    EXPECT_EQ(
        type("/authorize ask"),
        "authorize|ala@localhost|obcy@localhost|ask > obcy@localhost will see your presence, and was asked for the "
        "same");
    EXPECT_EQ(type("/authorize Obcy@Localhost ask").find("authorize|ala@localhost|obcy@localhost|ask"), 0U);
    EXPECT_EQ(type("/deny"), "deny|ala@localhost|obcy@localhost > refused: obcy@localhost");
    EXPECT_EQ(type("/authorize obcy@localhost tak").find(" > usage: /authorize"), 0U);
    messenger.requests = {"obcy@localhost", "inny@localhost"};
    EXPECT_EQ(type("/deny"), " > several people ask for authorization, name one: obcy@localhost, inny@localhost");
    EXPECT_EQ(type("/deny inny@localhost").find("deny|ala@localhost|inny@localhost"), 0U);
}

TEST_F(CommandsTest, TalksInAConversationAndOutsideOfIt) {
    EXPECT_EQ(type("/msg Olek  cześć,  co tam?"),
              "sendMessage|ala@localhost|olek@localhost|cześć,  co tam?|chat| > cześć,  co tam?");
    EXPECT_EQ(type("/msg obcy@localhost hej").find("sendMessage|ala@localhost|obcy@localhost|hej|chat|"), 0U);
    EXPECT_EQ(type("/me macha"), " > no conversation is open; /chat-with WHO opens one");
    EXPECT_EQ(
        type("/chat-with Olek no hej"),
        "history|ala@localhost|olek@localhost|20|\nsendMessage|ala@localhost|olek@localhost|no hej|chat| > no hej");
    EXPECT_EQ(type("raz\ndwa").find("sendMessage|ala@localhost|olek@localhost|raz\ndwa|chat|"), 0U);
    EXPECT_EQ(type("//quit").find("sendMessage|ala@localhost|olek@localhost|/quit|chat|"), 0U);
    EXPECT_EQ(type("/me macha").find("sendMessage|ala@localhost|olek@localhost|/me macha|chat|"), 0U);
    EXPECT_EQ(type("/info"), "requestInfo|ala@localhost|olek@localhost");
    messenger.refusals["sendMessage"] = "too long";
    EXPECT_EQ(type("raz"), "sendMessage|ala@localhost|olek@localhost|raz|chat| > too long");
    type("/close");
    EXPECT_EQ(type("raz"), " > no conversation is open; /chat-with WHO opens one");
    EXPECT_EQ(type("/window 5"), " > there is no window \"5\"");
    EXPECT_EQ(type("/window x"), " > there is no window \"x\"");
    EXPECT_EQ(type("/window").find("history|ala@localhost|ewa@localhost|20|"), 0U);
    EXPECT_EQ(type("/window"), " > nothing is unread");
}

TEST_F(CommandsTest, ShowsFindsAndExportsHistory) {
    EXPECT_EQ(type("/history Olek"), "history|ala@localhost|olek@localhost|20| > no messages");
    messenger.messages = {incoming("ala@localhost", "olek@localhost", "raz\ndwa"),
                          outgoing("ala@localhost", "olek@localhost", "trzy", 2)};
    messenger.messages[1].state = DeliveryState::failed;
    EXPECT_EQ(type("/history Olek 5"),
              "history|ala@localhost|olek@localhost|5| > 21.11.2026 09:05 Olek: raz⏎dwa\n"
              "21.11.2026 09:05 →Olek: trzy (message 2 to Olek was not delivered)");
    EXPECT_EQ(type("/history Olek co tam").find("history|ala@localhost|olek@localhost|100|co tam"), 0U);
    EXPECT_EQ(type("/history Olek 0"), " > the number of messages must be above zero");
    EXPECT_EQ(type("/export historia.txt Olek"),
              "exportHistory|ala@localhost|olek@localhost|/start/historia.txt > history written: /start/historia.txt");
    EXPECT_EQ(type("/export \"/x/moja historia.json\"").find("exportHistory|ala@localhost||/x/moja historia.json"), 0U);
    type("/chat-with Olek");
    EXPECT_EQ(type("/history szukane słowa").find("history|ala@localhost|olek@localhost|100|szukane słowa"), 0U);
    EXPECT_EQ(type("/history 7").find("history|ala@localhost|olek@localhost|7|"), 0U);
    EXPECT_EQ(type("/export x").find("exportHistory|ala@localhost|olek@localhost|/start/x"), 0U);
    EXPECT_EQ(type("/resend 12"), "resendMessage|12");
    EXPECT_EQ(type("/cancel 12"), "cancelMessage|12");
    EXPECT_EQ(type("/cancel x"), " > \"x\" is not a whole number");
    EXPECT_EQ(type("/resend x"), " > \"x\" is not a whole number");
}

TEST_F(CommandsTest, ShowsSubjectsAndDelaysInTheHistory) {
    messenger.messages = {incoming("ala@localhost", "olek@localhost", "raz\ndwa"),
                          outgoing("ala@localhost", "olek@localhost", "trzy", 2)};
    messenger.messages[0].delayed = QDateTime(QDate(2026, 11, 20), QTime(8, 0));
    messenger.messages[0].subject = QStringLiteral("plan\njutra");
    messenger.messages[1].subject = QStringLiteral("plan");
    EXPECT_EQ(type("/history Olek plan"),
              "history|ala@localhost|olek@localhost|100|plan > "
              "21.11.2026 09:05 Olek: (written 20.11.2026 08:00) [plan⏎jutra] raz⏎dwa\n"
              "21.11.2026 09:05 →Olek: [plan] trzy");
}

TEST_F(CommandsTest, ExportsTheConversationThatIsOpenWhicheverAccountIsChosen) {
    messenger.accountList.append(account("ola@localhost"));
    type("/chat-with Olek");
    type("/account ola@localhost");
    EXPECT_EQ(type("/export x").find("exportHistory|ala@localhost|olek@localhost|/start/x"), 0U);
    type("/close");
    EXPECT_EQ(type("/export x").find("exportHistory|ola@localhost||/start/x"), 0U);
}

TEST_F(CommandsTest, AnswersQuestions) {
    EXPECT_EQ(type("/answer yes"), " > no question is open");
    MessageBox first;
    first.number = 3;
    MessageBox second;
    second.number = 8;
    messenger.boxes = {first, second};
    EXPECT_EQ(type("/answer 8 no"), "answerBox|8|7 > answer to question 8: no");
    EXPECT_EQ(type("/answer tak"), "answerBox|3|6 > answer to question 3: tak");
    EXPECT_EQ(type("/answer 3 może"), " > unknown answer \"może\" (one of: ok yes no)");
}

TEST_F(CommandsTest, ReadsAndWritesSettings) {
    EXPECT_EQ(type("/set xmpp/priority -5"), "setSetting|ala@localhost|XMPP/Priority|int|-5 > XMPP/Priority = -5");
    EXPECT_EQ(type("/set XMPP/Serv/Host \"::1:5222\""),
              "setSetting|ala@localhost|XMPP/Serv/Host|QString|::1:5222 > XMPP/Serv/Host = ::1:5222");
    EXPECT_EQ(type("/set XMPP/Proxy/Pass tajne"),
              "setSetting|ala@localhost|XMPP/Proxy/Pass|QString|tajne > XMPP/Proxy/Pass = ***");
    EXPECT_EQ(type("/set XMPP/Priority dużo"), " > \"dużo\" is not a whole number");
    EXPECT_EQ(type("/set XMPP/Prioritty 5"), " > there is no setting \"XMPP/Prioritty\"; list: /get all");
    EXPECT_EQ(type("/get xmpp/priority"), " > XMPP/Priority           = -5  (the connection's priority, -128 to 127)");
    EXPECT_EQ(type("/get zzz"), " > there is no setting \"zzz\"; list: /get all");
    const std::string all = type("/get all");
    for (const SettingRow& row : settingTable()) EXPECT_NE(all.find(row.key), std::string::npos) << row.key;
    EXPECT_EQ(all.find("tajne"), std::string::npos);
    EXPECT_EQ(type("/get"),
              " > XMPP/Priority           = -5  (the connection's priority, -128 to 127)\n"
              "XMPP/Serv/Host          = ::1:5222  (server:port to connect to)\n"
              "XMPP/Proxy/Pass         = ***  (the proxy's password)\n"
              "… and 31 settings at their default: /get all, /get PART");
    EXPECT_EQ(QString::fromStdString(type("/get proxy")).count(u'\n'), 7);
    messenger.refusals["setSetting"] = "out of range";
    EXPECT_EQ(type("/set XMPP/Priority 5"), "setSetting|ala@localhost|XMPP/Priority|int|5 > out of range");
}

TEST_F(CommandsTest, PinsTheCertificateThatWasRefused) {
    EXPECT_EQ(type("/pin"), " > no certificate was refused");
    emit messenger.accounts().certificateRefused(kMe, {"srv", "expired", "AA:BB"});
    EXPECT_EQ(type("/pin"), "pinCertificate|ala@localhost|AA:BB > certificate accepted: AA:BB");
    EXPECT_EQ(type("/pin CC:DD"), "pinCertificate|ala@localhost|CC:DD > certificate accepted: CC:DD");
    EXPECT_EQ(type("/pin off"), "pinCertificate|ala@localhost| > the accepted certificate is taken back");
}

TEST_F(CommandsTest, ReachesTheWire) {
    EXPECT_EQ(type("/console on"), "setConsole|on > the XML console is on (main window); passwords are masked");
    EXPECT_EQ(type("/console off"), "setConsole|off > the XML console is off");
    EXPECT_EQ(type("/raw <presence to='a'/>"), "sendRaw|ala@localhost|<presence to='a'/>");
    EXPECT_EQ(type("/info obcy@localhost"), "requestInfo|ala@localhost|obcy@localhost");
    EXPECT_EQ(type("/server"), "requestServerInfo|ala@localhost");
}

// Completion ----------------------------------------------------------------------------------------------------------

TEST_F(CommandsTest, OffersWhatFits) {
    const auto offered = [&](const char* text) {
        const QString line = QString::fromUtf8(text);
        return session.complete(line, line.size()).candidates.join(u'|').toStdString();
    };
    EXPECT_EQ(offered("/ro"), "/roster ");
    EXPECT_EQ(offered("/RE"), "/refuse |/remove |/rename |/resend ");
    EXPECT_EQ(offered("/msg o"), "Ola |Olek ");
    EXPECT_EQ(offered("/msg ew"), "\"Ewa Żółć\" ");
    EXPECT_EQ(offered("/msg \"Ewa Ż"), "\"Ewa Żółć\" ");
    EXPECT_EQ(offered("/msg ewa@"), "ewa@localhost ");
    EXPECT_EQ(offered("/msg Olek "), "");
    EXPECT_EQ(offered("/msg Olek o"), "");
    EXPECT_EQ(offered("/group Olek "), "Praca |Znajomi ");
    EXPECT_EQ(offered("/group \"Ewa Żółć\" P"), "Praca ");
    EXPECT_EQ(offered("/set XMPP/Serv/S"), "XMPP/Serv/SSL |XMPP/Serv/SSL/Legacy ");
    EXPECT_EQ(offered("/console "), "off |on ");
    EXPECT_EQ(offered("/help aw"), "away ");
    EXPECT_EQ(offered("/answer 3 y"), "yes ");
    EXPECT_EQ(offered("/account d"), "druga@localhost ");
    EXPECT_EQ(offered("/fly o"), "");
    EXPECT_EQ(offered("hej ol"), "Ola |Olek ");
    EXPECT_EQ(offered("hej ew"), "Ewa Żółć ");
    EXPECT_EQ(offered("hej "), "");
    messenger.requests = {"obcy@localhost"};
    EXPECT_EQ(offered("/deny "), "obcy@localhost ");
    messenger.contactLists[kMe][2].name = QStringLiteral("Olek");
    EXPECT_EQ(offered("/msg ol"), "ola@localhost |olek@localhost ");
}

TEST(ArgumentsTest, TakesWordsAndQuotedTexts) {
    Arguments arguments(QString::fromUtf8("  raz \"dwa \\\"trzy\\\"\"  reszta  \"x\" "));
    EXPECT_EQ(arguments.word(), "raz");
    EXPECT_EQ(arguments.word(), "dwa \"trzy\"");
    EXPECT_EQ(arguments.rest(), "reszta  \"x\"");
    EXPECT_TRUE(arguments.empty());
    EXPECT_EQ(arguments.word(), "");
    EXPECT_EQ(Arguments("\"nie zamknięte").word(), "nie zamknięte");
    EXPECT_EQ(Arguments("\"").word(), "");
    EXPECT_EQ(Arguments("\"w całości\"").rest(), "w całości");
    EXPECT_EQ(Arguments("\"a\" \"b\"").rest(), "\"a\" \"b\"");
    for (const char* text : {"Olek", "Ewa Żółć", "a\"b", "\"", "\\", "", " ", "a\\ b"})
        EXPECT_EQ(Arguments(quoted(QString::fromUtf8(text))).word(), QString::fromUtf8(text)) << text;
}

}  // namespace
}  // namespace oku::terminal::test
