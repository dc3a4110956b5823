// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/stream_watch.h"

#include "messenger/core/values/jid_text.h"
#include "messenger/core/wire/stanza_guard.h"
#include "messenger/core/xml/namespaces.h"
#include "messenger/core/xml/xml_data.h"

namespace oku {
namespace {

QString text(const std::string& bytes) { return QString::fromStdString(bytes); }

std::string_view contentOf(const XmlChild& child, std::string_view whole) {
    return whole.substr(child.content.begin, child.content.end - child.content.begin);
}

}  // namespace

QDateTime stampTime(const QString& stamp) {
    // XEP-0091: CCYYMMDDThh:mm:ss, always UTC.
    if (stamp.size() == 17) {
        QDateTime time = QDateTime::fromString(stamp, QStringLiteral("yyyyMMdd'T'hh:mm:ss"));
        time.setTimeSpec(Qt::UTC);
        return time;
    }
    return QDateTime::fromString(stamp, Qt::ISODateWithMs);
}

bool StreamWatch::onProtocolEvent(ProtocolEvent& event) {
    if (!event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE)) return false;
    // Reports come while the piece is routed, right after this; what is left of the piece before was vetoed.
    late_[&event.account].clear();
    for (const Stanza& stanza : event.stanzas().stanzas) {
        if (stanza.tag.name == "message") readMessage(event.account, stanza);
        if (stanza.tag.name == "iq") readRoster(event.account, stanza, event.data());
        if (stanza.tag.name == "stream:error") readStreamError(event.account, stanza, event.data());
    }
    return false;
}

QDateTime StreamWatch::takeDelay(const AccountEntry& account, const QString& from, const QString& resource) {
    auto& late = late_[&account];
    while (!late.empty()) {
        const Late next = late.front();
        late.pop_front();
        if (next.from == bareJid(from) && next.resource == resource) return next.written;
    }
    return {};
}

void StreamWatch::readMessage(AccountEntry& account, const Stanza& stanza) {
    const QString from = text(stanza.attribute("from"));
    if (stanza.attribute("type") == "error") emit bounced(&account, text(stanza.attribute("id")), from);
    const XmlChild* body = stanza.child("body");
    if (!body || body->content.begin == body->content.end) return;
    Late late{bareJid(from), resourceOf(from), {}};
    const XmlChild* delay = stanza.child("delay", ns::kDelay);
    if (!delay) delay = stanza.child("x", ns::kLegacyDelay);
    if (delay) late.written = stampTime(text(attribute(delay->tag, "stamp").value_or(std::string())));
    late_[&account].push_back(late);
}

void StreamWatch::readRoster(AccountEntry& account, const Stanza& stanza, std::string_view whole) {
    const XmlChild* query = stanza.child("query", ns::kRoster);
    if (!query || !isOwnAddress(account, stanza.attribute("from"))) return;
    const std::string_view content = contentOf(*query, whole);
    for (const Stanza& item : splitStanzas(content).stanzas) {
        const QString jid = bareJid(text(item.attribute("jid")));
        ContactDetails details;
        details.subscription = text(item.attribute("subscription"));
        details.asked = item.attribute("ask") == "subscribe";
        if (jid.isEmpty() || details.subscription == QStringLiteral("remove")) continue;
        if (details.subscription.isEmpty()) details.subscription = QStringLiteral("none");
        for (const XmlChild& child : item.children) {
            if (child.tag.name == "group") details.groups.append(text(readText(contentOf(child, content))));
        }
        emit rosterItem(&account, jid, details);
    }
}

void StreamWatch::readStreamError(AccountEntry& account, const Stanza& stanza, std::string_view whole) {
    QString condition;
    QString words;
    for (const XmlChild& child : stanza.children) {
        if (child.tag.name == "text") {
            words = text(readText(contentOf(child, whole)));
        } else if (condition.isEmpty()) {
            condition = text(std::string(child.tag.name));
        }
    }
    emit streamError(&account, condition, words);
}

}  // namespace oku
