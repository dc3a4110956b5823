#include "messenger/core/clear_text_guard.h"

#include "messenger/core/messenger.h"

namespace oku {
namespace {

bool holdsLoginData(const Stanza& stanza) {
    if (stanza.tag.name == "auth" || stanza.tag.name == "response") {
        return stanza.attribute("xmlns") == "urn:ietf:params:xml:ns:xmpp-sasl";
    }
    if (stanza.tag.name != "iq" || stanza.attribute("type") != "set") return false;
    return stanza.child("query", "jabber:iq:register") || stanza.child("query", "jabber:iq:auth");
}

}  // namespace

bool ClearTextGuard::onProtocolEvent(ProtocolEvent& event) {
    if (!event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE) || event.account.has(OKU_FLAG_ENCRYPTION_ACTIVATED))
        return false;
    if (event.account.settings->number(QString::fromUtf16(setting::allowClearText), 0) != 0) return false;
    for (const Stanza& stanza : event.stanzas().stanzas) {
        if (!holdsLoginData(stanza)) continue;
        emit refused(&event.account);
        return true;
    }
    return false;
}

}  // namespace oku
