// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/personal_notice.h"

#include "plugin/contact_record.h"

namespace protolink {

namespace {

constexpr std::u16string_view kBreak = u"\r\n";

}  // namespace

void NewsBody::add(std::u16string_view label, std::u16string_view value) {
    if (value.empty()) return;
    lines_ += label;
    lines_ += value;
    lines_ += kBreak;
}

std::u16string NewsBody::text() const {
    return lines_.empty() ? std::u16string() : lines_.substr(0, lines_.size() - kBreak.size());
}

void PersonalNotice::show(const NewsLook& look, const PersonalNews& news) const {
    if (!news.body.empty())
        Notifications(client_.host)
            .show({look.kind, NoticeMode::Personal, look.image, news.title, news.body, news.itemId});
    const OKU_WORD contact = client_.contactList.find(contactRecord(client_, news.bareJid));
    if (!contact) return;
    if (news.body.empty()) {
        client_.contactList.removeIcon(contact, look.icon);
    } else {
        client_.contactList.addIcon(contact, look.icon, news.body);
    }
}

}  // namespace protolink
