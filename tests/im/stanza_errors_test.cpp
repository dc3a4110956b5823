// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Stanza errors in words: each text as users see it, misspellings included.
#include "im/stanza_errors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace protolink;

namespace {

struct Condition {
    const char16_t* name;
    const char16_t* title;
    const char16_t* description;
};

const std::vector<Condition> kConditions = {
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
     u"w "
     u"tym momencie"},
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
};

xmlElement errorOf(const std::vector<std::u16string>& children, std::u16string_view type = u"cancel") {
    xmlElement error(u"error");
    error.SetAttribute(u"type", type);
    for (const auto& child : children) error.SetChild(xmlElement(child));
    return error;
}

std::u16string textOf(const xmlElement& error, bool withDescription) {
    std::u16string out;
    const std::size_t length = stanzaErrorText(out, &error, withDescription);
    EXPECT_EQ(length, out.size());
    return out;
}

std::u16string withType(const std::u16string& title) { return title + u" (typ: 'cancel')"; }

TEST(StanzaErrors, EachConditionHasItsTitle) {
    for (const auto& row : kConditions) EXPECT_EQ(textOf(errorOf({row.name}), false), withType(row.title));
}

TEST(StanzaErrors, EachConditionHasItsDescriptionWhereThereIsOne) {
    for (const auto& row : kConditions) {
        const std::u16string description = row.description;
        const auto expected = description.empty()
                                  ? withType(row.title)
                                  : std::u16string(row.title) + u" (typ: 'cancel', opis: '" + description + u"')";
        EXPECT_EQ(textOf(errorOf({row.name}), true), expected);
    }
}

TEST(StanzaErrors, OfEachPairTheFirstInTheTableCounts) {
    for (std::size_t i = 0; i < kConditions.size(); ++i) {
        for (std::size_t k = i + 1; k < kConditions.size(); ++k) {
            EXPECT_EQ(textOf(errorOf({kConditions[k].name, kConditions[i].name}), false),
                      withType(kConditions[i].title));
        }
    }
}

TEST(StanzaErrors, ConflictBeatsForbiddenThatStandsBeforeIt) {
    EXPECT_EQ(textOf(errorOf({u"forbidden", u"conflict"}), true), u"Konflikt (typ: 'cancel')");
}

TEST(StanzaErrors, TheServersTextTakesThePlaceOfTheDescription) {
    auto error = errorOf({u"forbidden"}, u"auth");
    error.SetChild(xmlElement(u"text", u"nie dla ciebie"));
    EXPECT_EQ(textOf(error, true), u"Dostęp zabroniony (typ: 'auth', opis: 'nie dla ciebie')");
    EXPECT_EQ(textOf(error, false), u"Dostęp zabroniony (typ: 'auth')");
}

TEST(StanzaErrors, TheServersTextIsADescriptionWhereThereWasNone) {
    auto error = errorOf({u"conflict"});
    error.SetChild(xmlElement(u"text", u"dwa razy"));
    EXPECT_EQ(textOf(error, true), u"Konflikt (typ: 'cancel', opis: 'dwa razy')");
}

TEST(StanzaErrors, AnEmptyTextReplacesNothing) {
    auto error = errorOf({u"undefined-condition", u"text"});
    EXPECT_EQ(textOf(error, true), u"Nieokreślony błąd (typ: 'cancel', opis: 'Nie mamy pojęcia co się stało, sorry')");
}

TEST(StanzaErrors, TheNamespaceOfAConditionIsNotRead) {
    xmlElement error(u"error");
    xmlElement condition(u"gone");
    condition.SetAttribute(u"xmlns", u"urn:somewhere-else");
    error.SetChild(condition);
    EXPECT_EQ(textOf(error, false), u"Zniknął (typ: '')");
}

TEST(StanzaErrors, ACodeAloneGivesNoText) {
    xmlElement error(u"error");
    error.SetAttribute(u"code", u"404");
    error.SetChild(xmlElement(u"text", u"words"));
    std::u16string out = u"left alone";
    EXPECT_EQ(stanzaErrorText(out, &error, true), 0u);
    EXPECT_EQ(out, u"left alone");
}

TEST(StanzaErrors, NoElementGivesNoText) {
    std::u16string out = u"left alone";
    EXPECT_EQ(stanzaErrorText(out, nullptr, true), 0u);
    EXPECT_EQ(out, u"left alone");
}

TEST(StanzaErrors, BuiltWithoutAText) {
    EXPECT_EQ(buildStanzaError(u"404", u"item-not-found", u"cancel", u""),
              u"<error code=\"404\" type=\"cancel\">"
              u"<item-not-found xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\"/></error>");
}

TEST(StanzaErrors, BuiltWithATextThatIsEscaped) {
    EXPECT_EQ(buildStanzaError(u"403", u"forbidden", u"auth", u"a < b & c"),
              u"<error code=\"403\" type=\"auth\">"
              u"<forbidden xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\"/>"
              u"<text xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\">a &lt; b &amp; c</text></error>");
}

struct Code {
    const char16_t* code;
    const char16_t* text;
};

TEST(HttpStatus, EachCodeHasItsText) {
    const std::vector<Code> rows = {
        {u"200", u"OK"},
        {u"201", u"Created"},
        {u"202", u"Accepted"},
        {u"203", u"Non-Authoritative Information"},
        {u"204", u"No Content"},
        {u"205", u"Reset Content"},
        {u"206", u"Partial Content"},
        {u"300", u"Multiple Choices"},
        {u"301", u"Moved Permanently"},
        {u"302", u"Found"},
        {u"303", u"See Other"},
        {u"304", u"Not Modified"},
        {u"307", u"Temporary Redirect"},
        {u"400", u"Bad Request"},
        {u"401", u"Unauthorized"},
        {u"402", u"Payment Required"},
        {u"403", u"Forbidden"},
        {u"404", u"Not Found"},
        {u"405", u"Method Not Allowed"},
        {u"406", u"Not Acceptable"},
        {u"408", u"Request Timeout"},
        {u"500", u"Internal Server Error"},
        {u"501", u"Not Implemented"},
        {u"502", u"Bad Gateway"},
        {u"503", u"Service Unavailable"},
    };
    std::size_t known = 0;
    for (int code = 0; code < 1000; ++code) {
        const std::string digits = std::to_string(code);
        const std::u16string text(httpStatusText(std::u16string(digits.begin(), digits.end())));
        if (known < rows.size() && std::u16string(digits.begin(), digits.end()) == rows[known].code) {
            EXPECT_EQ(text, rows[known++].text);
        } else {
            EXPECT_EQ(text, u"Unknown") << code;
        }
    }
    EXPECT_EQ(known, rows.size());
}

TEST(HttpStatus, AnythingElseIsUnknown) {
    for (const auto* code : {u"abc", u"", u"100", u"305", u"407", u"-404", u"4294967496", u"99999999999999999999"}) {
        EXPECT_EQ(httpStatusText(code), u"Unknown");
    }
}

}  // namespace
