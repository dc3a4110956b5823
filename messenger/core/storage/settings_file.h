// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVariant>

#include "messenger/core/storage/settings_format.h"

namespace oku {

/// One file of settings, in the form of settings_format.h. Values live in a map: the file is read when read() is
/// called, and written aside, synced and renamed within a second of a change and at write(), so that a kill at any
/// moment leaves the old or the new file whole. Only its owner can read it, as passwords may stand in it.
///
/// A file that is not of this form is kept aside as NAME.damaged-TIME and told by noticed(); the lines that can be read
/// count, and make the new file. A file that cannot be read, or that somebody else owns or could write, is told as
/// well, and never written over.
class SettingsFile : public QObject {
    Q_OBJECT

public:
    explicit SettingsFile(QString path, QObject* parent = nullptr);
    ~SettingsFile() override;

    [[nodiscard]] const QString& path() const { return path_; }
    void read();
    /// Writes what changed, now. False when it could not be written, which noticed() tells once: the old file stays,
    /// and it is tried again every few seconds.
    bool write();

    /// Removes the file with all that stands in it; of a link, which goes, the file that it leads to is emptied. False
    /// when it is still there.
    bool remove();

    /// A qlonglong or a QString; invalid when the key is not there.
    [[nodiscard]] QVariant value(const QString& key) const { return values_.value(key); }
    /// The value as a number; text that is not a number, or no value, gives `fallback`.
    [[nodiscard]] qlonglong number(const QString& key, qlonglong fallback) const;
    [[nodiscard]] QString text(const QString& key) const { return values_.value(key).toString(); }
    /// Integers and booleans are kept as integers, the rest as text; an invalid value removes the key. False, and
    /// nothing done, for a key that the file could not hold (canBeSettingKey()).
    bool set(const QString& key, const QVariant& value);
    [[nodiscard]] bool has(const QString& key) const { return values_.contains(key); }
    /// From now on the key's value is only remembered: it is not written, and read() leaves it as it is. Off, it is
    /// written like all others.
    void keepOffDisk(const QString& key, bool off);

signals:
    void noticed(const QString& text);
    void changed(const QString& key);

private:
    void setAside(const QByteArray& content);
    void changedNow();
    /// Until a write works.
    void tellOnce(const QString& failure);
    /// The values that stand on disk, or are to stand there.
    [[nodiscard]] QMap<QString, QVariant> valuesOnDisk() const;
    [[nodiscard]] QMap<QString, QVariant> valuesOffDisk() const;

    QString path_;
    QMap<QString, QVariant> values_;
    QSet<QString> offDisk_;
    QTimer saveTimer_;
    bool dirty_ = false;
    bool unreadable_ = false;
    bool failureTold_ = false;
};

}  // namespace oku
