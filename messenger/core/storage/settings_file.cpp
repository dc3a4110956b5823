// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/storage/settings_file.h"

#include <fcntl.h>
#include <unistd.h>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <utility>

#include "messenger/core/storage/private_file.h"

namespace oku {
namespace {

constexpr int kSaveDelay = 300;    // milliseconds from the first change that is not written
constexpr int kRetryDelay = 2000;  // milliseconds after a write that failed

/// A second name for the file behind `path`, which is the one that is written anew where `path` is a link.
bool addName(const QString& path, const QString& name) {
    return ::linkat(AT_FDCWD, QFile::encodeName(path).constData(), AT_FDCWD, QFile::encodeName(name).constData(),
                    AT_SYMLINK_FOLLOW) == 0;
}

/// Keeps the file, which holds `content`, under another name. It stays in its place where it can: there may be no room
/// now for a good one. Behind a link it may lie where a second name cannot reach: the bytes are copied then.
bool keepAs(const QString& name, const QString& path, const QByteArray& content) {
    if (addName(path, name)) return true;
    if (QFileInfo(path).isSymLink()) return replaceFile(name, content, Target::nothing).isEmpty();
    return QFile::rename(path, name);
}

}  // namespace

SettingsFile::SettingsFile(QString path, QObject* parent) : QObject(parent), path_(std::move(path)) {
    saveTimer_.setSingleShot(true);
    connect(&saveTimer_, &QTimer::timeout, this, &SettingsFile::write);
}

SettingsFile::~SettingsFile() { write(); }

void SettingsFile::read() {
    // What could not be written is newer than the file.
    if (!write() && !unreadable_) return;
    const auto remembered = valuesOffDisk();
    values_ = remembered;
    unreadable_ = false;
    if (const QString foreign = foreignReason(path_); !foreign.isEmpty()) {
        unreadable_ = true;
        emit noticed(QCoreApplication::translate("Settings", "Ustawienia nie zostały odczytane. %1").arg(foreign));
        return;
    }
    QFile file(path_);
    if (!file.exists()) return;
    const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    // Half of a file that could not be read to its end would be written over the whole one.
    if (file.error() != QFile::NoError) {
        unreadable_ = true;
        emit noticed(QCoreApplication::translate("Settings", "Nie można odczytać ustawień z pliku %1: %2")
                         .arg(path_, file.errorString()));
        return;
    }
    bool ok = false;
    values_ = settingsFromBytes(content, ok);
    values_.insert(remembered);
    file.close();
    if (ok) return;
    setAside(content);
    if (unreadable_) return;
    // A link is the user's, and stays.
    if (valuesOnDisk().isEmpty() && !QFileInfo(path_).isSymLink()) {
        QFile::remove(path_);
        return;
    }
    dirty_ = true;
    write();
}

void SettingsFile::setAside(const QByteArray& content) {
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString name = path_ + QStringLiteral(".damaged-") + stamp;
    QString aside = name;
    for (int more = 2; QFile::exists(aside); ++more) aside = name + QStringLiteral("-%1").arg(more);
    unreadable_ = !keepAs(aside, path_, content);
    emit noticed(
        unreadable_
            ? QCoreApplication::translate("Settings", "Plik ustawień %1 jest uszkodzony i nie można go odłożyć na bok.")
                  .arg(path_)
            : QCoreApplication::translate("Settings", "Plik ustawień %1 jest uszkodzony; został zachowany jako %2.")
                  .arg(path_, aside));
}

bool SettingsFile::write() {
    saveTimer_.stop();
    if (!dirty_) return true;
    if (unreadable_) {
        tellOnce(QCoreApplication::translate("Settings", "Ustawienia nie są zapisywane, bo nie odczytano pliku %1.")
                     .arg(path_));
        return false;
    }
    if (const QString reason = replaceFile(path_, settingsToBytes(valuesOnDisk())); !reason.isEmpty()) {
        tellOnce(
            QCoreApplication::translate(
                "Settings", "Nie można zapisać ustawień w pliku %1: %2. Dawny plik zostaje, zapis będzie ponawiany.")
                .arg(path_, reason));
        saveTimer_.start(kRetryDelay);
        return false;
    }
    failureTold_ = false;
    dirty_ = false;
    return true;
}

bool SettingsFile::remove() {
    saveTimer_.stop();
    values_.clear();
    offDisk_.clear();
    dirty_ = false;
    const QFileInfo file(path_);
    if (!file.isSymLink()) return !file.exists() || QFile::remove(path_);
    // Without the link the password would still stand where it leads. A file of somebody else was never believed.
    const bool holdsOurs = file.isFile() && file.ownerId() == geteuid();
    if (holdsOurs && !replaceFile(path_, {}).isEmpty()) return false;
    return QFile::remove(path_);
}

void SettingsFile::tellOnce(const QString& failure) {
    if (!std::exchange(failureTold_, true)) emit noticed(failure);
}

qlonglong SettingsFile::number(const QString& key, qlonglong fallback) const {
    bool ok = false;
    const qlonglong number = values_.value(key).toLongLong(&ok);
    return ok ? number : fallback;
}

bool SettingsFile::set(const QString& key, const QVariant& value) {
    if (!canBeSettingKey(key)) return false;
    QVariant kept;
    if (value.isValid()) {
        const int type = value.typeId();
        const bool isText = type == QMetaType::QString || !value.canConvert<qlonglong>();
        kept = isText ? QVariant(value.toString()) : QVariant(value.toLongLong());
    }
    if (values_.value(key) == kept && values_.contains(key) == kept.isValid()) return true;
    if (kept.isValid()) {
        values_.insert(key, kept);
    } else {
        values_.remove(key);
    }
    changedNow();
    emit changed(key);
    return true;
}

void SettingsFile::changedNow() {
    dirty_ = true;
    if (!saveTimer_.isActive()) saveTimer_.start(kSaveDelay);
}

void SettingsFile::keepOffDisk(const QString& key, bool off) {
    if (offDisk_.contains(key) == off) return;
    if (off) {
        offDisk_.insert(key);
    } else {
        offDisk_.remove(key);
    }
    if (values_.contains(key)) changedNow();
}

QMap<QString, QVariant> SettingsFile::valuesOnDisk() const {
    auto values = values_;
    for (const QString& key : offDisk_) values.remove(key);
    return values;
}

QMap<QString, QVariant> SettingsFile::valuesOffDisk() const {
    QMap<QString, QVariant> values;
    for (const QString& key : offDisk_) {
        if (values_.contains(key)) values.insert(key, values_.value(key));
    }
    return values;
}

}  // namespace oku
