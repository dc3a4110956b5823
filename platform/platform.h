// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// All that the operating system does for the plugin. One folder beside this header implements it for one target; the
// tests link an implementation of their own, in which time, random values, files and the module's path are theirs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The character that stands between the components of a path, and ends every directory that the host gives.
#if defined(_WIN32)
inline constexpr char16_t kPathSeparator = u'\\';
#else
inline constexpr char16_t kPathSeparator = u'/';
#endif

/// Seconds since the epoch.
std::int64_t now();

/// Milliseconds of the system's tick count; wraps around.
std::uint32_t tickCount();

/// The next value of the process's random generator. It stands on the system's generator: values cannot be guessed.
std::uint32_t nextRandom();

/// Mixes `seed` into the process's random generator; it never makes the values predictable.
void seedRandom(std::uint32_t seed);

/// The full path of this library's own file; its name alone when the folder cannot be found, as after a change of the
/// current directory when it was opened by a relative path. Empty when the system does not tell.
std::u16string modulePath();

/// Names (without the directory) of the files in `directory` that begin with `prefix` and end with `suffix`, in the
/// order that the file system gives. `directory` ends in the separator. A directory that cannot be read gives none.
std::vector<std::u16string> filesMatching(std::u16string_view directory, std::u16string_view prefix,
                                          std::u16string_view suffix);

/// Whether there is something of that name, also when it cannot be opened.
bool fileExists(const std::u16string& path);

/// The whole content of a file, or nothing when it cannot be opened or read.
std::optional<std::string> readFile(const std::u16string& path);

/// Makes an empty file unless there is one. False when the file can be neither opened nor made.
bool createFileIfMissing(const std::u16string& path);

/// Replaces a file as a whole, or makes it: a target that is there is opened first without truncation, then `content`
/// is written aside in the same folder, synced and renamed over it. False when any step fails; the old file then
/// stays as it was, and where there was none is none.
bool replaceFile(const std::u16string& path, std::string_view content);

/// Makes a folder for its owner alone, in one that is there. `path` may end in the separator. A folder that is there
/// already stays, and a failure shows when a file in it cannot be opened.
void createFolder(const std::u16string& path);

/// Deletes every file in a folder; the folder stays, as does a folder in it. `path` may end in the separator. True when
/// no file is left, so also where there is no such folder.
bool emptyFolder(const std::u16string& path);

/// Minutes to add to local standard time to reach UTC; daylight saving plays no part.
std::int32_t timeZoneBias();

/// The operating system in one text: its name, the machine, its version numbers.
std::u16string operatingSystem();

/// Destroys an icon that the host made and handed over. A system without icons of its own has nothing to destroy.
void destroyIcon(std::uint64_t icon);

/// Text in the system's narrow multibyte encoding; what cannot be converted becomes a question mark.
std::string wtom(std::u16string_view text);
std::u16string mtow(std::string_view text);

}  // namespace platform
