// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/own_card.h"

#include <array>

#include "host/services/message_boxes.h"
#include "host/util/xml_compose.h"
#include "profile/card_text.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

struct FormField {
    const char16_t* key;  // as the host's form knows it
    CardPath path;
};

constexpr CardPath kBirthday{u"BDAY"};
constexpr std::size_t kLengthOfAYear = 4;

/// What the form shows of a card, in this order.
constexpr std::array<FormField, 8> kShown{{
    {u"nick", {u"NICKNAME"}},
    {u"name", {u"N", u"GIVEN"}},
    {u"surname", {u"N", u"FAMILY"}},
    {u"email", {u"EMAIL", u"USERID"}},
    {u"www", {u"URL"}},
    {u"title", {u"TITLE"}},
    {u"role", {u"ROLE"}},
    {u"birth", kBirthday},
}};

std::u16string vCardElement(std::u16string_view content) { return lutCPW(u"vCard", content, {{u"xmlns", ns::kVCard}}); }

}  // namespace

OKU_WORD OwnVCard::onGetMyVCard(OKU_WORD requestRecord) {
    const auto* record = readRecord<OKU_OWN_CARD_REQUEST>(requestRecord);
    if (!record) return 0;
    const OKU_WORD token = record->token;
    if (!(client_.flags & FLAG_AUTHORIZED)) {
        MessageBoxes(client_.host)
            .show(u"Tego polecenia nie można wykonać bez połączenia z siecią.", u"VCard", BoxStyle::Warning);
        return 0;
    }
    OwnCard(client_.host).signalBusyness(true);
    request_.myVCardToken = token;
    const auto compose = [](const std::u16string& id) {
        return lutCPW(u"iq", vCardElement({}), {{u"id", id}, {u"type", u"get"}});
    };
    requests_.ask(compose, [this](xmlElement& reply) { onMyVCardResult(reply); });
    return 0;
}

void OwnVCard::onMyVCardResult(const xmlElement& iq) {
    const MessageBoxes boxes(client_.host);
    OwnCard(client_.host).signalBusyness(false);
    if (iq.GetAttribute(u"type") != u"result") {
        boxes.show(u"Podczas pobierania własnej wizytówki wystąpił jakiś dziwny błąd.", u"Wizytówka",
                   BoxStyle::Warning);
        return;
    }
    if (const xmlElement* vCard = iq.GetChildPtr(u"vCard", ns::kVCard)) fillForm(*vCard);
    boxes.show(u"Dane wizytówki zostały pobrane... Znaczy, jeśli jakieś były ustawone", u"Wizytówka",
               BoxStyle::Information);
}

void OwnVCard::fillForm(const xmlElement& vCard) const {
    std::array<std::u16string, kShown.size()> values;
    for (std::size_t i = 0; i < kShown.size(); ++i) {
        values[i] = cardText(vCard, kShown[i].path);
        // Some clients keep the year alone; the form wants a day.
        if (kShown[i].path.name == kBirthday.name && values[i].size() == kLengthOfAYear) values[i] += u"-01-01";
    }
    for (std::size_t i = 0; i < kShown.size(); ++i)
        OwnCard(client_.host).setField(request_.myVCardToken, kShown[i].key, values[i]);
}

OKU_WORD OwnVCard::onSetMyVCard(OKU_WORD requestRecord) {
    const auto* record = readRecord<OKU_OWN_CARD_REQUEST>(requestRecord);
    if (!record) return 0;
    const OKU_WORD token = record->token;
    if (!(client_.flags & FLAG_AUTHORIZED)) {
        request_.tell(token, u"Brak połączenia");
        return 0;
    }
    request_.tell(token, u"Uaktualnianie...");
    request_.myVCardToken = token;
    const std::u16string card = vCardElement(readForm(token));
    const auto compose = [&](const std::u16string& id) {
        return lutCPW(u"iq", card, {{u"id", id}, {u"type", u"set"}});
    };
    requests_.ask(compose, [this](xmlElement& reply) { onSetMyVCardResult(reply); });
    return 0;
}

std::u16string OwnVCard::readForm(OKU_WORD token) const {
    OwnCardReader form(client_.host, token);
    const auto read = [&](const char16_t* key) { return lutXMLEscapeW(form.field(key)); };
    // Read in an order of its own: the card has another.
    const std::u16string name = read(u"name");
    const std::u16string title = read(u"title");
    const std::u16string role = read(u"role");
    const std::u16string surname = read(u"surname");
    const std::u16string nick = read(u"nick");
    const std::u16string birth = read(u"birth");
    const std::u16string www = read(u"www");
    const std::u16string email = read(u"email");
    return lutCPW(u"N", lutCPW(u"GIVEN", name) + lutCPW(u"FAMILY", surname)) + lutCPW(u"NICKNAME", nick) +
           lutCPW(u"BDAY", birth) + lutCPW(u"URL", www) + lutCPW(u"TITLE", title) + lutCPW(u"ROLE", role) +
           lutCPW(u"JABBERID", lutXMLEscapeW(client_.jid.bare)) +
           lutCPW(u"EMAIL", lutCPW(u"USERID", email) + lutCPW(u"INTERNET", {}) + lutCPW(u"PREF", {}));
}

void OwnVCard::onSetMyVCardResult(const xmlElement& iq) {
    request_.tell(iq.GetAttribute(u"type") == u"result" ? u"OK" : u"Bład");
    request_.myVCardToken = 0;
}

}  // namespace protolink
