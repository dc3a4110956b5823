// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/open_elements.h"

#include <algorithm>

namespace protolink {

namespace {

/// As many attributes are compared with each other; more are looked up.
constexpr std::size_t kFewAttributes = 16;
/// Elements that stanzas rarely exceed: as many leave their room to the next text.
constexpr std::size_t kFewLevels = 16;

}  // namespace

void OpenElements::push(NamePlace name) {
    elements_.push_back({name, innermost_});
    innermost_ = elements_.size();
}

void OpenElements::pop() {
    const std::size_t outer = elements_[innermost_ - 1].outer;
    if (innermost_ == elements_.size() && innermost_ > kept_) elements_.pop_back();
    innermost_ = outer;
}

void OpenElements::clear() {
    if (elements_.capacity() > kFewLevels) elements_ = {};
    elements_.clear();
    innermost_ = kNone;
    forget();
}

void OpenElements::remember() {
    kept_ = elements_.size();
    innermostThen_ = innermost_;
}

void OpenElements::goBack() {
    elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(kept_), elements_.end());
    innermost_ = innermostThen_;
}

bool AttributeNames::add(std::string_view text, NamePlace name) {
    const std::string_view added = name.in(text);
    if (names_.size() < kFewAttributes) {
        if (std::any_of(names_.begin(), names_.end(), [&](NamePlace known) { return known.in(text) == added; }))
            return false;
        names_.push_back(name);
        return true;
    }
    if (many_.empty())
        for (const NamePlace known : names_) many_.emplace(known.in(text));
    return many_.emplace(added).second;
}

void AttributeNames::clear() {
    names_.clear();
    many_.clear();
}

}  // namespace protolink
