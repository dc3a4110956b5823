// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <optional>
#include <QJsonArray>
#include <QObject>
#include <QTimer>

namespace oku {

/// The file in which a list of contacts is kept, so that it can be shown before a login. Written within a second of a
/// change; what could not be written is told once, and tried again every few seconds.
class ContactFile : public QObject {
    Q_OBJECT

public:
    /// `path`: an empty one means that the list is not kept. `content` gives what is to be written.
    ContactFile(QString path, std::function<QByteArray()> content, QObject* parent = nullptr);

    /// Whether a list was ever kept in it.
    [[nodiscard]] bool known() const { return known_; }
    /// What it holds. A file that cannot be read, or is no list, is kept as NAME.damaged-TIME, which noticed() tells.
    QJsonArray load();
    /// Something has changed, and is written soon; while it is held, only by save().
    void change();
    void setHeld(bool held);
    /// Writes now what has changed.
    void save();

signals:
    void noticed(const QString& text);

private:
    void setAside();
    void schedule();

    QString path_;
    std::function<QByteArray()> content_;
    bool known_ = false;
    bool held_ = false;
    bool dirty_ = false;
    bool failureTold_ = false;
    QTimer timer_;
};

}  // namespace oku
