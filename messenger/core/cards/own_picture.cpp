// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/own_picture.h"

#include <algorithm>
#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <utility>

#include "host/oku/avatar.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/cards/picture_file.h"
#include "messenger/core/storage/private_file.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {

OwnPictureFile::OwnPictureFile(Parts parts, const QString& profileDirectory, QObject* parent)
    : QObject(parent), parts_(parts), path_(profileDirectory + QStringLiteral("_avatar")) {
    connect(&parts_.queue, &PluginQueue::callFinished, this, &OwnPictureFile::tell);
}

OwnPicture OwnPictureFile::picture() const { return {hash_.isEmpty() ? QString() : path_, hash_}; }

QString OwnPictureFile::setFrom(const QString& path) {
    const QByteArray content = readPictureFile(path, SymbolicLinks::followed);
    if (!content.isEmpty()) return read(content);
    return QCoreApplication::translate("Cards", "Nie można odczytać pliku %1 albo ma ponad 4 MiB.").arg(path);
}

QString OwnPictureFile::setFromCache(const QString& path) {
    const QByteArray content = readPictureFile(path, SymbolicLinks::refused);
    if (!content.isEmpty()) return read(content);
    return QCoreApplication::translate("Cards", "Pobrany obrazek jest pusty albo ma ponad 4 MiB.");
}

QString OwnPictureFile::read(const QByteArray& content) {
    if (!parts_.reader)
        return QCoreApplication::translate("Cards", "Brak programu oku-picture, więc obrazki nie są odczytywane.");
    const auto done = [self = QPointer(this), wish = ++wish_](const QByteArray& png) {
        if (!self || self->wish_ != wish) return;
        self->reading_ = false;
        self->store(png);
    };
    reading_ = true;
    parts_.reader->read(content, done);
    return {};
}

void OwnPictureFile::store(const QByteArray& png) {
    if (png.isEmpty()) {
        emit failed(QCoreApplication::translate(
            "Cards", "To nie jest obrazek PNG, JPEG, GIF, WebP ani BMP o boku do 4096 punktów."));
        return;
    }
    const QString reason = replaceFile(path_, png);
    // Where the folder alone could not be synced, the new file is in place.
    if (!reason.isEmpty() && readPictureFile(path_, SymbolicLinks::refused) != png) {
        emit failed(
            QCoreApplication::translate("Cards", "Nie można zapisać obrazka: %1. Poprzedni zostaje.").arg(reason));
        return;
    }
    hash_ = pictureHash(png);
    changedNow();
}

QString OwnPictureFile::remove() {
    // What is being read goes on where the one before cannot go.
    if (QFile::exists(path_) && !QFile::remove(path_))
        return QCoreApplication::translate("Cards", "Nie można usunąć obrazka %1").arg(path_);
    ++wish_;
    if (std::exchange(reading_, false))
        emit failed(QCoreApplication::translate("Cards", "Obrazek usunięto, zanim nowy został odczytany."));
    hash_.clear();
    changedNow();
    return {};
}

void OwnPictureFile::changedNow() {
    untold_ = true;
    tell();
    emit changed(picture());
}

void OwnPictureFile::pluginLoaded() {
    open_.clear();
    raising_ = false;
    const QByteArray content = readPictureFile(path_, SymbolicLinks::refused);
    hash_ = content.isEmpty() ? QString() : pictureHash(content);
    const auto knowsAnother = [this](const auto& account) {
        return account->registered && account->settings->text(QString::fromUtf16(setting::ownPictureHash)) != hash_;
    };
    untold_ = std::any_of(parts_.accounts.all().begin(), parts_.accounts.all().end(), knowsAnother);
}

void OwnPictureFile::connectionEnded(const QString& key) {
    open_.remove(key);
    tell();
}

bool OwnPictureFile::mayTell() const {
    const auto& all = parts_.accounts.all();
    return std::all_of(all.begin(), all.end(), [this](const auto& account) {
        return !account->registered || account->ready() || (!open_.contains(account->key) && account->flagsWord() == 0);
    });
}

void OwnPictureFile::tell() {
    if (!untold_ || raising_ || !mayTell()) return;
    raising_ = true;
    parts_.queue.post({}, [self = QPointer(this)] {
        if (self) self->raise();
    });
}

// The moment may have passed while the call waited.
void OwnPictureFile::raise() {
    if (untold_ && mayTell()) {
        untold_ = false;
        auto event = makeRecord<OKU_AVATAR_CHANGED>();
        event.hash = widePointer(hash_);
        event.action = hash_.isEmpty() ? 0 : OKU_AVATAR_SET;
        parts_.events.fire(u"OKU/OnAvatarChanged", wordOf(&event), 0);
    }
    raising_ = false;
}

}  // namespace oku
