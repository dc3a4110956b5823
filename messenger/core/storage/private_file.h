// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>
#include <QByteArray>
#include <QString>

/// Files that belong to one user alone: written whole, read only when nobody else could have written them.
namespace oku {

/// What stands in the place of the file that is written.
enum class Target {
    behindLinks,  ///< is replaced; where it is a link, what it leads to is
    inPlace,      ///< is replaced when it is a plain file; a link is refused
    nothing,      ///< or else the file is not written, and fileExistsReason() is the reason
};

/// Writes a file whole: aside in the same folder, synced, renamed, and the folder synced, each step checked. Only its
/// owner can read it. An empty text, or the reason in a few words; whatever stood there before is untouched then,
/// unless the folder alone could not be synced (the new file is in place, but a loss of power may take it).
[[nodiscard]] QString replaceFile(const QString& path, const QByteArray& content, Target target = Target::behindLinks);
QString fileExistsReason();

/// Why a file or folder is not to be believed, or an empty text: somebody else owns it, or could write it. What is not
/// there is nobody's. `reason` is a whole sentence with the path.
[[nodiscard]] QString foreignReason(const QString& path);

/// What the system's error number means, in a few words.
QString systemReason(int error);

/// The system's calls by which a file is replaced. A test puts others in their place to make a step fail.
struct FileSteps {
    int (*create)(char* pattern);
    int (*protect)(int file);
    ssize_t (*write)(int file, const void* bytes, size_t count);
    int (*sync)(int file);
    int (*close)(int file);
    int (*rename)(const char* from, const char* to);
    int (*renameToNothing)(const char* from, const char* to);
    int (*syncFolder)(const char* folder);
};
FileSteps& fileSteps();

}  // namespace oku
