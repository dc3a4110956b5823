// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A library that comes when it is needed, or does not.
#include "platform/linux/curl_library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

TEST(CurlLibrary, StaysWhereItIs) {
    ASSERT_TRUE(CurlLibrary::get());
    void* const handle = dlopen("libcurl.so.4", RTLD_NOW | RTLD_NOLOAD);
    ASSERT_TRUE(handle);
    dlclose(handle);
    EXPECT_EQ(dlclose(handle), 0);
    EXPECT_EQ(dlopen("libcurl.so.4", RTLD_NOW | RTLD_NOLOAD), handle);
    dlclose(handle);
}

TEST(CurlLibrary, IsNotThereWithoutOneOfItsFunctions) {
    EXPECT_FALSE(CurlLibrary(nullptr).complete());
    void* const other = dlopen("libc.so.6", RTLD_NOW);
    ASSERT_TRUE(other);
    const CurlLibrary library(other);
    EXPECT_FALSE(library.complete());
    EXPECT_FALSE(library.multiPoll);
    dlclose(other);
}

}  // namespace
