// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <QByteArray>
#include <QDateTime>
#include <QJsonValue>
#include <QStringList>
#include <QStringView>
#include <utility>

namespace oku {

/// JSON on one line, written as it is told: a tree of values costs ten times as much. Keys are the program's own and
/// need no escapes. What is opened must be closed: begin...() by end...().
class JsonText {
public:
    void put(const char* key, QStringView text);
    void put(const char* key, const QString& text) { put(key, QStringView(text)); }
    template <std::same_as<bool> Flag>
    void put(const char* key, Flag flag) {
        putBytes(key, flag ? "true" : "false");
    }
    template <std::integral Number>
    requires(!std::same_as<Number, bool>) void put(const char* key, Number number) { putNumber(key, number); }
    /// RFC 3339 in UTC with milliseconds; null for a time that is not known.
    void put(const char* key, const QDateTime& time);
    void put(const char* key, const QStringList& texts);
    void put(const char* key, const QJsonValue& value);

    void beginList(const char* key);
    /// The outermost list, or the next one of a list; so for objects.
    void beginList() { open('['); }
    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void endList() { close(']'); }

    /// What was written. Nothing can be added after that.
    QByteArray take() && { return std::move(bytes_); }

private:
    void separate();
    void putKey(const char* key);
    void putBytes(const char* key, QByteArrayView bytes);
    void putNumber(const char* key, qint64 number);
    void text(QStringView text);
    void escape(char16_t unit);
    void open(char bracket);
    void close(char bracket);

    QByteArray bytes_;
    bool first_ = true;  ///< nothing stands before the next field or element yet
};

}  // namespace oku
