// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The three functions that the library exports.
#pragma once

#include "host/oku/table.h"

#if defined(_WIN32)
#define PROTOLINK_EXPORT __declspec(dllexport)
#else
#define PROTOLINK_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

/// The static description of the plugin; no side effect, may be called at any time.
PROTOLINK_EXPORT const OKU_PLUGIN_INFO* OKU_CALL queryPlugInfo(void);

/// Loads the plugin: registers what is common to all accounts and makes an account for each settings file. Always 0.
PROTOLINK_EXPORT OKU_WORD OKU_CALL pluginLoad(OKU_WORD module, const OKU_FUNCTION_TABLE* table);

/// Ends all accounts and takes back what they registered. Always 0.
PROTOLINK_EXPORT OKU_WORD OKU_CALL pluginUnload(void);
}
