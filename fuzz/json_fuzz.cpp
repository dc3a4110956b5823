// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Any line as a command of the terminal's JSON mode: understood or refused with a reason, and the answer is one line.
#include <QJsonDocument>

#include "fuzz/input.h"
#include "messenger/terminal/json/json_command.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace oku::terminal;
    const QByteArray line(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto read = readJsonCommand(line);
    QByteArray answer;
    if (const auto* command = std::get_if<JsonCommand>(&read)) {
        bool known = false;
        for (const JsonCommandShape& shape : jsonCommandShapes()) {
            if (command->name != QLatin1String(shape.name)) continue;
            known = true;
            for (const JsonField& field : shape.fields)
                fuzz::require(!field.required || command->fields.contains(QLatin1String(field.key)),
                              "a command without a field that it needs");
        }
        fuzz::require(known, "a command that nobody knows");
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
