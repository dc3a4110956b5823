// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/protocol_hooks.h"

namespace protolink {

OKU_WORD ProtocolHooks::call(HookKind kind, std::uint32_t phase, OKU_WORD extra, const void* subject) const {
    auto record = makeRecord<OKU_PROTOCOL_HOOK>();
    record.pfClass = kProtocolClass;
    record.netId = static_cast<std::int32_t>(netId_);
    record.kind = static_cast<std::uint32_t>(kind);
    record.phase = phase;
    record.subject = subject;
    return host_.call(u"OKU/CallProtolHooks", toWord(&record), extra);
}

bool ProtocolHooks::before(HookKind kind, OKU_WORD extra, const void* subject) const {
    return call(kind, OKU_PHASE_BEFORE, extra, subject) == 0;
}

void ProtocolHooks::after(HookKind kind, OKU_WORD extra, const void* subject) const {
    call(kind, OKU_PHASE_AFTER, extra, subject);
}

void ProtocolHooks::notice(HookKind kind, const void* subject) const { call(kind, OKU_PHASE_NOTICE, 0, subject); }

bool ProtocolHooks::raise(HookKind kind, OKU_WORD extra, const void* subject) const {
    if (!before(kind, extra, subject)) return false;
    after(kind, extra, subject);
    return true;
}

}  // namespace protolink
