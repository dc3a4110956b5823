// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/accounts/certificate_pins.h"

#include <QRegularExpression>

#include "messenger/core/net/socket_types.h"

namespace oku {
namespace {

QByteArray bytesOf(QString fingerprint) { return QByteArray::fromHex(fingerprint.remove(u':').toLatin1()); }

}  // namespace

std::optional<QString> withPin(const QString& pins, const QString& fingerprint) {
    static const QRegularExpression form(QStringLiteral("\\A[0-9A-Fa-f]{2}(:?[0-9A-Fa-f]{2}){31}\\z"));
    if (!form.match(fingerprint).hasMatch()) return std::nullopt;
    const QByteArray added = bytesOf(fingerprint);
    QStringList all = pins.split(u' ', Qt::SkipEmptyParts);
    for (const QString& pin : std::as_const(all))
        if (bytesOf(pin) == added) return pins;
    all.append(net::fingerprintText(added));
    return all.join(u' ');
}

}  // namespace oku
