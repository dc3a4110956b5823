// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/own_avatar.h"

#include "host/oku/avatar.h"
#include "host/record.h"
#include "host/util/base64.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "platform/platform.h"
#include "router/namespaces.h"

namespace protolink {

std::optional<std::string> readOwnAvatar(const std::u16string& profileDirectory) {
    return platform::readFile(profileDirectory + u"_avatar");
}

OKU_WORD OwnAvatar::onAvatarChanged(OKU_WORD eventRecord) {
    const auto* event = readRecord<OKU_AVATAR_CHANGED>(eventRecord);
    if (!event) return 1;
    const std::u16string hash = event->action == OKU_AVATAR_SET ? readText(event->hash) : std::u16string();
    own_.ownAvatarHash = hash;
    client_.settings.set(setting::kAvatarHash, hash);
    presence_.sendPresence(client_.status, std::u16string(client_.statusDescription));
    return 0;
}

void OwnAvatar::onAvatarIqGet(const Stanza& iq) const {
    if (!client_.settings.get(setting::kSendAvatar)) return;
    const std::optional<std::string> picture = readOwnAvatar(profileDirectory_);
    if (!picture) return;
    const std::u16string data = lutCPW(u"data", utow(lutBase64Encode(*picture)), {{u"mimetype", u"image/png"}});
    const std::u16string query = lutCPW(u"query", data, {{u"xmlns", ns::kAvatar}});
    output_.sendText(lutCPW(u"iq", query, {{u"to", iq.from}, {u"id", iq.id}, {u"type", u"result"}}));
    client_.log(LogLevel::Debug, tag::kAvatars, u"Sending avatar to: " + std::u16string(iq.from));
}

}  // namespace protolink
