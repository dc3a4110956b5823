// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host's listeners are told of an account's doings.
#pragma once

#include <cstdint>

#include "host/host.h"
#include "host/oku/protocol.h"
#include "host/record.h"

namespace protolink {

enum class HookKind : std::uint32_t {
    StreamIn = OKU_HOOK_STREAM_IN,
    StreamOut = OKU_HOOK_STREAM_OUT,
    ContactState = OKU_HOOK_CONTACT_STATE,
    OwnStatus = OKU_HOOK_OWN_STATUS,
    MessageIn = OKU_HOOK_MESSAGE_IN,
    MessageOut = OKU_HOOK_MESSAGE_OUT,
    SessionBound = OKU_HOOK_SESSION_BOUND,
    ConnectionEnded = OKU_HOOK_CONNECTION_ENDED,
    RosterComplete = OKU_HOOK_ROSTER_COMPLETE,
    TypingIn = OKU_HOOK_TYPING_IN,
    NewMail = OKU_HOOK_NEW_MAIL,
};

/// `extra` is a record that depends on the kind, `subject` the contact that it is about; both are the caller's.
class ProtocolHooks {
public:
    /// The account's number is read at each call: the host gives it late.
    ProtocolHooks(const Host& host, const std::uint32_t& netId) : host_(host), netId_(netId) {}

    /// An act is to come. False when a listener stopped it: it is left undone, and `after` does not follow.
    bool before(HookKind kind, OKU_WORD extra, const void* subject = nullptr) const;
    /// An act is done.
    void after(HookKind kind, OKU_WORD extra, const void* subject = nullptr) const;
    /// Something has happened that nobody can stop.
    void notice(HookKind kind, const void* subject = nullptr) const;
    /// Both phases of an act that is nothing but their telling. False when a listener stopped it.
    bool raise(HookKind kind, OKU_WORD extra, const void* subject = nullptr) const;

private:
    OKU_WORD call(HookKind kind, std::uint32_t phase, OKU_WORD extra, const void* subject) const;

    const Host& host_;
    const std::uint32_t& netId_;
};

}  // namespace protolink
