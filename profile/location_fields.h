// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What can be said of a place (XEP-0080), in the order in which it is published.
#pragma once

#include <string_view>

#include "host/oku/pep.h"

namespace protolink {

struct LocationField {
    std::u16string_view element;
    const char16_t* OKU_PEP_LOCATION_DATA::*text;
};

inline constexpr LocationField kLocationFields[] = {
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

}  // namespace protolink
