// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QString>

namespace oku {

/// Where a system keeps its user's passwords. `done` is called once for each request, on the thread of the request, at
/// once or later; `error` is empty when it worked, and one line for the user when it did not. A key ring that is
/// destroyed calls nobody any more.
class KeyRing {
public:
    KeyRing() = default;
    virtual ~KeyRing() = default;
    KeyRing(const KeyRing&) = delete;
    KeyRing& operator=(const KeyRing&) = delete;

    virtual void read(const QString& account,
                      std::function<void(const QString& password, const QString& error)> done) = 0;
    virtual void write(const QString& account, const QString& password,
                       std::function<void(const QString& error)> done) = 0;
    /// One that is not there counts as removed.
    virtual void remove(const QString& account, std::function<void(const QString& error)> done) = 0;
};

/// The key ring of this user's session. Null when this program was built without one; where no session answers, its
/// requests fail.
std::shared_ptr<KeyRing> systemKeyRing();

}  // namespace oku
