// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/storage/settings_format.h"

#include <optional>
#include <QCoreApplication>
#include <QStringDecoder>

namespace oku {
namespace {

QString quoted(const QString& text) {
    QString result = QStringLiteral("\"");
    for (const QChar letter : text) {
        switch (letter.unicode()) {
            case u'"':
                result += QStringLiteral("\\\"");
                break;
            case u'\\':
                result += QStringLiteral("\\\\");
                break;
            case u'\n':
                result += QStringLiteral("\\n");
                break;
            case u'\r':
                result += QStringLiteral("\\r");
                break;
            case u'\t':
                result += QStringLiteral("\\t");
                break;
            case u'\0':
                result += QStringLiteral("\\0");
                break;
            default:
                result += letter;
        }
    }
    return result + u'"';
}

/// The text between the quotes; nothing when an escape is unknown or a quote stands bare.
std::optional<QString> unquoted(QStringView text) {
    QString result;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == u'"') return std::nullopt;
        if (text[at] != u'\\') {
            result += text[at];
            continue;
        }
        if (++at == text.size()) return std::nullopt;
        switch (text[at].unicode()) {
            case u'"':
                result += u'"';
                break;
            case u'\\':
                result += u'\\';
                break;
            case u'n':
                result += u'\n';
                break;
            case u'r':
                result += u'\r';
                break;
            case u't':
                result += u'\t';
                break;
            case u'0':
                result += QChar(u'\0');
                break;
            default:
                return std::nullopt;
        }
    }
    return result;
}

/// A bare word is taken as text, so that a file written by hand need not be exact.
std::optional<QVariant> parseValue(QStringView text) {
    if (text.startsWith(u'"')) {
        if (text.size() < 2 || !text.endsWith(u'"')) return std::nullopt;
        const auto inner = unquoted(text.mid(1, text.size() - 2));
        return inner ? std::optional<QVariant>(*inner) : std::nullopt;
    }
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber);
    return isNumber ? QVariant(number) : QVariant(text.toString());
}

QString lineOf(const QString& key, const QVariant& value) {
    const bool isText = value.typeId() == QMetaType::QString;
    return key + QStringLiteral(" = ") + (isText ? quoted(value.toString()) : value.toString()) + u'\n';
}

/// Adds what a line says to `values`; false when it says nothing that can be read.
bool readLine(const QByteArray& bytes, QMap<QString, QVariant>& values) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString line = decoder(bytes);
    if (decoder.hasError() || line.contains(QChar(u'\0'))) return false;
    const QStringView trimmed = QStringView(line).trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(u'#')) return true;
    const qsizetype equals = trimmed.indexOf(u'=');
    const QStringView key = equals < 0 ? QStringView() : trimmed.left(equals).trimmed();
    if (key.isEmpty() || key.contains(u'\r') || key.front() == QChar(0xfeff)) return false;
    const auto value = parseValue(trimmed.mid(equals + 1).trimmed());
    if (value) values.insert(key.toString(), *value);
    return value.has_value();
}

}  // namespace

QByteArray settingsToBytes(const QMap<QString, QVariant>& values) {
    QString text;
    for (auto at = values.begin(); at != values.end(); ++at) text += lineOf(at.key(), *at);
    return text.toUtf8();
}

QMap<QString, QVariant> settingsFromBytes(const QByteArray& bytes, bool& ok) {
    ok = true;
    QMap<QString, QVariant> values;
    for (const QByteArray& line : bytes.split('\n')) ok = readLine(line, values) && ok;
    return values;
}

bool canBeSettingKey(const QString& key) {
    bool ok = false;
    const auto values = settingsFromBytes(lineOf(key, 0).toUtf8(), ok);
    return ok && values.size() == 1 && values.firstKey() == key;
}

QString unusableSettingKey(const QString& key) {
    return QCoreApplication::translate(
               "Settings",
               "\"%1\" nie może być nazwą ustawienia: nie może być pusta, zaczynać się od #, mieć "
               "odstępów na brzegach, znaku = ani końca wiersza.")
        .arg(key);
}

}  // namespace oku
