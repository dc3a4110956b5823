// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/iq_queries.h"

#include <QRandomGenerator>
#include <QTimer>
#include <vector>

#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/wire/stanza_guard.h"
#include "messenger/core/xml/xml_text.h"

namespace oku {

IqQueries::IqQueries(ServiceRegistry& services, QObject* parent) : QObject(parent), services_(services) {}

bool IqQueries::send(AccountEntry& account, const QString& to, const QString& type, const QString& payload,
                     Answer answer, int timeout) {
    const quint64 random = QRandomGenerator::system()->generate64();
    const QString id = QStringLiteral("oku-%1-%2").arg(++lastNumber_).arg(random, 0, 36);
    const QString address = to.isEmpty() ? QString() : QStringLiteral(" to=\"%1\"").arg(xmlEscaped(to));
    const QString xml =
        QStringLiteral("<iq%1 id=\"%2\" type=\"%3\">").arg(address, id, type) + payload + QStringLiteral("</iq>");
    const std::string key = id.toStdString();
    // Before it is sent, as a requester does: the answer may be quicker than the return of the call.
    pending_[key] = {&account, to, std::move(answer)};
    if (!sendRaw(account, xml.toUtf8())) {
        pending_.erase(key);
        return false;
    }
    QTimer::singleShot(timeout, this, [this, key] { finish(key, std::nullopt); });
    return true;
}

bool IqQueries::sendRaw(AccountEntry& account, const QByteArray& xml) {
    if (!account.registered) return false;
    auto record = makeRecord<OKU_RAW_SEND>();
    record.data = xml.constData();
    record.length = static_cast<std::uint32_t>(xml.size());
    const auto result = services_.call(account.service(u"PFRawSend"), wordOf(&record), 0);
    return static_cast<std::int32_t>(result) > 0;
}

void IqQueries::connectionEnded(const AccountEntry& account) {
    std::vector<std::string> ids;
    for (const auto& [id, pending] : pending_) {
        if (pending.account == &account) ids.push_back(id);
    }
    for (const auto& id : ids) finish(id, std::nullopt);
}

bool IqQueries::onProtocolEvent(ProtocolEvent& event) {
    if (!event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE) || pending_.empty()) return false;
    struct Found {
        std::string id;
        QByteArray xml;
        Span span;
    };
    std::vector<Found> found;
    for (const Stanza& stanza : event.stanzas().stanzas) {
        if (stanza.tag.name != "iq") continue;
        const std::string type = stanza.attribute("type");
        const auto pending = pending_.find(stanza.attribute("id"));
        if (pending == pending_.end() || (type != "result" && type != "error")) continue;
        if (pending->second.account != &event.account) continue;
        if (!mayAnswer(event.account, pending->second.to.toStdString(), stanza.attribute("from"))) continue;
        const auto whole = event.data().substr(stanza.whole.begin, stanza.whole.end - stanza.whole.begin);
        found.push_back({pending->first, QByteArray(whole.data(), static_cast<qsizetype>(whole.size())), stanza.whole});
    }
    for (const Found& answer : found) event.blank(answer.span);
    for (const Found& answer : found) finish(answer.id, answer.xml);
    return false;
}

void IqQueries::finish(const std::string& id, const std::optional<QByteArray>& answer) {
    const auto found = pending_.find(id);
    if (found == pending_.end()) return;
    const Answer handler = std::move(found->second.answer);
    pending_.erase(found);
    if (handler) handler(answer);
}

}  // namespace oku
