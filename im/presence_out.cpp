// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The own status onto the wire.
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "im/presence.h"
#include "plugin/deployment.h"
#include "plugin/own_status.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

constexpr std::size_t kDescriptionLimit = 1024;
constexpr std::size_t kShortestAvatarHash = 5;

/// How a status stands in the stanza: as the type of the element, as its `show` child, or not at all.
struct StatusForm {
    std::u16string_view type;
    std::u16string_view show;
};

StatusForm statusForm(Status status, const ServerFeatures& features) {
    switch (status) {
        case Status::Online:
            return {};
        case Status::Offline:
            return {u"unavailable", {}};
        case Status::Invisible:
            // A privacy list or the shared status hides the account; the presence itself is a plain one then.
            if (features.serverHasPrivacyLists) return {};
            if (features.serverHasInvisibility) return {u"invisible", {}};
            if (features.serverHasSharedStatus) return {};
            return {u"invisible", {}};
        default:
            return {{}, statusToName(status)};
    }
}

bool canBeInvisible(const ServerFeatures& features) {
    return features.serverHasPrivacyLists || features.serverHasInvisibility || features.serverHasSharedStatus;
}

}  // namespace

std::int32_t Presence::sendPresence(Status status, const std::u16string& wanted) {
    reconnection_.forbid();
    const std::u16string description = wanted.substr(0, kDescriptionLimit);
    const std::u16string avatar = ownAvatar(status);
    prepareInvisibility(status);
    const std::u16string content = presenceContent(status, description, avatar);
    const StatusForm form = statusForm(status, features_);
    const std::u16string stanza =
        form.type.empty() ? lutCPW(u"presence", content) : lutCPW(u"presence", content, {{u"type", form.type}});
    std::u16string shared;
    if (features_.serverHasSharedStatus) shared = sharedStatus_.rewrite(client_.jid.bare, status, description);

    if (!client_.loggedIn() || !announceOwnStatus(client_, status, description)) return 0;
    client_.showStatusIcon(status);
    if (!shared.empty()) output_.sendText(shared);
    return output_.sendText(stanza);
}

std::u16string Presence::ownAvatar(Status status) const {
    const bool enabled = client_.settings.get(setting::kSendAvatar);
    const std::u16string& hash = own_.ownAvatarHash;
    if (hash.size() < kShortestAvatarHash || status == Status::Offline || status == Status::Invisible || !enabled)
        return {};
    return lutCPW(u"x", lutCPW(u"hash", lutXMLEscapeW(hash)), {{u"xmlns", ns::kAvatar}});
}

void Presence::prepareInvisibility(Status status) {
    if (features_.serverHasPrivacyLists) {
        if (status == Status::Invisible) {
            output_.sendText(lutCPW(u"presence", {}, {{u"type", u"unavailable"}}));
            privacy_.privacySetActive(PrivacyLists::kInvisibleList);
        } else {
            privacy_.privacySetActive(PrivacyLists::kBlockList);
        }
    }
    if (status == Status::Invisible && !canBeInvisible(features_)) {
        client_.host.logUser(formatText(
            u"UWAGA: Ustawiłeś status 'niewidzialny' na serwerze ('%s'), który nie obsługuje, ani XEP-126 ani "
            u"'starej' niewidzialności. Prosisz się o problem.",
            client_.jid.domain));
    }
}

std::u16string Presence::presenceContent(Status status, const std::u16string& description,
                                         const std::u16string& avatar) const {
    std::u16string content = avatar;
    if (!description.empty()) content += lutCPW(u"status", lutXMLEscapeW(description));
    if (!own_.ownCapsVer.empty()) {
        content += lutCPW(u"c", {},
                          {{u"xmlns", ns::kCaps},
                           {u"hash", u"sha-1"},
                           {u"node", deployment::CAPS_NODE},
                           {u"ver", own_.ownCapsVer},
                           {u"ext", u"ep-notify"}});
    }
    if (const std::int32_t priority = client_.settings.get(setting::kPriority))
        content += lutCPW(u"priority", formatText(u"%d", priority));
    const StatusForm form = statusForm(status, features_);
    if (!form.show.empty()) content += lutCPW(u"show", form.show);
    return content;
}

void Presence::sendDirectedPresence(std::u16string_view jid, std::u16string_view type) {
    if (client_.loggedIn()) output_.sendText(lutCPW(u"presence", {}, {{u"to", jid}, {u"type", type}}));
}

void Presence::sharedStatusResult(const xmlElement& iq) {
    sharedStatus_.remember(iq);
    sendPresence(client_.status, client_.statusDescription);
}

void Presence::onSharedStatus(const Stanza& iq) {
    if (!features_.serverHasSharedStatus || iq.type != u"set") return;
    const SharedStatus::Push push = SharedStatus::read(*iq.query(), client_.status, client_.statusDescription);
    if (push.status == Status::Offline) return;
    const Status status = push.invisible ? Status::Invisible : push.status;
    if (!announceOwnStatus(client_, status, push.description)) return;
    client_.showStatusIcon(status);
    client_.status = status;
    client_.statusDescription = push.description;
}

}  // namespace protolink
