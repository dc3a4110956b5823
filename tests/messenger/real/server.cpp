#include "tests/messenger/real/server.h"

#include "messenger/core/tag_scanner.h"

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
    const auto list = splitStanzas(std::string_view(element.constData(), static_cast<std::size_t>(element.size())));
    return list.stanzas.empty() ? QByteArray() : QByteArray::fromStdString(list.stanzas[0].attribute(name));
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
    pending_.clear();
    authorized_ = false;
    connect(peer_, &QTcpSocket::readyRead, this, &Server::read);
    connect(peer_, &QTcpSocket::disconnected, peer_, &QObject::deleteLater);
}

void Server::read() {
    pending_ += peer_->readAll();
    // A header never ends, so it is taken out before the elements are parted.
    if (const qsizetype header = pending_.indexOf("<stream:stream"); header >= 0) {
        const qsizetype end = pending_.indexOf('>', header);
        if (end < 0) return;
        pending_.remove(0, end + 1);
        const QByteArray offer = authorized_ ? kBind : kMechanisms;
        say(kHeader + "<stream:features>" + offer + "</stream:features>");
    }
    const QByteArray text = pending_;
    const auto list = splitStanzas(std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
    qsizetype read = 0;
    for (const Stanza& stanza : list.stanzas) {
        read = static_cast<qsizetype>(stanza.whole.end);
        answer(text.mid(static_cast<qsizetype>(stanza.whole.begin), read - static_cast<qsizetype>(stanza.whole.begin)));
    }
    pending_ = text.mid(read);
    if (!pending_.contains("</stream:stream>")) return;
    say("</stream:stream>");
    peer_->disconnectFromHost();
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
