// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/properties_xmpp.h"

#include <array>

#include "dialogs/offline_box.h"
#include "dialogs/properties_layout.h"
#include "host/services/message_boxes.h"

namespace protolink {

namespace {

using namespace properties;

constexpr std::size_t kShortestJid = 3;

/// The boxes of privacy, and what each of them denies.
struct Box {
    std::uint32_t control;
    bool PrivacyEntry::*denied;
};
constexpr std::array<Box, 4> kBoxes{{
    {kHide, &PrivacyEntry::presenceOut},
    {kIgnore, &PrivacyEntry::presenceIn},
    {kBlockMessages, &PrivacyEntry::message},
    {kBlockRequests, &PrivacyEntry::iq},
}};

}  // namespace

WindowLayout CWndPropertiesXMPP::layout() { return properties::settings(); }

void CWndPropertiesXMPP::DestroyWindow() {
    client_.account.dispatcher.removeByUser(this);
    COptionsDialog::DestroyWindow();
}

void CWndPropertiesXMPP::OptionsLoad() {
    const ControlName groups = view().nameOf(kGroup);
    client_.account.client.contactList.listGroups(groups.window, groups.control);
    if (!contact_) {
        for (const std::uint32_t button : {kAuthorize, kAskForAuthorization}) view().setEnabled(button, false);
        for (const Box& box : kBoxes) view().setEnabled(box.control, false);
        return;
    }
    const ContactEntry* const found = onRoster();
    if (!found) return;
    // A copy: what the host does meanwhile may change the contacts.
    const Entered contact{found->jid, found->name, found->group};
    view().setText(kJid, contact.jid);
    view().setText(kName, contact.name);
    view().setText(kGroup, contact.group);
    view().setReadOnly(kJid, true);
    showPrivacy(contact.jid);
}

void CWndPropertiesXMPP::showPrivacy(std::u16string_view jid) {
    if (!client_.features.serverHasPrivacyLists) {
        for (const Box& box : kBoxes) view().setEnabled(box.control, false);
        return;
    }
    const PrivacyEntry* const found = client_.privacy.privacyEntry(jid, false);
    if (!found) return;
    const PrivacyEntry denied = *found;
    for (const Box& box : kBoxes) view().setChecked(box.control, denied.*box.denied);
}

const ContactEntry* CWndPropertiesXMPP::onRoster() const {
    const ContactEntry* const found = contact_ ? client_.contacts.find(*contact_) : nullptr;
    return found && !found->jid.empty() ? found : nullptr;
}

void CWndPropertiesXMPP::OnCommand(std::uint32_t control) {
    switch (control) {
        case kAuthorize:
            return tell(u"subscribed");
        case kAskForAuthorization:
            return tell(u"subscribe");
        default:
            return COptionsDialog::OnCommand(control);
    }
}

void CWndPropertiesXMPP::tell(std::u16string_view type) {
    if (!client_.account.client.loggedIn()) return warnOffline(client_.account.client.host, handle());
    client_.presence.sendDirectedPresence(view().text(kJid), type);
}

bool CWndPropertiesXMPP::OptionsSave() {
    const ContactEntry* const found = onRoster();
    if (!found) return true;
    const std::u16string jid = found->jid;
    // All is read before anything is sent: what a window that goes meanwhile would tell is empty.
    PrivacyEntry wanted = marks();
    wanted.jid = jid;
    if (!store(entered())) return false;
    deny(wanted);
    return true;
}

bool CWndPropertiesXMPP::OptionsAdd() {
    const Entered contact = entered();
    if (!store(contact)) return false;
    client_.presence.sendDirectedPresence(contact.jid, u"subscribe");
    return true;
}

CWndPropertiesXMPP::Entered CWndPropertiesXMPP::entered() const {
    return {view().text(kJid), view().text(kName), view().text(kGroup)};
}

PrivacyEntry CWndPropertiesXMPP::marks() const {
    PrivacyEntry shown;
    for (const Box& box : kBoxes) shown.*box.denied = view().checked(box.control);
    return shown;
}

bool CWndPropertiesXMPP::store(const Entered& contact) {
    const Host& host = client_.account.client.host;
    // The window may have gone while it was asked, and then nobody entered anything.
    if (!isOpen()) return false;
    if (contact.jid.size() < kShortestJid) {
        MessageBoxes(host).show(u"Nie wpisałeś JID, nie można wykonać.", u"Brak TID", BoxStyle::Warning, handle());
        return false;
    }
    if (client_.roster.rosterUpdate(contact.jid, contact.name, contact.group) > 0) return true;
    warnOffline(host, handle());
    return false;
}

void CWndPropertiesXMPP::deny(const PrivacyEntry& wanted) {
    const bool wasHidden = client_.privacy.privacyEntry(wanted.jid, true)->presenceOut;
    if (wanted.presenceOut && !wasHidden) client_.presence.sendDirectedPresence(wanted.jid, u"unavailable");
    // Looked for anew: sending may have changed the list.
    *client_.privacy.privacyEntry(wanted.jid, true) = wanted;
    client_.privacy.privacyUpdate(false);
    // The contact learns of the user again.
    const CClientClass& client = client_.account.client;
    if (wasHidden && !wanted.presenceOut) client_.presence.sendPresence(client.status, client.statusDescription);
}

}  // namespace protolink
