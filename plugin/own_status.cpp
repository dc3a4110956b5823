// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/own_status.h"

#include "host/record.h"
#include "platform/platform.h"

namespace protolink {

namespace {

/// It holds the description's address.
OKU_STATUS_DATA statusData(Status status, const std::u16string& description) {
    auto data = makeRecord<OKU_STATUS_DATA>();
    data.status = static_cast<std::uint32_t>(status);
    data.description = description.c_str();
    data.time = platform::now();
    return data;
}

}  // namespace

bool announceOwnStatus(const CClientClass& client, Status status, const std::u16string& description) {
    auto data = statusData(status, description);
    return client.hooks.raise(HookKind::OwnStatus, toWord(&data));
}

void tellOwnStatus(const CClientClass& client, Status status, const std::u16string& description) {
    auto data = statusData(status, description);
    client.hooks.before(HookKind::OwnStatus, toWord(&data));
    client.hooks.after(HookKind::OwnStatus, toWord(&data));
}

}  // namespace protolink
