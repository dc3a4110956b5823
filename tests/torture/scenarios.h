// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What an account goes through in its life, each part to be tortured by itself.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/torture/client.h"

namespace torture {

struct Scenario {
    const char* name;
    void (*prepare)(Client& client);
    void (*run)(Client& client);
};

extern const std::vector<Scenario> kScenarios;

std::string scenarioName(const testing::TestParamInfo<Scenario>& info);

}  // namespace torture
