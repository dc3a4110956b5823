// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/avatar_publication.h"

#include <optional>

#include "host/services/cards.h"
#include "host/services/message_boxes.h"
#include "host/util/base64.h"
#include "host/util/format.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "profile/own_avatar.h"
#include "profile/published_avatar.h"
#include "router/namespaces.h"

namespace protolink {

OKU_WORD AvatarPublication::onSetMyAvatar(OKU_WORD requestRecord) {
    const auto* record = readRecord<OKU_OWN_CARD_REQUEST>(requestRecord);
    if (!record) return 0;
    const OKU_WORD token = record->token;
    if (!(client_.flags & FLAG_AUTHORIZED)) {
        request_.tell(token, u"Brak połączenia");
        return 0;
    }
    if (!features_.serverHasPubSub) {
        request_.tell(token, u"Bląd, brak PubSub");
        return 0;
    }
    request_.tell(token, u"Uaktualnianie danych...");
    const std::optional<std::string> picture = readOwnAvatar(profileDirectory_);
    if (!picture) return 0;
    request_.myVCardToken = token;
    own_.ownAvatarBytes = static_cast<std::uint32_t>(picture->size());
    publishData(*picture);
    return 0;
}

void AvatarPublication::publishData(const std::string& picture) {
    const std::u16string data = lutCPW(u"data", utow(lutBase64Encode(picture)), {{u"xmlns", ns::kAvatarData}});
    const std::u16string pubsub = publication(ns::kAvatarData, data);
    const auto compose = [&](const std::u16string& id) {
        return lutCPW(u"iq", pubsub, {{u"type", u"set"}, {u"id", id}});
    };
    requests_.ask(compose, [this](xmlElement& reply) { onAvatarDataPublished(reply); });
    log(u"Publishing avatar data @ ");
}

void AvatarPublication::onAvatarDataPublished(const xmlElement& iq) {
    if (iq.GetAttribute(u"type") != u"result") {
        request_.tell(u"Błąd publikacji danych");
        return;
    }
    request_.tell(u"Uaktualnianie meta-danych...");
    log(u"Publishing avatar metadata @ ");
    publishMetadata();
}

void AvatarPublication::publishMetadata() {
    const std::u16string info = lutCPW(
        u"info", {},
        {{u"id", own_.ownAvatarHash}, {u"type", u"image/png"}, {u"bytes", formatText(u"%d", own_.ownAvatarBytes)}});
    const std::u16string metadata = lutCPW(u"metadata", info, {{u"xmlns", ns::kAvatarMetadata}});
    const std::u16string pubsub = publication(ns::kAvatarMetadata, metadata);
    const auto compose = [&](const std::u16string& id) {
        return lutCPW(u"iq", pubsub, {{u"id", id}, {u"type", u"set"}});
    };
    requests_.ask(compose, [this](xmlElement& reply) { onAvatarMetadataPublished(reply); });
}

void AvatarPublication::onAvatarMetadataPublished(const xmlElement& iq) {
    const bool published = iq.GetAttribute(u"type") == u"result";
    log(published ? u"Avatar metadata published @ " : u"Avatar metadata NOT published @ ");
    if (!request_.myVCardToken) return;
    request_.tell(published ? u"OK" : u"Błąd publikacji meta-danych");
    request_.myVCardToken = 0;
}

OKU_WORD AvatarPublication::onGetMyAvatar(OKU_WORD requestRecord) {
    const auto* record = readRecord<OKU_OWN_CARD_REQUEST>(requestRecord);
    if (!record) return 0;
    const OKU_WORD token = record->token;
    if (!mayFetch()) return 0;
    OwnCard(client_.host).signalBusyness(true);
    request_.myVCardToken = token;
    const std::u16string pubsub = pubSub(lutCPW(u"items", {}, {{u"node", ns::kAvatarData}}));
    const auto compose = [&](const std::u16string& id) {
        return lutCPW(u"iq", pubsub, {{u"type", u"get"}, {u"id", id}});
    };
    requests_.ask(compose, [this](xmlElement& reply) { onMyAvatarFetched(reply); });
    return 0;
}

bool AvatarPublication::mayFetch() const {
    const auto warn = [&](const char16_t* text) {
        MessageBoxes(client_.host).show(text, u"Awatar", BoxStyle::Warning);
        return false;
    };
    if (!(client_.flags & FLAG_AUTHORIZED)) return warn(u"Tego polecenia nie można wykonać bez połączenia z siecią.");
    if (!features_.serverHasPubSub)
        return warn(u"Nie można pobrać awatara. Serwer z którego korzystasz nie obsługuje XEP-060 (+PubSub).");
    return true;
}

void AvatarPublication::onMyAvatarFetched(const xmlElement& iq) {
    OwnCard(client_.host).signalBusyness(false);
    const std::u16string path = storeFetched(iq);
    if (path.empty()) {
        MessageBoxes(client_.host)
            .show(u"Wystąpił błąd podczas próby pobrania awatara.", u"Błąd pobierania", BoxStyle::Warning);
    } else {
        OwnCard(client_.host).setField(request_.myVCardToken, u"avatar", path);
    }
    request_.myVCardToken = 0;
}

std::u16string AvatarPublication::storeFetched(const xmlElement& iq) const {
    const PublishedAvatar avatar = readPublishedAvatar(iq);
    if (!avatar.data || !cache_.store(avatar.id, lutBase64Decode(wtou(avatar.data->text)))) return {};
    return cache_.path(avatar.id);
}

std::u16string AvatarPublication::publication(std::u16string_view node, std::u16string_view payload) const {
    const std::u16string item = lutCPW(u"item", payload, {{u"id", own_.ownAvatarHash}});
    return pubSub(lutCPW(u"publish", item, {{u"node", node}}));
}

}  // namespace protolink
