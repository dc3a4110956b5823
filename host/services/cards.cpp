// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "host/services/cards.h"

#include <algorithm>

#include "host/record.h"

namespace protolink {

void ContactCard::setStatus(OKU_WORD token, const std::u16string& text) const {
    auto record = makeRecord<OKU_CARD_STATUS>();
    record.text = text.c_str();
    record.token = token;
    host_.call(u"VCard/SetStatus", toWord(&record));
}

void ContactCard::begin(OKU_WORD token) const {
    auto record = makeRecord<OKU_CARD_STATUS>();
    record.state = 1;
    record.token = token;
    host_.call(u"VCard/SetStatus", toWord(&record));
}

void ContactCard::addField(OKU_WORD token, const std::u16string& label, const std::u16string& value) const {
    addVCardRow(token, OKU_CARD_FIELD, value, label);
}

void ContactCard::addSection(OKU_WORD token, const std::u16string& title) const {
    addVCardRow(token, OKU_CARD_SECTION, title, {});
}

void ContactCard::addImage(OKU_WORD token, const std::u16string& label, const std::u16string& path) const {
    addVCardRow(token, OKU_CARD_IMAGE, path, label);
}

void ContactCard::addVCardRow(OKU_WORD token, std::uint32_t kind, const std::u16string& value,
                              const std::u16string& label) const {
    auto record = makeRecord<OKU_CARD_ELEMENT>();
    record.label = label.c_str();
    record.value = value.c_str();
    record.kind = kind;
    record.token = token;
    host_.call(u"VCard/AddElement", toWord(&record));
}

void OwnCard::setStatus(std::uint32_t netId, OKU_WORD token, const std::u16string& text) const {
    auto record = makeRecord<OKU_OWN_CARD_STATUS>();
    record.text = text.c_str();
    record.token = token;
    record.pfClass = kProtocolClass;
    record.netId = netId;
    host_.call(u"MyVCard/SetStatus", toWord(&record));
}

void OwnCard::setField(OKU_WORD token, const char16_t* key, const std::u16string& value) const {
    auto record = makeRecord<OKU_OWN_CARD_FIELD>();
    record.key = key;
    record.value = value.c_str();
    record.token = token;
    host_.call(u"MyVCard/SetFieldValue", toWord(&record));
}

std::u16string OwnCardReader::field(const char16_t* key) {
    auto record = makeRecord<OKU_OWN_CARD_FIELD_GET>();
    record.key = key;
    record.buffer = buffer_.data();
    record.capacity = OKU_OWN_CARD_CAPACITY;
    record.token = token_;
    host_.call(u"MyVCard/GetFieldValue", toWord(&record));
    return {buffer_.begin(), std::find(buffer_.begin(), buffer_.end(), u'\0')};
}

}  // namespace protolink
