// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Files on their way, in words.
#pragma once

#include <QString>

#include "messenger/core/values/transfer.h"

namespace oku::terminal {

/// "512 B", "1.4 MiB"; a size that is not known has a word for that.
QString bytesText(qint64 bytes);
/// "0:07", "1:02:03".
QString durationText(qint64 seconds);
/// "[####····] 50%"; empty while the size is not known.
QString progressBar(const Transfer& transfer, int cells);
/// How far it is: bar, bytes, speed and time left, as far as they are known.
QString progressText(const Transfer& transfer, int cells);
/// What became of it, or how far it is.
QString transferStateText(const Transfer& transfer);
/// A row of the list. `name` is the contact's.
QString transferRow(const Transfer& transfer, const QString& name);

}  // namespace oku::terminal
