// In-band registration of a new account (XEP-0077) on the stream that will then log in with it.
#include "host/services/message_boxes.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"
#include "router/negotiation.h"

namespace {

/// The dialog that asked for the account waits for the reply under this id.
constexpr char16_t kDialogId[] = u"dummy-reg-result";

}  // namespace

BatchFate Negotiation::registerAccount(const xmlElement& features) {
    log(LogLevel::Debug, u"New account registration");
    if (!features.GetChildPtr(u"register", ns::kRegisterFeature)) {
        MessageBoxes(client_.host).show(u"Ten serwer nie obsługuje rejestracji inline.", u"Błąd", BoxStyle::Error);
        connection_.forbidReconnection();
        connection_.registerMode = 0;
        connection_.disconnect(false);
        return BatchFate::Abandon;
    }
    const std::u16string id = generateId();
    const std::u16string content = lutCPW(u"username", lutXMLEscapeW(client_.jid.node), {}) +
                                   lutCPW(u"password", lutXMLEscapeW(client_.password), {});
    dispatcher_.addHandler([this](xmlElement& iq, void*) { registerResult(iq); }, id, &client_);
    output_.sendText(
        lutCPW(u"iq", lutCPW(u"query", content, {{u"xmlns", ns::kRegister}}), {{u"id", id}, {u"type", u"set"}}));
    return BatchFate::GoOn;
}

void Negotiation::registerResult(xmlElement& iq) {
    iq.SetAttribute(u"id", kDialogId);
    dispatcher_.dispatch(iq);
    if (iq.GetAttribute(u"type") != u"result") {
        connection_.forbidReconnection();
        connection_.registerMode = 0;
        connection_.disconnect(false);
        return;
    }
    connection_.sendStreamHeader();
    connection_.registerMode = 0;
}
