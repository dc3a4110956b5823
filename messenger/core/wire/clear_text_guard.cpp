// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/clear_text_guard.h"

#include <algorithm>
#include <utility>

namespace oku {
namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

std::string_view withoutDeclaration(std::string_view text) {
    if (!text.starts_with("<?xml ")) return text;
    const std::size_t end = text.find("?>");
    return end == std::string_view::npos ? text : trimmed(text.substr(end + 2));
}

/// One tag and nothing else, so that nothing can hide behind it.
bool isNegotiation(std::string_view text) {
    const std::string_view tag = withoutDeclaration(trimmed(text));
    if (tag.empty()) return true;
    if (std::count(tag.begin(), tag.end(), '<') != 1 || tag.find('>') != tag.size() - 1) return false;
    return tag == "</stream:stream>" || tag.starts_with("<stream:stream ") ||
           (tag.starts_with("<starttls ") && tag.ends_with("/>"));
}

}  // namespace

bool ClearTextGuard::onProtocolEvent(ProtocolEvent& event) {
    LineState& line = event.account.line;
    if (event.is(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE)) return line.refused;
    if (!event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE)) return false;
    if (!line.refused && (line.encrypted || event.account.clearTextAllowed())) return false;
    if (isNegotiation(event.data())) return false;
    // Without a connection nothing can go out, and there is none to end: a transfer that ends between two connections
    // still says so.
    if (!event.account.has(OKU_FLAG_CONNECTED)) return true;
    refuse(event.account);
    return true;
}

void ClearTextGuard::permissionChanged(AccountEntry& account) {
    // Before the login is done, what goes out next decides.
    if (account.loggedIn() && !account.line.encrypted && !account.clearTextAllowed()) refuse(account);
}

void ClearTextGuard::refuse(AccountEntry& account) {
    if (!std::exchange(account.line.refused, true)) emit refused(&account);
}

}  // namespace oku
