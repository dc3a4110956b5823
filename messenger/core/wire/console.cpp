// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/console.h"

namespace oku {

void Console::setOn(bool on) {
    on_ = on;
    masks_.clear();
}

bool Console::onProtocolEvent(ProtocolEvent& event) {
    if (event.kind == OKU_HOOK_OWN_STATUS && !event.account.has(OKU_FLAG_CONNECTED)) masks_.erase(&event.account);
    // Incoming before anybody blanks a part of it, outgoing once nobody has taken it away.
    const bool incoming = event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE);
    if (!on_ || (!incoming && !event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_AFTER))) return false;
    const std::string_view data = event.data();
    const QByteArray bytes(data.data(), static_cast<qsizetype>(data.size()));
    Masks& masks = masks_[&event.account];
    const QByteArray shown = (incoming ? masks.incoming : masks.outgoing).masked(bytes);
    if (!shown.isEmpty()) emit seen(event.account.jid(), incoming, QString::fromUtf8(shown));
    return false;
}

}  // namespace oku
