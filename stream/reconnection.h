// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What follows when a connection was lost.
#pragma once

#include <cstdint>
#include <string>

#include "plugin/client_class.h"

namespace protolink {

/// Whether the next close is a loss, how often the account was lost in a row, and the timer that dials anew.
class Reconnection {
public:
    /// `tick` is the host's callback for the timer.
    Reconnection(CClientClass& client, OKU_HANDLER tick) : client_(client), tick_(tick) {}

    /// The next close is a loss: a new attempt follows it.
    void expect() { noReconnect = 0; }
    /// The next close is final: no new attempt in 3 seconds follows it.
    void forbid() { noReconnect = 1; }
    /// The attempts in a row are counted anew.
    void forgetRetries() { retryCount = 0; }

    /// The connection is closed while the account had this status, which a new attempt restores.
    void remember(Status status) { prevStatus_ = status; }
    /// Starts the timer if the account is to dial anew. `reason` is the word that came with the close, not 0 for a
    /// loss.
    void decide(OKU_WORD reason);

    /// The timer has fired. Gives the status to restore.
    Status fired();
    /// Cancels the timer, whether or not it runs.
    void cancel();
    /// Cancels the timer if it runs.
    void drop();

    std::uint32_t noReconnect = 0;
    std::uint32_t retryCount = 0;  // attempts in a row

private:
    void start(std::uint32_t milliseconds);
    std::u16string timerName() const;

    CClientClass& client_;
    OKU_HANDLER tick_;
    Status prevStatus_{};
    bool pending_ = false;
};

}  // namespace protolink
