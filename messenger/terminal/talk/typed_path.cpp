// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/typed_path.h"

#include <QDir>

namespace oku::terminal {

QString wholePath(const QString& startDirectory, const QString& path) {
    const bool home = path == QLatin1String("~") || path.startsWith(QLatin1String("~/"));
    return QDir(startDirectory).absoluteFilePath(home ? QDir::homePath() + path.mid(1) : path);
}

QStringList pathsFrom(const QString& startDirectory, const QString& typed) {
    const qsizetype folderEnd = typed.lastIndexOf(u'/') + 1;
    const QString folder = typed.left(folderEnd);
    const QString name = typed.mid(folderEnd);
    QDir::Filters wanted = QDir::AllEntries | QDir::NoDotAndDotDot;
    if (name.startsWith(u'.')) wanted |= QDir::Hidden;
    QStringList paths;
    for (const QFileInfo& entry : QDir(wholePath(startDirectory, folder)).entryInfoList(wanted, QDir::Name)) {
        if (!entry.fileName().startsWith(name)) continue;
        paths.append(folder + entry.fileName() + (entry.isDir() ? QStringLiteral("/") : QString()));
    }
    return paths;
}

}  // namespace oku::terminal
