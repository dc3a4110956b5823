// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QTimer>

#include "messenger/core/messenger_face.h"
#include "messenger/terminal/screen/log_entry.h"

namespace oku::terminal {

/// Tells the other side of a conversation that one is typing, until one stops for a while.
class TypingSender : public QObject {
public:
    /// `pause`: milliseconds without a key after which nobody is typing any more.
    TypingSender(MessengerFace& messenger, int pause);

    /// A text for this one has changed.
    void typing(const Peer& peer);
    /// Nobody is typing, which is told where the other side thinks so.
    void stop();
    /// The message itself ended the typing: nothing is told.
    void forget();

private:
    [[nodiscard]] bool wantedBy(const QString& account) const;

    MessengerFace& messenger_;
    Peer to_;  ///< who was told that we are typing
    QTimer pause_;
};

}  // namespace oku::terminal
