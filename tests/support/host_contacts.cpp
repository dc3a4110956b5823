// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The contact list of the host, and what contacts do.
#include <algorithm>

#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

std::string contactKey(std::uint32_t net, const std::string& jid) { return std::to_string(net) + " " + jid; }

OKU_WORD contactAdd(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto key = contactKey(peek<std::uint32_t>(recordAt(param), 40), textAt(param, 24));
    const auto known = std::find_if(host.contacts.begin(), host.contacts.end(),
                                    [&](const auto& entry) { return entry.second == key; });
    const auto handle = known == host.contacts.end() ? ++host.nextHandle : known->first;
    host.contacts[handle] = key;
    poke(reinterpret_cast<void*>(param), 88, handle);
    return handle;
}

OKU_WORD contactIcon(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    if (!host.contacts.count(param)) host.complainDead("an icon of a dead contact");
    return 1;
}

OKU_WORD contactFind(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto key = contactKey(peek<std::uint32_t>(recordAt(param), 32), textAt(param, 16));
    const auto found = std::find_if(host.contacts.begin(), host.contacts.end(),
                                    [&](const auto& entry) { return entry.second == key; });
    return found == host.contacts.end() ? 0 : found->first;
}

/// The contact's identity has no size of its own where it lies inside the record of an added contact.
OKU_WORD tellFind(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const bool whole = param && peek<std::uint32_t>(recordAt(param), 0) != 0;
    const RecordLayout& layout = whole ? layouts::kContact : layouts::kContactIdentity;
    Line line{"call OKU/CTL/FndContact", readRecord(layout, recordAt(param), host.context()), {}, {}};
    const auto answer = host.scripted("OKU/CTL/FndContact");
    host.plain(std::move(line));
    return answer ? *answer : contactFind(host, param, 0);
}

OKU_WORD contactDelete(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    if (host.contacts.erase(param) == 0) host.complainDead("OKU/CTL/DelContact of a dead contact");
    return 1;
}

OKU_WORD contactsClear(RecordingHost& host, OKU_WORD, OKU_WORD extra) {
    std::erase_if(host.contacts,
                  [&](const auto& entry) { return startsWith(entry.second, std::to_string(extra) + " "); });
    return 1;
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"OKU/CTL/EnableDrawing", {K::Number, "on"}, {}, nothing},
    {"OKU/CTL/DeleteAll", {K::Class, "class"}, {K::Net, "net"}, contactsClear},
    {"OKU/CTL/SetAllOffline", {K::Class, "class"}, {K::Net, "net"}, nothing},
    {"OKU/CTL/AddContact", {K::Record, "", &layouts::kContactAdd}, {}, contactAdd},
    {"OKU/CTL/AddContactIcon", {K::Contact, "contact"}, {K::Record, "", &layouts::kContactIcon}, contactIcon},
    {"OKU/CTL/DelContactIcon", {K::Contact, "contact"}, {K::Record, "", &layouts::kContactIcon}, contactIcon},
    {.name = "OKU/CTL/FndContact", .tellAndAct = tellFind},
    {"OKU/CTL/DelContact", {K::Contact, "contact"}, {}, contactDelete},
    {"OKU/CTL/SetContactState", {K::Record, "", &layouts::kContactState}, {}, nothing},
    {"OKU/CTL/SetAvatar", {K::Record, "", &layouts::kContactAvatar}, {}, nothing},
    {"OKU/PFTNSet", {K::Record, "", &layouts::kContact}, {K::Number, "composing"}, nothing},
    {"OKU/PFAskForAuth", {K::Record, "", &layouts::kContact}, {}, nothing},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> contactServices() { return kRows; }

}  // namespace harness
