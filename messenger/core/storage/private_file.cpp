// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/storage/private_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <QCoreApplication>
#include <QFile>
#include <utility>

namespace oku {
namespace {

constexpr mode_t kOwnerOnly = 0600;
constexpr mode_t kOthersWrite = S_IWGRP | S_IWOTH;

struct Reason {
    int error;
    const char* text;
};
constexpr Reason kReasons[] = {
    {ENOSPC, QT_TRANSLATE_NOOP("PrivateFile", "brak miejsca na dysku")},
    {EDQUOT, QT_TRANSLATE_NOOP("PrivateFile", "przydział miejsca na dysku jest wyczerpany")},
    {EFBIG, QT_TRANSLATE_NOOP("PrivateFile", "plik byłby za duży")},
    {EROFS, QT_TRANSLATE_NOOP("PrivateFile", "system plików jest tylko do odczytu")},
    {EACCES, QT_TRANSLATE_NOOP("PrivateFile", "brak uprawnień")},
    {EPERM, QT_TRANSLATE_NOOP("PrivateFile", "brak uprawnień")},
    {ENOENT, QT_TRANSLATE_NOOP("PrivateFile", "nie ma takiego katalogu")},
    {EISDIR, QT_TRANSLATE_NOOP("PrivateFile", "w tym miejscu jest katalog")},
    {EIO, QT_TRANSLATE_NOOP("PrivateFile", "błąd dysku")},
    {ELOOP, QT_TRANSLATE_NOOP("PrivateFile", "w tym miejscu jest dowiązanie")},
    {EEXIST, QT_TRANSLATE_NOOP("PrivateFile", "taki plik już jest")},
};

int createAside(char* pattern) { return mkostemp(pattern, O_CLOEXEC); }
int protectFile(int file) { return fchmod(file, kOwnerOnly); }
/// Some file systems cannot sync, which is no failure.
int synced(int file) { return fsync(file) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP ? 0 : -1; }

// Some file systems know no such rename; there the moment between the look and the rename stays open.
int renameToNothing(const char* from, const char* to) {
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return -1;
    struct stat there {};
    if (lstat(to, &there) != 0) return rename(from, to);
    errno = EEXIST;
    return -1;
}

// A folder that may be written but not read cannot be synced; there the rename is all that can be done.
int syncFolder(const char* folder) {
    const int descriptor = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return errno == EACCES ? 0 : -1;
    const int error = synced(descriptor) == 0 ? 0 : errno;
    close(descriptor);
    errno = error;
    return error == 0 ? 0 : -1;
}

/// A new file beside the one whose place it is to take. It goes at the end unless it took that place.
class Aside {
public:
    explicit Aside(const QByteArray& folder) : path_(folder + ".oku-XXXXXX"), file_(fileSteps().create(path_.data())) {
        pending_ = file_ >= 0;
    }
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;
    ~Aside() {
        if (file_ >= 0) fileSteps().close(file_);
        if (pending_) unlink(path_.constData());
    }

    bool write(const QByteArray& content) {
        return pending_ && fileSteps().protect(file_) == 0 && writeAll(content) && fileSteps().sync(file_) == 0 &&
               fileSteps().close(std::exchange(file_, -1)) == 0;
    }

    bool takePlaceOf(const QByteArray& target, bool ofNothing) {
        const auto move = ofNothing ? fileSteps().renameToNothing : fileSteps().rename;
        if (move(path_.constData(), target.constData()) != 0) return false;
        pending_ = false;
        return true;
    }

private:
    bool writeAll(QByteArrayView content) {
        while (!content.isEmpty()) {
            const ssize_t written = fileSteps().write(file_, content.data(), static_cast<size_t>(content.size()));
            if (written < 0 && errno == EINTR) continue;
            if (written == 0) errno = ENOSPC;
            if (written <= 0) return false;
            content = content.sliced(written);
        }
        return true;
    }

    QByteArray path_;
    int file_;
    bool pending_;
};

/// The file that a name stands for, with its whole path; a name that nothing stands behind is its own. Empty, and errno
/// tells why, when it cannot be written as `target` asks.
QByteArray placeOf(const QByteArray& name, Target target) {
    struct stat there {};
    if (lstat(name.constData(), &there) != 0) return errno == ENOENT ? name : QByteArray();
    errno = S_ISDIR(there.st_mode) ? EISDIR : target == Target::nothing ? EEXIST : 0;
    if (errno != 0) return {};
    if (!S_ISLNK(there.st_mode)) {
        errno = S_ISREG(there.st_mode) ? 0 : EACCES;
        return errno == 0 ? name : QByteArray();
    }
    errno = ELOOP;
    if (target == Target::inPlace) return {};
    const std::unique_ptr<char, decltype(&free)> whole(realpath(name.constData(), nullptr), &free);
    return whole ? placeOf(QByteArray(whole.get()), Target::inPlace) : QByteArray();
}

}  // namespace

FileSteps& fileSteps() {
    static FileSteps steps{createAside, protectFile, ::write, synced, ::close, ::rename, renameToNothing, syncFolder};
    return steps;
}

QString replaceFile(const QString& path, const QByteArray& content, Target target) {
    const QByteArray place = placeOf(QFile::encodeName(path), target);
    if (place.isEmpty()) return systemReason(errno);
    const QByteArray folder = place.left(place.lastIndexOf('/') + 1);
    int error = 0;
    {
        Aside file(folder);
        const bool done = file.write(content) && file.takePlaceOf(place, target == Target::nothing);
        error = done ? 0 : errno;  // before the destructor's own calls change it
    }
    if (error != 0) return systemReason(error);
    return fileSteps().syncFolder(folder.isEmpty() ? "." : folder.constData()) == 0 ? QString() : systemReason(errno);
}

QString fileExistsReason() { return systemReason(EEXIST); }

QString foreignReason(const QString& path) {
    struct stat there {};
    if (stat(QFile::encodeName(path).constData(), &there) != 0) return {};
    if (there.st_uid != geteuid()) {
        return QCoreApplication::translate("PrivateFile", "%1 należy do innego użytkownika.").arg(path);
    }
    if ((there.st_mode & kOthersWrite) == 0) return {};
    return QCoreApplication::translate("PrivateFile", "Inni mogą zapisywać w %1; odbierz im to prawo: chmod go-w %1")
        .arg(path);
}

QString systemReason(int error) {
    for (const Reason& reason : kReasons) {
        if (reason.error == error) return QCoreApplication::translate("PrivateFile", reason.text);
    }
    return qt_error_string(error);
}

}  // namespace oku
