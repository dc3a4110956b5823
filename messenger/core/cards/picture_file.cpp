// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/picture_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QCryptographicHash>
#include <QFile>
#include <QtEndian>

#include "messenger/core/cards/picture_reader.h"

namespace oku {

QByteArray readPictureFile(const QString& path, SymbolicLinks links) {
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | (links == SymbolicLinks::refused ? O_NOFOLLOW : 0);
    const int descriptor = ::open(QFile::encodeName(path).constData(), flags);
    if (descriptor < 0) return {};
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return {};
    }
    struct stat kind {};
    if (fstat(descriptor, &kind) != 0 || !S_ISREG(kind.st_mode) || kind.st_size > kLargestPictureFile) return {};
    const QByteArray content = file.read(kLargestPictureFile + 1);
    return content.size() <= kLargestPictureFile ? content : QByteArray();
}

bool isSmallPng(const QByteArray& content) {
    constexpr qsizetype kSides = 16;  // signature, length and name of the first chunk stand before them
    if (content.size() < kSides + 8 || !content.startsWith("\x89PNG\r\n\x1a\n") || content.mid(12, 4) != "IHDR")
        return false;
    const auto side = [&](qsizetype at) { return qFromBigEndian<quint32>(content.constData() + at); };
    const auto fits = [](quint32 points) { return points > 0 && points <= static_cast<quint32>(kPictureSide); };
    return fits(side(kSides)) && fits(side(kSides + 4));
}

QString pictureHash(const QByteArray& content) {
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex());
}

}  // namespace oku
