// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// libcurl, loaded when something is fetched for the first time: with all that it stands on it takes as long to load as
// the rest of a messenger, and most runs fetch nothing.
#pragma once

#include <curl/curl.h>

/// What is used of the library; the functions are null when it is not `complete`.
class CurlLibrary {
    /// Becomes the function of whatever type it is kept as.
    struct Symbol {
        void* address;
        template <typename Function>
        operator Function*() const {
            return reinterpret_cast<Function*>(address);
        }
    };

    void* const handle_;
    bool complete_ = handle_ != nullptr;

    Symbol symbol(const char* name);

public:
    /// `handle` comes from dlopen; null is a library that is not there.
    explicit CurlLibrary(void* handle) : handle_(handle) {}

    /// Loads it, and tells it of its first use, once. It stays in memory: a look-up of a name that nobody waits for any
    /// more runs in it until the system answers, and this module may be unloaded before. Null when the system has none.
    static const CurlLibrary* get();

    bool complete() const { return complete_; }

    const decltype(&curl_global_init) globalInit = symbol("curl_global_init");
    const decltype(&curl_free) free = symbol("curl_free");
    const decltype(&curl_slist_append) listAppend = symbol("curl_slist_append");
    const decltype(&curl_slist_free_all) listFree = symbol("curl_slist_free_all");

    const decltype(&curl_easy_init) easyInit = symbol("curl_easy_init");
    const decltype(&curl_easy_cleanup) easyCleanup = symbol("curl_easy_cleanup");
    const decltype(&curl_easy_setopt) easySet = symbol("curl_easy_setopt");
    const decltype(&curl_easy_getinfo) easyGet = symbol("curl_easy_getinfo");

    const decltype(&curl_multi_init) multiInit = symbol("curl_multi_init");
    const decltype(&curl_multi_cleanup) multiCleanup = symbol("curl_multi_cleanup");
    const decltype(&curl_multi_add_handle) multiAdd = symbol("curl_multi_add_handle");
    const decltype(&curl_multi_remove_handle) multiRemove = symbol("curl_multi_remove_handle");
    const decltype(&curl_multi_perform) multiPerform = symbol("curl_multi_perform");
    const decltype(&curl_multi_poll) multiPoll = symbol("curl_multi_poll");
    const decltype(&curl_multi_wakeup) multiWakeup = symbol("curl_multi_wakeup");

    const decltype(&curl_url) url = symbol("curl_url");
    const decltype(&curl_url_cleanup) urlCleanup = symbol("curl_url_cleanup");
    const decltype(&curl_url_set) urlSet = symbol("curl_url_set");
    const decltype(&curl_url_get) urlGet = symbol("curl_url_get");
};

/// The library, for whoever knows that it is there.
inline const CurlLibrary& curl() { return *CurlLibrary::get(); }
