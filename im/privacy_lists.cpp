// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "im/privacy_lists.h"

#include <algorithm>
#include <array>
#include <map>

#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

constexpr std::size_t kShortestRequestId = 4;
constexpr std::size_t kShortestValue = 3;

struct Denial {
    std::u16string_view name;
    bool PrivacyEntry::*flag;
};

/// What can be denied, in the order in which it stands in an item.
constexpr std::array<Denial, 4> kDenials{{
    {u"presence-out", &PrivacyEntry::presenceOut},
    {u"presence-in", &PrivacyEntry::presenceIn},
    {u"iq", &PrivacyEntry::iq},
    {u"message", &PrivacyEntry::message},
}};

std::u16string listElement(std::u16string_view name, std::u16string_view items) {
    return lutCPW(u"list", items, {{u"name", name}});
}

}  // namespace

void PrivacyLists::send(std::u16string_view content) {
    const std::u16string query = lutCPW(u"query", content, {{u"xmlns", ns::kPrivacy}});
    output_.sendText(lutCPW(u"iq", query, {{u"type", u"set"}, {u"id", generateId()}}));
}

void PrivacyLists::privacyUpdate(bool fetchFirst) {
    const std::u16string hideAll =
        lutCPW(u"item", lutCPW(u"presence-out", {}), {{u"action", u"deny"}, {u"order", u"1"}});
    send(listElement(kInvisibleList, hideAll));
    if (fetchFirst) {
        privacyFetch();
    } else {
        send(listElement(kBlockList, blockListItems()));
    }
}

std::u16string PrivacyLists::blockListItems() const {
    std::u16string items;
    std::size_t order = 0;
    for (const PrivacyEntry& entry : blockList_) {
        ++order;
        std::u16string denied;
        for (const Denial& denial : kDenials)
            if (entry.*denial.flag) denied += lutCPW(denial.name, {});
        // An entry that denies nothing keeps its number, so the list has a gap there.
        if (denied.empty()) continue;
        items += lutCPW(
            u"item", denied,
            {{u"type", u"jid"}, {u"value", entry.jid}, {u"action", u"deny"}, {u"order", formatText(u"%d", order)}});
    }
    items +=
        lutCPW(u"item", lutCPW(u"presence-out", {}), {{u"action", u"allow"}, {u"order", formatText(u"%d", order + 1)}});
    return items;
}

void PrivacyLists::privacyFetch() {
    privacyRequestId_ = generateId();
    const std::u16string query = lutCPW(u"query", listElement(kBlockList, {}), {{u"xmlns", ns::kPrivacy}});
    output_.sendText(lutCPW(u"iq", query, {{u"type", u"get"}, {u"id", privacyRequestId_}}));
}

Routing PrivacyLists::onPrivacyReply(const Stanza& stanza) {
    if (privacyRequestId_.size() < kShortestRequestId || stanza.id != privacyRequestId_) return Routing::Next;
    privacyListResult(stanza.element);
    privacyUpdate(false);
    return Routing::Done;
}

void PrivacyLists::privacyListResult(const xmlElement& element) {
    const xmlElement* query = element.GetChildPtr(u"query");
    const xmlElement* list = query ? query->GetChildPtr(u"list", u"name", kBlockList) : nullptr;
    if (!list) return;
    blockList_.clear();
    // The places of the entries, since a list may be long and a later item of the same value replaces the first.
    std::map<std::u16string_view, std::size_t> places;
    for (const xmlElement& item : list->children) {
        const std::u16string_view value = item.GetAttribute(u"value");
        if (value.size() < kShortestValue) continue;
        const auto [place, isNew] = places.emplace(value, blockList_.size());
        if (isNew) blockList_.push_back({std::u16string(value)});
        PrivacyEntry& entry = blockList_[place->second];
        for (const Denial& denial : kDenials) entry.*denial.flag = item.GetChildPtr(denial.name) != nullptr;
    }
}

void PrivacyLists::privacySetActive(std::u16string_view name) { send(lutCPW(u"active", {}, {{u"name", name}})); }

PrivacyEntry* PrivacyLists::privacyEntry(std::u16string_view jid, bool create) {
    const auto found = std::find_if(blockList_.begin(), blockList_.end(),
                                    [jid](const PrivacyEntry& entry) { return entry.jid == jid; });
    if (found != blockList_.end()) return &*found;
    if (!create) return nullptr;
    blockList_.push_back({std::u16string(jid)});
    return &blockList_.back();
}

}  // namespace protolink
