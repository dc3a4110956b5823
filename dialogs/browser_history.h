// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What was browsed before.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace protolink {

/// Texts in the order in which they were first used.
class BrowserHistory {
public:
    /// False when it is known already.
    bool add(const std::u16string& text) {
        if (!known_.insert(text).second) return false;
        items_.push_back(text);
        return true;
    }
    const std::vector<std::u16string>& items() const { return items_; }

private:
    std::vector<std::u16string> items_;
    std::set<std::u16string> known_;
};

}  // namespace protolink
