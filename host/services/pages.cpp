// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/pages.h"

#include "host/oku/windows.h"
#include "host/record.h"

namespace protolink {

OKU_WORD Pages::addOptionsPage(const std::u16string& id, const std::u16string& caption, CallbackTarget target) const {
    auto record = makeRecord<OKU_OPTIONS_PAGE>();
    record.id = id.c_str();
    record.parent = u"OKU/Group/Network";
    record.caption = caption.c_str();
    record.iconName = u"XMPP/MainIcon16";
    record.callback = target.callback;
    record.context = target.context;
    host_.call(u"OKU/AddOptionsPage", host_.module(), toWord(&record));
    return record.icon;
}

void Pages::addPropertiesPage(const std::u16string& id, std::uint32_t netId, CallbackTarget target) const {
    auto record = makeRecord<OKU_PROPERTIES_PAGE>();
    record.id = id.c_str();
    record.caption = u"Właściwości";
    record.value32 = 7;
    record.value36 = -1000;
    record.callback = target.callback;
    record.context = target.context;
    record.pfClass = kProtocolClass;
    record.netId = netId;
    host_.call(u"OKU/PropertiesStaticPageAdd", toWord(&record));
}

void Pages::addInformationPage(CallbackTarget target, OKU_WORD properties) const {
    auto record = makeRecord<OKU_PROPERTIES_PAGE>();
    record.id = u"XMPP/Prop/Info";
    record.caption = u"Informacje XMPP";
    record.value32 = 5;
    record.value36 = 1;
    record.callback = target.callback;
    record.context = target.context;
    host_.call(u"OKU/PropertiesPageAdd", toWord(&record), properties);
}

}  // namespace protolink
