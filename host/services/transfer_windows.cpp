// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/transfer_windows.h"

#include <algorithm>
#include <array>

#include "host/record.h"

namespace protolink {

namespace {

OKU_FT_UPDATE_RECORD updateOf(std::uint32_t mask) {
    auto record = makeRecord<OKU_FT_UPDATE_RECORD>();
    record.mask = mask;
    return record;
}

}  // namespace

void TransferWindowLink::update(OKU_FT_UPDATE_RECORD record) const {
    if (window_ == 0 || !updateFn_) return;
    record.window = window_;
    updateFn_(toWord(&record), 0, updateData_);
}

void TransferWindowLink::setStatusText(const std::u16string& text) const {
    auto record = updateOf(OKU_FT_STATUS_TEXT);
    record.status = text.c_str();
    update(record);
}

void TransferWindowLink::setLink(const std::u16string& text, const std::u16string& target) const {
    auto record = updateOf(OKU_FT_LINK);
    record.linkText = text.c_str();
    record.linkTarget = target.c_str();
    update(record);
}

void TransferWindowLink::setTotalSize(std::uint64_t bytes) const {
    auto record = updateOf(OKU_FT_TOTAL);
    record.total = record.totalAgain = bytes;
    update(record);
}

void TransferWindowLink::setProgress(std::uint64_t bytes) const {
    auto record = updateOf(OKU_FT_POSITION);
    record.position = record.positionAgain = bytes;
    update(record);
}

void TransferWindowLink::setState(std::uint32_t state) const {
    auto record = updateOf(OKU_FT_STATE);
    record.state = state;
    update(record);
}

void TransferWindowLink::setCancelEnabled(bool enabled) const {
    auto record = updateOf(OKU_FT_CANCEL);
    record.cancel = enabled ? 1 : 0;
    update(record);
}

void TransferWindowLink::clearValue96() const { update(updateOf(OKU_FT_VALUE_96)); }

TransferWindowLink TransferWindows::open(const char16_t* title, const OKU_CONTACT_RECORD& contact,
                                         CallbackTarget target) const {
    auto record = makeRecord<OKU_FT_INIT_RECORD>();
    record.callback = target.callback;
    record.callbackData = target.context;
    record.status = u"Negocjowanie sesji...";
    record.title = title;
    record.contactId = contact.id;
    record.contactIdAgain = contact.id;
    record.contact = &contact;
    record.module = host_.module();
    const OKU_WORD window = host_.call(u"OKU/FTInitWindow", toWord(&record));
    return {window, record.updateFn, record.updateData};
}

void TransferWindows::drop(OKU_WORD window) const { host_.call(u"OKU/FTDropWindow", window); }

OfferAnswer TransferWindows::ask(const std::u16string& question, const std::u16string& sender,
                                 std::u16string& folder) const {
    constexpr std::size_t kMost = OKU_FT_PATH_CAPACITY - 1;
    std::array<char16_t, OKU_FT_PATH_CAPACITY> buffer{};
    std::copy_n(folder.data(), std::min(folder.size(), kMost), buffer.data());
    auto record = makeRecord<OKU_FT_ASK_RECORD>();
    record.question = question.c_str();
    record.path = buffer.data();
    record.capacity = kMost;
    record.sender = sender.c_str();
    const OKU_WORD answer = host_.call(u"OKU/FTAskForConfirmation", toWord(&record));
    // A host that fills the buffer to its last character leaves no room for the NUL.
    folder.assign(buffer.begin(), std::find(buffer.begin(), buffer.end() - 1, u'\0'));
    if (answer == OKU_FT_ANSWER_IGNORE) return OfferAnswer::Ignore;
    return answer == OKU_FT_ANSWER_REFUSE ? OfferAnswer::Refuse : OfferAnswer::Accept;
}

}  // namespace protolink
