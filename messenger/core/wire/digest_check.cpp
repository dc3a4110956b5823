// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/digest_check.h"

#include "messenger/core/values/setting_keys.h"
#include "messenger/core/wire/digest_proof.h"
#include "messenger/core/xml/namespaces.h"
#include "messenger/core/xml/xml_data.h"

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
    const XmlChild* query = iq.child("query", ns::kRegister);
    if (!query || iq.attribute("type") != "set") return {};
    const std::string_view form = textOf(query->content, whole);
    for (const Stanza& field : splitStanzas(form).stanzas) {
        if (field.tag.name == "password") return bytesOf(contentOf(field, form));
    }
    return {};
}

}  // namespace

bool DigestCheck::onProtocolEvent(ProtocolEvent& event) {
    LineState& line = event.account.line;
    if (event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE)) noteOutgoing(event);
    if (!event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE) || !line.digest) return false;
    const Verdict verdict = judge(event);
    if (verdict == Verdict::good) return false;
    line.digest.reset();
    line.refused = true;
    emit refused(&event.account, verdict == Verdict::wrong);
    return true;
}

/// A header of ours ends no login: the plugin sends one whenever a server says that the stream is compressed.
void DigestCheck::noteOutgoing(const ProtocolEvent& event) {
    LineState& line = event.account.line;
    if (line.bound) return;
    for (const Stanza& stanza : event.stanzas().stanzas) {
        if (stanza.tag.name == "iq") {
            if (const QByteArray password = newPassword(stanza, event.data()); !password.isEmpty())
                line.registered = password;
        } else if (stanza.tag.name == "auth") {
            line.digest.reset();
            if (stanza.attribute("mechanism") == "DIGEST-MD5") line.digest.emplace();
        } else if (stanza.tag.name == "response" && line.digest) {
            const QByteArray response = decoded(stanza, event.data());
            if (response.isEmpty()) continue;
            const QString known = event.account.settings->text(QString::fromUtf16(setting::password));
            line.digest->expected = expectedProof(response, known.toUtf8());
            if (!line.digest->expected) line.digest->expected = expectedProof(response, line.registered);
        }
    }
}

DigestCheck::Verdict DigestCheck::judge(const ProtocolEvent& event) {
    LineState& line = event.account.line;
    for (const Stanza& stanza : event.stanzas().stanzas) {
        const bool success = stanza.tag.name == "success";
        if (!success && stanza.tag.name != "challenge") continue;
        if (!readProof(*line.digest, decoded(stanza, event.data()))) return Verdict::wrong;
        if (!success) continue;
        if (!line.digest->proven && !line.encrypted) return Verdict::missing;
        line.digest.reset();
        break;
    }
    return Verdict::good;
}

bool DigestCheck::readProof(DigestLogin& login, const QByteArray& content) {
    const auto proof = digestDirective(content, "rspauth");
    if (!proof) return true;
    login.proven = login.expected && proof->toLower() == *login.expected;
    return login.proven;
}

}  // namespace oku
