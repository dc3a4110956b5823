// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/received_folder.h"

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "messenger/core/storage/private_file.h"
#include "messenger/core/transfers/file_name.h"

namespace oku {
namespace {

constexpr int kMostFolders = 10'000;

// An error number, or 0. What is there already is left as it is.
int makeFolder(const QString& path) {
    if (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0) return 0;
    return errno;
}

int makeWholePath(const QString& folder) {
    for (qsizetype at = folder.indexOf(u'/', 1); at > 0; at = folder.indexOf(u'/', at + 1)) {
        const QString part = folder.left(at);
        if (QFileInfo(part).isDir()) continue;
        if (const int error = makeFolder(part); error != 0) return error;
    }
    return ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0 ? 0 : errno;
}

ReceivedFolder noFolder(const QString& folder, int error) {
    return {{},
            QCoreApplication::translate("Transfers", "Nie można zapisywać w folderze %1: %2")
                .arg(folder, systemReason(error))};
}

// A link that leads nowhere counts: the file would be written through it.
bool isThere(const QString& path) {
    struct stat found;
    return ::lstat(QFile::encodeName(path).constData(), &found) == 0;
}

}  // namespace

QString expandedFolder(const QString& pattern, const QString& documents, const QString& sender) {
    QString folder;
    const QStringList parts = pattern.split(u'%');
    for (qsizetype at = 0; at < parts.size(); ++at) {
        const bool between = at % 2 == 1 && at + 1 < parts.size();
        if (between && parts[at] == QLatin1String("documents"))
            folder += documents;
        else if (between && parts[at] == QLatin1String("from"))
            folder += cleanFileName(sender);
        else
            folder += between ? u'%' + parts[at] + u'%' : (at % 2 == 1 ? u'%' + parts[at] : parts[at]);
    }
    return QDir::cleanPath(QDir(documents).absoluteFilePath(folder)) + u'/';
}

ReceivedFolder makeReceivedFolder(const QString& folder, const QStringList& names,
                                  const std::function<bool(const QString& path)>& taken) {
    if (const int error = makeWholePath(folder); error != 0) return noFolder(folder, error);
    const bool free = !names.isEmpty() && std::none_of(names.begin(), names.end(), [&](const QString& name) {
        return isThere(folder + name) || taken(folder + name);
    });
    if (free) return {folder, {}};
    for (int number = 2; number < kMostFolders; ++number) {
        const QString own = folder + QString::number(number) + u'/';
        const int error = makeFolder(own);
        if (error == 0) return {own, {}};
        if (error != EEXIST) return noFolder(own, error);
    }
    return noFolder(folder, EEXIST);
}

}  // namespace oku
