// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the user reads when something needs a connection.
#pragma once

#include "host/services/message_boxes.h"

namespace protolink {

/// `owner` is the window's handle. Returns when the user has read it.
inline void warnOffline(const Host& host, OKU_WORD owner) {
    MessageBoxes(host).show(u"Nie jesteś połączony z siecią, nie można wykonać.", u"Brak połączenia", BoxStyle::Warning,
                            owner);
}

}  // namespace protolink
