// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>

#include "messenger/core/cards/picture_reader.h"
#include "messenger/core/values/cards.h"

namespace oku {

class Accounts;
class EventRegistry;
class PluginQueue;

/// The user's own picture: the file "_avatar" of the profile, and the event "OKU/OnAvatarChanged" that tells the
/// accounts of it. They keep its hash in their settings ("AV/Hash").
class OwnPictureFile : public QObject {
    Q_OBJECT

public:
    struct Parts {
        EventRegistry& events;
        PluginQueue& queue;
        Accounts& accounts;
        PictureReader* reader;  ///< may be null: then nothing can be set
    };

    /// `profileDirectory` ends in the separator.
    OwnPictureFile(Parts parts, const QString& profileDirectory, QObject* parent = nullptr);

    [[nodiscard]] OwnPicture picture() const;
    /// changed() or failed() follows. The reason why not, for what can be told at once.
    QString setFrom(const QString& path);
    /// The same for what was fetched: a file of the plugin's cache.
    QString setFromCache(const QString& path);
    QString remove();
    /// The accounts know the picture that the file holds now.
    [[nodiscard]] bool told() const { return !untold_; }

    /// The plugin has been loaded: accounts that have another hash in their settings are told.
    void pluginLoaded();
    /// How far an account's connection has come. While one is between offline and a complete login, or is being closed,
    /// the plugin is not told, as that would make it take the end for a wished one.
    void connectionBegins(const QString& key) { open_.insert(key); }
    void connectionEnded(const QString& key);
    /// A good moment to tell what has not been told.
    void tell();

signals:
    void changed(const oku::OwnPicture& picture);
    void failed(const QString& reason);

private:
    QString read(const QByteArray& content);
    void store(const QByteArray& png);
    void changedNow();
    [[nodiscard]] bool mayTell() const;
    void raise();

    Parts parts_;
    QString path_;
    QString hash_;
    quint64 wish_ = 0;  ///< the newest one counts
    bool reading_ = false;
    bool untold_ = false;
    bool raising_ = false;
    QSet<QString> open_;  ///< accounts with a connection, however far it has come
};

}  // namespace oku
