// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/protocols.h"

#include "host/oku/protocol.h"
#include "host/record.h"

namespace protolink {

void Protocols::add(const ProtocolRegistration& registration, std::uint32_t& netId) const {
    auto record = makeRecord<OKU_PROTOCOL_RECORD>();
    record.pfClass = kProtocolClass;
    record.shortName = u"XMPP";
    record.caption = u"Protokół XMPP";
    record.uuid = registration.uuid.c_str();
    record.wantedNumber = -1;
    record.authorizationHandler = registration.authorizationHandler;
    record.deleteHandler = registration.deleteHandler;
    record.context = registration.context;
    record.flags = registration.flags;
    host_.call(u"OKU/ProtocolAdd", toWord(&record));
    netId = record.netId;
}

void Protocols::remove(std::uint32_t netId) const {
    host_.call(u"OKU/ProtocolDel", toWord(kProtocolClass), static_cast<OKU_WORD>(netId));
}

void Protocols::setProtocolInfo(std::uint32_t netId, std::u16string bareJid, std::u16string userName) const {
    auto record = makeRecord<OKU_PF_INFO>();
    record.bareJid = bareJid.c_str();
    record.userName = userName.c_str();
    record.pfClass = kProtocolClass;
    record.netId = netId;
    host_.call(u"OKU/PFSetInfo", toWord(&record));
}

}  // namespace protolink
