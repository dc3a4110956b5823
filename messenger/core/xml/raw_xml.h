// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace oku {

/// Why a text that the user wrote cannot be sent on a stream; empty when it can. It must be one or more whole elements
/// that a server takes there: anything else would make it end the stream.
QString rawXmlFault(const QString& xml);

}  // namespace oku
