// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contacts' presence into the host and into the list of online resources.
#include "host/record.h"
#include "host/util/format.h"
#include "host/util/numbers.h"
#include "host/util/xml_compose.h"
#include "im/child_text.h"
#include "im/presence.h"
#include "im/stanza_errors.h"
#include "platform/platform.h"
#include "plugin/contact_record.h"

namespace protolink {

namespace {

/// The word that names the status: a `show` of two or more letters beats the type, except in an error.
std::u16string_view statusWord(std::u16string_view show, std::u16string_view type) {
    return show.size() < 2 || type == u"error" ? type : show;
}

constexpr std::u16string_view kGone = u"unavailable";

/// Writes what went wrong into the description, where there is one.
void showErrorAsStatus(xmlElement& presence) {
    xmlElement* status = presence.GetChildPtr(u"status");
    if (!status) return;
    const xmlElement error = presence.GetChild(u"error");
    const std::u16string_view code = error.GetAttribute(u"code");
    status->text = error.text.empty() ? formatText(u"Błąd (%s): %s", code, httpStatusText(code)) : error.text;
}

}  // namespace

int Presence::onPresence(const Stanza& presence) {
    const JID sender = parseJID(presence.from);
    std::u16string description = lutXMLRestorW(childText(presence.element, u"status"));
    const std::int32_t priority = parseInt32(childText(presence.element, u"priority"));
    const std::u16string_view word = statusWord(childText(presence.element, u"show"), presence.type);
    const Status status = statusFromName(word);
    if (status == Status::Error) stanzaErrorText(description, presence.element.GetChildPtr(u"error"), false);

    if (!tellHost(sender, status, description, priority)) return 1;
    if (!sender.hasResource) return 0;
    if (trackResource(sender, word, status, description) != ResourceFate::New) return 0;
    ContactEntry& contact = contacts_.entry(sender.bare);
    if (contact.jid != sender.bare) return 0;  // not on the roster
    ResourceEntry resource;
    resource.resource = sender.resource;
    resource.status = status;
    resource.lastChange = platform::now();
    resource.description = std::move(description);
    ResourceEntry& added = contact.resources.append(std::move(resource));
    capabilities_.requestResourceCaps(presence.element, presence.from, added);
    return 0;
}

int Presence::onErrorPresence(const Stanza& presence) {
    showErrorAsStatus(presence.element);
    return onPresence(presence);
}

bool Presence::tellHost(const JID& sender, Status status, const std::u16string& description, std::int32_t priority) {
    auto resource = makeRecord<OKU_RESOURCE_INFO>();
    resource.resource = sender.resource.c_str();
    resource.priority = priority;
    auto contact = contactRecord(client_, sender.bare);
    contact.resource = &resource;
    auto state = makeRecord<OKU_CONTACT_STATE>();
    state.contact = &contact;
    state.status = static_cast<std::uint32_t>(status);
    state.description = description.c_str();
    state.time = platform::now();
    state.resource = &resource;

    if (!client_.hooks.before(HookKind::ContactState, toWord(&state), &contact)) return false;
    client_.contactList.setState(state);
    client_.hooks.after(HookKind::ContactState, toWord(&state), &contact);
    return true;
}

Presence::ResourceFate Presence::trackResource(const JID& sender, std::u16string_view word, Status status,
                                               const std::u16string& description) {
    const bool gone = word == kGone;
    ContactEntry& contact = contacts_.entry(sender.bare);
    ResourceEntry* known = contact.resources.find(sender.resource);
    if (!known) return gone ? ResourceFate::Gone : ResourceFate::New;
    if (gone) {
        contact.resources.erase(sender.resource);
        if (contact.lastResource == sender.resource) contact.lastResource.clear();
        return ResourceFate::Gone;
    }
    known->lastChange = platform::now();
    known->status = status;
    known->description = description;
    return ResourceFate::Known;
}

}  // namespace protolink
