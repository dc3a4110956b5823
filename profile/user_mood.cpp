// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/user_mood.h"

#include "host/record.h"
#include "host/util/format.h"
#include "plugin/jid.h"

namespace protolink {

namespace {

constexpr NewsLook kLook{NoticeKind::Mood, u"Image/Mood", u"XMPP/UserMood"};

/// Anything but the text names the mood; whether the standard knows it does not matter. The last one counts.
OKU_PEP_MOOD_DATA readMood(const xmlElement& payload) {
    auto mood = makeRecord<OKU_PEP_MOOD_DATA>();
    mood.mood = u"";
    mood.text = u"";
    for (const xmlElement& child : payload.children) {
        if (child.name == u"text") {
            mood.text = child.text.c_str();
        } else {
            mood.mood = child.name.c_str();
        }
    }
    return mood;
}

}  // namespace

void UserMood::onMoodEvent(const PubSubItem& item) const {
    const std::u16string from = parseJID(item.from).bare;
    const std::u16string itemId(item.id);
    OKU_PEP_MOOD_DATA mood = readMood(item.payload);
    mood.itemId = itemId.c_str();
    if (listeners_.take(PepKind::Mood, from, &mood)) return;
    if (!client_.settings.get(setting::kMood)) return;
    const std::u16string name = notice_.displayName(from);
    const std::u16string title =
        notice_.isOwn(from) ? formatText(u"Twój nastrój (%s):", name) : formatText(u"Nastrój kontaktu %s:", name);
    NewsBody body;
    body.add(u"Nastrój: ", mood.mood);
    body.add(u"Opis: ", mood.text);
    notice_.show(kLook, {from, title, body.text(), itemId});
}

}  // namespace protolink
