// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QString>

/// The certificates that the user accepted for an account, as the setting OKU/PinnedCertificate keeps them: their
/// SHA-256 fingerprints with blanks between.
namespace oku {

/// The setting with one more fingerprint, which is written as it is shown. The colons between its bytes may be left
/// out. Nothing when it is no SHA-256 fingerprint.
std::optional<QString> withPin(const QString& pins, const QString& fingerprint);

}  // namespace oku
