// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "platform/linux/curl_library.h"

#include <dlfcn.h>

namespace {

/// The interface that the header describes; it has had this number since 2006.
constexpr char kName[] = "libcurl.so.4";

}  // namespace

CurlLibrary::Symbol CurlLibrary::symbol(const char* name) {
    void* const address = handle_ ? dlsym(handle_, name) : nullptr;
    complete_ = complete_ && address;
    return {address};
}

const CurlLibrary* CurlLibrary::get() {
    static const CurlLibrary library(dlopen(kName, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE));
    static const bool ready = library.complete() && library.globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready ? &library : nullptr;
}
