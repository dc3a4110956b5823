// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/published_avatar.h"

#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

PublishedAvatar readPublishedAvatar(const xmlElement& iq) {
    if (iq.GetAttribute(u"type") != u"result") return {};
    const xmlElement* pubsub = iq.GetChildPtr(u"pubsub", ns::kPubSub);
    const xmlElement* items = pubsub ? pubsub->GetChildPtr(u"items", u"node", ns::kAvatarData) : nullptr;
    const xmlElement* item = items ? items->GetChildPtr(u"item") : nullptr;
    if (!item) return {};
    return {std::u16string(item->GetAttribute(u"id")), item->GetChildPtr(u"data", ns::kAvatarData)};
}

std::u16string pubSub(std::u16string_view content) { return lutCPW(u"pubsub", content, {{u"xmlns", ns::kPubSub}}); }

}  // namespace protolink
