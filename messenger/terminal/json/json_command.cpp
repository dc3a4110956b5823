// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/json/json_command.h"

#include <cmath>
#include <QJsonDocument>

#include "messenger/terminal/json/json_line.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kLongestCommand = 16 << 20;

bool hasType(const QJsonValue& value, JsonType type) {
    switch (type) {
        case JsonType::Text:
            return value.isString();
        case JsonType::Flag:
            return value.isBool();
        case JsonType::Object:
            return value.isObject();
        case JsonType::Whole:
            return value.isDouble() && value.toDouble() == std::floor(value.toDouble()) &&
                   std::abs(value.toDouble()) <= 2147483647.0;
        case JsonType::Any:
            return value.isString() || value.isDouble() || value.isBool();
    }
    return false;
}

QString typeName(JsonType type) {
    switch (type) {
        case JsonType::Text:
            return say(Text::JsonTypeText);
        case JsonType::Whole:
            return say(Text::JsonTypeWhole);
        case JsonType::Flag:
            return say(Text::JsonTypeFlag);
        case JsonType::Object:
            return say(Text::JsonTypeObject);
        case JsonType::Any:
            return say(Text::JsonTypeAny);
    }
    return {};
}

// Why a field does not do, or nothing. JSON's null counts as absent.
QString fieldFault(const QJsonObject& object, const JsonField& field) {
    const QString key = QLatin1String(field.key);
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull()) return field.required ? say(Text::JsonFieldMissing, key) : QString();
    if (hasType(value, field.type)) return {};
    return say(Text::JsonFieldType, key, typeName(field.type));
}

QString shapeFault(const QJsonObject& object, const JsonCommandShape& shape) {
    const JsonField account{"account", JsonType::Text, false};
    if (const QString fault = fieldFault(object, account); !fault.isEmpty()) return fault;
    for (const JsonField& field : shape.fields)
        if (const QString fault = fieldFault(object, field); !fault.isEmpty()) return fault;
    return {};
}

}  // namespace

std::variant<JsonCommand, JsonFault> readJsonCommand(const QByteArray& line, const FindShape& find) {
    const QJsonValue none(QJsonValue::Undefined);
    if (line.size() > kLongestCommand) return JsonFault{{}, none, say(Text::JsonLineTooLong)};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError) {
        return JsonFault{{}, none, say(Text::JsonSyntax, error.errorString(), error.offset)};
    }
    if (!document.isObject()) return JsonFault{{}, none, say(Text::JsonNoObject)};
    const QJsonObject object = document.object();
    const QJsonValue id = object.value(QLatin1String("id"));
    const QJsonValue name = object.value(QLatin1String("cmd"));
    if (!name.isString()) return JsonFault{{}, id, say(Text::JsonNoCommand)};
    const JsonCommandShape* shape = find(name.toString());
    if (shape == nullptr) return JsonFault{name.toString(), id, say(Text::JsonUnknownCommand, name.toString())};
    if (const QString fault = shapeFault(object, *shape); !fault.isEmpty())
        return JsonFault{name.toString(), id, fault};
    return JsonCommand{name.toString(), id, object.value(QLatin1String("account")).toString(), object};
}

QByteArray jsonOk(const JsonCommand& command) {
    JsonLine line(u"ok");
    line.put("cmd", command.name);
    if (!command.id.isUndefined()) line.put("id", command.id);
    return std::move(line).take();
}

QByteArray jsonError(const QString& name, const QJsonValue& id, const QString& reason) {
    JsonLine line(u"error");
    line.put("reason", reason);
    if (!name.isEmpty()) line.put("cmd", name);
    if (!id.isUndefined()) line.put("id", id);
    return std::move(line).take();
}

}  // namespace oku::terminal
