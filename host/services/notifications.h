// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's pop-ups.
#pragma once

#include <cstdint>
#include <string>

#include "host/host.h"
#include "host/oku/notify.h"

namespace protolink {

enum class NoticeKind : std::uint32_t { Tune = OKU_NOTIFY_TUNE, Mood = OKU_NOTIFY_MOOD, Mail = OKU_NOTIFY_MAIL };
enum class NoticeMode : std::uint32_t {
    Mail = OKU_NOTIFY_MODE_MAIL,
    MailKept = OKU_NOTIFY_MODE_MAIL_KEPT,
    Personal = OKU_NOTIFY_MODE_PERSONAL,
};

struct Notice {
    NoticeKind kind;
    NoticeMode mode;
    const char16_t* image;
    std::u16string title;
    std::u16string text;
    std::u16string key;             // none when empty
    OKU_HANDLER onEvent = nullptr;  // may be called until the host drops the module
};

class Notifications {
public:
    explicit Notifications(const Host& host) : host_(host) {}

    void show(const Notice& notice) const;

private:
    const Host& host_;
};

}  // namespace protolink
