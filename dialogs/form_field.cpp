// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/form_field.h"

#include <algorithm>
#include <iterator>

#include "im/child_text.h"

namespace protolink {

namespace {

enum class Sent { Text, Mark, Stored, Choice, Nothing };

constexpr std::int32_t kInputLeft = 120;
constexpr std::int32_t kInputRight = 330;
constexpr std::int32_t kLabelRight = 115;
constexpr std::int32_t kLabelDrop = 3;
constexpr std::int32_t kLineHeight = 20;
constexpr std::int32_t kTallMore = 64;
constexpr std::uint32_t kStep = 30;

}  // namespace

struct FormFieldType {
    std::u16string_view name;
    std::optional<ControlKind> input;
    bool tall;
    bool labelled;  // by a label of its own
    Sent sent;
};

namespace {

constexpr FormFieldType kTypes[] = {
    {u"text-single", ControlKind::Edit, false, true, Sent::Text},
    {u"jid-single", ControlKind::Edit, false, true, Sent::Text},
    {u"text-private", ControlKind::Password, false, true, Sent::Text},
    {u"text-multi", ControlKind::Text, true, true, Sent::Text},
    {u"fixed", ControlKind::Text, true, false, Sent::Nothing},
    {u"boolean", ControlKind::Check, false, false, Sent::Mark},
    {u"hidden", std::nullopt, false, false, Sent::Stored},
    {u"list-single", ControlKind::DropDown, false, true, Sent::Choice},
};

}  // namespace

const FormFieldType* CWndFormField::typeOf(std::u16string_view type) {
    const auto found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                    [type](const FormFieldType& row) { return row.name == type; });
    return found == std::end(kTypes) ? nullptr : found;
}

void CWndFormField::readOptions(const xmlElement& element) {
    for (const xmlElement& child : element.children) {
        if (child.name != u"option") continue;
        const std::u16string& value = childText(child, u"value");
        if (value.empty()) continue;
        const std::u16string_view label = child.GetAttribute(u"label");
        options_.push_back({value, label.empty() ? value : std::u16string(label)});
    }
}

std::uint32_t CWndFormField::addControls(std::vector<Control>& page, std::uint32_t y) {
    if (!type_->input) return 0;
    inputControl_ = y;
    const auto top = static_cast<std::int32_t>(y);
    const std::int32_t more = type_->tall ? kTallMore : 0;
    if (type_->labelled) {
        page.push_back({.kind = ControlKind::Label,
                        .text = label_,
                        .place = {0, top + kLabelDrop, kLabelRight, kLineHeight - kLabelDrop + more}});
    }
    Control input{.kind = *type_->input,
                  .id = inputControl_,
                  .place = {kInputLeft, top, kInputRight - kInputLeft, kLineHeight + more}};
    if (input.kind == ControlKind::Check) {
        input.text = label_;
        input.checked = value_ == u"true";
    } else if (input.kind == ControlKind::DropDown) {
        // The first option stands chosen, whatever the field's value.
        for (const FormOption& option : options_) input.items.push_back(option.label);
        input.selection = options_.empty() ? -1 : 0;
    } else {
        input.text = value_;
        input.readOnly = type_->sent == Sent::Nothing;
        // Nothing stands before it, so what it is called is not to be seen.
        if (!type_->labelled) input.name = label_;
    }
    // Without a label nothing is to be seen either, but the form's own name for it says more than none.
    if (label_.empty()) input.name = var_;
    page.push_back(std::move(input));
    return kStep + static_cast<std::uint32_t>(more);
}

std::optional<std::u16string> CWndFormField::submitted(const WindowView* page) const {
    if (type_->sent == Sent::Stored) return value_;
    if (!page) return std::nullopt;
    switch (type_->sent) {
        case Sent::Text:
            return text(*page);
        case Sent::Mark:
            return page->checked(inputControl_) ? u"true" : u"false";
        case Sent::Choice: {
            const auto chosen = page->selection(inputControl_);
            return chosen && *chosen < options_.size() ? std::optional(options_[*chosen].value) : std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

}  // namespace protolink
