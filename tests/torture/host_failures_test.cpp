// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A host that fails: in each scenario every call of the host answers 0 once, and the plugin has to live on.
#include <gtest/gtest.h>

#include "tests/torture/scenarios.h"

namespace torture {
namespace {

class HostFailures : public testing::TestWithParam<Scenario> {};

std::size_t callsOf(const Scenario& scenario) {
    Client client;
    scenario.prepare(client);
    const std::size_t before = client.host.calls;
    scenario.run(client);
    return client.host.calls - before;
}

TEST_P(HostFailures, EachCallAnswersZeroOnce) {
    const Scenario& scenario = GetParam();
    const std::size_t calls = callsOf(scenario);
    ASSERT_GT(calls, 5u);
    for (std::size_t failing = 0; failing < calls; ++failing) {
        Client client;
        scenario.prepare(client);
        const std::size_t wanted = client.host.calls + failing;
        std::string failed;
        bool tookBack = false;
        client.host.before = [&](const Call& call) -> std::optional<OKU_WORD> {
            if (call.index != wanted) return std::nullopt;
            failed = narrow(call.name);
            tookBack = call.takesBack();
            return 0;
        };
        scenario.run(client);
        client.host.before = nullptr;
        SCOPED_TRACE("call " + std::to_string(failing) + ", " + failed);
        EXPECT_FALSE(failed.empty());
        client.pass(120'000);
        if (client.loaded()) client.unload();
        // What the host itself did not take back stays; whoever calls it reaches nobody.
        EXPECT_TRUE(tookBack || client.host.leftovers().empty()) << client.host.leftovers();
        client.pass(120'000);
        client.logIn();
        EXPECT_TRUE(client.passUntilReady(60));
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(, HostFailures, testing::ValuesIn(kScenarios), scenarioName);

}  // namespace
}  // namespace torture
