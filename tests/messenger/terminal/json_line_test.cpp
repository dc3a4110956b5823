// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/json/json_line.h"

#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <utility>

namespace oku::terminal::test {
namespace {

QJsonObject parsed(JsonLine line) {
    const QByteArray bytes = std::move(line).take();
    EXPECT_TRUE(bytes.endsWith('\n'));
    EXPECT_EQ(bytes.count('\n'), 1) << bytes.constData();
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(bytes, &error).object();
    EXPECT_EQ(error.error, QJsonParseError::NoError) << bytes.constData();
    return object;
}

TEST(JsonLineTest, IsOneObjectOnOneLine) {
    EXPECT_EQ(JsonLine(u"bye").take().toStdString(), "{\"event\":\"bye\"}\n");
    JsonLine line(u"contact", QStringLiteral("ala@localhost"));
    line.put("waiting", true);
    line.beginList("resources");
    for (const int priority : {-128, 5}) {
        line.beginObject();
        line.put("priority", priority);
        line.endObject();
    }
    line.endList();
    line.beginList("none");
    line.endList();
    line.put("names", QStringList{QStringLiteral("a"), QStringLiteral("b\"")});
    line.put("number", std::numeric_limits<qint64>::min());
    EXPECT_EQ(std::move(line).take().toStdString(),
              "{\"event\":\"contact\",\"account\":\"ala@localhost\",\"waiting\":true,"
              "\"resources\":[{\"priority\":-128},{\"priority\":5}],\"none\":[],\"names\":[\"a\",\"b\\\"\"],"
              "\"number\":-9223372036854775808}\n");
}

TEST(JsonLineTest, CarriesEveryCharacter) {
    QString all;
    for (char16_t unit = 0; unit < 0x300; ++unit) all += QChar(unit);
    all += QStringLiteral("żółć ☕ \U0001F600 \\\" end");
    JsonLine line(u"notice");
    line.put("text", all);
    line.put("empty", QString());
    const QJsonObject object = parsed(std::move(line));
    EXPECT_EQ(object.value(QStringLiteral("text")).toString(), all);
    EXPECT_EQ(object.value(QStringLiteral("empty")).toString(QStringLiteral("none")), QString());
}

TEST(JsonLineTest, TellsTimesInUtc) {
    const auto told = [](const QDateTime& time) {
        JsonLine line(u"x");
        line.put("time", time);
        return parsed(std::move(line)).value(QStringLiteral("time"));
    };
    EXPECT_TRUE(told({}).isNull());
    for (const char* text : {"2024-02-29T23:59:59.007Z", "1969-12-31T23:59:59.999Z", "2026-01-01T00:00:00.000Z"}) {
        const QDateTime time = QDateTime::fromString(QLatin1String(text), Qt::ISODateWithMs);
        EXPECT_EQ(told(time).toString().toStdString(), text);
        EXPECT_EQ(told(time.toOffsetFromUtc(5400)).toString().toStdString(), text);
    }
}

TEST(JsonLineTest, GivesBackWhatACommandBrought) {
    const QByteArray given = R"({"a":[1,2.5,null,{"b":"ż"}],"c":"text","d":true,"e":12345678901})";
    const QJsonObject object = QJsonDocument::fromJson(given).object();
    JsonLine line(u"ok");
    for (auto at = object.begin(); at != object.end(); ++at) line.put(at.key().toLatin1().constData(), at.value());
    QJsonObject expected = object;
    expected.insert(QStringLiteral("event"), QStringLiteral("ok"));
    EXPECT_EQ(parsed(std::move(line)), expected);
}

}  // namespace
}  // namespace oku::terminal::test
