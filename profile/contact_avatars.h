// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pictures of contacts, by three roads: announced in a presence and fetched with the vCard (XEP-0153), announced in a
// presence and fetched from the client itself (XEP-0008), published on the contact's server (XEP-0084).
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "host/util/xml_element.h"
#include "im/contact_entry.h"
#include "plugin/client_class.h"
#include "profile/avatar_cache.h"
#include "profile/pubsub_events.h"
#include "router/requests.h"
#include "router/routing.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class ContactAvatars {
public:
    /// `avatarEnabled` is the account's switch of pictures as the last connection found it.
    ContactAvatars(CClientClass& client, StreamOutput& output, Requests& requests, Contacts& contacts,
                   AvatarCache& cache, const std::uint32_t& avatarEnabled)
        : client_(client),
          output_(output),
          requests_(requests),
          contacts_(contacts),
          cache_(cache),
          avatarEnabled_(avatarEnabled) {}

    /// A presence may announce a picture. It goes on to who tells the contact's state.
    Routing onPresenceAvatar(const Stanza& presence);
    /// A client's answer to the request for its picture.
    void onAvatarIqResult(const Stanza& iq);
    /// A contact tells of a picture that it has published, perhaps in several forms.
    void onAvatarMetadata(const PubSubItem& item);
    /// A vCard that came, asked for by whomever. Gives the hash that its photo was stored under, empty for none.
    std::u16string onVCardPhoto(const xmlElement& iq, const xmlElement& vCard);

private:
    void onVCardAnnounced(const JID& sender, const std::u16string& hash);
    void onClientAnnounced(const Stanza& presence, const JID& sender, const std::u16string& hash);
    void askForVCard(const JID& sender, const std::u16string& hash);
    void askForPublished(std::u16string_view from, const std::u16string& hash);
    void onAvatarPubsubResult(const xmlElement& iq);
    void keep(const std::u16string& hash, const std::u16string& bareJid, std::u16string_view base64);
    void setContactAvatar(std::u16string_view hash, const std::u16string& bareJid) const;
    bool isAskedFor(std::u16string_view hash) const { return cache_.avatarFetchesInFlight.contains(hash); }
    std::u16string contactAvatarHash(std::u16string_view bareJid) const;
    void log(std::u16string_view pattern, std::u16string_view road, std::u16string_view outcome,
             std::u16string_view bareJid, std::u16string_view hash) const;
    void logData(std::u16string_view pattern, std::u16string_view road, std::u16string_view bareJid,
                 std::u16string_view hash) const;

    CClientClass& client_;
    StreamOutput& output_;
    Requests& requests_;
    Contacts& contacts_;
    AvatarCache& cache_;
    const std::uint32_t& avatarEnabled_;
    // What each contact announced last, by bare JID: the answers on the roads of the presence name no hash. In order,
    // as strangers choose the keys.
    std::map<std::u16string, std::u16string, std::less<>> contactAvatarHash_;
};

}  // namespace protolink
