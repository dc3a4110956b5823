// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Where the accounts' files lie and what they tell of the accounts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace protolink {

/// One account as its files name it.
struct AccountFiles {
    std::u16string rosterPath;
    std::u16string configPath;
    std::u16string displayName;
};

/// The module's own file name without folder and ending; the prefix of all account files.
std::u16string moduleBaseName(std::u16string_view modulePath);

/// The account's name out of "prefix_name.config". A name that cannot be found is the whole input.
std::u16string accountNameFromFile(std::u16string_view fileName);

/// The account that exists even when no file does.
AccountFiles defaultAccount(const std::u16string& profileDir, const std::u16string& base);

/// One account for each further settings file in the profile directory, in the file system's order.
std::vector<AccountFiles> furtherAccounts(const std::u16string& profileDir, const std::u16string& base);

}  // namespace protolink
