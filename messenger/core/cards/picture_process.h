// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "messenger/core/cards/picture_reader.h"

namespace oku {

/// Has pictures read by the program oku-picture, a process for each. One that crashes, gives something else than such a
/// PNG, or takes too long, has read no picture.
class PictureProcess final : public QObject, public PictureReader {
    Q_OBJECT

public:
    /// `patience`: milliseconds after which a process is killed.
    explicit PictureProcess(QString program, int patience = 20'000, QObject* parent = nullptr);
    ~PictureProcess() override;

    void read(const QByteArray& content, Done done) override;

private:
    class Reading;

    QString program_;
    int patience_;
};

/// Where the program is, for a messenger whose own program lies in this folder: beside it, or where an installation
/// puts it. Empty when it is nowhere.
QString findPictureProgram(const QString& programDir);

}  // namespace oku
