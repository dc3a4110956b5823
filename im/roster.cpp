// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "im/roster.h"

#include "host/record.h"
#include "host/util/letter_case.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

constexpr char16_t kDefaultGroup[] = u"Kontakty";
constexpr std::uint32_t kContactKind = 3;

std::u16string orElse(std::u16string_view text, std::u16string_view fallback) {
    return std::u16string(text.empty() ? fallback : text);
}

}  // namespace

void Roster::rebuildFrom(const xmlElement& iq) {
    client_.hooks.notice(HookKind::RosterComplete);
    client_.contactList.deleteAll(client_.netId);
    rosterDownloaded = 1;
    if (const xmlElement* query = iq.GetChildPtr(u"query", ns::kRoster)) rosterItems(*query);
}

void Roster::rosterItems(const xmlElement& query) {
    const DrawingPause pause(client_.contactList);
    for (const xmlElement& item : query.children) takeItem(item);
}

OKU_CONTACT_ADD Roster::contactRecord(const ContactEntry& entry) const {
    auto record = makeRecord<OKU_CONTACT_ADD>();
    record.identity.id = entry.jid.c_str();
    record.identity.pfClass = kProtocolClass;
    record.identity.netId = client_.netId;
    record.name = entry.name.c_str();
    record.group = entry.group.c_str();
    record.kind = kContactKind;
    record.fields = OKU_CONTACT_FIELDS_PLAIN;
    return record;
}

void Roster::takeItem(const xmlElement& item) {
    const std::u16string_view givenJid = item.GetAttribute(u"jid");
    const std::u16string_view subscription = item.GetAttribute(u"subscription");
    const xmlElement* group = item.GetChildPtr(u"group");
    const std::u16string jid = lowerCase(givenJid);

    ContactEntry& entry = contacts_.entry(jid);
    entry.jid = jid;
    entry.auth = subscription;
    entry.name = orElse(item.GetAttribute(u"name"), givenJid);
    entry.group = orElse(group ? std::u16string_view(group->text) : std::u16string_view(), kDefaultGroup);

    // The host may call back and change the contacts, so it is given texts of their own.
    const ContactEntry told{entry.jid, entry.auth, entry.group, entry.name, {}, {}};
    OKU_CONTACT_ADD record = contactRecord(told);
    if (subscription == u"remove") return removeFromHost(record);
    if (subscription == u"none") {
        const bool asked = item.GetAttribute(u"ask") == u"subscribe";
        record.authorization = asked ? OKU_CONTACT_AUTH_ASKED : OKU_CONTACT_AUTH_NONE;
        record.fields |= OKU_CONTACT_FIELDS_AUTH;
        if (asked) entry.auth = u"wait";
    }
    client_.contactList.add(record);
}

void Roster::removeFromHost(const OKU_CONTACT_ADD& record) const {
    if (const OKU_WORD handle = client_.contactList.find(record)) client_.contactList.remove(handle);
}

OKU_WORD Roster::rosterRemove(std::u16string_view jid) {
    if (!client_.loggedIn()) return 0;
    const std::u16string item = lutCPW(u"item", {}, {{u"jid", jid}, {u"subscription", u"remove"}});
    const std::u16string query = lutCPW(u"query", item, {{u"xmlns", ns::kRoster}});
    return output_.sendText(lutCPW(u"iq", query, {{u"id", generateId()}, {u"type", u"set"}}));
}

OKU_WORD Roster::rosterUpdate(std::u16string_view jid, std::u16string_view name, std::u16string_view group) {
    if (!client_.loggedIn()) return 0;
    const std::u16string item =
        lutCPW(u"item", lutCPW(u"group", lutXMLEscapeW(group)), {{u"jid", jid}, {u"name", name}});
    const std::u16string query = lutCPW(u"query", item, {{u"xmlns", ns::kRoster}});
    return output_.sendText(lutCPW(u"iq", query, {{u"id", generateId()}, {u"type", u"set"}}));
}

OKU_WORD Roster::onContactDelete(OKU_WORD contact) {
    if (!client_.loggedIn()) return 1;
    const auto* record = readRecord<OKU_CONTACT_RECORD>(contact);
    if (record) rosterRemove(readText(record->id));
    return 0;
}

}  // namespace protolink
