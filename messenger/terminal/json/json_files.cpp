// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/json/json_files.h"

#include <optional>
#include <utility>

#include "messenger/terminal/json/json_answer.h"
#include "messenger/terminal/json/json_line.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

// What is below zero is not known.
QJsonValue known(qint64 number) { return number < 0 ? QJsonValue() : QJsonValue(number); }

void putTransfer(JsonLine& line, const Transfer& transfer) {
    line.put("transfer", transfer.number);
    line.put("with", transfer.contact);
    line.put("direction", directionWord(transfer.direction == Direction::in));
    line.put("name", transfer.name);
    line.put("path", transfer.path);
    line.put("state", transferStateWord(transfer.state));
    line.put("text", transfer.text);
    line.put("size", known(transfer.size));
    line.put("position", transfer.position);
    line.put("speed", transfer.speed);
    line.put("left", known(transfer.secondsLeft));
    line.put("cancel", transfer.cancellable);
}

void putOffer(JsonLine& line, const FileOffer& offer) {
    line.put("offer", offer.number);
    line.put("from", offer.contact);
    line.put("name", offer.name);
    line.put("size", known(offer.size));
    line.put("seconds", offer.seconds);
}

void putQuestion(JsonLine& line, const FileQuestion& question) {
    line.put("file", question.number);
    line.put("title", question.title);
    line.put("filter", question.filter);
}

template <typename Values, typename Put>
void putList(JsonLine& line, const char* key, const Values& values, Put put) {
    line.beginList(key);
    for (const auto& value : values) {
        line.beginObject();
        line.put("account", value.account);
        put(line, value);
        line.endObject();
    }
    line.endList();
}

std::optional<OfferReply> replyFromWord(const QString& word) {
    for (const OfferReply reply : {OfferReply::accept, OfferReply::refuse, OfferReply::ignore})
        if (word == offerReplyWord(reply)) return reply;
    return std::nullopt;
}

}  // namespace

QByteArray jsonTransfer(const Transfer& transfer) {
    JsonLine line(u"transfer", transfer.account);
    putTransfer(line, transfer);
    return std::move(line).take();
}

QByteArray jsonFileOffer(const FileOffer& offer) {
    JsonLine line(u"file-offer", offer.account);
    putOffer(line, offer);
    return std::move(line).take();
}

QByteArray jsonFileOfferClosed(int number, OfferReply reply) {
    JsonLine line(u"file-offer-closed");
    line.put("offer", number);
    line.put("answer", offerReplyWord(reply));
    return std::move(line).take();
}

QByteArray jsonFileQuestion(const FileQuestion& question) {
    JsonLine line(u"file-wanted", question.account);
    putQuestion(line, question);
    return std::move(line).take();
}

QByteArray jsonFileQuestionClosed(int number) {
    JsonLine line(u"file-wanted-closed");
    line.put("file", number);
    return std::move(line).take();
}

JsonOutcome sendFile(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.transfers().sendFile(account, command.text("to"), command.text("path"))};
}

JsonOutcome answerFile(JsonDesk& desk, const QString&, const JsonCommand& command) {
    const auto reply = replyFromWord(command.text("answer"));
    if (!reply) return {say(Text::BadOfferReply, command.text("answer"))};
    return {desk.messenger.transfers().answerOffer(command.whole("offer", 0), *reply)};
}

JsonOutcome cancelFile(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.transfers().cancelTransfer(command.whole("transfer", 0))};
}

JsonOutcome openFile(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.transfers().openFile(command.whole("transfer", 0))};
}

JsonOutcome chooseFile(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.transfers().chooseFile(command.whole("file", 0), command.text("path"))};
}

JsonOutcome listFiles(JsonDesk& desk, const QString&, const JsonCommand&) {
    JsonLine line(u"files");
    putList(line, "offers", desk.messenger.transfers().openOffers(), putOffer);
    putList(line, "wanted", desk.messenger.transfers().openFileQuestions(), putQuestion);
    putList(line, "transfers", desk.messenger.transfers().transfers(), putTransfer);
    desk.write(std::move(line).take());
    return {};
}

}  // namespace oku::terminal
