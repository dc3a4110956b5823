// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What an export says of a message, for people and for programs.
#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "messenger/core/talk/history.h"

namespace oku::test {
namespace {

const QString kAlice = QStringLiteral("alice@example.org");

TEST(Export, TellsTimesThatAreTheSameEverywhere) {
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "XYZ-5:30");
    Message message;
    message.account = kAlice;
    message.contact = QStringLiteral("bob@example.org");
    message.time = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7, 250), Qt::UTC).toLocalTime();
    message.delayed = QDateTime(QDate(2026, 11, 20), QTime(8, 0), Qt::UTC);
    const QByteArray text = historyAsText({message});
    const QByteArray json = historyAsJson({message});
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
    EXPECT_TRUE(text.startsWith("2026-11-21T14:35:07+05:30 bob@example.org (napisana 2026-11-20T13:30:00+05:30)"))
        << text.constData();
    const QJsonObject entry = QJsonDocument::fromJson(json).array()[0].toObject();
    EXPECT_EQ(entry[QStringLiteral("time")], QStringLiteral("2026-11-21T09:05:07.250Z"));
    EXPECT_EQ(entry[QStringLiteral("delayed")], QStringLiteral("2026-11-20T08:00:00.000Z"));
}

TEST(Export, LetsNoTextLookLikeAnEntry) {
    const QString entry = QStringLiteral("2026-11-22T10:00:00+01:00 ala@example.net");
    for (const QString& end : {QString(u'\n'), QString(u'\r'), QStringLiteral("\r\n"), QString(QChar(0x85)),
                               QString(QChar(0x2028)), QString(QChar(0x2029))}) {
        Message message;
        message.account = kAlice;
        message.contact = QStringLiteral("bob@example.org") + end + entry;
        message.time = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7), Qt::UTC);
        message.subject = QStringLiteral("x") + end + entry;
        message.body = QStringLiteral("y") + end + end + entry;
        const QString text = QString::fromUtf8(historyAsText({message}));
        const QStringList lines = text.split(u'\n');
        ASSERT_EQ(lines.size(), 7) << text.toStdString();
        EXPECT_TRUE(lines[0].endsWith(QStringLiteral(" bob@example.org ") + entry)) << text.toStdString();
        EXPECT_EQ(lines.mid(1), (QStringList{"    # x", "    # " + entry, "    y", "    ", "    " + entry, ""}));
    }
}

TEST(Export, TellsAFailureNoticeFromTheContactsWords) {
    Message message;
    message.account = kAlice;
    message.contact = QStringLiteral("bob@example.org");
    message.time = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7), Qt::UTC);
    message.body = QStringLiteral("service unavailable");
    const auto jsonEntry = [&] { return QJsonDocument::fromJson(historyAsJson({message})).array()[0].toObject(); };
    EXPECT_FALSE(historyAsText({message}).contains('!'));
    EXPECT_FALSE(jsonEntry().contains(QStringLiteral("failed")));
    message.failed = true;
    EXPECT_TRUE(historyAsText({message}).contains(" ! bob@example.org\n")) << "as the screen marks it";
    EXPECT_EQ(jsonEntry()[QStringLiteral("failed")], QJsonValue(true));
}

}  // namespace
}  // namespace oku::test
