// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Names of files that others choose.
#pragma once

#include <string_view>

/// What a target's file system makes of a name.
enum class FileNameRules { Plain, Windows };

#if defined(_WIN32)
inline constexpr FileNameRules kFileNameRules = FileNameRules::Windows;
#else
inline constexpr FileNameRules kFileNameRules = FileNameRules::Plain;
#endif

/// Whether a name stays inside the folder that it is put behind: one component, neither "." nor "..", of 1 to 255 bytes
/// as UTF-8, without a separator of any target, a drive's colon or a control character. Under the rules of Windows also
/// without wildcards, redirections, a blank or a dot at the end, and no device.
bool isPlainFileName(std::u16string_view name, FileNameRules rules = kFileNameRules);
