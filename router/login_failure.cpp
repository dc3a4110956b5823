// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/login_failure.h"

#include <algorithm>
#include <array>

#include "host/util/format.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

/// What is logged and told when the server refuses a step of the login; "%s" is the account's bare JID.
struct FailureTexts {
    std::u16string_view xmlns;
    std::u16string_view logLine;
    std::u16string_view notice;
};

constexpr std::array<FailureTexts, 3> kFailures{{
    {ns::kSasl, u"Authorization FAILURE (%s)",
     u"Autoryzacja na koncie %s nie powiodła się, sprawdź użytkownika i hasło."},
    {ns::kCompress, u"Compression FAILURE (%s)", u"Wystapił błąd inicjowania kompresji @ %s."},
    {ns::kTls, u"TLS FAILURE (%s)",
     u"Wystapił błąd inicjowania szyfrowania (start-tls) @ %s, jeśli problem będzie się powtarzał, proszę wyłączyć "
     u"szyfrowanie dla tego konta."},
}};

}  // namespace

void LoginFailure::onFailure(const Stanza& failure) {
    const std::u16string_view xmlns = failure.element.GetAttribute(u"xmlns");
    const auto known = std::find_if(kFailures.begin(), kFailures.end(),
                                    [xmlns](const FailureTexts& texts) { return texts.xmlns == xmlns; });
    if (known != kFailures.end()) {
        client_.log(LogLevel::Negotiation, known->xmlns == ns::kCompress ? tag::kCompression : tag::kGeneral,
                    formatText(known->logLine, client_.jid.bare));
        client_.host.logUser(formatText(known->notice, client_.jid.bare));
    } else {
        client_.log(LogLevel::Negotiation, tag::kGeneral,
                    formatText(u"Unknown FAILURE (%s, %s)", client_.jid.bare, xmlns));
    }
    reconnection_.forbid();
    connection_.disconnect(false);
}

}  // namespace protolink
