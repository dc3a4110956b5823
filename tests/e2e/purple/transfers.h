// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <purple.h>

#include <map>
#include <memory>
#include <string>

/// Files that come and go. Each has a number, in the order in which they began; events tell what becomes of it:
///
/// - `offered` (number, from, name, size): a file is waiting for accept() or refuse()
/// - `sending` (number, to, path): an own offer has begun
/// - `started`, `moved` (number, bytes): the stream is open; bytes have gone over it
/// - `ended` (number, how, bytes): `complete`, `cancelled` by this side or `stopped` by the other; the file is closed
class Transfers {
public:
    /// Libpurple is running. There is one object of this class, which lives as long as that.
    Transfers();

    /// All give false for a number that there is not.
    bool accept(int number, const std::string& path);
    bool refuse(int number);
    bool cancel(int number);
    /// Offers a file to a full JID. A file that libpurple does not take is told by an event `trouble`.
    void send(PurpleConnection* connection, const std::string& to, const std::string& path);

private:
    struct Release {
        void operator()(PurpleXfer* transfer) const { purple_xfer_unref(transfer); }
    };
    using Held = std::unique_ptr<PurpleXfer, Release>;

    static void onMoved(PurpleXfer* transfer, double portion);
    static void onCancelled(PurpleXfer* transfer);
    static void onStopped(PurpleXfer* transfer);
    static void onOffered(PurpleXfer* transfer, Transfers* self);
    static void onStarted(PurpleXfer* transfer, Transfers* self);
    static void onComplete(PurpleXfer* transfer, Transfers* self);

    static Transfers& of(const PurpleXfer* transfer);

    /// Gives it a number; libpurple must not forget it while it has one.
    int hold(PurpleXfer* transfer);
    [[nodiscard]] PurpleXfer* find(int number) const;
    [[nodiscard]] int numberOf(const PurpleXfer* transfer) const;
    void tellEndLater(PurpleXfer* transfer, const char* how) const;

    PurpleXferUiOps operations_{};
    std::map<int, Held> held_;
};
