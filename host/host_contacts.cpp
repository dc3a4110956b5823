// The host's contact list, and what contacts do.
#include "host/host.h"
#include "host/record.h"

void Host::pauseDrawing() {
    ++drawingPauses_;
    call(u"OKU/CTL/EnableDrawing", 0);
}

void Host::resumeDrawing() {
    --drawingPauses_;
    call(u"OKU/CTL/EnableDrawing", 1);
}

void Host::mute() {
    if (drawingPauses_ > 0) call(u"OKU/CTL/EnableDrawing", 1);
    table_ = nullptr;
}

void Host::deleteAllContacts(std::uint32_t netId) const {
    call(u"OKU/CTL/DeleteAll", toWord(kProtocolClass), static_cast<OKU_WORD>(netId));
}

void Host::setAllOffline(std::uint32_t netId) const {
    call(u"OKU/CTL/SetAllOffline", toWord(kProtocolClass), static_cast<OKU_WORD>(netId));
}

void Host::addContact(OKU_CONTACT_ADD& record) const {
    call(u"OKU/CTL/AddContact", toWord(&record));
    auto icon = makeRecord<OKU_CONTACT_ICON>();
    icon.icon = u"XMPP/Icon";
    icon.value52 = 1;
    icon.value56 = 1;
    call(u"OKU/CTL/AddContactIcon", record.handle, toWord(&icon));
}

OKU_WORD Host::findContact(const OKU_CONTACT_ADD& record) const {
    return call(u"OKU/CTL/FndContact", toWord(&record.identity));
}

void Host::deleteContact(OKU_WORD handle) const { call(u"OKU/CTL/DelContact", handle); }

void Host::setContactState(const OKU_CONTACT_STATE& state) const { call(u"OKU/CTL/SetContactState", toWord(&state)); }

void Host::setTyping(const OKU_CONTACT_RECORD& contact, bool composing) const {
    call(u"OKU/PFTNSet", toWord(&contact), composing ? 1 : 0);
}

void Host::askForAuthorization(const OKU_CONTACT_RECORD& contact) const { call(u"OKU/PFAskForAuth", toWord(&contact)); }
