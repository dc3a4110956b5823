// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/json_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <QJsonArray>
#include <QJsonDocument>

namespace oku {
namespace {

// Stands in a JSON text as it is, in one byte.
bool isPlain(char16_t unit) { return unit >= 0x20 && unit < 0x80 && unit != u'"' && unit != u'\\'; }

void appendPadded(QByteArray& bytes, int number, int digits) {
    std::array<char, 12> buffer{};
    for (int at = digits; at-- > 0; number /= 10)
        buffer[static_cast<std::size_t>(at)] = static_cast<char>('0' + number % 10);
    bytes.append(buffer.data(), digits);
}

}  // namespace

void JsonText::separate() {
    if (!std::exchange(first_, false)) bytes_ += ',';
}

void JsonText::putKey(const char* key) {
    separate();
    bytes_ += '"';
    bytes_ += key;
    bytes_ += "\":";
}

void JsonText::putBytes(const char* key, QByteArrayView bytes) {
    putKey(key);
    bytes_ += bytes;
}

void JsonText::putNumber(const char* key, qint64 number) {
    std::array<char, 24> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    putBytes(key, QByteArrayView(buffer.data(), end));
}

void JsonText::put(const char* key, QStringView value) {
    putKey(key);
    text(value);
}

void JsonText::put(const char* key, const QDateTime& time) {
    using namespace std::chrono;
    if (!time.isValid()) return putBytes(key, "null");
    const sys_time<milliseconds> moment{milliseconds(time.toMSecsSinceEpoch())};
    const auto day = floor<days>(moment);
    const year_month_day date(day);
    const hh_mm_ss clock(moment - day);
    const int year = static_cast<int>(date.year());
    if (year < 0 || year > 9999) return put(key, time.toUTC().toString(Qt::ISODateWithMs));
    putKey(key);
    const auto part = [this](char before, auto number, int digits) {
        bytes_ += before;
        appendPadded(bytes_, static_cast<int>(number), digits);
    };
    part('"', year, 4);
    part('-', static_cast<unsigned>(date.month()), 2);
    part('-', static_cast<unsigned>(date.day()), 2);
    part('T', clock.hours().count(), 2);
    part(':', clock.minutes().count(), 2);
    part(':', clock.seconds().count(), 2);
    part('.', clock.subseconds().count(), 3);
    bytes_ += "Z\"";
}

void JsonText::put(const char* key, const QStringList& texts) {
    beginList(key);
    for (const QString& one : texts) {
        separate();
        text(one);
    }
    endList();
}

void JsonText::put(const char* key, const QJsonValue& value) {
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    putBytes(key, QByteArrayView(list).sliced(1, list.size() - 2));
}

void JsonText::beginList(const char* key) {
    putBytes(key, "[");
    first_ = true;
}

void JsonText::open(char bracket) {
    separate();
    bytes_ += bracket;
    first_ = true;
}

void JsonText::close(char bracket) {
    bytes_ += bracket;
    first_ = false;
}

void JsonText::text(QStringView text) {
    bytes_ += '"';
    for (qsizetype at = 0; at < text.size();) {
        qsizetype end = at;
        while (end < text.size() && isPlain(text[end].unicode())) ++end;
        // Latin-1 and UTF-16 agree on what is plain.
        const qsizetype place = bytes_.size();
        bytes_.resize(place + (end - at));
        std::transform(text.begin() + at, text.begin() + end, bytes_.begin() + place,
                       [](QChar letter) { return static_cast<char>(letter.unicode()); });
        at = end;
        while (end < text.size() && text[end].unicode() >= 0x80) ++end;
        if (end > at) bytes_ += text.sliced(at, end - at).toUtf8();
        at = end;
        while (at < text.size() && text[at].unicode() < 0x80 && !isPlain(text[at].unicode()))
            escape(text[at++].unicode());
    }
    bytes_ += '"';
}

void JsonText::escape(char16_t unit) {
    static constexpr QByteArrayView kShort = "\"\\\b\f\n\r\t";
    static constexpr QByteArrayView kLetters = "\"\\bfnrt";
    static constexpr QByteArrayView kDigits = "0123456789abcdef";
    bytes_ += '\\';
    const qsizetype place = kShort.indexOf(static_cast<char>(unit));
    if (place >= 0) {
        bytes_ += kLetters[place];
        return;
    }
    bytes_ += "u00";
    bytes_ += kDigits[unit >> 4];
    bytes_ += kDigits[unit & 15];
}

}  // namespace oku
