// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include "messenger/terminal/screen/log_entry.h"

namespace oku::terminal {

/// Where a session shows itself.
class Display {
public:
    virtual ~Display() = default;
    /// An entry that the window which is seen shows.
    virtual void appended(const LogEntry& entry) = 0;
    /// Something else may look different now: status, title, prompt, window.
    virtual void changed() = 0;
    [[nodiscard]] virtual int columns() const = 0;
    /// Of the log; less where something stands beside it.
    [[nodiscard]] virtual int logColumns() const { return columns(); }
    /// What a list shows of this one, or of all, may be different now.
    virtual void contactTouched(const Peer&) {}
    virtual void contactsReset() {}
    /// The messenger is unloaded: the program ends.
    virtual void ended() = 0;
};

}  // namespace oku::terminal
