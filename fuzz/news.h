// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a host may rely on in every pop-up and every personal event, whatever a server has sent.
#pragma once

#include "fuzz/input.h"
#include "fuzz/sent_text.h"
#include "host/oku/notify.h"
#include "host/oku/pep.h"
#include "tests/torture/client.h"

namespace fuzz {

/// `references`: what was received may hold some, by which a value brings a line end of its own.
inline void checkNotice(const OKU_NOTIFY& notice, bool references) {
    require(notice.size == sizeof notice && notice.value40 == 3 && notice.value44 == 0, "the record of a pop-up");
    require(notice.text && notice.title && notice.icon, "a pop-up without a text");
    const std::u16string text = torture::textAt(notice.text);
    require(!text.empty() && (references || !text.ends_with(u"\r\n")), "the text of a pop-up");
    require((notice.kind == OKU_NOTIFY_MAIL) == (notice.callback != nullptr), "the callback of a pop-up");
}

inline void checkPersonalEvent(const OKU_PEP_EVENT& event, OKU_WORD data) {
    require(event.size == sizeof event && event.own.id && event.contact.id && data, "the record of an event");
    switch (event.kind) {
        case OKU_PEP_TUNE: {
            const auto& tune = *reinterpret_cast<const OKU_PEP_TUNE_DATA*>(data);
            require(tune.size == sizeof tune && tune.track && tune.artist && tune.title && tune.source && tune.uri &&
                        tune.length && tune.itemId,
                    "the record of a tune");
            return;
        }
        case OKU_PEP_MOOD: {
            const auto& mood = *reinterpret_cast<const OKU_PEP_MOOD_DATA*>(data);
            require(mood.size == sizeof mood && mood.mood && mood.text && mood.itemId, "the record of a mood");
            return;
        }
        default:
            require(event.kind == OKU_PEP_LOCATION, "the kind of an event");
            require(reinterpret_cast<const OKU_PEP_LOCATION_DATA*>(data)->size == sizeof(OKU_PEP_LOCATION_DATA),
                    "the record of a location");
    }
}

/// Looks at each call of the host. An event and a question get the answer that the input has for them.
inline std::optional<OKU_WORD> checkNews(const torture::Call& call, Input& input, bool references) {
    if (call.name == u"OKU/ShowStandardNotify")
        checkNotice(*reinterpret_cast<const OKU_NOTIFY*>(call.param), references);
    if (call.name == u"UI/MessageBox") return input.byte() & 1 ? 6 : 7;
    if (call.name != u"evNotify") return std::nullopt;
    checkPersonalEvent(*reinterpret_cast<const OKU_PEP_EVENT*>(call.param), call.extra);
    return input.byte() & 1;
}

}  // namespace fuzz
