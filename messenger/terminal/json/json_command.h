// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Commands of the JSON mode, read and checked; see docs/json-protocol.md.
#pragma once

#include <functional>
#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <span>
#include <variant>

namespace oku::terminal {

enum class JsonType { Text, Whole, Flag, Object, Any };

struct JsonField {
    const char* key;
    JsonType type;
    bool required;
};

struct JsonCommandShape {
    const char* name;
    std::span<const JsonField> fields;
};

/// A command whose fields have the right types, the required ones all there.
struct JsonCommand {
    QString name;
    QJsonValue id;  ///< undefined when the command had none
    QString account;
    QJsonObject fields;

    QString text(const char* key) const { return fields.value(QLatin1String(key)).toString(); }
    bool flag(const char* key, bool otherwise) const { return fields.value(QLatin1String(key)).toBool(otherwise); }
    int whole(const char* key, int otherwise) const { return fields.value(QLatin1String(key)).toInt(otherwise); }
};

/// A line that is no command: what was understood of it, and why it was refused, in one line.
struct JsonFault {
    QString name;
    QJsonValue id;
    QString reason;
};

/// The shape of the command with this name; null when there is none.
using FindShape = std::function<const JsonCommandShape*(const QString& name)>;

std::variant<JsonCommand, JsonFault> readJsonCommand(const QByteArray& line, const FindShape& find);

/// The answers to a command, as lines with their line feed.
QByteArray jsonOk(const JsonCommand& command);
QByteArray jsonError(const QString& name, const QJsonValue& id, const QString& reason);

}  // namespace oku::terminal
