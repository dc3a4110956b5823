// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/message_boxes.h"

#include "host/oku/windows.h"
#include "host/record.h"

namespace protolink {

void MessageBoxes::show(const std::u16string& text, const std::u16string& title, BoxStyle style, OKU_WORD owner) const {
    call(text, title, style, owner);
}

bool MessageBoxes::ask(const std::u16string& text, const std::u16string& title, OKU_WORD owner) const {
    return call(text, title, BoxStyle::Question, owner) == OKU_BUTTON_YES;
}

bool MessageBoxes::askUnlessNo(const std::u16string& text, const std::u16string& title, OKU_WORD owner) const {
    const OKU_WORD answer = call(text, title, BoxStyle::Question, owner);
    return answer != 0 && answer != OKU_BUTTON_NO;
}

OKU_WORD MessageBoxes::call(const std::u16string& text, const std::u16string& title, BoxStyle style,
                            OKU_WORD owner) const {
    auto record = makeRecord<OKU_MESSAGE_BOX>();
    record.text = text.c_str();
    record.title = title.c_str();
    record.style = static_cast<std::uint32_t>(style);
    record.owner = owner;
    return host_.call(u"UI/MessageBox", toWord(&record));
}

}  // namespace protolink
