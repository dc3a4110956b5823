// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "messenger/core/talk/history.h"

namespace oku {
namespace {

/// For people: the time of the place where it is exported, with its offset, as RFC 3339 wants.
QString localStamp(const QDateTime& time) {
    const QDateTime local = time.toLocalTime();
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate);
}

/// For programs: as the JSON mode writes it.
QString stamp(const QDateTime& time) { return time.toUTC().toString(Qt::ISODateWithMs); }

}  // namespace

QByteArray historyAsText(const QList<Message>& messages) {
    QString text;
    for (const Message& message : messages) {
        const bool out = message.direction == Direction::out;
        text += localStamp(message.time) + u' ' + (out ? message.account : message.contact);
        if (message.delayed.isValid()) {
            text += QStringLiteral(" (") +
                    QCoreApplication::translate("History", "napisana %1").arg(localStamp(message.delayed)) + u')';
        }
        if (out && message.state != DeliveryState::sent)
            text += QStringLiteral(" [%1]").arg(deliveryStateWord(message.state));
        text += u'\n';
        if (!message.subject.isEmpty()) text += QStringLiteral("    # ") + message.subject + u'\n';
        for (const QString& line : message.body.split(u'\n')) text += QStringLiteral("    ") + line + u'\n';
    }
    return text.toUtf8();
}

QByteArray historyAsJson(const QList<Message>& messages) {
    QJsonArray list;
    for (const Message& message : messages) {
        const bool out = message.direction == Direction::out;
        QJsonObject object{{QStringLiteral("account"), message.account},
                           {QStringLiteral("with"), message.contact},
                           {QStringLiteral("direction"), out ? QStringLiteral("out") : QStringLiteral("in")},
                           {QStringLiteral("body"), message.body},
                           {QStringLiteral("time"), stamp(message.time)},
                           {QStringLiteral("state"), deliveryStateWord(message.state)}};
        if (!message.subject.isEmpty()) object[QStringLiteral("subject")] = message.subject;
        if (!message.resource.isEmpty()) object[QStringLiteral("resource")] = message.resource;
        if (message.delayed.isValid()) object[QStringLiteral("delayed")] = stamp(message.delayed);
        list.append(object);
    }
    return QJsonDocument(list).toJson();
}

}  // namespace oku
