// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Other plugins that hear of personal events first ("XMPP/OnPEPEvent").
#pragma once

#include <cstdint>
#include <string>

#include "host/oku/pep.h"
#include "plugin/client_class.h"

namespace protolink {

enum class PepKind : std::uint32_t { Tune = OKU_PEP_TUNE, Mood = OKU_PEP_MOOD, Location = OKU_PEP_LOCATION };

class PepListeners {
public:
    /// The event's handle is read at each offer: it ends with the plugin.
    PepListeners(const CClientClass& client, const OKU_WORD& event) : client_(client), event_(event) {}

    /// Offers what a contact published; `data` is the record of the kind. True when a listener took it.
    bool take(PepKind kind, const std::u16string& bareJid, const void* data) const;

private:
    OKU_CONTACT_IDENTITY identity(const std::u16string& bareJid) const;

    const CClientClass& client_;
    const OKU_WORD& event_;
};

}  // namespace protolink
