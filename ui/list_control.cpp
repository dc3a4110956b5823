// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "ui/list_control.h"

#include <algorithm>
#include <utility>

namespace protolink {

void CUITreeNode::addDataField(std::u16string_view key, std::u16string_view label, bool hidden,
                               std::u16string_view value) {
    const auto same =
        std::find_if(fields_.begin(), fields_.end(), [key](const Field& field) { return field.key == key; });
    if (same != fields_.end()) {
        same->value = value;
    } else {
        fields_.push_back({std::u16string(key), std::u16string(label), std::u16string(value), hidden});
    }
}

const CUITreeNode::Field* CUITreeNode::find(std::u16string_view key) const {
    const auto found =
        std::find_if(fields_.begin(), fields_.end(), [key](const Field& field) { return field.key == key; });
    return found == fields_.end() ? nullptr : &*found;
}

std::u16string_view CUITreeNode::getDataValue(std::u16string_view key) const {
    const Field* const field = find(key);
    return field ? std::u16string_view(field->value) : std::u16string_view();
}

ListRow CUITreeNode::shown() const {
    ListRow row{.number = number_, .text = text_, .fields = {}};
    for (const Field& field : fields_) {
        if (!field.hidden) row.fields.emplace_back(field.label, field.value);
    }
    return row;
}

void CUIListCtrl::InsertItem(WindowView& view, std::u16string_view key, CUITreeNode node) {
    node.number_ = first_ + nodes_.size();
    CUITreeNode& kept = nodes_.emplace_back(std::move(node));
    byKey_.emplace(key, &kept);
    view.setRow(control_, kept.shown());
}

CUITreeNode* CUIListCtrl::FindItem(std::u16string_view key) {
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
}

CUITreeNode* CUIListCtrl::FindRow(std::int64_t number) {
    const auto wanted = static_cast<std::uint64_t>(number);
    return wanted >= first_ && wanted - first_ < nodes_.size() ? &nodes_[wanted - first_] : nullptr;
}

CUITreeNode* CUIListCtrl::GetFirstSelected(WindowView& view) {
    return FindRow(static_cast<std::int64_t>(view.selectedRow(control_)));
}

void CUIListCtrl::RedrawItem(WindowView& view, const CUITreeNode& node) { view.setRow(control_, node.shown()); }

void CUIListCtrl::Forget() {
    first_ += nodes_.size();
    byKey_.clear();
    nodes_.clear();
}

void CUIListCtrl::DeleteAll(WindowView& view) {
    Forget();
    view.clearRows(control_);
}

}  // namespace protolink
