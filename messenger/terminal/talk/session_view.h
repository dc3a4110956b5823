// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <vector>

#include "messenger/core/values/account.h"
#include "messenger/terminal/screen/log_entry.h"

namespace oku::terminal {

class Session;

/// What a session's display shows around the log.
class SessionView {
public:
    explicit SessionView(const Session& session) : session_(session) {}

    [[nodiscard]] LogLayout layout() const;
    [[nodiscard]] Line title() const;
    [[nodiscard]] Line status() const;
    [[nodiscard]] QString prompt() const;

private:
    /// How much of itself the status line shows.
    struct StatusLineKind {
        bool words = true;       ///< of the own status, beside its mark
        bool allWindows = true;  ///< not only those that matter now
        int nameColumns = 12;
        bool wholeAddress = true;
    };
    [[nodiscard]] Line statusLine(const StatusLineKind& kind) const;
    [[nodiscard]] Span ownState(const StatusLineKind& kind) const;
    [[nodiscard]] Line windowNames(const StatusLineKind& kind) const;
    /// Of the conversations that can stand there, in order: no more than the line has columns.
    [[nodiscard]] std::vector<int> numbersInBar(bool all) const;
    /// Of the log.
    [[nodiscard]] int columns() const;

    const Session& session_;
};

}  // namespace oku::terminal
