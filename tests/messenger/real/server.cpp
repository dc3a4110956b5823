// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/real/server.h"

namespace oku::test {
namespace {

const QByteArray kHeader =
    "<?xml version='1.0'?><stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' "
    "id='s' from='example.org' version='1.0'>";
const QByteArray kMechanisms =
    "<mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><mechanism>PLAIN</mechanism></mechanisms>";
const QByteArray kBind =
    "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/><session xmlns='urn:ietf:params:xml:ns:xmpp-session'/>";
const QByteArray kRoster =
    "<query xmlns='jabber:iq:roster'><item jid='bob@example.org' name='Bob' subscription='both'>"
    "<group>Znajomi</group></item><item jid='eve@example.org' name='Eve' subscription='both'/></query>";

QByteArray attributeOf(const QByteArray& element, const char* name) {
    QXmlStreamReader reader(element);
    reader.readNextStartElement();
    return reader.attributes().value(QLatin1String(name)).toUtf8();
}

}  // namespace

Server::Server() {
    connect(&listener_, &QTcpServer::newConnection, this, &Server::accept);
    listener_.listen(QHostAddress::LocalHost);
}

bool Server::heardOf(const QByteArray& text) const {
    return std::any_of(heard_.begin(), heard_.end(), [&](const QByteArray& one) { return one.contains(text); });
}

void Server::say(const QByteArray& xml) {
    if (!peer_) return;
    peer_->write(xml);
    peer_->flush();
}

void Server::hangUp() {
    if (peer_) peer_->disconnectFromHost();
}

void Server::accept() {
    peer_ = listener_.nextPendingConnection();
    ++connections_;
    beginStream();
    authorized_ = false;
    connect(peer_, &QTcpSocket::readyRead, this, &Server::read);
    connect(peer_, &QTcpSocket::disconnected, peer_, &QObject::deleteLater);
}

void Server::beginStream() {
    stream_.clear();
    decoder_.resetState();
    text_.clear();
    begin_ = 0;
    depth_ = 0;
}

void Server::read() {
    const QString text = decoder_.decode(peer_->readAll());
    text_ += text;
    stream_.addData(text);
    while (peer_ && !stream_.atEnd()) take(stream_.readNext());
}

void Server::take(QXmlStreamReader::TokenType token) {
    if (token == QXmlStreamReader::StartElement && depth_++ == 0) {
        say(kHeader + "<stream:features>" + (authorized_ ? kBind : kMechanisms) + "</stream:features>");
    } else if (token == QXmlStreamReader::EndElement && --depth_ == 0) {
        say("</stream:stream>");
        peer_->disconnectFromHost();
    } else if (token == QXmlStreamReader::EndElement && depth_ == 1) {
        const bool wasAuthorized = authorized_;
        answer(text_.mid(begin_, stream_.characterOffset() - begin_).toUtf8());
        // The client begins anew after its login.
        if (authorized_ != wasAuthorized) return beginStream();
    }
    if (depth_ <= 1) begin_ = stream_.characterOffset();
}

void Server::answer(const QByteArray& element) {
    heard_.append(element);
    if (element.startsWith("<auth ") && refusing) {
        say("<failure xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><temporary-auth-failure/></failure></stream:stream>");
        hangUp();
    } else if (element.startsWith("<auth ")) {
        authorized_ = true;
        say("<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>");
    } else if (element.startsWith("<iq")) {
        answerIq(element);
    }
}

void Server::answerIq(const QByteArray& iq) {
    const QByteArray to = attributeOf(iq, "to");
    const QByteArray type = attributeOf(iq, "type");
    if ((type != "get" && type != "set") || (!to.isEmpty() && to != "example.org")) return;
    QByteArray content;
    if (iq.contains("xmpp-bind"))
        content = "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'><jid>alice@example.org/home</jid></bind>";
    else if (iq.contains("jabber:iq:roster") && type == "get")
        content = kRoster;
    else if (iq.contains("disco#info"))
        content = "<query xmlns='http://jabber.org/protocol/disco#info'>" + features + "</query>";
    else if (iq.contains("google:shared-status"))
        content = "<query xmlns='google:shared-status'><show>default</show></query>";
    const QByteArray from = to.isEmpty() ? QByteArray() : " from='" + to + "'";
    say("<iq type='result' id='" + attributeOf(iq, "id") + "'" + from + ">" + content + "</iq>");
}

}  // namespace oku::test
