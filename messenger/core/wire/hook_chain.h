// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/xml/tag_scanner.h"

namespace oku {

class ServiceRegistry;

/// What the plugin tells of itself: one call of "OKU/CallProtolHooks".
class ProtocolEvent {
public:
    ProtocolEvent(AccountEntry& entry, const OKU_PROTOCOL_HOOK& hook, OKU_WORD extraWord)
        : account(entry), kind(hook.kind), phase(hook.phase), subject(hook.subject), extra(extraWord) {}

    [[nodiscard]] bool is(std::uint32_t wantedKind, std::uint32_t wantedPhase) const {
        return kind == wantedKind && phase == wantedPhase;
    }
    /// The bytes of the stream kinds; empty for others.
    [[nodiscard]] std::string_view data() const;
    /// The elements in them; parted once for all listeners.
    [[nodiscard]] const StanzaList& stanzas() const;
    /// Writes spaces over a part of the bytes that are about to be parsed. Incoming data, phase 1 only. What is
    /// blanked is not in stanzas() any more.
    void blank(Span span);

    AccountEntry& account;
    const std::uint32_t kind;
    const std::uint32_t phase;
    const void* subject;
    const OKU_WORD extra;

private:
    mutable std::optional<StanzaList> stanzas_;
};

class ProtocolListener {
public:
    virtual ~ProtocolListener() = default;
    /// True in phase 1 is a veto: nobody else is asked.
    virtual bool onProtocolEvent(ProtocolEvent& event) = 0;
};

/// "OKU/CallProtolHooks": asks the listeners in the order in which they were added. A listener must outlive the chain,
/// unload of the plugin included: its farewell goes through here.
class HookChain {
public:
    HookChain(ServiceRegistry& services, Accounts& accounts);
    void add(ProtocolListener& listener) { listeners_.push_back(&listener); }

private:
    OKU_WORD raise(OKU_WORD param, OKU_WORD extra);

    Accounts& accounts_;
    std::vector<ProtocolListener*> listeners_;
};

}  // namespace oku
