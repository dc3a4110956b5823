// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "profile/user_location.h"

#include "host/record.h"
#include "plugin/jid.h"

namespace protolink {

namespace {

struct LocationField {
    std::u16string_view element;
    const char16_t* OKU_PEP_LOCATION_DATA::*text;
};

constexpr LocationField kFields[] = {
    {u"accuracy", &OKU_PEP_LOCATION_DATA::accuracy},
    {u"alt", &OKU_PEP_LOCATION_DATA::alt},
    {u"area", &OKU_PEP_LOCATION_DATA::area},
    {u"bearing", &OKU_PEP_LOCATION_DATA::bearing},
    {u"building", &OKU_PEP_LOCATION_DATA::building},
    {u"country", &OKU_PEP_LOCATION_DATA::country},
    {u"countrycode", &OKU_PEP_LOCATION_DATA::countrycode},
    {u"datum", &OKU_PEP_LOCATION_DATA::datum},
    {u"description", &OKU_PEP_LOCATION_DATA::description},
    {u"error", &OKU_PEP_LOCATION_DATA::error},
    {u"floor", &OKU_PEP_LOCATION_DATA::floor},
    {u"lat", &OKU_PEP_LOCATION_DATA::lat},
    {u"locality", &OKU_PEP_LOCATION_DATA::locality},
    {u"lon", &OKU_PEP_LOCATION_DATA::lon},
    {u"postalcode", &OKU_PEP_LOCATION_DATA::postalcode},
    {u"region", &OKU_PEP_LOCATION_DATA::region},
    {u"room", &OKU_PEP_LOCATION_DATA::room},
    {u"speed", &OKU_PEP_LOCATION_DATA::speed},
    {u"street", &OKU_PEP_LOCATION_DATA::street},
    {u"text", &OKU_PEP_LOCATION_DATA::text},
    {u"timestamp", &OKU_PEP_LOCATION_DATA::timestamp},
    {u"uri", &OKU_PEP_LOCATION_DATA::uri},
};

}  // namespace

void UserLocation::onEvent(const PubSubItem& item) const {
    auto data = makeRecord<OKU_PEP_LOCATION_DATA>();
    for (const LocationField& field : kFields)
        if (const xmlElement* child = item.payload.GetChildPtr(field.element)) data.*field.text = child->text.c_str();
    const std::u16string itemId(item.id);
    if (!itemId.empty()) data.itemId = itemId.c_str();
    listeners_.take(PepKind::Location, parseJID(item.from).bare, &data);
}

}  // namespace protolink
