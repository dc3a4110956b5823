// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/news/news_records.h"

#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

using Place = OKU_PEP_LOCATION_DATA;

// In the order of kLocationFields.
constexpr std::array kMembers = {
    &Place::accuracy,    &Place::alt,   &Place::area,        &Place::bearing, &Place::building, &Place::country,
    &Place::countrycode, &Place::datum, &Place::description, &Place::error,   &Place::floor,    &Place::lat,
    &Place::locality,    &Place::lon,   &Place::postalcode,  &Place::region,  &Place::room,     &Place::speed,
    &Place::street,      &Place::text,  &Place::timestamp,   &Place::uri};
static_assert(kMembers.size() == kLocationFields.size());

const char16_t* textOrNull(const QString& text) { return text.isEmpty() ? nullptr : widePointer(text); }

}  // namespace

OKU_PEP_TUNE_DATA recordOf(const Tune& tune) {
    auto record = makeRecord<OKU_PEP_TUNE_DATA>();
    record.track = textOrNull(tune.track);
    record.artist = textOrNull(tune.artist);
    record.title = textOrNull(tune.title);
    record.source = textOrNull(tune.source);
    record.uri = textOrNull(tune.uri);
    record.length = textOrNull(tune.length);
    return record;
}

OKU_PEP_MOOD_DATA recordOf(const Mood& mood) {
    auto record = makeRecord<OKU_PEP_MOOD_DATA>();
    record.mood = textOrNull(mood.name);
    record.text = textOrNull(mood.text);
    return record;
}

OKU_PEP_LOCATION_DATA recordOf(const Location& location) {
    auto record = makeRecord<OKU_PEP_LOCATION_DATA>();
    for (std::size_t at = 0; at < kMembers.size(); ++at) {
        const auto field = location.constFind(QLatin1String(kLocationFields[at]));
        if (field != location.constEnd()) record.*kMembers[at] = textOrNull(*field);
    }
    return record;
}

Tune valueOf(const OKU_PEP_TUNE_DATA& record) {
    return {wideText(record.artist), wideText(record.title), wideText(record.source),
            wideText(record.track),  wideText(record.uri),   wideText(record.length)};
}

Mood valueOf(const OKU_PEP_MOOD_DATA& record) { return {wideText(record.mood), wideText(record.text)}; }

Location valueOf(const OKU_PEP_LOCATION_DATA& record) {
    Location location;
    for (std::size_t at = 0; at < kMembers.size(); ++at) {
        const QString text = wideText(record.*kMembers[at]);
        if (!text.isEmpty()) location.insert(QString::fromLatin1(kLocationFields[at]), text);
    }
    return location;
}

}  // namespace oku
