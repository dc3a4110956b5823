// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/registration.h"

#include "host/services/message_boxes.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

Routing Registration::begin(const xmlElement& features) {
    client_.log(LogLevel::Debug, tag::kGeneral, u"New account registration");
    if (!features.GetChildPtr(u"register", ns::kRegisterFeature)) {
        MessageBoxes(client_.host).show(u"Ten serwer nie obsługuje rejestracji inline.", u"Błąd", BoxStyle::Error);
        giveUp();
        return Routing::Abandon;
    }
    const std::u16string content = lutCPW(u"username", lutXMLEscapeW(client_.jid.node), {}) +
                                   lutCPW(u"password", lutXMLEscapeW(client_.password), {});
    const auto request = [&content](const std::u16string& id) {
        return lutCPW(u"iq", lutCPW(u"query", content, {{u"xmlns", ns::kRegister}}), {{u"id", id}, {u"type", u"set"}});
    };
    requests_.ask(request, [this](xmlElement& iq) { registerResult(iq); });
    return Routing::Done;
}

void Registration::registerResult(xmlElement& iq) {
    iq.SetAttribute(u"id", kDialogId);
    requests_.onStanza(Stanza::of(iq));
    if (iq.GetAttribute(u"type") != u"result") {
        giveUp();
        return;
    }
    connection_.sendStreamHeader();
    connection_.registerMode = 0;
}

void Registration::giveUp() {
    reconnection_.forbid();
    connection_.registerMode = 0;
    connection_.disconnect(false);
}

}  // namespace protolink
