// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/torture/mini_server.h"

namespace torture {
namespace {

bool has(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

// realm="example.org",nonce="OA6MG9tEQGm2hh",qop="auth",charset=utf-8,algorithm=md5-sess
constexpr char kChallenge[] =
    "cmVhbG09ImV4YW1wbGUub3JnIixub25jZT0iT0E2TUc5dEVRR20yaGgiLHFvcD0iYXV0aCIsY2hhcnNldD11dGYtOCxhbGdvcml0aG09bWQ1LXNl"
    "c3M=";
constexpr char kProof[] = "cnNwYXV0aD1lYTQwZjYwMzM1YzQyN2I1NTI3Yjg0ZGJhYmNkZmZmZA==";  // rspauth=...

/// The first attribute of that name in a text, empty without one.
std::string attributeIn(std::string_view text, const std::string& name) {
    const std::string mark = " " + name + "=\"";
    const std::size_t at = text.find(mark);
    if (at == std::string_view::npos) return {};
    const std::size_t begin = at + mark.size();
    return std::string(text.substr(begin, text.find('"', begin) - begin));
}

/// What a contact, or the server, has for a request for a picture or a card; empty when the text is none.
std::string pictureOrCard(std::string_view text) {
    const std::string face = "YSBmYWNl";
    if (has(text, "vcard-temp"))
        return "<vCard xmlns='vcard-temp'><FN>Bob &amp; Co</FN><N><GIVEN>Bob</GIVEN></N><BDAY>1980</BDAY>"
               "<PHOTO><TYPE>image/png</TYPE><BINVAL>" +
               face + "</BINVAL></PHOTO></vCard>";
    if (has(text, "jabber:x:avatar")) return "<query xmlns='jabber:x:avatar'><data>" + face + "</data></query>";
    if (has(text, "urn:xmpp:avatar:data"))
        return "<pubsub xmlns='http://jabber.org/protocol/pubsub'><items node='urn:xmpp:avatar:data'><item "
               "id='published'>"
               "<data xmlns='urn:xmpp:avatar:data'>" +
               face + "</data></item></items></pubsub>";
    return {};
}

}  // namespace

std::string idIn(std::string_view text) { return attributeIn(text, "id"); }

void MiniServer::onConnected() {
    pieces.clear();
    heard_.clear();
    compression_.reset();
    encrypted_ = authorized_ = rosterSent_ = false;
}

void MiniServer::onReceived(std::string_view bytes) {
    std::string text(bytes);
    // What the client said before it heard of the compression begins with a tag, and a compressed stream does not.
    clientCompresses_ = compression_ && (clientCompresses_ || !text.starts_with('<'));
    if (clientCompresses_) text = compression_->inflate(text);
    if (keepHeard) heard_ += text;
    answer(text);
}

std::string MiniServer::onTheWire(const std::string& text) { return compression_ ? compression_->deflate(text) : text; }

void MiniServer::say(const std::string& text) { pieces.push_back(onTheWire(text)); }

void MiniServer::openStream() {
    say("<?xml version='1.0'?><stream:stream xmlns:stream='http://etherx.jabber.org/streams' xmlns='jabber:client' "
        "from='example.org' id='s1' version='1.0'>");
    std::string features;
    if (!authorized_) {
        if (traits_.tls && !encrypted_) features += "<starttls xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>";
        features += "<mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><mechanism>PLAIN</mechanism>";
        if (traits_.digest) features += "<mechanism>DIGEST-MD5</mechanism>";
        features += "</mechanisms>";
    } else {
        if (traits_.compression && !compression_)
            features += "<compression xmlns='http://jabber.org/features/compress'><method>zlib</method></compression>";
        features +=
            "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/><session xmlns='urn:ietf:params:xml:ns:xmpp-session'/>";
    }
    say("<stream:features>" + features + "</stream:features>");
}

void MiniServer::answer(std::string_view text) {
    if (!negotiate(text)) serve(text);
}

bool MiniServer::negotiate(std::string_view text) {
    if (has(text, "<stream:stream")) {
        openStream();
    } else if (has(text, "<starttls")) {
        encrypted_ = true;
        say("<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>");
    } else if (has(text, "mechanism=\"DIGEST-MD5\"")) {
        say(std::string("<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>") + kChallenge + "</challenge>");
    } else if (has(text, "<response") && !has(text, "<response xmlns=\"urn:ietf:params:xml:ns:xmpp-sasl\"/>")) {
        say(std::string("<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>") + kProof + "</challenge>");
    } else if (has(text, "<auth ") || has(text, "<response")) {
        authorized_ = true;
        say("<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>");
    } else if (has(text, "<compress ")) {
        say("<compressed xmlns='http://jabber.org/protocol/compress'/>");
        compression_.emplace();
    } else if (has(text, "</stream:stream>")) {
        say("</stream:stream>");
    } else {
        return false;
    }
    return true;
}

void MiniServer::serve(std::string_view text) {
    if (!has(text, "<iq")) return;
    const std::string start = "<iq type='result' id='" + idIn(text) + "'";
    if (has(text, "xmpp-bind")) {
        say(start + "><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'><jid>alice@example.org/home</jid></bind></iq>");
    } else if (has(text, "jabber:iq:roster") && has(text, "type=\"get\"")) {
        rosterSent_ = true;
        ++logins_;
        say(start + roster());
    } else if (has(text, "disco#info") && has(text, "to=\"example.org\"")) {
        say(start +
            " from='example.org'><query xmlns='http://jabber.org/protocol/disco#info'>"
            "<feature var='http://jabber.org/protocol/disco#info'/>" +
            abilities + "</query></iq>");
    } else if (has(text, "aqq:iq:rank")) {
        say(start + "><query xmlns='aqq:iq:rank' points='12' ranking='3'/></iq>");
    } else if (has(text, "google:mail:notify") && has(text, "type=\"get\"")) {
        say(start +
            "><mailbox xmlns='google:mail:notify'><mail-thread-info><subject>s</subject></mail-thread-info>"
            "</mailbox></iq>");
    } else if (has(text, "type=\"set\"") || has(text, "<ping")) {
        say(start + "/>");
    } else if (const std::string content = pictureOrCard(text); !content.empty()) {
        say(start + " from='" + attributeIn(text, "to") + "'>" + content + "</iq>");
    }
}

std::string MiniServer::roster() const {
    std::string items;
    for (int i = 0; i < traits_.contacts; ++i) {
        const std::string number = std::to_string(i);
        items += "<item jid='contact" + number + "@example.org' name='Contact " + number +
                 "' subscription='both'><group>Znajomi</group></item>";
    }
    return "><query xmlns='jabber:iq:roster'>" + items + "</query></iq>";
}

}  // namespace torture
