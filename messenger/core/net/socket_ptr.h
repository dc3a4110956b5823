// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QSslSocket>

namespace oku::net {

/// Qt may still be in the middle of an object's code when it is let go, so it is deleted from the event loop.
struct DeleteLater {
    void operator()(QObject* object) const {
        object->disconnect();
        object->deleteLater();
    }
};

using SocketPtr = std::unique_ptr<QSslSocket, DeleteLater>;

/// Closes the socket in its own time: what was written still goes out, for at most `grace` milliseconds. `parent`
/// keeps it meanwhile.
void lingerAndClose(SocketPtr socket, QObject* parent, int grace);

}  // namespace oku::net
