// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Memory that runs out: in each scenario every allocation of the plugin fails once, and the host has to live on.
#include <gtest/gtest.h>

#include "tests/torture/allocations.h"
#include "tests/torture/scenarios.h"

namespace torture {
namespace {

class Memory : public testing::TestWithParam<Scenario> {};

TEST_P(Memory, EachAllocationFailsOnce) {
    const Scenario& scenario = GetParam();
    bool reached = true;
    std::size_t failing = 0;
    for (; reached; ++failing) {
        SCOPED_TRACE("allocation " + std::to_string(failing));
        Client client;
        scenario.prepare(client);
        {
            const FailingAllocation failure(failing);
            scenario.run(client);
            reached = failure.count() > failing;
        }
        client.pass(120'000);
        if (client.loaded()) client.unload();
        EXPECT_EQ(client.host.leftovers(), "");
        client.logIn();
        EXPECT_TRUE(client.passUntilReady(60));
        if (HasFailure()) return;
    }
    EXPECT_GT(failing, 10u);
}

INSTANTIATE_TEST_SUITE_P(, Memory, testing::ValuesIn(kScenarios), scenarioName);

}  // namespace
}  // namespace torture
