// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One field of a data form (XEP-0004): how it is read, shown and sent back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/util/xml_element.h"
#include "ui/window_view.h"

namespace protolink {

struct FormFieldType;

struct FormOption {
    std::u16string value;
    std::u16string label;
};

class CWndFormField {
public:
    /// Null for a type that is not supported.
    static const FormFieldType* typeOf(std::u16string_view type);

    CWndFormField(const FormFieldType& type, std::u16string var, std::u16string label, std::u16string value)
        : type_(&type), var_(std::move(var)), label_(std::move(label)), value_(std::move(value)) {}

    /// The options of a `field` element, in their order; one without a label shows its value.
    void readOptions(const xmlElement& element);

    /// Adds the controls of this field at the height `y`, which names them, to a page. Gives how far the next field
    /// stands below.
    std::uint32_t addControls(std::vector<Control>& page, std::uint32_t y);

    const std::u16string& var() const { return var_; }
    /// What stands in its control on the page.
    std::u16string text(const WindowView& page) const { return page.text(inputControl_); }
    /// What a submitted form carries for it; nothing when it is left out. Without a page nobody was asked for anything.
    std::optional<std::u16string> submitted(const WindowView* page) const;

private:
    const FormFieldType* type_;       // a row of the table of types
    std::uint32_t inputControl_ = 0;  // the number of its control, 0 for none
    std::u16string var_;
    std::u16string label_;
    std::u16string value_;
    std::vector<FormOption> options_;
};

}  // namespace protolink
