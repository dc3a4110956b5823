// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "host/services/notifications.h"

#include "host/record.h"

namespace protolink {

void Notifications::show(const Notice& notice) const {
    auto record = makeRecord<OKU_NOTIFY>();
    record.text = notice.text.c_str();
    record.title = notice.title.c_str();
    if (!notice.key.empty()) record.key = notice.key.c_str();
    record.icon = notice.image;
    record.value40 = 3;
    record.kind = static_cast<std::uint32_t>(notice.kind);
    record.mode = static_cast<std::uint32_t>(notice.mode);
    record.callback = notice.onEvent;
    host_.call(u"OKU/ShowStandardNotify", toWord(&record));
}

}  // namespace protolink
