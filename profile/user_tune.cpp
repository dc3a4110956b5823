// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/user_tune.h"

#include "host/record.h"
#include "host/util/format.h"
#include "host/util/numbers.h"
#include "im/child_text.h"
#include "plugin/jid.h"

namespace protolink {

namespace {

constexpr NewsLook kLook{NoticeKind::Tune, u"Image/Audio", u"XMPP/UserTune"};

/// Seconds as minutes and seconds; what is no number, or none at all, is not shown.
std::u16string playingTime(std::u16string_view length) {
    constexpr std::int32_t kMinute = 60;
    const std::int32_t seconds = parseInt32(length);
    return seconds == 0 ? std::u16string() : formatText(u"%02dm %02ds", seconds / kMinute, seconds % kMinute);
}

std::u16string bodyOf(const OKU_PEP_TUNE_DATA& tune) {
    NewsBody body;
    body.add(u"Wykonawca: ", tune.artist);
    body.add(u"Album: ", tune.source);
    body.add(u"Tytuł: ", tune.title);
    body.add(u"Ścieżka: ", tune.track);
    body.add(u"Długość: ", playingTime(tune.length));
    body.add(u"URL: ", tune.uri);
    return body.text();
}

}  // namespace

void UserTune::onTuneEvent(const PubSubItem& item) const {
    const std::u16string from = parseJID(item.from).bare;
    const std::u16string itemId(item.id);
    auto tune = makeRecord<OKU_PEP_TUNE_DATA>();
    tune.track = childText(item.payload, u"track").c_str();
    tune.artist = childText(item.payload, u"artist").c_str();
    tune.title = childText(item.payload, u"title").c_str();
    tune.source = childText(item.payload, u"source").c_str();
    tune.uri = childText(item.payload, u"uri").c_str();
    tune.length = childText(item.payload, u"length").c_str();
    tune.itemId = itemId.c_str();
    if (listeners_.take(PepKind::Tune, from, &tune)) return;
    if (!client_.settings.get(setting::kTune)) return;
    const std::u16string name = notice_.displayName(from);
    const std::u16string title =
        notice_.isOwn(from) ? formatText(u"Słuchasz (%s):", name) : formatText(u"%s słucha:", name);
    notice_.show(kLook, {from, title, bodyOf(tune), itemId});
}

}  // namespace protolink
