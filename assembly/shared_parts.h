// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What all accounts share above the plugin's frame.
#pragma once

#include <memory>

#include "dialogs/browser.h"
#include "host/services/directories.h"
#include "plugin/own_presentation.h"
#include "profile/avatar_cache.h"
#include "profile/client_database.h"
#include "ui/host_windows.h"

namespace protolink {

/// Made anew by each load of the plugin, and handed to whoever needs something of it.
struct SharedParts {
    explicit SharedParts(const Host& host) : windows(host) {}

    CClientDatabase clientDb;
    OwnPresentation own;
    OKU_WORD pepEvent = 0;    // the host's handle of the event that offers personal events to other plugins
    Directories directories;  // empty until the host was asked for them
    AvatarCache avatars;
    HostWindows windows;
    DialogAccounts dialogAccounts;
    std::shared_ptr<CWndBrowser> browser;  // null until the user opens it
};

}  // namespace protolink
