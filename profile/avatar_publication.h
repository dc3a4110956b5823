// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The user's own picture on the server (XEP-0084): published in two steps, data first and metadata second, and fetched
// back.
#pragma once

#include <string>
#include <string_view>

#include "host/util/xml_element.h"
#include "im/server_features.h"
#include "plugin/client_class.h"
#include "plugin/own_presentation.h"
#include "profile/avatar_cache.h"
#include "profile/own_card_request.h"
#include "router/requests.h"

namespace protolink {

class AvatarPublication {
public:
    AvatarPublication(CClientClass& client, Requests& requests, const ServerFeatures& features, OwnPresentation& own,
                      const AvatarCache& cache, const std::u16string& profileDirectory, OwnCardRequest& request)
        : client_(client),
          requests_(requests),
          features_(features),
          own_(own),
          cache_(cache),
          profileDirectory_(profileDirectory),
          request_(request) {}

    /// The host's service that publishes the picture. 0, always.
    OKU_WORD onSetMyAvatar(OKU_WORD requestRecord);
    /// The host's service that fetches the published picture. 0, always.
    OKU_WORD onGetMyAvatar(OKU_WORD requestRecord);

private:
    void publishData(const std::string& picture);
    void publishMetadata();
    void onAvatarDataPublished(const xmlElement& iq);
    void onAvatarMetadataPublished(const xmlElement& iq);
    bool mayFetch() const;
    void onMyAvatarFetched(const xmlElement& iq);
    /// Stores the picture and gives its file's full name, empty when there is none in `iq` or it cannot be stored.
    std::u16string storeFetched(const xmlElement& iq) const;
    std::u16string publication(std::u16string_view node, std::u16string_view payload) const;
    void log(std::u16string_view text) const {
        client_.log(LogLevel::Debug, tag::kAvatars, std::u16string(text) + client_.jid.bare);
    }

    CClientClass& client_;
    Requests& requests_;
    const ServerFeatures& features_;
    OwnPresentation& own_;
    const AvatarCache& cache_;
    const std::u16string& profileDirectory_;
    OwnCardRequest& request_;
};

}  // namespace protolink
