// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QString>
#include <QStringList>

namespace oku {

/// Where a received file goes.
struct ReceivedFolder {
    QString path;    ///< ends in the separator; empty when there is none
    QString reason;  ///< why there is none
};

/// The folder that `pattern` (the setting "XMPP/SI/Path") names: %documents% stands for the user's folder of documents,
/// %from% for the sender, who cannot lead out of the folder. A pattern that begins elsewhere than at the root begins in
/// the documents. Makes nothing.
QString expandedFolder(const QString& pattern, const QString& documents, const QString& sender);

/// Makes the folder, for its user only, and gives it. Where a file of one of the names is there, or `taken` says that
/// one is on its way there, a folder of its own inside it.
ReceivedFolder makeReceivedFolder(const QString& folder, const QStringList& names,
                                  const std::function<bool(const QString& path)>& taken);

}  // namespace oku
