// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/pep_publisher.h"

#include <optional>
#include <string_view>

#include "host/oku/pep.h"
#include "host/record.h"
#include "host/util/xml_compose.h"
#include "profile/location_fields.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

/// A child with an escaped text; what is null is left out.
std::u16string child(std::u16string_view name, const char16_t* text) {
    return text ? lutCPW(name, lutXMLEscapeW(text)) : std::u16string();
}

std::optional<std::u16string> tuneChildren(OKU_WORD word) {
    const auto& tune = *readRecord<OKU_PEP_TUNE_DATA>(word);
    // The address stands as a second artist: readers of this client's tunes have known it there.
    return child(u"artist", tune.artist) + child(u"source", tune.source) + child(u"title", tune.title) +
           child(u"track", tune.track) + child(u"artist", tune.uri) + child(u"length", tune.length);
}

/// Both go out as they stand, so whoever publishes a mood has escaped them. A text needs a mood that it belongs to, and
/// an element needs a name: an empty one is none.
std::optional<std::u16string> moodChildren(OKU_WORD word) {
    const auto& mood = *readRecord<OKU_PEP_MOOD_DATA>(word);
    const std::u16string name = readText(mood.mood);
    if (mood.text && name.empty()) return std::nullopt;
    std::u16string children = mood.text ? lutCPW(u"text", mood.text) : std::u16string();
    if (!name.empty()) children += lutCPW(name, {});
    return children;
}

std::optional<std::u16string> locationChildren(OKU_WORD word) {
    const auto& location = *readRecord<OKU_PEP_LOCATION_DATA>(word);
    std::u16string children;
    for (const LocationField& field : kLocationFields) children += child(field.element, location.*field.text);
    return children;
}

}  // namespace

struct PepPublisher::Kind {
    std::uint32_t number;
    std::u16string_view element;
    std::u16string_view node;  // the payload's namespace too
    std::optional<std::u16string> (*children)(OKU_WORD dataRecord);
    const char16_t* published;
    const char16_t* refused;
};

OKU_WORD PepPublisher::onPublishData(OKU_WORD publishRecord, OKU_WORD dataRecord) {
    static constexpr Kind kKinds[] = {
        {OKU_PEP_TUNE, u"tune", ns::kTune, tuneChildren, u"UserTune data published", u"UserTune data NOT published"},
        {OKU_PEP_MOOD, u"mood", ns::kMood, moodChildren, u"UserMood data published", u"UserMood data NOT published"},
        {OKU_PEP_LOCATION, u"geoloc", ns::kLocation, locationChildren, u"Geolocation data published",
         u"Geolocation data NOT published"},
    };
    const auto* record = readRecord<OKU_PEP_PUBLISH>(publishRecord);
    if (!record || !dataRecord) return 0;
    if (!features_.serverHasPEP || !(client_.flags & FLAG_AUTHORIZED)) return 0;
    for (const Kind& kind : kKinds) {
        if (kind.number != record->kind) continue;
        const auto children = kind.children(dataRecord);
        return children && publish(kind, *children) ? 1 : 0;
    }
    return 0;
}

bool PepPublisher::publish(const Kind& kind, const std::u16string& children) {
    const std::u16string item = lutCPW(u"item", lutCPW(kind.element, children, {{u"xmlns", kind.node}}));
    const std::u16string publish = lutCPW(u"publish", item, {{u"node", kind.node}});
    const std::u16string pubsub = lutCPW(u"pubsub", publish, {{u"xmlns", ns::kPubSub}});
    const auto request = [&](const std::u16string& id) {
        return lutCPW(u"iq", pubsub, {{u"type", u"set"}, {u"id", id}});
    };
    return requests_.sendThenAwait(request, [this, &kind](const xmlElement& reply) {
        const bool done = reply.GetAttribute(u"type") == u"result";
        client_.log(done ? LogLevel::Debug : LogLevel::Negotiation, tag::kPersonalEvents,
                    done ? kind.published : kind.refused);
    });
}

}  // namespace protolink
