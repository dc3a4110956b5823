// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Received text of every awkward shape, of about a wanted length.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace torture {

struct Shape {
    const char* name;
    std::function<std::string(std::size_t length)> make;
};

const std::vector<Shape>& shapes();

}  // namespace torture
