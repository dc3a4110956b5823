// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/mail_notifications.h"

#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

void MailNotifications::onNewMail(const Stanza& iq) const {
    output_.sendText(lutCPW(u"iq", {}, {{u"type", u"result"}, {u"to", iq.from}, {u"id", iq.id}}));
    const std::u16string query = lutCPW(u"query", {}, {{u"xmlns", ns::kMailNotify}});
    output_.sendText(lutCPW(u"iq", query, {{u"to", client_.jid.bare}, {u"id", generateId()}, {u"type", u"get"}}));
}

}  // namespace protolink
