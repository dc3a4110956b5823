// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The file that keeps the contact list between sessions.
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "host/util/xml_parse.h"
#include "im/roster.h"
#include "platform/platform.h"

namespace protolink {

void Roster::rosterSave(const std::u16string& path) const {
    std::u16string elements;
    for (const ContactEntry* entry : contacts_.inOrder()) {
        elements += lutCPW(u"element", {},
                           {{u"name", entry->name.empty() ? entry->jid : entry->name},
                            {u"jid", entry->jid},
                            {u"auth", entry->auth},
                            {u"group", entry->group}});
    }
    platform::replaceFile(path, wtou(lutCPW(u"roster", elements)));
}

void Roster::rosterLoad(const std::u16string& path) {
    if (!platform::createFileIfMissing(path)) return;
    const auto content = platform::readFile(path);
    if (!content) return;
    std::vector<xmlElement> roots;
    lutXMLParseA(roots, *content);
    if (roots.empty()) return;
    for (const xmlElement& element : roots.front().children) {
        const std::u16string_view jid = element.GetAttribute(u"jid");
        if (jid.empty()) continue;
        ContactEntry& entry = contacts_.entry(jid);
        entry.jid = jid;
        entry.name = element.GetAttribute(u"name");
        entry.group = element.GetAttribute(u"group");
        entry.auth = element.GetAttribute(u"auth");
        const ContactEntry told{entry.jid, entry.auth, entry.group, entry.name, {}, {}};
        OKU_CONTACT_ADD record = contactRecord(told);
        client_.contactList.add(record);
    }
}

}  // namespace protolink
