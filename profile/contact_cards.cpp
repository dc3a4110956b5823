// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/contact_cards.h"

#include <algorithm>
#include <array>

#include "host/oku/cards.h"
#include "host/record.h"
#include "host/services/cards.h"
#include "host/util/xml_compose.h"
#include "profile/card_text.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

struct CardRow {
    const char16_t* section;  // rows of one section stand together
    const char16_t* label;
    CardPath path;
};

/// What the window shows of a card, in this order. Of several addresses the first one counts. PREF, INTERNET and WORK
/// are marks without a text, but some cards have one in them.
constexpr std::array<CardRow, 22> kRows{{
    {u"Dane osobowe", u"Nazwa:", {u"FN"}},
    {u"Dane osobowe", u"Title:", {u"TITLE"}},
    {u"Dane osobowe", u"Imię:", {u"N", u"GIVEN"}},
    {u"Dane osobowe", u"Drugie imię:", {u"N", u"MIDDLE"}},
    {u"Dane osobowe", u"Nazwisko:", {u"N", u"FAMILY"}},
    {u"Dane osobowe", u"Nick:", {u"NICKNAME"}},
    {u"Dane osobowe", u"Urodziny:", {u"BDAY"}},
    {u"Organizacja", u"Nazwa:", {u"ORG", u"ORGNAME"}},
    {u"Organizacja", u"Jednostka:", {u"ORG", u"ORGUNIT"}},
    {u"Organizacja", u"Rola:", {u"ROLE"}},
    {u"Kontakt", u"JabberID:", {u"JABBERID"}},
    {u"Kontakt", u"Strona WWW:", {u"URL"}},
    {u"Kontakt", u"e-Mail:", {u"EMAIL", u"PREF"}},
    {u"Kontakt", u"e-Mail:", {u"EMAIL", u"INTERNET"}},
    {u"Kontakt", u"e-Mail:", {u"EMAIL", u"USERID"}},
    {u"Inne", u"Opis:", {u"DESC"}},
    {u"Adres", u"Praca:", {u"ADR", u"WORK"}},
    {u"Adres", u"Ulica:", {u"ADR", u"STREET"}},
    {u"Adres", u"Miasto:", {u"ADR", u"LOCALITY"}},
    {u"Adres", u"Region:", {u"ADR", u"REGION"}},
    {u"Adres", u"Kod pocztowy:", {u"ADR", u"PCODE"}},
    {u"Adres", u"Kraj:", {u"ADR", u"CTRY"}},
}};

}  // namespace

OKU_WORD ContactVCards::onGetContactVCard(OKU_WORD requestRecord) {
    const auto* record = readRecord<OKU_CONTACT_CARD_REQUEST>(requestRecord);
    if (!record) return 0;
    const OKU_WORD vcardToken = record->token;
    const std::u16string jid = readText(record->jid);
    const ContactCard window(client_.host);
    if (!(client_.flags & FLAG_AUTHORIZED)) {
        window.setStatus(vcardToken, u"Nie można wykonać. Brak połączenia.");
        return 0;
    }
    window.setStatus(vcardToken, u"Pobieranie danych...");
    const auto compose = [&](const std::u16string& id) {
        const std::u16string vCard = lutCPW(u"vCard", {}, {{u"xmlns", ns::kVCard}});
        return lutCPW(u"iq", vCard, {{u"to", jid}, {u"id", id}, {u"type", u"get"}});
    };
    requests_.ask(compose, [this, vcardToken](xmlElement& reply) { onContactVCardResult(vcardToken, reply); });
    return 0;
}

void ContactVCards::onContactVCardResult(OKU_WORD vcardToken, const xmlElement& iq) {
    if (!vcardToken) return;
    const ContactCard window(client_.host);
    const xmlElement* vCard = iq.GetChildPtr(u"vCard");
    if (iq.GetAttribute(u"type") == u"error" || !vCard || vCard->children.empty()) {
        window.setStatus(vcardToken, u"Serwer zwrócił błąd lub pusty element.");
        return;
    }
    window.begin(vcardToken);
    showFields(vcardToken, *vCard);
    showPhoto(vcardToken, iq, *vCard);
}

void ContactVCards::showFields(OKU_WORD vcardToken, const xmlElement& vCard) const {
    const ContactCard window(client_.host);
    std::u16string_view section;
    for (const CardRow& row : kRows) {
        const std::u16string value = cardText(vCard, row.path);
        if (value.empty()) continue;
        // Its first row brings a section's header: one without rows has none.
        if (section != row.section) window.addSection(vcardToken, row.section);
        section = row.section;
        window.addField(vcardToken, row.label, value);
    }
}

void ContactVCards::showPhoto(OKU_WORD vcardToken, const xmlElement& iq, const xmlElement& vCard) {
    const std::u16string hash = avatars_.onVCardPhoto(iq, vCard);
    if (hash.empty() || !cache_.avatarFileExists(hash)) return;
    const ContactCard window(client_.host);
    window.addSection(vcardToken, u"Obrazki");
    window.addImage(vcardToken, u"Awatar:", cache_.path(hash));
}

}  // namespace protolink
