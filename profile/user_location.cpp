// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/user_location.h"

#include "host/record.h"
#include "plugin/jid.h"
#include "profile/location_fields.h"

namespace protolink {

void UserLocation::onGeolocEvent(const PubSubItem& item) const {
    auto data = makeRecord<OKU_PEP_LOCATION_DATA>();
    for (const LocationField& field : kLocationFields)
        if (const xmlElement* child = item.payload.GetChildPtr(field.element)) data.*field.text = child->text.c_str();
    const std::u16string itemId(item.id);
    if (!itemId.empty()) data.itemId = itemId.c_str();
    if (listeners_.take(PepKind::Location, parseJID(item.from).bare, &data)) return;
    // The switch is read as those of tune and mood are, but nothing is shown of a place that it could turn off.
    static_cast<void>(client_.settings.get(setting::kLocation));
}

}  // namespace protolink
