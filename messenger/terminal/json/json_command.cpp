#include "messenger/terminal/json/json_command.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <QJsonDocument>

#include "messenger/terminal/json/json_line.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kLongestCommand = 16 << 20;

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

constexpr std::array kShapes = std::to_array<JsonCommandShape>({
    {"account", kAccount}, {"status", kStatus}, {"message", kMessage},     {"resend", kResend},
    {"typing", kTyping},   {"add", kAdd},       {"rename", kRename},       {"group", kGroup},
    {"remove", kJid},      {"subscribe", kJid}, {"authorize", kAuthorize}, {"deny", kJid},
    {"answer", kAnswer},   {"roster", {}},      {"history", kHistory},     {"set", kSet},
    {"get", kGet},         {"raw", kRaw},       {"console", kConsole},     {"info", kJid},
    {"server", {}},        {"quit", {}},        {"cancel", kResend},       {"remove-account", kRemoveAccount},
});

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

std::span<const JsonCommandShape> jsonCommandShapes() { return kShapes; }

std::variant<JsonCommand, JsonFault> readJsonCommand(const QByteArray& line) {
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
    const auto* shape = std::find_if(kShapes.begin(), kShapes.end(), [&](const JsonCommandShape& one) {
        return name.toString() == QLatin1String(one.name);
    });
    if (shape == kShapes.end()) return JsonFault{name.toString(), id, say(Text::JsonUnknownCommand, name.toString())};
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
