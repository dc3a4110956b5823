// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "extensions/http_confirmation.h"

#include <set>
#include <string_view>

#include "host/services/message_boxes.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

constexpr std::u16string_view kQuestion =
    u"Ktoś, prawdopodobnie Ty, zazyczył sobie dostępu do:\r\r\r\r\t%s\r\r\r\r"
    u"Identyfikator transakcji to:\r\r\r\r\t%s\r\r\r\r"
    u"Jeśli chcesz zezwolić na dostęp do podanego zasobu kliknij 'Tak'";

/// The services that ask know the refusal by this name, which lacks the "ns" of all other conditions.
constexpr std::u16string_view kRefusalConditions = u"urn:ietf:params:xml:xmpp-stanzas";

std::u16string refusal() {
    const std::u16string condition = lutCPW(u"not-authorized", {}, {{u"xmlns", kRefusalConditions}});
    return lutCPW(u"error", condition, {{u"type", u"auth"}, {u"code", u"401"}});
}

/// The question as it came. A prefix that the stanza around it declares is declared by itself in the answer, where an
/// unknown prefix would end the stream: otherwise any stranger could have the user thrown out.
std::u16string writtenAgain(const xmlElement& confirm, const xmlElement& stanza) {
    std::set<std::u16string_view> own;
    for (const xmlAttribute& attribute : confirm.attributes) own.insert(attribute.name);
    xmlElement whole = confirm;
    for (const xmlAttribute& attribute : stanza.attributes)
        if (attribute.name.starts_with(u"xmlns:") && !own.contains(attribute.name))
            whole.attributes.push_back(attribute);
    return whole.GetXML(1);
}

}  // namespace

bool HttpConfirmation::userAllows(const xmlElement& confirm) const {
    const std::u16string text = formatText(kQuestion, confirm.GetAttribute(u"url"), confirm.GetAttribute(u"id"));
    return MessageBoxes(client_.host).ask(text, u"Autoryzacja OpenID");
}

void HttpConfirmation::onHttpAuthConfirm(const Stanza& stanza) const {
    if (stanza.id.empty() || stanza.from.empty()) return;
    const xmlElement& confirm = *stanza.child(u"confirm", ns::kHttpAuth);
    const std::uint32_t reached = client_.flags & (FLAG_CONNECTED | FLAG_AUTHORIZED);
    const bool allowed = userAllows(confirm);
    // The connection may have ended while the user thought, and the next one must not begin with an old answer.
    if ((client_.flags & reached) != reached) return;
    const std::u16string answer = (allowed ? std::u16string() : refusal()) + writtenAgain(confirm, stanza.element);
    const std::u16string_view type = allowed ? u"result" : u"error";
    output_.sendText(lutCPW(stanza.element.name, answer, {{u"id", stanza.id}, {u"type", type}, {u"to", stanza.from}}));
}

}  // namespace protolink
