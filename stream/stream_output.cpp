// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/stream_output.h"

#include "host/oku/message.h"
#include "host/record.h"
#include "host/services/sockets.h"
#include "host/util/utf.h"

namespace protolink {

std::int32_t StreamOutput::sendText(std::u16string_view text) {
    const std::string bytes = wtou(text);
    return sendBytes(std::string_view(bytes).substr(0, bytes.find('\0')), false);
}

bool StreamOutput::offerToListeners(std::string_view data, bool raw) {
    // Listeners read a text that ends at its first NUL, also when more bytes go out.
    std::string text(data.substr(0, data.find('\0')));
    auto offer = makeRecord<OKU_HOOK_DATA>();
    offer.data = text.data();
    offer.length = static_cast<std::uint32_t>(text.size());
    offer.flags = raw ? OKU_HOOK_DATA_RAW : OKU_HOOK_DATA_PLAIN;
    return client_.hooks.raise(HookKind::StreamOut, toWord(&offer));
}

std::int32_t StreamOutput::sendBytes(std::string_view data, bool raw) {
    if (!offerToListeners(data, raw)) return 0;
    if (!(client_.flags & FLAG_COMPRESSED)) return Sockets(client_.host).send(client_.socketName, data);
    std::string compressed;
    if (!zip_.zDeflate(data, compressed)) return compressionFault();
    return Sockets(client_.host).send(client_.socketName, compressed);
}

std::int32_t StreamOutput::compressionFault() {
    client_.log(LogLevel::Error, tag::kStream, u"ERROR: Compression fault!");
    // Ending the stream sends its closing tag through the same broken compressor.
    if (endingAfterFault_) return -1;
    struct Ending {
        explicit Ending(bool& flag) : begun(flag) { begun = true; }
        ~Ending() { begun = false; }
        bool& begun;
    };
    const Ending ending(endingAfterFault_);
    connection_->disconnect(true);
    return -1;
}

OKU_WORD StreamOutput::onRawSend(OKU_WORD rawRecord) {
    const auto* record = readRecord<OKU_RAW_SEND>(rawRecord);
    if (!record || !record->data || !(client_.flags & FLAG_AUTHORIZED)) return 0;
    return sendBytes({record->data, record->length}, true);
}

}  // namespace protolink
