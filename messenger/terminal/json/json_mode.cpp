// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/json/json_mode.h"

#include <utility>

#include "messenger/terminal/json/json_answer.h"
#include "messenger/terminal/json/json_cards.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kLongestLine = 16 << 20;

const JsonCommandShape* findShape(const QString& name) {
    const JsonCommandRow* row = findJsonCommand(name);
    return row == nullptr ? nullptr : &row->shape;
}

}  // namespace

JsonMode::JsonMode(MessengerFace& messenger, Writer write, bool verbose, QString account,
                   std::function<void()> onFinished)
    : desk_{messenger, write},
      events_(messenger, std::move(write), verbose),
      account_(std::move(account)),
      onFinished_(std::move(onFinished)) {
    connect(&messenger.accounts(), &AccountsFace::accountRemoved, this, [this](const QString& gone) {
        if (account_ == gone) account_.clear();
    });
    connect(&messenger.roster(), &RosterFace::infoComplete, this, &JsonMode::answerWaiting);
    connect(&messenger.roster(), &RosterFace::serverInfoReceived, this,
            [this](const QString& asked) { answerWaiting(asked, {}); });
    answerCards(desk_, this);
    connect(&messenger, &MessengerFace::finished, this, &JsonMode::finish);
}

QString JsonMode::start() {
    const QString reason = desk_.messenger.start();
    if (reason.isEmpty())
        desk_.write(jsonReady(desk_.messenger.accounts().accounts(), desk_.messenger.profileDir()));
    else
        desk_.write(jsonError({}, QJsonValue(QJsonValue::Undefined), reason));
    return reason;
}

void JsonMode::addAccountAtStart(const QString& jid, const QString& password) {
    const QString reason = desk_.messenger.accounts().addAccount(jid, password);
    if (!reason.isEmpty()) desk_.write(jsonNotice(bareJid(jid), say(Text::AccountRefused, jid, reason)));
}

void JsonMode::setStatusAtStart(Status status) {
    const QString account = chosenAccount({});
    const QString reason =
        account.isEmpty() ? say(Text::NoAccount) : desk_.messenger.accounts().setStatus(account, status);
    if (!reason.isEmpty()) desk_.write(jsonNotice(account, reason));
}

void JsonMode::feed(const QByteArray& bytes) {
    input_ += bytes;
    takeLines();
}

void JsonMode::end() {
    takeLines();
    searched_ = 0;
    if (!input_.isEmpty()) takeLine(std::exchange(input_, {}));
    if (!std::exchange(desk_.ending, true)) desk_.messenger.shutdown();
}

// Each line is taken away before it is run: what is fed while it holds this call goes on behind it.
void JsonMode::takeLines() {
    while (const auto line = nextLine()) takeLine(*line);
}

// What was run stays in front until the last line was taken: moved up for each of them, a large piece would be copied
// over and over.
std::optional<QByteArray> JsonMode::nextLine() {
    const qsizetype end = input_.indexOf('\n', searched_);
    if (end < 0) {
        input_.remove(0, std::exchange(taken_, 0));
        searched_ = input_.size();
        return beginningOfTooLong();
    }
    const qsizetype start = std::exchange(taken_, end + 1);
    searched_ = taken_;
    return std::exchange(skipping_, false) ? QByteArray() : input_.mid(start, end - start);
}

std::optional<QByteArray> JsonMode::beginningOfTooLong() {
    if (!skipping_ && input_.size() <= kLongestLine) return std::nullopt;
    searched_ = 0;
    const QByteArray beginning = std::exchange(input_, {});
    return std::exchange(skipping_, true) ? std::nullopt : std::optional(beginning);
}

void JsonMode::takeLine(const QByteArray& line) {
    if (line.trimmed().isEmpty()) return;
    const auto read = readJsonCommand(line, findShape);
    if (const auto* fault = std::get_if<JsonFault>(&read))
        desk_.write(jsonError(fault->name, fault->id, fault->reason));
    else
        run(std::get<JsonCommand>(read));
}

void JsonMode::run(const JsonCommand& command) {
    const JsonCommandRow* row = findJsonCommand(command.name);
    const QString account = chosenAccount(command);
    JsonOutcome outcome;
    if (desk_.ending)
        outcome.reason = say(Text::JsonEnding);
    else if (row->needsAccount && account.isEmpty())
        outcome.reason = say(Text::NoAccount);
    else
        outcome = row->run(desk_, account, command);
    if (outcome.later) return;
    desk_.write(outcome.reason.isEmpty() ? jsonOk(command) : jsonError(command.name, command.id, outcome.reason));
}

QString JsonMode::chosenAccount(const JsonCommand& command) const {
    if (!command.account.isEmpty()) return bareJid(command.account);
    if (!account_.isEmpty()) return account_;
    const QList<Account> accounts = desk_.messenger.accounts().accounts();
    return accounts.isEmpty() ? QString() : accounts.first().jid;
}

void JsonMode::answerWaiting(const QString& account, const QString& jid) {
    for (const JsonCommand& command : desk_.waiting.take(account, jid)) desk_.write(jsonOk(command));
}

void JsonMode::finish() {
    for (const JsonCommand& command : desk_.waiting.takeAll())
        desk_.write(jsonError(command.name, command.id, say(Text::JsonEnding)));
    desk_.write(jsonBye());
    if (onFinished_) onFinished_();
}

}  // namespace oku::terminal
