// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace oku {

/// A name from outside as it may be shown, and as a folder of its own may be called: without separators, control and
/// direction characters and dots in front. Never empty, never longer than a file system takes.
QString cleanFileName(const QString& name);

/// What the plugin's question about an offered file says.
struct OfferedFile {
    QString name;      ///< as the other side chose it
    qint64 size = -1;  ///< bytes; -1 when it is no number
    /// What the file may be called: a name may look like the rest of the question. None is longer than a file system
    /// takes.
    QStringList possibleNames;
};

/// Reads "Czy chcesz odebrać NAME (SIZEb) od SENDER?". No possible name when the question reads otherwise.
OfferedFile readOffer(const QString& question, const QString& sender);

}  // namespace oku
