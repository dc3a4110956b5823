// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/properties_info.h"

#include <vector>

#include "dialogs/offline_box.h"
#include "dialogs/properties_layout.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "im/child_text.h"
#include "plugin/identifiers.h"
#include "plugin/jid.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

/// Whoever is not on the roster has none.
std::vector<std::u16string> resourcesOf(const ContactEntry* contact) {
    std::vector<std::u16string> names;
    if (!contact) return names;
    for (const ResourceEntry& resource : contact->resources) names.push_back(resource.resource);
    return names;
}

std::u16string told(const xmlElement& answer) {
    const JID from = parseJID(answer.GetAttribute(u"from"));
    const xmlElement none;
    const xmlElement* const found = answer.GetChildPtr(u"query");
    const xmlElement& query = found ? *found : none;
    return formatText(u"JID:\t%s/%s\r\n  Program:\t%s\r\n  Wersja:  \t%s\r\n  System:\t%s\r\n\r\n", from.bare,
                      from.resource, childText(query, u"name"), childText(query, u"version"), childText(query, u"os"));
}

}  // namespace

WindowLayout CWndPropertiesInfo::layout() { return properties::information(); }

void CWndPropertiesInfo::DestroyWindow() {
    // What comes later reaches nobody.
    client_.dispatcher.removeByTarget(*this);
    COptionsDialog::DestroyWindow();
}

void CWndPropertiesInfo::OnCommand(std::uint32_t control) {
    if (control == properties::kRefresh) {
        refresh();
    } else {
        COptionsDialog::OnCommand(control);
    }
}

void CWndPropertiesInfo::refresh() {
    // Who shows presence without an address stands in the list under none, and cannot be asked.
    if (contact_.empty()) return;
    const std::vector<std::u16string> resources = resourcesOf(contacts_.find(contact_));
    if (resources.empty()) return;
    if (!(client_.client.flags & FLAG_AUTHORIZED)) return warnOffline(client_.client.host, handle());
    view().setText(properties::kResources, {});
    std::u16string list = u"Zalogowane zasoby: \r\n";
    for (const std::u16string& resource : resources) {
        // Sending may have seen the window go.
        if (!isOpen()) return;
        list += u"\t" + resource + u"\r\n";
        const std::u16string id = generateId();
        client_.dispatcher.addTarget(*this, id, this);
        client_.output.sendText(lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kVersion}}),
                                       {{u"id", id}, {u"type", u"get"}, {u"to", contact_ + u"/" + resource}}));
    }
    view().setText(properties::kResources, list + u"\r\n");
}

void CWndPropertiesInfo::onXMLResult(xmlElement& element, void*) {
    const std::u16string list = view().text(properties::kResources);
    if (element.GetAttribute(u"type") == u"result") {
        view().setText(properties::kResources, list + told(element) + u"\r\n");
    } else {
        // Seen for a moment only: the list is worth more than the failure of one resource.
        view().setText(properties::kResources, u"Błąd");
        view().setText(properties::kResources, list);
    }
}

}  // namespace protolink
