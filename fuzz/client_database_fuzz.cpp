// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Any bytes as the file of what clients can do: loaded, added to, saved, and found again.
#include <string>

#include "fuzz/input.h"
#include "host/util/utf.h"
#include "profile/client_database.h"
#include "tests/support/fake_platform.h"

using namespace protolink;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr char kFile[] = "/d/XMPPClientDB.xml";
    fuzz::Input input(data, size);
    const std::u16string hash = utow(input.text());
    harness::world() = harness::FakeWorld();
    const std::string file(input.rest());
    if (fuzz::holdsNoCharacter(file)) return 0;
    harness::world().files[kFile] = file;
    CClientDatabase database;
    database.load(u"/d/");
    const xmlElement* known = database.find(hash);
    const std::u16string before = known ? known->GetXML(0) : std::u16string();
    xmlElement query(u"query");
    query.SetAttribute(u"node", hash);
    database.add(query, hash);
    const xmlElement* found = database.find(hash);
    fuzz::require(found != nullptr, "what was added is not found");
    fuzz::require(before.empty() || found->GetXML(0) == before, "the first answer for a hash is not kept");
    database.save(u"/d/");
    const std::string once = harness::world().files[kFile];
    CClientDatabase again;
    again.load(u"/d/");
    again.save(u"/d/");
    fuzz::require(harness::world().files[kFile] == once, "a file that was saved changes when it is loaded");
    return 0;
}
