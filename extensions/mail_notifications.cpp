// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/mail_notifications.h"

#include "host/record.h"
#include "host/services/links.h"
#include "host/services/notifications.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "im/child_text.h"
#include "plugin/boundary.h"
#include "plugin/contact_record.h"
#include "plugin/deployment.h"
#include "plugin/identifiers.h"
#include "plugin/plugin_state.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

/// Unread mail as the notice tells it.
struct Mailbox {
    int threads = 0;
    std::u16string lines;  // each begins with a line break; a thread without a subject has none
};

/// Who wrote last in a thread, by name or address; empty when it does not say.
std::u16string_view lastSender(const xmlElement& thread) {
    const xmlElement* senders = thread.GetChildPtr(u"senders");
    if (!senders || senders->children.empty()) return {};
    const xmlElement& last = senders->children.back();
    const std::u16string_view name = last.GetAttribute(u"name");
    return name.empty() ? last.GetAttribute(u"address") : name;
}

Mailbox readMailbox(const xmlElement& mailbox) {
    Mailbox mail;
    for (const xmlElement& thread : mailbox.children) {
        if (thread.name != u"mail-thread-info") continue;
        ++mail.threads;
        const std::u16string& subject = childText(thread, u"subject");
        if (subject.empty()) continue;
        const std::u16string_view sender = lastSender(thread);
        mail.lines += sender.empty() ? formatText(u"\r\n%d - \"%s\"", mail.threads, subject)
                                     : formatText(u"\r\n%d - %s: \"%s\"", mail.threads, sender, subject);
    }
    return mail;
}

/// The pop-up may outlive the account, and even the plugin's state: it needs neither.
OKU_WORD OKU_CALL onMailNotifyEvent(OKU_WORD param, OKU_WORD, OKU_WORD) noexcept {
    return atBoundary([&]() -> OKU_WORD {
        const auto* event = readRecord<OKU_NOTIFY_EVENT>(param);
        // Nothing goes with the pop-up that would have to be released with it.
        if (event && event->action == OKU_NOTIFY_CLICKED) Links(pluginHost()).open(deployment::kWebMail);
        return 0;
    });
}

}  // namespace

void MailNotifications::requestMailbox() const {
    const std::u16string query = lutCPW(u"query", {}, {{u"xmlns", ns::kMailNotify}});
    output_.sendText(lutCPW(u"iq", query, {{u"to", client_.jid.bare}, {u"id", generateId()}, {u"type", u"get"}}));
}

void MailNotifications::onNewMail(const Stanza& iq) const {
    output_.sendText(lutCPW(u"iq", {}, {{u"type", u"result"}, {u"to", iq.from}, {u"id", iq.id}}));
    requestMailbox();
}

void MailNotifications::onMailbox(const Stanza& iq) const {
    const Mailbox mail = readMailbox(*iq.child(u"mailbox"));
    if (mail.lines.empty()) return;
    const bool keep = client_.settings.get(setting::kKeepMailNotice);
    tellListeners();
    showNotice(mail.threads, mail.lines, keep);
}

void MailNotifications::tellListeners() const {
    // The account itself, which the host knows by its user's name here. A listener may have the account dial anew,
    // which replaces its address.
    const std::u16string user = client_.jid.node;
    const OKU_CONTACT_RECORD account = contactRecord(client_, user);
    client_.hooks.notice(HookKind::NewMail, &account);
}

void MailNotifications::showNotice(int threads, const std::u16string& lines, bool keep) const {
    Notice notice{NoticeKind::Mail, keep ? NoticeMode::MailKept : NoticeMode::Mail, u"Image/Mail", {}, {}, {}};
    notice.title = formatText(u"Nowa poczta na koncie gMail (%s)", client_.jid.bare);
    notice.text = formatText(u"Ilość nieprzeczytanych: %d%s", threads, lines);
    if (keep) notice.key = formatText(u"GMAIL/%d/%s", client_.netId, kProtocolClass);
    notice.onEvent = onMailNotifyEvent;
    Notifications(client_.host).show(notice);
}

}  // namespace protolink
