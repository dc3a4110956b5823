// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Any line as a command of the terminal's JSON mode: understood or refused with a reason, and the answer is one line.
#include <algorithm>
#include <array>
#include <QJsonDocument>

#include "fuzz/input.h"
#include "messenger/terminal/json/json_command.h"

namespace {

using namespace oku::terminal;

// A command for each kind of field, and one without any.
constexpr std::array kAccount = {JsonField{"jid", JsonType::Text, true}, JsonField{"password", JsonType::Text, false},
                                 JsonField{"settings", JsonType::Object, false}};
constexpr std::array kStatus = {JsonField{"status", JsonType::Text, true},
                                JsonField{"description", JsonType::Text, false}};
constexpr std::array kResend = {JsonField{"message", JsonType::Whole, true}};
constexpr std::array kTyping = {JsonField{"to", JsonType::Text, true}, JsonField{"composing", JsonType::Flag, true}};
constexpr std::array kSet = {JsonField{"key", JsonType::Text, true}, JsonField{"value", JsonType::Any, true}};
constexpr std::array kShapes = std::to_array<JsonCommandShape>({{"account", kAccount},
                                                                {"status", kStatus},
                                                                {"resend", kResend},
                                                                {"typing", kTyping},
                                                                {"set", kSet},
                                                                {"roster", {}}});

const JsonCommandShape* findShape(const QString& name) {
    const auto* shape = std::find_if(kShapes.begin(), kShapes.end(),
                                     [&](const JsonCommandShape& one) { return name == QLatin1String(one.name); });
    return shape == kShapes.end() ? nullptr : shape;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray line(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto read = readJsonCommand(line, findShape);
    QByteArray answer;
    if (const auto* command = std::get_if<JsonCommand>(&read)) {
        const JsonCommandShape* shape = findShape(command->name);
        fuzz::require(shape != nullptr, "a command that nobody knows");
        for (const JsonField& field : shape->fields)
            fuzz::require(!field.required || command->fields.contains(QLatin1String(field.key)),
                          "a command without a field that it needs");
        answer = jsonOk(*command);
    } else {
        const auto& fault = std::get<JsonFault>(read);
        fuzz::require(!fault.reason.isEmpty(), "refused without a reason");
        answer = jsonError(fault.name, fault.id, fault.reason);
    }
    fuzz::require(answer.count('\n') == 1 && answer.endsWith('\n'), "an answer of more than one line");
    fuzz::require(QJsonDocument::fromJson(answer).isObject(), "an answer that is no object");
    return 0;
}
