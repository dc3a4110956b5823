#include "messenger/core/digest_check.h"

#include "messenger/core/digest_proof.h"
#include "messenger/core/xml_data.h"

namespace oku {
namespace {

std::string_view textOf(Span span, std::string_view whole) { return whole.substr(span.begin, span.end - span.begin); }

QByteArray bytesOf(const std::string& text) { return QByteArray::fromStdString(text); }

/// What stands between an element's own tags.
std::string contentOf(const Stanza& stanza, std::string_view whole) {
    if (stanza.tag.kind == XmlTag::Kind::empty) return {};
    const std::string_view inner = textOf({stanza.tag.end, stanza.whole.end}, whole);
    return readText(inner.substr(0, inner.rfind('<')));
}

/// The text of a SASL element; "=" stands for an empty one.
QByteArray decoded(const Stanza& stanza, std::string_view whole) {
    return QByteArray::fromBase64(bytesOf(contentOf(stanza, whole)).simplified());
}

/// The password of a request to register an account; empty in any other iq.
QByteArray newPassword(const Stanza& iq, std::string_view whole) {
    const XmlChild* query = iq.child("query", "jabber:iq:register");
    if (!query || iq.attribute("type") != "set") return {};
    const std::string_view form = textOf(query->content, whole);
    for (const Stanza& field : splitStanzas(form).stanzas) {
        if (field.tag.name == "password") return bytesOf(contentOf(field, form));
    }
    return {};
}

}  // namespace

bool DigestCheck::onProtocolEvent(ProtocolEvent& event) {
    if (event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE)) noteOutgoing(event);
    if (!event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE) || !logins_.contains(&event.account)) return false;
    const Verdict verdict = judge(event);
    if (verdict == Verdict::good) return false;
    logins_.erase(&event.account);
    event.account.line.refused = true;
    emit refused(&event.account, verdict == Verdict::wrong);
    return true;
}

void DigestCheck::noteOutgoing(const ProtocolEvent& event) {
    AccountEntry& account = event.account;
    if (account.line.bound) return;
    for (const Stanza& stanza : event.stanzas().stanzas) {
        if (stanza.tag.name == "iq") {
            if (const QByteArray password = newPassword(stanza, event.data()); !password.isEmpty())
                registered_[&account] = password;
        } else if (stanza.tag.name == "auth") {
            logins_.erase(&account);
            if (stanza.attribute("mechanism") == "DIGEST-MD5") logins_[&account] = {};
        } else if (stanza.tag.name == "response" && logins_.contains(&account)) {
            const QByteArray response = decoded(stanza, event.data());
            if (response.isEmpty()) continue;
            Login& login = logins_[&account];
            login.expected = expectedProof(response, account.settings->text(QStringLiteral("XMPP/Pass")).toUtf8());
            if (!login.expected) login.expected = expectedProof(response, registered_[&account]);
        }
    }
}

DigestCheck::Verdict DigestCheck::judge(const ProtocolEvent& event) {
    Login& login = logins_[&event.account];
    for (const Stanza& stanza : event.stanzas().stanzas) {
        const bool success = stanza.tag.name == "success";
        if (!success && stanza.tag.name != "challenge") continue;
        if (!readProof(login, decoded(stanza, event.data()))) return Verdict::wrong;
        if (!success) continue;
        if (!login.proven && !event.account.line.encrypted) return Verdict::missing;
        logins_.erase(&event.account);
        break;
    }
    return Verdict::good;
}

bool DigestCheck::readProof(Login& login, const QByteArray& content) {
    const auto proof = digestDirective(content, "rspauth");
    if (!proof) return true;
    login.proven = login.expected && proof->toLower() == *login.expected;
    return login.proven;
}

}  // namespace oku
