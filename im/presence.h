// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Presence both ways (RFC 6121, 4): contacts' resources into the host, the own status onto the wire.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/util/xml_element.h"
#include "im/contact_entry.h"
#include "im/privacy_lists.h"
#include "im/server_features.h"
#include "im/shared_status.h"
#include "plugin/client_class.h"
#include "plugin/own_presentation.h"
#include "router/stanza.h"
#include "stream/reconnection.h"
#include "stream/stream_output.h"

namespace protolink {

/// Who finds out what a new resource can do.
class CapabilityAsker {
public:
    virtual ~CapabilityAsker() = default;
    virtual void requestResourceCaps(const xmlElement& presence, std::u16string_view fromFullJid,
                                     ResourceEntry& resourceRecord) = 0;
};

class Presence {
public:
    Presence(CClientClass& client, StreamOutput& output, Reconnection& reconnection, Contacts& contacts,
             ServerFeatures& features, PrivacyLists& privacy, CapabilityAsker& capabilities, const OwnPresentation& own)
        : client_(client),
          output_(output),
          reconnection_(reconnection),
          contacts_(contacts),
          features_(features),
          privacy_(privacy),
          capabilities_(capabilities),
          own_(own) {}

    /// A contact's presence. 1 when a listener of the host stopped it, else 0.
    int onPresence(const Stanza& presence);
    /// A presence that tells an error: its description becomes the error's.
    int onErrorPresence(const Stanza& presence);

    /// Sends the own status in every way that the server needs. 0 when nothing was sent, else the send's result.
    std::int32_t sendPresence(Status status, const std::u16string& description);

    /// A presence with receiver and type only; nothing when not logged in.
    void sendDirectedPresence(std::u16string_view jid, std::u16string_view type);

    /// The answer to the request for the shared status: remembered, and the first presence goes out with it.
    void sharedStatusResult(const xmlElement& iq);
    /// Another client of the same account changed the status that all of them share.
    void onSharedStatus(const Stanza& iq);
    void resetSharedStatus() { sharedStatus_.reset(); }

private:
    enum class ResourceFate { Known, New, Gone };
    ResourceFate trackResource(const JID& sender, std::u16string_view word, Status status,
                               const std::u16string& description);
    bool tellHost(const JID& sender, Status status, const std::u16string& description, std::int32_t priority);
    void prepareInvisibility(Status status);
    std::u16string presenceContent(Status status, const std::u16string& description,
                                   const std::u16string& avatar) const;
    std::u16string ownAvatar(Status status) const;

    CClientClass& client_;
    StreamOutput& output_;
    Reconnection& reconnection_;
    Contacts& contacts_;
    ServerFeatures& features_;
    PrivacyLists& privacy_;
    CapabilityAsker& capabilities_;
    const OwnPresentation& own_;
    SharedStatus sharedStatus_;
};

}  // namespace protolink
