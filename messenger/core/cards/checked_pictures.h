// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <QObject>
#include <QString>

#include "messenger/core/cards/picture_reader.h"

namespace oku {

/// A picture as a PNG of the messenger's own making. Both texts are empty when there was none.
struct CheckedPicture {
    QString path;
    QString hash;  ///< SHA-1 of what came
};

/// The pictures of contacts that the plugin keeps as files: read apart from the program, and kept in the cache as PNG
/// files, one for each content. One is read at a time, and no content twice. What an earlier run has read is used
/// again.
class CheckedPictures : public QObject {
    Q_OBJECT

public:
    using Done = std::function<void(const CheckedPicture& picture)>;

    /// `reader` may be null: then there are no pictures. `cacheDirectory` ends in the separator, and is there when the
    /// first picture comes.
    CheckedPictures(PictureReader* reader, const QString& cacheDirectory, QObject* parent = nullptr);

    /// Takes the files of earlier runs that were used longest ago, where there are more than 5,000 or 256 MiB of them.
    /// Only while nobody has a picture.
    void tidy() const;

    /// Reads a file of the plugin's. None is: what does not lie in the plugin's folder, is too large, cannot be read as
    /// a picture, or is named by a SHA-1 that is not its own (its name is what somebody announced, its content what
    /// somebody sent). `done` may be called before this returns.
    void check(const QString& path, Done done);
    /// Takes the file of a picture that nobody has any more.
    void forget(const CheckedPicture& picture);

private:
    struct Waiting {
        QString path;
        Done done;
    };

    void next();
    void read(Waiting one);
    [[nodiscard]] QString fileFor(const QString& hash) const;
    [[nodiscard]] bool isKept(const QString& hash) const;
    [[nodiscard]] CheckedPicture keep(const QString& hash, const QByteArray& png) const;
    [[nodiscard]] QByteArray trusted(const QString& path) const;

    PictureReader* reader_;
    QString theirs_;  ///< the plugin's folder
    QString ours_;
    std::deque<Waiting> waiting_;
    bool reading_ = false;
};

}  // namespace oku
