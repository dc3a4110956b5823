// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>

#include "messenger/terminal/talk/chosen_account.h"
#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// How the list of contacts beside the log is seen. The chosen account remembers it.
class ContactView {
public:
    ContactView(const Desk& desk, const ChosenAccount& chosen) : desk_(desk), chosen_(chosen) {}

    /// Takes over what the account remembers.
    void read();
    /// Nothing: where the screen is wide.
    [[nodiscard]] const std::optional<bool>& shown() const { return shown_; }
    [[nodiscard]] bool reachableOnly() const { return reachableOnly_; }
    void setShown(bool shown);
    void setReachableOnly(bool only);

private:
    void keep(const char16_t* key, bool value);

    Desk desk_;
    const ChosenAccount& chosen_;
    std::optional<bool> shown_;
    bool reachableOnly_ = false;
};

}  // namespace oku::terminal
