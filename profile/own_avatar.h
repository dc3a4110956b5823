// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The user's own picture towards clients that know the oldest form (XEP-0008): its hash in the presence, the picture
// for whoever asks. The host keeps the picture as a file, and the plugin only reads that.
#pragma once

#include <optional>
#include <string>

#include "im/presence.h"
#include "plugin/client_class.h"
#include "plugin/own_presentation.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

/// The content of the host's file, or nothing when it cannot be read. `profileDirectory` ends in the separator.
std::optional<std::string> readOwnAvatar(const std::u16string& profileDirectory);

class OwnAvatar {
public:
    OwnAvatar(CClientClass& client, StreamOutput& output, Presence& presence, OwnPresentation& own,
              const std::u16string& profileDirectory)
        : client_(client), output_(output), presence_(presence), own_(own), profileDirectory_(profileDirectory) {}

    /// The host's event: the user chose another picture, or none. 1 without a record, else 0.
    OKU_WORD onAvatarChanged(OKU_WORD eventRecord);
    /// A client asks for the picture. It need not be a contact's.
    void onAvatarIqGet(const Stanza& iq) const;

private:
    CClientClass& client_;
    StreamOutput& output_;
    Presence& presence_;
    OwnPresentation& own_;
    const std::u16string& profileDirectory_;
};

}  // namespace protolink
