// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/json/json_commands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <QLocale>
#include <utility>

#include "messenger/terminal/json/json_answer.h"
#include "messenger/terminal/json/json_cards.h"
#include "messenger/terminal/json/json_dialogs.h"
#include "messenger/terminal/json/json_files.h"
#include "messenger/terminal/json/json_pages.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr double kLargestWhole = 9007199254740992.0;  // up to it a JSON number is exact

// A setting's value: numbers and booleans are integers in the settings files. Nothing for a number that is none.
std::optional<QVariant> settingOf(const QJsonValue& value) {
    if (value.isBool()) return value.toBool() ? 1 : 0;
    if (!value.isDouble()) return value.toVariant();
    const double number = value.toDouble();
    if (number != std::floor(number) || std::abs(number) > kLargestWhole) return std::nullopt;
    return value.toInteger();
}

QString noInteger(const QJsonValue& value) {
    return say(Text::BadNumber, QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest));
}

JsonOutcome account(JsonDesk& desk, const QString&, const JsonCommand& command) {
    QVariantMap settings;
    const QJsonObject given = command.fields.value(QLatin1String("settings")).toObject();
    for (auto at = given.begin(); at != given.end(); ++at) {
        const auto value = settingOf(at.value());
        if (!value) return {noInteger(at.value())};
        settings.insert(at.key(), *value);
    }
    return {desk.messenger.accounts().addAccount(command.text("jid"), command.text("password"), settings)};
}

JsonOutcome status(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    bool known = false;
    const Status status = statusFromWord(command.text("status"), &known);
    if (!known || status == Status::error) return {say(Text::BadStatus, command.text("status"))};
    return {desk.messenger.accounts().setStatus(account, status, command.text("description"))};
}

JsonOutcome message(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    const QString kind = command.text("kind");
    if (!kind.isEmpty() && kind != QLatin1String("chat") && kind != QLatin1String("normal"))
        return {say(Text::BadKind, kind)};
    const bool normal = kind == QLatin1String("normal");
    return {desk.messenger.talk().sendMessage(account, command.text("to"), command.text("body"),
                                              normal ? MessageKind::normal : MessageKind::chat,
                                              normal ? command.text("subject") : QString())};
}

// The number alone says which account wrote the message.
JsonOutcome resend(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.talk().resendMessage(command.whole("message", 0))};
}

JsonOutcome cancel(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.talk().cancelMessage(command.whole("message", 0))};
}

JsonOutcome removeAccount(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.accounts().removeAccount(command.text("jid"), command.flag("history", false))};
}

JsonOutcome typing(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.talk().sendTyping(account, command.text("to"), command.flag("composing", false))};
}

JsonOutcome add(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {
        desk.messenger.roster().addContact(account, command.text("jid"), command.text("name"), command.text("group"))};
}

JsonOutcome rename(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.roster().renameContact(account, command.text("jid"), command.text("name"))};
}

JsonOutcome group(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.roster().moveContact(account, command.text("jid"), command.text("group"))};
}

JsonOutcome remove(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.roster().removeContact(account, command.text("jid"))};
}

JsonOutcome subscribe(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.roster().subscribe(account, command.text("jid"))};
}

JsonOutcome authorize(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.roster().authorize(account, command.text("jid"), command.flag("ask", false))};
}

JsonOutcome deny(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.roster().deny(account, command.text("jid"))};
}

JsonOutcome answer(JsonDesk& desk, const QString&, const JsonCommand& command) {
    const auto button = buttonFromWord(command.text("button"));
    if (!button) return {say(Text::BadButton, command.text("button"))};
    return {desk.messenger.windows().answerBox(command.whole("box", 0), *button)};
}

JsonOutcome roster(JsonDesk& desk, const QString& account, const JsonCommand&) {
    desk.write(jsonRoster(account, desk.messenger.roster().contacts(account)));
    return {};
}

JsonOutcome history(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    const int limit = command.whole("limit", 20);
    if (limit < 1) return {say(Text::BadLimit)};
    const QString with = command.text("with");
    desk.write(jsonHistory(account, with, desk.messenger.talk().history(account, with, limit, command.text("search"))));
    return {};
}

JsonOutcome set(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    const QJsonValue given = command.fields.value(QLatin1String("value"));
    const auto value = settingOf(given);
    return {value ? desk.messenger.accounts().setSetting(account, command.text("key"), *value) : noInteger(given)};
}

JsonOutcome get(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    const QString key = command.text("key");
    desk.write(jsonSetting(account, key, shownSetting(key, desk.messenger.accounts().settingValue(account, key))));
    return {};
}

JsonOutcome raw(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.wire().sendRaw(account, command.text("xml"))};
}

JsonOutcome console(JsonDesk& desk, const QString&, const JsonCommand& command) {
    desk.messenger.wire().setConsole(command.flag("on", false));
    return {};
}

JsonOutcome info(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    const QString jid = bareJid(command.text("jid"));
    return desk.waiting.ask(command, account, jid, [&] { return desk.messenger.roster().requestInfo(account, jid); });
}

JsonOutcome server(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return desk.waiting.ask(command, account, {}, [&] { return desk.messenger.roster().requestServerInfo(account); });
}

JsonOutcome tune(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.news().publishTune(
        account, {command.text("artist"), command.text("title"), command.text("source"), command.text("track"),
                  command.text("uri"), command.text("length")})};
}

JsonOutcome mood(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.news().publishMood(account, {command.text("mood"), command.text("text")})};
}

JsonOutcome location(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    Location location;
    const QJsonObject fields = command.fields.value(QLatin1String("fields")).toObject();
    for (auto at = fields.begin(); at != fields.end(); ++at) {
        if (!at.value().isString()) return {say(Text::JsonFieldType, at.key(), say(Text::JsonTypeText))};
        if (!at.value().toString().isEmpty()) location.insert(at.key(), at.value().toString());
    }
    return {desk.messenger.news().publishLocation(account, location)};
}

JsonOutcome openPopup(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.news().openPopup(command.whole("popup", 0))};
}

JsonOutcome closePopup(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.news().closePopup(command.whole("popup", 0))};
}

JsonOutcome quit(JsonDesk& desk, const QString&, const JsonCommand& command) {
    desk.write(jsonOk(command));
    desk.ending = true;
    desk.messenger.shutdown();
    return {{}, true};
}

constexpr std::array kAccount = {JsonField{"jid", JsonType::Text, true}, JsonField{"password", JsonType::Text, false},
                                 JsonField{"settings", JsonType::Object, false}};
constexpr std::array kStatus = {JsonField{"status", JsonType::Text, true},
                                JsonField{"description", JsonType::Text, false}};
constexpr std::array kMessage = {JsonField{"to", JsonType::Text, true}, JsonField{"body", JsonType::Text, true},
                                 JsonField{"subject", JsonType::Text, false}, JsonField{"kind", JsonType::Text, false}};
constexpr std::array kResend = {JsonField{"message", JsonType::Whole, true}};
constexpr std::array kRemoveAccount = {JsonField{"jid", JsonType::Text, true},
                                       JsonField{"history", JsonType::Flag, false}};
constexpr std::array kTyping = {JsonField{"to", JsonType::Text, true}, JsonField{"composing", JsonType::Flag, true}};
constexpr std::array kAdd = {JsonField{"jid", JsonType::Text, true}, JsonField{"name", JsonType::Text, false},
                             JsonField{"group", JsonType::Text, false}};
constexpr std::array kRename = {JsonField{"jid", JsonType::Text, true}, JsonField{"name", JsonType::Text, true}};
constexpr std::array kGroup = {JsonField{"jid", JsonType::Text, true}, JsonField{"group", JsonType::Text, true}};
constexpr std::array kJid = {JsonField{"jid", JsonType::Text, true}};
constexpr std::array kAuthorize = {JsonField{"jid", JsonType::Text, true}, JsonField{"ask", JsonType::Flag, false}};
constexpr std::array kAnswer = {JsonField{"box", JsonType::Whole, true}, JsonField{"button", JsonType::Text, true}};
constexpr std::array kHistory = {JsonField{"with", JsonType::Text, false}, JsonField{"limit", JsonType::Whole, false},
                                 JsonField{"search", JsonType::Text, false}};
constexpr std::array kSet = {JsonField{"key", JsonType::Text, true}, JsonField{"value", JsonType::Any, true}};
constexpr std::array kGet = {JsonField{"key", JsonType::Text, true}};
constexpr std::array kRaw = {JsonField{"xml", JsonType::Text, true}};
constexpr std::array kConsole = {JsonField{"on", JsonType::Flag, true}};
constexpr std::array kTune = {JsonField{"artist", JsonType::Text, false}, JsonField{"title", JsonType::Text, false},
                              JsonField{"source", JsonType::Text, false}, JsonField{"track", JsonType::Text, false},
                              JsonField{"uri", JsonType::Text, false},    JsonField{"length", JsonType::Text, false}};
constexpr std::array kMood = {JsonField{"mood", JsonType::Text, false}, JsonField{"text", JsonType::Text, false}};
constexpr std::array kLocation = {JsonField{"fields", JsonType::Object, false}};
constexpr std::array kPopup = {JsonField{"popup", JsonType::Whole, true}};

constexpr std::array kStoreCard = {JsonField{"fields", JsonType::Object, true},
                                   JsonField{"lose", JsonType::Flag, false}};
constexpr std::array kSetPicture = {JsonField{"path", JsonType::Text, true}};

constexpr std::array kCommands = std::to_array<JsonCommandRow>({
    {{"account", kAccount}, false, &account},
    {{"status", kStatus}, true, &status},
    {{"message", kMessage}, true, &message},
    {{"resend", kResend}, false, &resend},
    {{"typing", kTyping}, true, &typing},
    {{"add", kAdd}, true, &add},
    {{"rename", kRename}, true, &rename},
    {{"group", kGroup}, true, &group},
    {{"remove", kJid}, true, &remove},
    {{"subscribe", kJid}, true, &subscribe},
    {{"authorize", kAuthorize}, true, &authorize},
    {{"deny", kJid}, true, &deny},
    {{"answer", kAnswer}, false, &answer},
    {{"roster", {}}, true, &roster},
    {{"history", kHistory}, true, &history},
    {{"set", kSet}, true, &set},
    {{"get", kGet}, true, &get},
    {{"raw", kRaw}, true, &raw},
    {{"console", kConsole}, false, &console},
    {{"info", kJid}, true, &info},
    {{"server", {}}, true, &server},
    {{"quit", {}}, false, &quit},
    {{"cancel", kResend}, false, &cancel},
    {{"remove-account", kRemoveAccount}, false, &removeAccount},
    {{"card", kJid}, true, &jsonCard},
    {{"own-card", {}}, true, &jsonOwnCard},
    {{"store-card", kStoreCard}, true, &jsonStoreCard},
    {{"own-picture", {}}, false, &jsonOwnPicture},
    {{"set-picture", kSetPicture}, false, &jsonSetPicture},
    {{"remove-picture", {}}, false, &jsonRemovePicture},
    {{"publish-picture", {}}, true, &jsonPublishPicture},
    {{"fetch-picture", {}}, true, &jsonFetchPicture},
    {{"send-file", kSendFile}, true, &sendFile},
    {{"answer-file", kAnswerFile}, false, &answerFile},
    {{"cancel-file", kCancelFile}, false, &cancelFile},
    {{"open-file", kCancelFile}, false, &openFile},
    {{"choose-file", kChooseFile}, false, &chooseFile},
    {{"files", {}}, false, &listFiles},
    {{"tune", kTune}, true, &tune},
    {{"mood", kMood}, true, &mood},
    {{"location", kLocation}, true, &location},
    {{"open-popup", kPopup}, false, &openPopup},
    {{"close-popup", kPopup}, false, &closePopup},
});

}  // namespace

JsonOutcome JsonWaiting::ask(const JsonCommand& command, const QString& account, const QString& what,
                             const std::function<QString()>& ask) {
    waiting_.push_back({command, account, what});
    const std::size_t place = waiting_.size();
    const QString reason = ask();
    if (reason.isEmpty()) return {{}, true};
    if (waiting_.size() == place) waiting_.pop_back();
    return {reason};
}

std::vector<JsonCommand> JsonWaiting::take(const QString& account, const QString& what) {
    const auto others = [&](const Waiting& one) { return one.account != account || one.what != what; };
    const auto first = std::stable_partition(waiting_.begin(), waiting_.end(), others);
    std::vector<JsonCommand> taken;
    for (auto at = first; at != waiting_.end(); ++at) taken.push_back(std::move(at->command));
    waiting_.erase(first, waiting_.end());
    return taken;
}

std::vector<JsonCommand> JsonWaiting::takeAll() {
    std::vector<JsonCommand> taken;
    for (Waiting& one : std::exchange(waiting_, {})) taken.push_back(std::move(one.command));
    return taken;
}

std::span<const JsonCommandRow> jsonCommands() {
    static const std::vector<JsonCommandRow> rows = [] {
        std::vector<JsonCommandRow> all(kCommands.begin(), kCommands.end());
        for (const auto family : {jsonDialogCommands(), jsonPageCommands()})
            all.insert(all.end(), family.begin(), family.end());
        return all;
    }();
    return rows;
}

const JsonCommandRow* findJsonCommand(const QString& name) {
    const auto rows = jsonCommands();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const JsonCommandRow& one) { return name == QLatin1String(one.shape.name); });
    return row == rows.end() ? nullptr : &*row;
}

}  // namespace oku::terminal
