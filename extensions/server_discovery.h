// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the account's server can do (XEP-0030).
#pragma once

#include <string>
#include <string_view>

#include "extensions/mail_notifications.h"
#include "extensions/rank_query.h"
#include "im/presence.h"
#include "im/privacy_lists.h"
#include "im/server_features.h"
#include "plugin/client_class.h"
#include "router/requests.h"

namespace protolink {

class ServerDiscovery {
public:
    ServerDiscovery(CClientClass& client, Requests& requests, ServerFeatures& features, PrivacyLists& privacy,
                    Presence& presence, MailNotifications& mail, RankQuery& rank)
        : client_(client),
          requests_(requests),
          features_(features),
          privacy_(privacy),
          presence_(presence),
          mail_(mail),
          rank_(rank) {}

    /// The server's answer to the question for its features.
    void onServerDiscoInfo(const xmlElement& iq);

private:
    void enablePrivacyLists();
    void requestSharedStatus();
    void detectPubSub(const xmlElement& query);
    bool detect(const xmlElement& query, std::u16string_view feature, std::u16string_view text) const;
    void log(const std::u16string& text) const { client_.log(LogLevel::Debug, tag::kGeneral, text); }

    CClientClass& client_;
    Requests& requests_;
    ServerFeatures& features_;
    PrivacyLists& privacy_;
    Presence& presence_;
    MailNotifications& mail_;
    RankQuery& rank_;
};

}  // namespace protolink
