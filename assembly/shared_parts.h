// What all accounts share above the plugin's frame.
#pragma once

#include "plugin/own_presentation.h"
#include "profile/client_database.h"

namespace protolink {

/// Made anew by each load of the plugin, and handed to whoever needs something of it.
struct SharedParts {
    CClientDatabase clientDb;
    OwnPresentation own;
};

}  // namespace protolink
