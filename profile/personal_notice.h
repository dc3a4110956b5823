// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a contact has published of himself, as the user sees it: a pop-up, and an icon beside the contact.
#pragma once

#include <string>

#include "host/services/notifications.h"
#include "im/contact_entry.h"
#include "plugin/client_class.h"

namespace protolink {

/// What the news of one kind look like.
struct NewsLook {
    NoticeKind kind;
    const char16_t* image;  // of the pop-up
    const char16_t* icon;   // beside the contact
};

struct PersonalNews {
    std::u16string bareJid;
    std::u16string title;
    std::u16string body;  // empty: there is nothing any more
    std::u16string itemId;
};

/// Lines of a label and its value; what has no value has no line.
class NewsBody {
public:
    void add(std::u16string_view label, std::u16string_view value);
    /// The lines with breaks between them.
    std::u16string text() const;

private:
    std::u16string lines_;  // each with its break
};

class PersonalNotice {
public:
    PersonalNotice(CClientClass& client, const Contacts& contacts) : client_(client), contacts_(contacts) {}

    bool isOwn(const std::u16string& bareJid) const { return bareJid == client_.jid.bare; }
    std::u16string displayName(const std::u16string& bareJid) const { return contacts_.displayName(bareJid); }

    /// News without a body show no pop-up, and take the icon away.
    void show(const NewsLook& look, const PersonalNews& news) const;

private:
    CClientClass& client_;
    const Contacts& contacts_;
};

}  // namespace protolink
