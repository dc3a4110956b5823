// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "im/contact_entry.h"

#include <utility>

namespace protolink {

ResourceEntry* ResourceList::find(std::u16string_view name) {
    const auto place = places_.find(name);
    return place == places_.end() ? nullptr : &*place->second;
}

ResourceEntry& ResourceList::append(ResourceEntry resource) {
    const auto added = entries_.insert(entries_.end(), std::move(resource));
    places_.emplace(added->resource, added);
    return *added;
}

void ResourceList::erase(std::u16string_view name) {
    const auto place = places_.find(name);
    if (place == places_.end()) return;
    const auto entry = place->second;
    places_.erase(place);
    entries_.erase(entry);
}

ContactEntry& Contacts::entry(std::u16string_view jid) {
    const auto found = entries_.find(jid);
    if (found != entries_.end()) return found->second;
    return entries_.emplace(std::u16string(jid), ContactEntry()).first->second;
}

const ContactEntry* Contacts::find(std::u16string_view jid) const {
    const auto found = entries_.find(jid);
    return found == entries_.end() ? nullptr : &found->second;
}

std::u16string Contacts::displayName(std::u16string_view jid) const {
    const ContactEntry* const found = find(jid);
    return !found || found->name.empty() ? std::u16string(jid) : found->name;
}

ResourceEntry* Contacts::findResource(std::u16string_view jid, std::u16string_view resource) {
    return entry(jid).resources.find(resource);
}

std::vector<const ContactEntry*> Contacts::inOrder() const {
    std::vector<const ContactEntry*> ordered;
    ordered.reserve(entries_.size());
    for (const auto& [jid, entry] : entries_) ordered.push_back(&entry);
    return ordered;
}

}  // namespace protolink
