// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/stream_input.h"

#include <cstring>
#include <utility>

#include "host/record.h"
#include "host/util/format.h"
#include "host/util/xml_parse.h"
#include "platform/platform.h"
#include "stream/xml_probe.h"

namespace protolink {

namespace {

constexpr std::int64_t kFuseSeconds = 30;

}  // namespace

void StreamInput::onReceive(const NL_RECEIVED& piece) {
    if (!piece.data || piece.length < 0) return;
    const auto length = static_cast<std::size_t>(piece.length);
    if (client_.flags & FLAG_COMPRESSED) {
        std::string inflated;
        if (inflatePiece({piece.data, length}, inflated))
            onText({inflated.data(), strnlen(inflated.data(), inflated.size())});
    } else {
        onText({piece.data, strnlen(piece.data, length)});
    }
}

void StreamInput::resetPartialInput() {
    partialInput_.clear();
    probe_.reset();
}

void StreamInput::onText(std::string_view piece) {
    probe_.changed(partialInput_.append(piece));
    const ProbeResult probe = probe_.probeXml(partialInput_.view(), partialInput_.settled());
    if (!probe.balanced) return onInvalid(probe);
    // Listeners and handlers may reset the account, or wait in a box while further bytes come in: the text that they
    // work on is no longer the account's, and not the host's either.
    ReceivedText taken = std::exchange(partialInput_, ReceivedText());
    probe_.reset();
    onValid(taken);
}

void StreamInput::onValid(ReceivedText& text) {
    firstInvalidTime_ = 0;
    lastValidRecv_ = platform::now();
    auto offer = makeRecord<OKU_HOOK_DATA>();
    offer.data = text.data();
    offer.length = static_cast<std::uint32_t>(text.size());
    offer.flags = OKU_HOOK_DATA_PLAIN;
    if (!client_.hooks.before(HookKind::StreamIn, toWord(&offer))) return;
    XmlSequence batch(text.view());
    // What listeners write into the text now reaches nobody: the elements are read from elsewhere.
    batch.detach();
    client_.hooks.after(HookKind::StreamIn, toWord(&offer));
    text.clear();
    listener_.routeElements(batch);
}

void StreamInput::onInvalid(const ProbeResult& probe) {
    const std::int64_t now = platform::now();
    if (firstInvalidTime_ != 0 && now - firstInvalidTime_ >= kFuseSeconds) {
        client_.log(LogLevel::Warning, tag::kStream, u"WARNING: Fuse 'B' FAILED, XML not valid for 30s, reset");
        connection_.expectReconnection();
        firstInvalidTime_ = 0;
        connection_.disconnect(true);
        resetPartialInput();
        return;
    }
    client_.log(LogLevel::Debug, tag::kStream,
                formatText(u"WARNING: XML not valid, waiting for next part (%d, %dx%d)", probe.errorCode, probe.line,
                           probe.column));
    if (firstInvalidTime_ == 0) firstInvalidTime_ = now;
}

}  // namespace protolink
