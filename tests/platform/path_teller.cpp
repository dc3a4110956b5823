// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A library that tells its own path, as the plugin finds it.
#include "host/util/utf.h"
#include "platform/platform.h"

extern "C" __attribute__((visibility("default"))) const char* tellPath() {
    static std::string path;
    path = wtou(platform::modulePath());
    return path.c_str();
}
