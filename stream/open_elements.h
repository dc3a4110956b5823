// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The names that the balance check has to remember, as places in the text.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace protolink {

/// A name in a text: its place and its length.
struct NamePlace {
    std::size_t start = 0;
    std::size_t length = 0;

    std::string_view in(std::string_view text) const { return text.substr(start, length); }
};

/// The elements that are open. One moment can be remembered and had again, at a cost that does not grow with the depth.
class OpenElements {
public:
    bool empty() const { return innermost_ == kNone; }
    /// Only while an element is open.
    NamePlace innermost() const { return elements_[innermost_ - 1].name; }
    void push(NamePlace name);
    void pop();
    void clear();

    /// What is open now can be had again as often as wanted, until it is forgotten.
    void remember();
    void goBack();
    void forget() { kept_ = 0; }

private:
    static constexpr std::size_t kNone = 0;
    /// Places count from 1.
    struct Element {
        NamePlace name;
        std::size_t outer;
    };

    std::vector<Element> elements_;
    std::size_t innermost_ = kNone;
    std::size_t kept_ = 0;  // so many elements belong to the moment that is remembered
    std::size_t innermostThen_ = kNone;
};

/// The names of a tag's attributes.
class AttributeNames {
public:
    /// False when the name was there before.
    bool add(std::string_view text, NamePlace name);
    void clear();

private:
    std::vector<NamePlace> names_;
    std::set<std::string, std::less<>> many_;  // the same names, when they are many; no order of names makes it slow
};

}  // namespace protolink
