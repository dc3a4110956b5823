// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The time that this client tells (XEP-0202).
#pragma once

#include <cstdint>
#include <string>

#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class TimeReply {
public:
    TimeReply(CClientClass& client, StreamOutput& output) : client_(client), output_(output) {}

    /// Answers a request; an iq of another type is dropped, and no error is ever sent.
    void onTimeIq(const Stanza& iq) const;

private:
    CClientClass& client_;
    StreamOutput& output_;
};

/// The time zone in the form of a reply, from the minutes to add to local time to reach UTC. The sign is the bias's
/// own, which is the reverse of XEP-0202's; peers have always been told it so.
std::u16string timeZoneOffset(std::int32_t biasMinutes);

/// Seconds since the epoch as XEP-0082 writes them, in UTC without fractions.
std::u16string utcTime(std::int64_t secondsSinceEpoch);

}  // namespace protolink
