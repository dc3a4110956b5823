// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/contact_avatars.h"

#include <algorithm>

#include "host/util/base64.h"
#include "host/util/format.h"
#include "host/util/sha1.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "im/child_text.h"
#include "plugin/contact_record.h"
#include "plugin/identifiers.h"
#include "profile/published_avatar.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

/// A shorter hash of a photo does not keep the older element from being read.
constexpr std::size_t kShortestPhoto = 3;
constexpr std::size_t kShortestClientHash = 4;

constexpr std::u16string_view kCacheLine = u"%s :: avatar cache (%s, %s)\r\n\t\tFrom: %s\r\n\t\tHash: %s";
constexpr std::u16string_view kCacheLineWithoutColon = u"%s :: avatar cache (%s, %s)\r\n\t\tFrom %s\r\n\t\tHash: %s";
constexpr std::u16string_view kPhotoLine = u"%s :: avatar (%s)\r\n\t\tFrom %s\r\n\t\tHash: %s";
constexpr std::u16string_view kDataLine = u"%s :: avatar data (%s)\r\n\t\tFrom %s\r\n\t\tHash: %s";

/// The text of a child of the extension `x` in that namespace, empty when there is none.
std::u16string extensionText(const xmlElement& presence, std::u16string_view xmlns, std::u16string_view child) {
    const xmlElement* extension = presence.GetChildPtr(u"x", xmlns);
    return extension ? childText(*extension, child) : std::u16string();
}

}  // namespace

Routing ContactAvatars::onPresenceAvatar(const Stanza& presence) {
    if (presence.type == u"error") return Routing::Next;
    const JID sender = parseJID(presence.from);
    const std::u16string photo = extensionText(presence.element, ns::kVCardUpdate, u"photo");
    if (!photo.empty()) onVCardAnnounced(sender, photo);
    if (photo.size() < kShortestPhoto) {
        const std::u16string hash = extensionText(presence.element, ns::kAvatar, u"hash");
        if (hash.size() >= kShortestClientHash && avatarEnabled_) onClientAnnounced(presence, sender, hash);
    }
    return Routing::Next;
}

void ContactAvatars::onVCardAnnounced(const JID& sender, const std::u16string& hash) {
    if (cache_.avatarFileExists(hash)) {
        log(kCacheLine, u"vc", u"hit", sender.bare, hash);
        setContactAvatar(hash, sender.bare);
    } else if (isAskedFor(hash)) {
        log(kCacheLine, u"vc", u"miss, wait", sender.bare, hash);
    } else {
        log(kCacheLine, u"vc", u"miss", sender.bare, hash);
        askForVCard(sender, hash);
    }
}

void ContactAvatars::askForVCard(const JID& sender, const std::u16string& hash) {
    const std::u16string id = requests_.await([this](xmlElement& reply) {
        if (const xmlElement* vCard = reply.GetChildPtr(u"vCard")) onVCardPhoto(reply, *vCard);
    });
    contactAvatarHash_[sender.bare] = hash;
    cache_.avatarFetchesInFlight.insert(hash);
    output_.sendText(lutCPW(u"iq", lutCPW(u"vCard", {}, {{u"xmlns", ns::kVCard}}),
                            {{u"to", sender.bare}, {u"id", id}, {u"type", u"get"}}));
}

void ContactAvatars::onClientAnnounced(const Stanza& presence, const JID& sender, const std::u16string& hash) {
    contactAvatarHash_[sender.bare] = hash;
    if (cache_.avatarFileExists(hash)) {
        log(kCacheLineWithoutColon, u"iq", u"hit", sender.bare, hash);
        setContactAvatar(hash, sender.bare);
    } else if (isAskedFor(hash)) {
        log(kCacheLineWithoutColon, u"iq", u"miss, wait", sender.bare, hash);
    } else {
        cache_.avatarFetchesInFlight.insert(hash);
        log(kCacheLine, u"iq", u"miss", sender.bare, hash);
        // Nobody waits for the answer: it comes by its namespace.
        output_.sendText(lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kAvatar}}),
                                {{u"id", generateId()}, {u"type", u"get"}, {u"to", presence.from}}));
    }
}

std::u16string ContactAvatars::onVCardPhoto(const xmlElement& iq, const xmlElement& vCard) {
    const xmlElement* photo = vCard.GetChildPtr(u"PHOTO");
    if (!photo || childText(*photo, u"TYPE").empty()) return {};
    const std::u16string bareJid = parseJID(iq.GetAttribute(u"from")).bare;
    logData(kPhotoLine, u"vcard", bareJid, contactAvatarHash(bareJid));
    const std::string bytes = lutBase64Decode(wtou(childText(*photo, u"BINVAL")));
    std::u16string hash = contactAvatarHash(bareJid);
    if (hash.empty()) contactAvatarHash_[bareJid] = hash = utow(lutSHA1(bytes));
    if (!cache_.store(hash, bytes)) return {};
    setContactAvatar(hash, bareJid);
    return hash;
}

void ContactAvatars::onAvatarIqResult(const Stanza& iq) {
    const std::u16string bareJid = parseJID(iq.from).bare;
    const std::u16string hash = contactAvatarHash(bareJid);
    keep(hash, bareJid, childText(*iq.query(), u"data"));
    logData(kDataLine, u"iq", bareJid, hash);
}

void ContactAvatars::onAvatarMetadata(const PubSubItem& item) {
    const xmlElement& metadata = item.payload;
    const std::u16string bareJid = parseJID(item.from).bare;
    const auto known = std::find_if(metadata.children.begin(), metadata.children.end(), [&](const xmlElement& form) {
        return cache_.avatarFileExists(form.GetAttribute(u"id"));
    });
    if (known != metadata.children.end()) {
        const std::u16string hash(known->GetAttribute(u"id"));
        log(kCacheLine, u"pep", u"hit", bareJid, hash);
        setContactAvatar(hash, bareJid);
        return;
    }
    const xmlElement* info = metadata.GetChildPtr(u"info");
    // Strangers publish too: only whom the user has given a name is asked.
    if (!info || contacts_.entry(bareJid).name.empty()) return;
    const std::u16string hash(info->GetAttribute(u"id"));
    if (hash.empty() || isAskedFor(hash)) return;
    askForPublished(item.from, hash);
    log(kCacheLine, u"pep", u"miss", bareJid, hash);
}

void ContactAvatars::askForPublished(std::u16string_view from, const std::u16string& hash) {
    const std::u16string items = lutCPW(u"items", lutCPW(u"item", {}, {{u"id", hash}}), {{u"node", ns::kAvatarData}});
    const std::u16string id = requests_.await([this](xmlElement& reply) { onAvatarPubsubResult(reply); });
    cache_.avatarFetchesInFlight.insert(hash);
    output_.sendText(lutCPW(u"iq", pubSub(items), {{u"type", u"get"}, {u"id", id}, {u"to", from}}));
}

void ContactAvatars::onAvatarPubsubResult(const xmlElement& iq) {
    const PublishedAvatar avatar = readPublishedAvatar(iq);
    if (!avatar.data) return;
    const std::u16string bareJid = parseJID(iq.GetAttribute(u"from")).bare;
    keep(avatar.id, bareJid, avatar.data->text);
    logData(kDataLine, u"pubsub", bareJid, avatar.id);
}

void ContactAvatars::keep(const std::u16string& hash, const std::u16string& bareJid, std::u16string_view base64) {
    if (cache_.store(hash, lutBase64Decode(wtou(base64)))) setContactAvatar(hash, bareJid);
}

void ContactAvatars::setContactAvatar(std::u16string_view hash, const std::u16string& bareJid) const {
    client_.contactList.setAvatar(contactRecord(client_, bareJid), cache_.path(hash));
}

void ContactAvatars::log(std::u16string_view pattern, std::u16string_view road, std::u16string_view outcome,
                         std::u16string_view bareJid, std::u16string_view hash) const {
    client_.log(LogLevel::Debug, tag::kAvatars, formatText(pattern, client_.jid.bare, road, outcome, bareJid, hash));
}

void ContactAvatars::logData(std::u16string_view pattern, std::u16string_view road, std::u16string_view bareJid,
                             std::u16string_view hash) const {
    client_.log(LogLevel::Debug, tag::kAvatars, formatText(pattern, client_.jid.bare, road, bareJid, hash));
}

std::u16string ContactAvatars::contactAvatarHash(std::u16string_view bareJid) const {
    const auto found = contactAvatarHash_.find(bareJid);
    return found == contactAvatarHash_.end() ? std::u16string() : found->second;
}

}  // namespace protolink
