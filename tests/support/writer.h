// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Writes what happened at the host's boundary as a transcript that can be played again.
#pragma once

#include <string>
#include <vector>

#include "tests/support/player.h"

namespace harness {

/// The journal as a transcript. The ids that the plugin chose become captured values where they are first sent, and
/// wherever they come back.
std::string writeTranscript(const std::vector<JournalEntry>& journal);

}  // namespace harness
