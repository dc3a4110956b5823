// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What of an address is asked for, and of whom.
#pragma once

#include <optional>
#include <string>

struct DownloadAddress {
    std::string url;  // with the plain scheme, host, port, path and query
};

/// Takes an address apart and puts it together for plain HTTP: the scheme is not looked at, but its port is used where
/// the address tells none; user, password and fragment are left out. Escapes are decoded, and what may not stand in a
/// request is escaped again. Nothing when it is no address, names no host, or when host or path are longer than 2047
/// characters; also where libcurl, which takes it apart, is missing.
std::optional<DownloadAddress> downloadAddress(const std::u16string& address);
