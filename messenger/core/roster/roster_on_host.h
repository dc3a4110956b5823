// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/roster/roster_face.h"

namespace oku {

class Accounts;
class Authorizations;
class ContactService;
class InfoRequests;
class RosterCommands;

struct RosterParts {
    Accounts& accounts;
    ContactService& contacts;
    RosterCommands& commands;
    Authorizations& authorizations;
    InfoRequests& info;
};

/// The roster's face on the host's parts, which must outlive it. Who knows when a list is complete has to tell that.
std::unique_ptr<RosterFace> rosterOnHost(const RosterParts& parts);

}  // namespace oku
