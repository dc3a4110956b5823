// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/status_window.h"

#include "host/oku/windows.h"
#include "host/record.h"

namespace protolink {

void StatusWindow::prepare(std::span<const std::uint32_t> statuses, std::uint32_t netId, CallbackTarget target) const {
    auto record = makeRecord<OKU_STATUS_WINDOW_PREPARE>();
    record.title = u"XMPP / ustaw status...";
    record.statuses = statuses.data();
    record.statusCount = static_cast<std::uint32_t>(statuses.size());
    record.value28 = 1024;
    record.pfClass = kProtocolClass;
    record.netId = netId;
    record.callback = target.callback;
    record.context = target.context;
    host_.call(u"OKU/StatusWND/Prepare", toWord(&record));
}

void StatusWindow::show(std::uint32_t netId, const std::u16string& description, std::uint32_t status,
                        std::uint32_t protect) const {
    auto record = makeRecord<OKU_STATUS_WINDOW_SHOW>();
    record.description = description.c_str();
    record.status = status;
    record.pfClass = kProtocolClass;
    record.netId = netId;
    record.value36 = 1;
    record.protect = protect;
    host_.call(u"OKU/StatusWND/Show", toWord(&record));
}

void StatusWindow::setTexts(const std::u16string& title, const std::u16string& header, const std::u16string& account,
                            OKU_WORD window) const {
    auto record = makeRecord<OKU_STATUS_WINDOW_TEXTS>();
    record.title = title.c_str();
    record.header = header.c_str();
    record.account = account.c_str();
    record.window = window;
    host_.call(u"OKU/StatusWND/SetTexts", toWord(&record));
}

}  // namespace protolink
