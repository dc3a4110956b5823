// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QObject>
#include <QSet>
#include <QTimer>

namespace oku {

class Accounts;
class Passwords;
class SocketBridge;
class StatusChoices;

/// Takes all accounts offline in good order, before the plugin is unloaded. The servers get the time to close their
/// streams, so that what was sent last is known to have arrived, and the key ring that to keep what it was given.
class SignOff : public QObject {
    Q_OBJECT

public:
    SignOff(Accounts& accounts, StatusChoices& choices, SocketBridge& sockets, Passwords& passwords,
            QObject* parent = nullptr);

    /// Calls `then` from the event loop when all is done, at the latest after 3 s. What an earlier call was to be
    /// followed by is dropped.
    void start(std::function<void()> then);

private:
    /// Something is still under way.
    [[nodiscard]] bool lingers() const;
    void goOn();

    Accounts& accounts_;
    StatusChoices& choices_;
    Passwords& passwords_;
    QSet<QString> leaving_;  ///< keys of accounts whose server has not closed yet
    QTimer patience_;
    std::function<void()> then_;
};

}  // namespace oku
