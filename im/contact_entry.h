// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What an account knows of its contacts while it runs.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/status.h"

namespace protolink {

/// One online resource of a roster contact.
struct ResourceEntry {
    std::u16string resource;
    Status status = Status::Online;
    std::int64_t lastChange = 0;  // seconds since the epoch of the last presence
    std::u16string description;
    // What the resource's client can do, as far as it told.
    std::uint32_t resChatStates = 0;
    std::uint32_t resCaps = 0;
    std::uint32_t resPing = 0;
    std::uint32_t resDiscoDone = 0;
    std::uint32_t resFileTransfer = 0;
    std::u16string resCapsVer;
};

/// A contact's online resources in order of first appearance, found by name without a walk however many there are.
class ResourceList {
public:
    ResourceList() = default;
    ResourceList(ResourceList&&) = default;
    ResourceList& operator=(ResourceList&&) = default;

    /// The resource of exactly that name, or null. Valid until it is erased.
    ResourceEntry* find(std::u16string_view name);
    /// Puts a resource of a new name behind the others.
    ResourceEntry& append(ResourceEntry resource);
    void erase(std::u16string_view name);

    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

private:
    std::list<ResourceEntry> entries_;
    std::map<std::u16string_view, std::list<ResourceEntry>::iterator> places_;  // the keys lie in the entries
};

struct ContactEntry {
    std::u16string jid;   // bare JID in lower case; empty for somebody who is not on the roster
    std::u16string auth;  // the server's subscription, or "wait"
    std::u16string group;
    std::u16string name;
    ResourceList resources;
    std::u16string lastResource;  // of the last message received
};

/// The account's contacts by bare JID. Looking up an unknown one makes an empty entry.
class Contacts {
public:
    /// Valid until `clear`.
    ContactEntry& entry(std::u16string_view jid);
    /// The entry of an exactly so written JID, or null; makes none. Valid until `clear`.
    const ContactEntry* find(std::u16string_view jid) const;
    /// What the contact is called: its name, or the bare JID of somebody without one. Makes no entry.
    std::u16string displayName(std::u16string_view jid) const;
    /// The resource of that exact name, or null. Valid until it goes.
    ResourceEntry* findResource(std::u16string_view jid, std::u16string_view resource);
    void clear() { entries_.clear(); }
    /// All entries, ordered by their key.
    std::vector<const ContactEntry*> inOrder() const;

private:
    // In order, as strangers choose the keys: chosen ones could all meet in one bucket of a hash table.
    std::map<std::u16string, ContactEntry, std::less<>> entries_;
};

}  // namespace protolink
