// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/hook_chain.h"

#include <algorithm>

#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {

std::string_view ProtocolEvent::data() const {
    if (kind != OKU_HOOK_STREAM_IN && kind != OKU_HOOK_STREAM_OUT) return {};
    const auto* record = recordAt<OKU_HOOK_DATA>(extra);
    return record && record->data ? std::string_view(record->data, record->length) : std::string_view();
}

const StanzaList& ProtocolEvent::stanzas() const {
    if (!stanzas_) stanzas_ = splitStanzas(data());
    return *stanzas_;
}

void ProtocolEvent::blank(Span span) {
    auto* record = recordAt<OKU_HOOK_DATA>(extra);
    if (!is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE) || !record || span.end > record->length) return;
    std::fill(record->data + span.begin, record->data + span.end, ' ');
    stanzas_.reset();
}

HookChain::HookChain(ServiceRegistry& services, Accounts& accounts) : accounts_(accounts) {
    services.provide(u"OKU/CallProtolHooks", [this](OKU_WORD param, OKU_WORD extra) { return raise(param, extra); });
}

OKU_WORD HookChain::raise(OKU_WORD param, OKU_WORD extra) {
    const auto* hook = recordAt<OKU_PROTOCOL_HOOK>(param);
    auto* account = hook ? accounts_.byNetId(static_cast<std::uint32_t>(hook->netId)) : nullptr;
    if (!account) return 0;
    ProtocolEvent event(*account, *hook, extra);
    for (ProtocolListener* listener : listeners_) {
        if (listener->onProtocolEvent(event) && hook->phase == OKU_PHASE_BEFORE) return 1;
    }
    return 0;
}

}  // namespace oku
