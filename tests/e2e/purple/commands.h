// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "person.h"
#include "transfers.h"

/// What the program can be told, one command a line: a name and its arguments, quoted as for a shell.
class Commands {
public:
    /// Does what the line says. Then an event `ok` (given), or `refused` (given, reason), tells that, with the number
    /// of the commands given so far.
    void run(const std::string& line);

private:
    void execute(const std::vector<std::string>& words);

    Person person_;
    Transfers transfers_;
    std::uint64_t given_ = 0;
};
