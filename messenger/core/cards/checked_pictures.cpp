// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/checked_pictures.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QRegularExpression>
#include <utility>

#include "messenger/core/cards/picture_file.h"
#include "messenger/core/storage/private_file.h"

namespace oku {
namespace {

constexpr qsizetype kMostKept = 5000;
constexpr qint64 kLargestKept = 256 * 1024 * 1024;  // bytes of all

/// The last chunk of a PNG, which is always the same.
constexpr QByteArrayView kEndOfPng("\0\0\0\0IEND\xae\x42\x60\x82", 12);

/// So that it is one of those used last.
void noteUse(const QString& path) {
    QFile file(path);
    if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
}

}  // namespace

CheckedPictures::CheckedPictures(PictureReader* reader, const QString& cacheDirectory, QObject* parent)
    : QObject(parent),
      reader_(reader),
      theirs_(cacheDirectory + QStringLiteral(".xmppAvatar/")),
      ours_(cacheDirectory + QStringLiteral("pictures/")) {}

void CheckedPictures::check(const QString& path, Done done) {
    waiting_.push_back({path, std::move(done)});
    next();
}

void CheckedPictures::tidy() const {
    const QDir folder(ours_);
    qsizetype kept = 0;
    qint64 size = 0;
    for (const QFileInfo& file : folder.entryInfoList(QDir::Files | QDir::Hidden, QDir::Time)) {
        size += file.size();
        if (++kept > kMostKept || size > kLargestKept) QFile::remove(file.filePath());
    }
}

void CheckedPictures::next() {
    while (!reading_ && !waiting_.empty()) {
        Waiting one = std::move(waiting_.front());
        waiting_.pop_front();
        read(std::move(one));
    }
}

void CheckedPictures::read(Waiting one) {
    const QByteArray content = reader_ ? trusted(one.path) : QByteArray();
    const QString hash = content.isEmpty() ? QString() : pictureHash(content);
    if (hash.isEmpty()) return one.done({});
    if (isKept(hash)) {
        noteUse(fileFor(hash));
        return one.done({fileFor(hash), hash});
    }
    reading_ = true;
    reader_->read(content, [self = QPointer(this), hash, done = std::move(one.done)](const QByteArray& png) {
        if (!self) return;
        self->reading_ = false;
        done(self->keep(hash, png));
        if (self) self->next();
    });
}

QByteArray CheckedPictures::trusted(const QString& path) const {
    const QString name = path.mid(theirs_.size());
    if (!path.startsWith(theirs_) || !name.startsWith(u'L') || name.contains(u'/')) return {};
    const QByteArray content = readPictureFile(path, SymbolicLinks::refused);
    static const QRegularExpression sha1(QStringLiteral("^[0-9a-fA-F]{40}$"));
    const QString announced = name.mid(1);
    const bool named = sha1.match(announced).hasMatch();
    return named && announced.toLower() != pictureHash(content) ? QByteArray() : content;
}

QString CheckedPictures::fileFor(const QString& hash) const { return ours_ + hash + QStringLiteral(".png"); }

// One that was damaged or cut is read anew: it would be shown for ever.
bool CheckedPictures::isKept(const QString& hash) const {
    const QByteArray content = readPictureFile(fileFor(hash), SymbolicLinks::followed);
    return isSmallPng(content) && content.endsWith(kEndOfPng);
}

CheckedPicture CheckedPictures::keep(const QString& hash, const QByteArray& png) const {
    if (png.isEmpty()) return {};
    // The user may have emptied the cache meanwhile. Without room there is no picture, and no harm.
    QDir().mkpath(ours_);
    return replaceFile(fileFor(hash), png).isEmpty() ? CheckedPicture{fileFor(hash), hash} : CheckedPicture();
}

void CheckedPictures::forget(const CheckedPicture& picture) {
    if (!picture.path.isEmpty()) QFile::remove(picture.path);
}

}  // namespace oku
