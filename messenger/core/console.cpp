#include "messenger/core/console.h"

#include "messenger/core/secrets.h"

namespace oku {

bool Console::onProtocolEvent(ProtocolEvent& event) {
    // Incoming before anybody blanks a part of it, outgoing once nobody has taken it away.
    const bool incoming = event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE);
    if (!on_ || (!incoming && !event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_AFTER))) return false;
    const std::string_view data = event.data();
    const QByteArray bytes(data.data(), static_cast<qsizetype>(data.size()));
    emit seen(event.account.jid(), incoming, QString::fromUtf8(maskedXml(bytes)));
    return false;
}

}  // namespace oku
