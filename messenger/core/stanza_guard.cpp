#include "messenger/core/stanza_guard.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "messenger/core/jid_text.h"

namespace oku {
namespace {

constexpr std::size_t kMostRequests = 50000;
/// The plugin hands an answer over once more under this id; it never stands on the wire by right.
constexpr std::string_view kInnerId = "dummy-reg-result";

QString text(const std::string& bytes) { return QString::fromStdString(bytes); }

/// What only the account or its server may send, from whomever it comes.
bool isPrivileged(const Stanza& stanza) {
    return stanza.child("query", "jabber:iq:roster") || stanza.child("query", "google:shared-status") ||
           stanza.child("mailbox") || stanza.child("new-mail");
}

bool isConfirm(const Stanza& stanza) { return stanza.child("confirm", "http://jabber.org/protocol/http-auth"); }

enum class Verdict { pass, takeOut, takeIdOut };

Verdict judgeAnswer(const AccountEntry& account, const Stanza& stanza, const QString& from,
                    const std::map<std::string, std::string>& requests, const std::string& id) {
    const auto request = requests.find(id);
    const bool isIq = stanza.tag.name == "iq";
    if (request == requests.end()) return id == kInnerId ? Verdict::takeIdOut : Verdict::pass;
    const std::string type = stanza.attribute("type");
    const bool isAnswer = isIq && (type == "result" || type == "error");
    // A message that happens to carry the id is somebody's message all the same; only its id must not be seen.
    if (!isIq) return Verdict::takeIdOut;
    return isAnswer && mayAnswer(account, text(request->second), from) ? Verdict::pass : Verdict::takeOut;
}

}  // namespace

bool isOwnAddress(const AccountEntry& account, const QString& from) {
    return from.isEmpty() || bareJid(from) == account.jid() || from.toLower() == account.domain();
}

bool mayAnswer(const AccountEntry& account, const QString& to, const QString& from) {
    if (to.isEmpty() || bareJid(to) == account.jid()) return isOwnAddress(account, from);
    if (to.toLower() == account.domain()) return from.isEmpty() || from.toLower() == account.domain();
    return bareJid(to) == bareJid(from) && resourceOf(to) == resourceOf(from);
}

bool StanzaGuard::onProtocolEvent(ProtocolEvent& event) {
    if (event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE)) noteRequests(event);
    if (event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE)) check(event);
    if (event.kind == OKU_HOOK_OWN_STATUS && !event.account.has(OKU_FLAG_CONNECTED)) requests_.erase(&event.account);
    return false;
}

void StanzaGuard::noteRequests(const ProtocolEvent& event) {
    Requests& requests = requests_[&event.account];
    for (const Stanza& stanza : event.stanzas().stanzas) {
        if (stanza.tag.name != "iq") continue;
        const std::string type = stanza.attribute("type");
        const std::string id = stanza.attribute("id");
        if ((type != "get" && type != "set") || id.empty()) continue;
        if (requests.size() >= kMostRequests) requests.erase(requests.begin());
        requests[id] = stanza.attribute("to");
    }
}

void StanzaGuard::check(ProtocolEvent& event) {
    Requests& requests = requests_[&event.account];
    std::vector<Span> spans = event.stanzas().strayEnds;
    for (const Stanza& stanza : event.stanzas().stanzas) {
        const std::string_view name = stanza.tag.name;
        const bool isIq = name == "iq";
        if (!isIq && name != "message" && name != "presence") continue;
        const QString from = text(stanza.attribute("from"));
        if (isIq && isPrivileged(stanza) && !isOwnAddress(event.account, from)) {
            spans.push_back(stanza.whole);
            continue;
        }
        // A login at a web site is confirmed for the site, which speaks as a service and never as a person.
        if (isConfirm(stanza) && from.contains(u'@') && !isOwnAddress(event.account, from)) {
            spans.push_back(stanza.whole);
            continue;
        }
        const std::string id = stanza.attribute("id");
        const Verdict verdict = judgeAnswer(event.account, stanza, from, requests, id);
        if (verdict == Verdict::takeOut) spans.push_back(stanza.whole);
        if (verdict == Verdict::takeIdOut) {
            if (const auto span = attributeSpan(stanza.tag, "id")) spans.push_back(*span);
        }
        if (verdict == Verdict::pass && isIq) requests.erase(id);
    }
    for (const Span span : spans) event.blank(span);
}

}  // namespace oku
