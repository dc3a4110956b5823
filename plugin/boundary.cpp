// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/boundary.h"

#include <utility>
#include <vector>

#include "host/util/utf.h"
#include "plugin/plugin_state.h"

namespace protolink {

namespace {

int g_callDepth = 0;
std::vector<std::shared_ptr<void>> g_released;

}  // namespace

PluginCall::PluginCall() noexcept { ++g_callDepth; }

PluginCall::~PluginCall() {
    if (--g_callDepth > 0) return;
    // What is destroyed here may hand over further objects.
    while (!g_released.empty()) std::exchange(g_released, {}).clear();
}

void releaseAfterCall(std::shared_ptr<void> object) {
    if (g_callDepth > 0) g_released.push_back(std::move(object));
}

void reportException(const char* what) noexcept {
    try {
        pluginHost().log(LogLevel::Error, tag::kGeneral, u"ERROR: call abandoned: " + utow(what));
    } catch (...) {
        // Without memory for the line there is nothing left to tell.
        return;
    }
}

}  // namespace protolink
