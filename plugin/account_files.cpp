// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/account_files.h"

#include "host/util/format.h"
#include "platform/platform.h"

namespace protolink {

namespace {

constexpr char16_t kDefaultDisplayName[] = u"XMPP";

/// The last place of `wanted` in the text, the first character not looked at; npos when there is none.
std::size_t findLastAfterFirst(std::u16string_view text, char16_t wanted) {
    const std::size_t found = text.rfind(wanted);
    return found == 0 ? std::u16string_view::npos : found;
}

std::u16string_view withoutFolder(std::u16string_view path) {
    const std::size_t separator = findLastAfterFirst(path, platform::kPathSeparator);
    return separator == std::u16string_view::npos ? path : path.substr(separator + 1);
}

std::u16string_view withoutEnding(std::u16string_view name) { return name.substr(0, findLastAfterFirst(name, u'.')); }

}  // namespace

std::u16string moduleBaseName(std::u16string_view modulePath) {
    return std::u16string(withoutEnding(withoutFolder(modulePath)));
}

std::u16string accountNameFromFile(std::u16string_view fileName) {
    const std::u16string_view name = withoutFolder(fileName);
    const std::size_t underscore = name.find(u'_');
    if (underscore == std::u16string_view::npos) return std::u16string(fileName);
    const std::u16string_view rest = name.substr(underscore + 1);
    // A name that is nothing but its ending counts as empty, unlike the module's own.
    const std::u16string_view account = rest.substr(0, rest.rfind(u'.'));
    return std::u16string(account.empty() ? fileName : account);
}

AccountFiles defaultAccount(const std::u16string& profileDir, const std::u16string& base) {
    return {profileDir + base + u".roster", profileDir + base + u".config", kDefaultDisplayName};
}

std::vector<AccountFiles> furtherAccounts(const std::u16string& profileDir, const std::u16string& base) {
    std::vector<AccountFiles> accounts;
    for (const auto& file : platform::filesMatching(profileDir, base + u'_', u".config")) {
        const std::u16string name = accountNameFromFile(file);
        accounts.push_back({formatText(u"%s%s_%s%s", profileDir, base, name, u".roster"),
                            formatText(u"%s%s_%s%s", profileDir, base, name, u".config"),
                            formatText(u"%s - %s", kDefaultDisplayName, name)});
    }
    return accounts;
}

}  // namespace protolink
