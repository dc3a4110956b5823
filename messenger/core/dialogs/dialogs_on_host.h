// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/dialogs/dialogs_face.h"

namespace oku {

class Accounts;
class DialogInput;
class DialogWindows;
class HostPages;

struct DialogParts {
    Accounts& accounts;
    DialogWindows& windows;
    DialogInput& input;
    HostPages& pages;
};

/// The face of the plugin's windows on the host's parts, which must outlive it.
std::unique_ptr<DialogsFace> dialogsOnHost(const DialogParts& parts);

}  // namespace oku
