// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/event_dispatcher.h"

#include <utility>

namespace protolink {

namespace {

constexpr std::size_t kShortestId = 2;

}  // namespace

void CProtoEventDispatcher::addHandler(Callback callback, const std::u16string& id, void* user) {
    entries_.emplace(id, Entry{nullptr, std::move(callback), user});
}

void CProtoEventDispatcher::addTarget(CXMLTarget& target, const std::u16string& id, void* user) {
    entries_.emplace(id, Entry{&target, nullptr, user});
}

bool CProtoEventDispatcher::dispatch(xmlElement& element) {
    const std::u16string_view id = element.GetAttribute(u"id");
    if (id.size() < kShortestId) return false;
    const auto oldest = entries_.lower_bound(id);
    if (oldest == entries_.end() || oldest->first != id) return false;
    // Unlinked before it is delivered: it fires once, and whoever it calls may change the registry.
    const Entry entry = std::move(oldest->second);
    entries_.erase(oldest);
    if (entry.target) entry.target->onXMLResult(element, entry.user);
    if (entry.callback) entry.callback(element, entry.user);
    return true;
}

void CProtoEventDispatcher::removeByUser(const void* user) {
    std::erase_if(entries_, [user](const auto& row) { return row.second.user == user; });
}

void CProtoEventDispatcher::removeByTarget(const CXMLTarget& target) {
    std::erase_if(entries_, [&target](const auto& row) { return row.second.target == &target; });
}

}  // namespace protolink
