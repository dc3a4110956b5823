// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/stanza_guard.h"

#include <algorithm>
#include <array>
#include <optional>

#include "messenger/core/values/jid_text.h"
#include "messenger/core/xml/namespaces.h"

namespace oku {
namespace {

constexpr std::size_t kMostRequests = 50000;
/// The plugin hands an answer over once more under this id; it never stands on the wire by right.
constexpr std::string_view kInnerId = "dummy-reg-result";
/// What may come before TLS, the stream's header beside it.
constexpr std::array<std::string_view, 5> kBeforeTls = {"stream:stream", "stream:features", "proceed", "failure",
                                                        "stream:error"};

/// What only the account or its server may send, from whomever it comes.
bool isPrivileged(const Stanza& stanza) {
    return stanza.child("query", ns::kRoster) || stanza.child("query", ns::kSharedStatus) || stanza.child("mailbox") ||
           stanza.child("new-mail");
}

bool isConfirm(const Stanza& stanza) { return stanza.child("confirm", ns::kHttpAuth); }

/// RFC 6120, section 11.1, forbids comments and instructions, and none of these elements has a use for CDATA: what
/// holds them was made to be read in two ways.
bool isPlain(std::string_view element) {
    return element.find("<!") == std::string_view::npos && element.find("<?") == std::string_view::npos;
}

/// A whole number, whatever it says.
bool isSize(std::string_view text) {
    constexpr std::size_t mostDigits = 20;
    if (text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text.size() <= mostDigits &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isProceed(std::string_view name) { return name == "proceed" || name.ends_with(":proceed"); }

}  // namespace

bool isOwnAddress(const AccountEntry& account, std::string_view from) {
    return from.empty() || sameAddress(bareAddress(from), account.jid().toStdString()) ||
           sameAddress(from, account.domain().toStdString()) || sameAddress(from, account.line.domain.toStdString());
}

bool mayAnswer(const AccountEntry& account, std::string_view to, std::string_view from) {
    if (to.empty() || sameAddress(bareAddress(to), account.jid().toStdString())) return isOwnAddress(account, from);
    const std::string_view resource = to.substr(bareAddress(to).size());
    if (sameAddress(to, account.domain().toStdString()) && from.empty()) return true;
    return sameAddress(bareAddress(to), bareAddress(from)) && resource == from.substr(bareAddress(from).size());
}

/// One look at a piece of received text: what is to be taken out of it.
class StanzaGuard::Check {
public:
    Check(const ProtocolEvent& event, Requests& requests) : event_(event), requests_(requests) {}

    /// What a third party must not send, and before the session is bound what nobody asked for.
    void stanzas() {
        bool bound = event_.account.line.bound || event_.account.clearTextAllowed();
        out = event_.stanzas().strayEnds;
        for (const Stanza& stanza : event_.stanzas().stanzas) {
            const std::string_view name = stanza.tag.name;
            const bool isIq = name == "iq";
            const std::string id = stanza.attribute("id");
            const auto request = requests_.find(id);
            if (isIq ? isForged(stanza, request) : isForgedConfirm(stanza)) {
                out.push_back(stanza.whole);
                continue;
            }
            if (!bound && (name == "message" || name == "presence" || (isIq && request == requests_.end()))) {
                distrust(stanza.whole);
                continue;
            }
            hideOddSizes(stanza);
            if (!isIq || request == requests_.end()) {
                hideId(stanza, id, request);
                continue;
            }
            if (request->second.session) {
                const bool opened = stanza.attribute("type") == "result";
                bound = bound || opened;
                if (!opened) refusal = conditionOf(stanza);
            }
            requests_.erase(request);
        }
    }

    /// All but what may come in clear, and all behind the answer to STARTTLS.
    void clearText() {
        const std::string_view text = event_.data();
        std::size_t kept = 0;
        for (const Stanza& stanza : event_.stanzas().stanzas) {
            const std::string_view whole = text.substr(stanza.whole.begin, stanza.whole.end - stanza.whole.begin);
            const bool known = std::find(kBeforeTls.begin(), kBeforeTls.end(), stanza.tag.name) != kBeforeTls.end();
            if (known && isPlain(whole)) {
                takeUpTo(text, kept, stanza.whole.begin);
                const std::string id = stanza.attribute("id");
                hideId(stanza, id, requests_.find(id));
                kept = stanza.whole.end;
            }
            if (isProceed(stanza.tag.name)) break;
        }
        takeUpTo(text, kept, text.size());
    }

    std::vector<Span> out;
    bool distrusted = false;
    std::optional<QString> refusal;  ///< of the session: the condition of the error

private:
    using Found = Requests::const_iterator;

    /// An iq that a stranger must not send, or that answers what was asked of somebody else.
    bool isForged(const Stanza& stanza, Found request) const {
        const std::string from = stanza.attribute("from");
        if (isPrivileged(stanza) && !isOwnAddress(event_.account, from)) return true;
        if (isForgedConfirm(stanza)) return true;
        if (request == requests_.end()) return false;
        const std::string type = stanza.attribute("type");
        const bool isAnswer = type == "result" || type == "error";
        return !isAnswer || !mayAnswer(event_.account, request->second.to, from);
    }

    /// A login at a web site is confirmed for the site, which speaks as a service and never as a person.
    bool isForgedConfirm(const Stanza& stanza) const {
        if (!isConfirm(stanza)) return false;
        const std::string from = stanza.attribute("from");
        return from.find('@') != std::string::npos && !isOwnAddress(event_.account, from);
    }

    /// What happens to carry the id of a request is somebody's message all the same; only its id must not be seen.
    void hideId(const Stanza& stanza, const std::string& id, Found request) {
        if (request == requests_.end() && id != kInnerId) return;
        if (const auto span = attributeSpan(stanza.tag, "id")) out.push_back(*span);
    }

    /// The plugin asks about a file in one text of its name and its size, both as they came: where the size is none,
    /// the text can be read as one of another name.
    void hideOddSizes(const Stanza& stanza) {
        for (const XmlChild& offer : stanza.children)
            if (offer.tag.name == "si") hideOddSizes(offer.content);
    }

    void hideOddSizes(Span inside) {
        TagScanner tags(event_.data().substr(inside.begin, inside.end - inside.begin));
        while (const auto tag = tags.next()) {
            const auto size = tag->name == "file" ? attribute(*tag, "size") : std::nullopt;
            if (!size || isSize(*size)) continue;
            if (const auto span = attributeSpan(*tag, "size"))
                out.push_back({inside.begin + span->begin, inside.begin + span->end});
        }
    }

    QString conditionOf(const Stanza& stanza) const {
        const XmlChild* error = stanza.child("error");
        if (!error) return {};
        const Span span = error->content;
        const StanzaList inside = splitStanzas(event_.data().substr(span.begin, span.end - span.begin));
        return inside.stanzas.empty() ? QString() : QString::fromUtf8(inside.stanzas.front().tag.name);
    }

    void distrust(Span span) {
        out.push_back(span);
        distrusted = true;
    }

    /// White space and what the plugin leaves of a declaration are no loss that anybody need hear of.
    void takeUpTo(std::string_view text, std::size_t from, std::size_t to) {
        if (from == to) return;
        out.push_back({from, to});
        distrusted = distrusted || text.substr(from, to - from).find('<') != std::string_view::npos;
    }

    const ProtocolEvent& event_;
    Requests& requests_;
};

bool StanzaGuard::onProtocolEvent(ProtocolEvent& event) {
    AccountEntry& account = event.account;
    if (event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE)) noteRequests(event);
    if (event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE)) {
        Check check(event, requests_[&account]);
        if (account.line.encrypted || account.clearTextAllowed()) {
            check.stanzas();
        } else {
            check.clearText();
        }
        for (const Span span : check.out) event.blank(span);
        if (check.distrusted) tell(account);
        if (check.refusal) emit sessionRefused(&account, *check.refusal);
    }
    if (event.kind == OKU_HOOK_OWN_STATUS && !account.has(OKU_FLAG_CONNECTED)) requests_.erase(&account);
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
        const bool session = stanza.child("session", ns::kSession) != nullptr;
        requests[id] = {stanza.attribute("to"), session};
    }
}

void StanzaGuard::tell(AccountEntry& account) {
    if (!std::exchange(account.line.told, true)) emit distrusted(&account);
}

}  // namespace oku
