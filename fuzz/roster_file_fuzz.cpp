// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Any bytes as the file that keeps the contacts: loaded, saved, and what was saved stays the same from then on.
#include <string>

#include "fuzz/input.h"
#include "tests/support/fake_platform.h"
#include "tests/torture/client.h"

namespace {

constexpr char kFile[] = "/profile/protoLink.roster";

/// What a session without a connection makes of the file.
std::string afterASession(const std::string& content) {
    torture::Client client;
    harness::world().files[kFile] = content;
    client.load();
    client.unload();
    fuzz::require(client.host.leftovers().empty(), "something is left after unloading");
    return harness::world().files[kFile];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file(reinterpret_cast<const char*>(data), size);
    if (fuzz::holdsNoCharacter(file)) return 0;
    const std::string once = afterASession(file);
    fuzz::require(once.starts_with("<roster"), "the saved file is no roster");
    fuzz::require(afterASession(once) == once, "a file that was saved changes when it is loaded");
    return 0;
}
