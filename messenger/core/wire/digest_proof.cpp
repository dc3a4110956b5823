// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/digest_proof.h"

#include <QCryptographicHash>
#include <QList>

namespace oku {
namespace {

QByteArray md5(const QByteArray& bytes) { return QCryptographicHash::hash(bytes, QCryptographicHash::Md5); }

QByteArray hexMd5(const QList<QByteArray>& parts) { return md5(parts.join(':')).toHex(); }

/// Where the directive that begins at `at` ends: at a comma outside quotation marks, or the end.
qsizetype directiveEnd(const QByteArray& text, qsizetype at) {
    bool quoted = false;
    for (; at < text.size(); ++at) {
        if (text[at] == '"') quoted = !quoted;
        if (text[at] == ',' && !quoted) break;
    }
    return at;
}

}  // namespace

std::optional<QByteArray> digestDirective(const QByteArray& text, const QByteArray& name) {
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype end = directiveEnd(text, at);
        const QByteArray one = text.mid(at, end - at);
        at = end + 1;
        const qsizetype equals = one.indexOf('=');
        if (equals < 0 || one.first(equals).trimmed().compare(name, Qt::CaseInsensitive) != 0) continue;
        return one.sliced(equals + 1).trimmed().replace('"', "");
    }
    return std::nullopt;
}

std::optional<QByteArray> expectedProof(const QByteArray& response, const QByteArray& password) {
    const auto value = [&](const char* name) { return digestDirective(response, name).value_or(QByteArray()); };
    const QByteArray secret = md5(value("username") + ':' + value("realm") + ':' + password);
    const QByteArray key = hexMd5({secret, value("nonce"), value("cnonce")});
    const auto proof = [&](const QByteArray& who) {
        return hexMd5({key, value("nonce"), value("nc"), value("cnonce"), value("qop"),
                       md5(who + ':' + value("digest-uri")).toHex()});
    };
    if (proof("AUTHENTICATE") != value("response")) return std::nullopt;
    return proof({});
}

}  // namespace oku
