// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "im/stanza_errors.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/util/format.h"
#include "host/util/numbers.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

struct Condition {
    std::u16string_view name;
    std::u16string_view title;
    std::u16string_view description;
};

/// In the order of lookup: the table decides among several conditions, not the document.
constexpr std::array<Condition, 22> kConditions{{
    {u"bad-request", u"Nieprawidłowe rządanie", u""},
    {u"conflict", u"Konflikt", u""},
    {u"feature-not-implemented", u"Funkcja nie jest zaimplementowana", u""},
    {u"forbidden", u"Dostęp zabroniony", u"Nie masz uprawnień do skorzystania z tej funkcji/zasobu"},
    {u"gone", u"Zniknął",
     u"Niewiarygodne, był tu jeszcze przed chwilą a teraz serwer twierdzi, że go 'zniknęło', przepraszamy za usterkę"},
    {u"internal-server-error", u"Wewnętrzny błąd serwera", u""},
    {u"item-not-found", u"Nie odnaleziono", u""},
    {u"jid-malformed", u"Nieprawidłowy JID", u""},
    {u"not-acceptable", u"Nieprawidłowe rządanie", u""},
    {u"not-allowed", u"Nie można wykonać", u""},
    {u"not-authorized", u"Brak autoryzacji", u""},
    {u"payment-required", u"Wymagana opłata", u""},
    {u"recipient-unavailable", u"Adresat niedostępny", u""},
    {u"redirect", u"Przekierowanie", u""},
    {u"registration-required", u"Wymagana rejestracja", u""},
    {u"remote-server-not-found", u"Zdalny serwer zaginął",
     u"Serwer z którym usiłujesz się połączyć (albo Twoj serwer usiłuje się znim połączyć) nie istnieje (przynajmniej "
     u"w tym momencie"},
    {u"remote-server-timeout", u"Upłynął limit czasu rządania",
     u"Zdalny serwer nie odpowiedziałna naszą prośbę w rozsądnym czasie, to też został uznany za martwy lub niegodny "
     u"dalszego czekania"},
    {u"resource-constraint", u"Wyczerpane zasoby",
     u"Zdalny system twierdzi, iż nie posiada na razie zasobów potrzebnych do realizacji tego czego od niego "
     u"oczekujemy"},
    {u"service-unavailable", u"Usługa niedostępna", u""},
    {u"subscription-required", u"Wymagana subskrypcja", u""},
    {u"undefined-condition", u"Nieokreślony błąd", u"Nie mamy pojęcia co się stało, sorry"},
    {u"unexpected-request", u"Nieorzekiwanie rządanie", u""},
}};

constexpr std::array<std::pair<std::int32_t, std::u16string_view>, 25> kHttpStatuses{{
    {200, u"OK"},
    {201, u"Created"},
    {202, u"Accepted"},
    {203, u"Non-Authoritative Information"},
    {204, u"No Content"},
    {205, u"Reset Content"},
    {206, u"Partial Content"},
    {300, u"Multiple Choices"},
    {301, u"Moved Permanently"},
    {302, u"Found"},
    {303, u"See Other"},
    {304, u"Not Modified"},
    {307, u"Temporary Redirect"},
    {400, u"Bad Request"},
    {401, u"Unauthorized"},
    {402, u"Payment Required"},
    {403, u"Forbidden"},
    {404, u"Not Found"},
    {405, u"Method Not Allowed"},
    {406, u"Not Acceptable"},
    {408, u"Request Timeout"},
    {500, u"Internal Server Error"},
    {501, u"Not Implemented"},
    {502, u"Bad Gateway"},
    {503, u"Service Unavailable"},
}};

}  // namespace

std::size_t stanzaErrorText(std::u16string& out, const xmlElement* errorElement, bool withDescription) {
    if (!errorElement) return 0;
    const auto condition = std::find_if(kConditions.begin(), kConditions.end(), [&](const Condition& row) {
        return errorElement->GetChildPtr(row.name) != nullptr;
    });
    if (condition == kConditions.end()) return 0;
    const std::u16string_view type = errorElement->GetAttribute(u"type");
    const xmlElement* text = errorElement->GetChildPtr(u"text");
    const std::u16string_view description = text && !text->text.empty() ? text->text : condition->description;
    if (!description.empty() && withDescription) {
        out = formatText(u"%s (typ: '%s', opis: '%s')", condition->title, type, description);
    } else {
        out = formatText(u"%s (typ: '%s')", condition->title, type);
    }
    return out.size();
}

std::u16string buildStanzaError(std::u16string_view code, std::u16string_view condition, std::u16string_view type,
                                std::u16string_view text) {
    std::u16string content = lutCPW(condition, {}, {{u"xmlns", ns::kStanzas}});
    if (!text.empty()) content += lutCPW(u"text", lutXMLEscapeW(text), {{u"xmlns", ns::kStanzas}});
    return lutCPW(u"error", content, {{u"code", code}, {u"type", type}});
}

std::u16string_view httpStatusText(std::u16string_view code) {
    const std::int32_t number = parseInt32(code);
    for (const auto& [status, text] : kHttpStatuses)
        if (status == number) return text;
    return u"Unknown";
}

}  // namespace protolink
