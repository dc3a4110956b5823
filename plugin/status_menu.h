// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The status menu, the status window and the host's own status service: the three ways in which a person chooses a
// status.
#pragma once

#include "plugin/client_class.h"

namespace protolink {

class StatusMenu {
public:
    explicit StatusMenu(CClientClass& client) : client_(client) {}

    /// Adds the account's items to the host's menu.
    void add(const AccountEntries& entries) const;

    // What the host calls back.
    OKU_WORD onStatusMenu(OKU_WORD menuEvent);
    OKU_WORD onStatusWindow();
    OKU_WORD onStatusResult(OKU_WORD windowEvent);
    OKU_WORD onStatusSet(OKU_WORD statusRecord);

private:
    CClientClass& client_;
};

}  // namespace protolink
