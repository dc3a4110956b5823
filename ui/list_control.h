// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A list of rows with labelled fields, and keys of the plugin's own.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "ui/window_view.h"

namespace protolink {

/// A row: what it is called, what is known of it, and how much of that is shown.
class CUITreeNode {
public:
    explicit CUITreeNode(std::u16string text) : text_(std::move(text)) {}

    void setText(std::u16string text) { text_ = std::move(text); }
    /// A field that is there already gets the new value. A hidden one is for the plugin alone.
    void addDataField(std::u16string_view key, std::u16string_view label, bool hidden, std::u16string_view value = {});
    /// Empty when there is no such field.
    std::u16string_view getDataValue(std::u16string_view key) const;
    bool hasDataField(std::u16string_view key) const { return find(key) != nullptr; }

private:
    friend class CUIListCtrl;
    struct Field {
        std::u16string key;
        std::u16string label;
        std::u16string value;
        bool hidden;
    };

    const Field* find(std::u16string_view key) const;
    ListRow shown() const;

    std::uint64_t number_ = 0;
    std::u16string text_;
    std::vector<Field> fields_;  // a handful
};

/// The rows are the plugin's; the view shows a copy of them. Finding one costs the same little among any number.
class CUIListCtrl {
public:
    explicit CUIListCtrl(std::uint32_t control) : control_(control) {}

    /// Adds a row at the end and shows it. Of two rows under one key the first is the one that is found.
    void InsertItem(WindowView& view, std::u16string_view key, CUITreeNode node);
    /// Null when there is none. Valid until the list is emptied.
    CUITreeNode* FindItem(std::u16string_view key);
    /// The row that an event named; null when it has gone.
    CUITreeNode* FindRow(std::int64_t number);
    CUITreeNode* GetFirstSelected(WindowView& view);
    /// Shows what has become of a row.
    void RedrawItem(WindowView& view, const CUITreeNode& node);
    void DeleteAll(WindowView& view);
    /// The same where the window that showed the rows has gone.
    void Forget();

private:
    std::uint32_t control_;
    std::deque<CUITreeNode> nodes_;
    std::map<std::u16string, CUITreeNode*, std::less<>> byKey_;
    std::uint64_t first_ = 1;  // the number of the first row; no number is given twice
};

}  // namespace protolink
