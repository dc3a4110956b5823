// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QStringDecoder>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QXmlStreamReader>

namespace oku::test {

/// A server that logs one client in, in clear by PLAIN, answers what a login and a quiet connection need, and says
/// whatever a test wants it to.
class Server : public QObject {
public:
    Server();

    [[nodiscard]] quint16 port() const { return listener_.serverPort(); }
    void say(const QByteArray& xml);
    /// The elements that the client sent since the last clear().
    [[nodiscard]] const QList<QByteArray>& heard() const { return heard_; }
    [[nodiscard]] bool heardOf(const QByteArray& text) const;
    void clear() { heard_.clear(); }
    /// Closes the connection without a word.
    void hangUp();
    /// Connections that were accepted.
    [[nodiscard]] int connections() const { return connections_; }

    bool refusing = false;  ///< every login fails, and the stream ends
    QByteArray features;    ///< what it tells of itself in its answer to disco#info

private:
    void accept();
    void beginStream();
    void read();
    void take(QXmlStreamReader::TokenType token);
    void answer(const QByteArray& element);
    void answerIq(const QByteArray& iq);

    QTcpServer listener_;
    QPointer<QTcpSocket> peer_;
    QXmlStreamReader stream_;
    QStringDecoder decoder_{QStringDecoder::Utf8};
    QString text_;      ///< of the stream, as far as it came
    qint64 begin_ = 0;  ///< where the element begins that is being read
    qsizetype depth_ = 0;
    QList<QByteArray> heard_;
    bool authorized_ = false;
    int connections_ = 0;
};

}  // namespace oku::test
