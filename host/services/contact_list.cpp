// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/contact_list.h"

#include "host/oku/avatar.h"
#include "host/record.h"

namespace protolink {

namespace {

/// The text is the caller's and has to live as long as the record.
OKU_CONTACT_ICON furtherIcon(const char16_t* icon, const char16_t* tooltip) {
    auto record = makeRecord<OKU_CONTACT_ICON>();
    record.icon = icon;
    record.value56 = 1;
    record.tooltip = tooltip;
    return record;
}

}  // namespace

void ContactList::deleteAll(std::uint32_t netId) const {
    host_.call(u"OKU/CTL/DeleteAll", toWord(kProtocolClass), static_cast<OKU_WORD>(netId));
}

void ContactList::setAllOffline(std::uint32_t netId) const {
    host_.call(u"OKU/CTL/SetAllOffline", toWord(kProtocolClass), static_cast<OKU_WORD>(netId));
}

void ContactList::add(OKU_CONTACT_ADD& record) const {
    host_.call(u"OKU/CTL/AddContact", toWord(&record));
    auto icon = makeRecord<OKU_CONTACT_ICON>();
    icon.icon = u"XMPP/Icon";
    icon.value52 = 1;
    icon.value56 = 1;
    host_.call(u"OKU/CTL/AddContactIcon", record.handle, toWord(&icon));
}

OKU_WORD ContactList::find(const OKU_CONTACT_ADD& record) const {
    return host_.call(u"OKU/CTL/FndContact", toWord(&record.identity));
}

OKU_WORD ContactList::find(const OKU_CONTACT_RECORD& contact) const {
    return host_.call(u"OKU/CTL/FndContact", toWord(&contact));
}

void ContactList::addIcon(OKU_WORD handle, const char16_t* icon, const std::u16string& tooltip) const {
    const OKU_CONTACT_ICON record = furtherIcon(icon, tooltip.c_str());
    host_.call(u"OKU/CTL/AddContactIcon", handle, toWord(&record));
}

void ContactList::removeIcon(OKU_WORD handle, const char16_t* icon) const {
    // The same record as for showing it, with a tooltip that tells nothing.
    const OKU_CONTACT_ICON record = furtherIcon(icon, u"");
    host_.call(u"OKU/CTL/DelContactIcon", handle, toWord(&record));
}

void ContactList::remove(OKU_WORD handle) const { host_.call(u"OKU/CTL/DelContact", handle); }

void ContactList::setState(const OKU_CONTACT_STATE& state) const {
    host_.call(u"OKU/CTL/SetContactState", toWord(&state));
}

void ContactList::setTyping(const OKU_CONTACT_RECORD& contact, bool composing) const {
    host_.call(u"OKU/PFTNSet", toWord(&contact), composing ? 1 : 0);
}

void ContactList::setAvatar(const OKU_CONTACT_RECORD& contact, const std::u16string& path) const {
    auto record = makeRecord<OKU_CONTACT_AVATAR>();
    record.path = path.c_str();
    record.kind = 1;
    record.contact = &contact;
    record.count = 1;
    host_.call(u"OKU/CTL/SetAvatar", toWord(&record));
}

void ContactList::askForAuthorization(const OKU_CONTACT_RECORD& contact) const {
    host_.call(u"OKU/PFAskForAuth", toWord(&contact));
}

void ContactList::listGroups(OKU_WORD window, OKU_WORD control) const {
    host_.call(u"OKU/CTL/EnumGroupsHWND", window, control);
}

void ContactList::draw(bool on) const { host_.call(u"OKU/CTL/EnableDrawing", on ? 1 : 0); }

void ContactList::endPauses() const {
    if (pauses_ > 0) draw(true);
}

DrawingPause::DrawingPause(ContactList& list) : list_(list) {
    ++list_.pauses_;
    list_.draw(false);
}

DrawingPause::~DrawingPause() {
    --list_.pauses_;
    list_.draw(true);
}

}  // namespace protolink
