// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/arrivals.h"

#include "host/oku/message.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/talk/history.h"
#include "messenger/core/talk/typing_notices.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/wire/stream_watch.h"

namespace oku {
namespace {

Message messageOf(const OKU_MESSAGE_DATA& data) {
    Message message;
    message.contact = bareJid(wideText(data.id));
    const auto* resource = data.resource && data.resource->size >= sizeof(OKU_RESOURCE_INFO) ? data.resource : nullptr;
    if (resource) message.resource = wideText(resource->resource);
    message.subject = wideText(data.subject);
    message.body = wideText(data.body);
    message.failed = data.flags == OKU_MESSAGE_DELIVERY_FAILURE;
    message.kind = data.flags == OKU_MESSAGE_NORMAL ? MessageKind::normal : MessageKind::chat;
    message.time = QDateTime::currentDateTimeUtc();
    return message;
}

}  // namespace

bool Arrivals::onProtocolEvent(ProtocolEvent& event) {
    const bool comes = event.is(OKU_HOOK_MESSAGE_IN, OKU_PHASE_AFTER);
    const auto* data = comes ? recordAt<OKU_MESSAGE_DATA>(event.extra) : nullptr;
    if (!data) return false;
    Message message = messageOf(*data);
    message.account = event.account.jid();
    message.delayed = parts_.watch.takeDelay(event.account, message.contact, message.resource);
    parts_.typing.set(message.account, message.contact, false);
    parts_.history.add(message, [this, &account = event.account](const Message& told) {
        parts_.contacts.list(account).addUnread(told.contact);
        emit received(told.account, told);
    });
    return false;
}

}  // namespace oku
