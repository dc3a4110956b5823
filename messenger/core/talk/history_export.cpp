// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

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

/// All that some program takes for the end of a line. A text that brought one along could look like another entry.
const QRegularExpression& lineEnd() {
    static const QRegularExpression end(QStringLiteral("\\r\\n|[\\r\\n\\x{85}\\x{2028}\\x{2029}]"));
    return end;
}

QString indented(const QString& start, const QString& text) {
    QString result;
    for (const QString& line : text.split(lineEnd())) result += QStringLiteral("    ") + start + line + u'\n';
    return result;
}

QString oneLine(QString text) { return text.replace(lineEnd(), QStringLiteral(" ")); }

}  // namespace

QByteArray historyAsText(const QList<Message>& messages) {
    QString text;
    for (const Message& message : messages) {
        const bool out = message.direction == Direction::out;
        text += localStamp(message.time) + u' ';
        // Words about a message of ours, not the other side's.
        if (message.failed) text += QStringLiteral("! ");
        text += oneLine(out ? message.account : message.contact);
        if (message.delayed.isValid()) {
            text += QStringLiteral(" (") +
                    QCoreApplication::translate("History", "napisana %1").arg(localStamp(message.delayed)) + u')';
        }
        if (out && message.state != DeliveryState::sent)
            text += QStringLiteral(" [%1]").arg(deliveryStateWord(message.state));
        text += u'\n';
        if (!message.subject.isEmpty()) text += indented(QStringLiteral("# "), message.subject);
        text += indented({}, message.body);
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
        if (message.failed) object[QStringLiteral("failed")] = true;
        if (message.delayed.isValid()) object[QStringLiteral("delayed")] = stamp(message.delayed);
        list.append(object);
    }
    return QJsonDocument(list).toJson();
}

}  // namespace oku
