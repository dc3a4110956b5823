// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace oku {

class HistoryFile;

/// Takes over into a new history what can still be read of a damaged one; returns how many messages that was.
qint64 salvageHistory(const QString& damaged, HistoryFile& into);

}  // namespace oku
