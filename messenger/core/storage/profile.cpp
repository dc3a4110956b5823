// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/storage/profile.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <QSysInfo>

#include "host/oku/windows.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/storage/private_file.h"

namespace oku {
namespace {

// The plugin reads a directory into 261 characters, the NUL included, and puts file names behind it.
constexpr int kLongestPath = 260;
constexpr int kLockIsWritten = 5000;  // milliseconds after which a lock names its process

QString standard(QStandardPaths::StandardLocation place) {
    return QStandardPaths::writableLocation(place) + QStringLiteral("/oku/");
}

bool makeDirectory(const QString& path) {
    if (QFileInfo::exists(path)) return QFileInfo(path).isDir();
    const QString name = QDir::cleanPath(path);
    QDir().mkpath(QFileInfo(name).absolutePath());
    return QDir().mkdir(name, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

/// What a program that was killed left while it replaced a file: passwords may stand in it.
void removeLeftovers(const QString& path) {
    QDir folder(path);
    const QStringList names = {QStringLiteral(".oku-??????"), QStringLiteral(".protolink-??????")};
    for (const QString& name : folder.entryList(names, QDir::Files | QDir::Hidden)) folder.remove(name);
}

struct LockOwner {
    qint64 process = 0;
    QString host;
    QString program;
};

/// False when the file tells of nobody.
bool readOwner(const QLockFile& lock, LockOwner& owner) {
    return lock.getLockInfo(&owner.process, &owner.host, &owner.program);
}

/// Only what runs here can be seen to run no more. Another program may have got its number since.
bool isGone(const LockOwner& owner) {
    if (!owner.host.isEmpty() && owner.host != QSysInfo::machineHostName()) return false;
    if (kill(static_cast<pid_t>(owner.process), 0) != 0 && errno == ESRCH) return true;
    const QString file = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(owner.process));
    QString program = QFileInfo(file).fileName();
    const QString replaced = QStringLiteral(" (deleted)");  // by a newer one while it runs
    if (program.endsWith(replaced)) program.chop(replaced.size());
    return !program.isEmpty() && program != owner.program;
}

/// Why no file can be made in the folder, in a few words; an empty text where one can.
QString unwritableReason(const QString& directory) {
    const QString probe = directory + QStringLiteral(".oku-folder");  // a kill leaves one of the leftovers
    const QString reason = replaceFile(probe, "?", Target::inPlace);
    QFile::remove(probe);
    return reason;
}

/// A lock is stale only when its process is gone, however long that has been running. One that names nobody is a moment
/// old, or what a kill or a power cut left of it. Nothing is taken from a living program: the system itself keeps the
/// file locked for it, and QLockFile asks for that before it removes one.
bool take(QLockFile& lock) {
    lock.setStaleLockTime(0);
    LockOwner owner;
    if (lock.tryLock(0)) return true;
    if (lock.error() != QLockFile::LockFailedError || readOwner(lock, owner)) return false;
    lock.setStaleLockTime(kLockIsWritten);
    const bool taken = lock.tryLock(0);
    lock.setStaleLockTime(0);
    return taken;
}

OKU_WORD fill(OKU_WORD param, const QString& directory) {
    auto* record = recordAt<OKU_DIRECTORY>(param);
    if (!record || !record->buffer || record->capacity <= static_cast<std::uint32_t>(directory.size())) return 0;
    std::copy_n(widePointer(directory), directory.size() + 1, record->buffer);
    return 1;
}

}  // namespace

Profile::Profile(const QString& directory) {
    if (directory.isEmpty()) {
        directory_ = standard(QStandardPaths::GenericConfigLocation);
        dataDirectory_ = standard(QStandardPaths::GenericDataLocation);
        cacheDirectory_ = standard(QStandardPaths::GenericCacheLocation);
        return;
    }
    directory_ = QDir::cleanPath(QDir::current().absoluteFilePath(directory));
    if (!directory_.endsWith(u'/')) directory_ += u'/';
    dataDirectory_ = directory_;
    cacheDirectory_ = directory_ + QStringLiteral("cache/");
}

Profile::~Profile() = default;

QString Profile::open() {
    for (const QString& path : {directory_, dataDirectory_, cacheDirectory_}) {
        if (path.size() > kLongestPath) {
            return QCoreApplication::translate("Profile", "Ścieżka katalogu profilu jest za długa: %1").arg(path);
        }
        if (!makeDirectory(path)) {
            return QCoreApplication::translate("Profile", "Nie można utworzyć katalogu %1").arg(path);
        }
        if (!QFileInfo(path).isWritable() || !QFileInfo(path).isReadable()) {
            return QCoreApplication::translate("Profile", "Brak prawa do odczytu lub zapisu w katalogu %1").arg(path);
        }
        // Whoever can put files there could set up accounts, and lead what is written elsewhere.
        if (const QString foreign = foreignReason(path); !foreign.isEmpty()) return foreign;
    }
    lock_ = std::make_unique<QLockFile>(directory_ + QStringLiteral("oku.lock"));
    errno = 0;
    if (!take(*lock_)) return lockFault(errno);
    for (const QString& path : {directory_, dataDirectory_, cacheDirectory_}) removeLeftovers(path);
    return {};
}

QString Profile::lockFault(int error) const {
    const bool isThere = lock_->error() == QLockFile::LockFailedError;
    LockOwner owner;
    if (isThere && readOwner(*lock_, owner) && !isGone(owner)) {
        return QCoreApplication::translate("Profile", "Profil %1 jest już używany przez inny komunikator (proces %2).")
            .arg(directory_)
            .arg(owner.process);
    }
    // What was left of a lock goes only where another file can be made for the time being.
    const QString reason = isThere ? unwritableReason(directory_) : systemReason(error);
    if (!reason.isEmpty())
        return QCoreApplication::translate("Profile", "Nie można zapisać w katalogu %1: %2").arg(directory_, reason);
    return QCoreApplication::translate("Profile",
                                       "Profil %1 jest właśnie otwierany przez inny komunikator albo została po nim "
                                       "blokada %2. Spróbuj ponownie za kilka sekund.")
        .arg(directory_, lock_->fileName());
}

void Profile::provide(ServiceRegistry& services) const {
    // The plugin names a subdirectory that it would like; the files of the accounts lie in the profile itself.
    services.provide(u"OKU/Info/GetProfileDir",
                     [path = directory_](OKU_WORD param, OKU_WORD) { return fill(param, path); });
    services.provide(u"OKU/Info/GetCacheDir",
                     [path = cacheDirectory_](OKU_WORD param, OKU_WORD) { return fill(param, path); });
}

}  // namespace oku
