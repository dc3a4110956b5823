// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/session.h"

#include <utility>

#include "host/record.h"
#include "host/services/file_publishing.h"
#include "platform/file.h"
#include "platform/platform.h"
#include "plugin/boundary.h"
#include "plugin/contact_record.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"
#include "transfer/stream_initiation.h"
#include "transfer/transfer_ibb.h"
#include "transfer/transfer_oob.h"

namespace protolink {

namespace {

/// Outlives the plugin's state, which is made later: sessions take themselves out when they go.
LiveObjects<CSession> g_liveSessions;

/// What stands behind the last separator; nothing when that is the path's first character.
std::u16string_view nameOf(std::u16string_view path) {
    const std::size_t separator = path.rfind(platform::kPathSeparator);
    if (separator == std::u16string_view::npos || separator == 0) return {};
    return path.substr(separator + 1);
}

}  // namespace

CSession::CSession(const TransferAccount& account, SessionOwner& owner)
    : account_(account), owner_(owner), context_(g_liveSessions.add(*this)) {}

void CSession::OfferFile(const std::u16string& contact, const std::u16string& filePath, std::u16string_view resource) {
    const std::u16string id = generateId();
    sid = generateId();
    path = filePath;
    const std::u16string target = contact + u"/" + std::u16string(resource);
    size = static_cast<std::uint32_t>(platform::fileSize(path));
    const bool outOfBand = FilePublishing(account_.client.host).enabled();
    if (dropped_) return;
    account_.output.sendText(si::composeOffer({id, target, sid, nameOf(path), size, outOfBand}));
    if (dropped_) return;
    account_.dispatcher.addHandler([this](xmlElement& reply, void*) { OnOfferResult(Stanza::of(reply)); }, id, this);
    InitWindow(true, parseJID(contact));
}

void CSession::ExpectFile(const std::u16string& folder, std::u16string_view name, std::u16string_view streamId,
                          const JID& jid) {
    chosenName_ = name;
    path = folder + chosenName_;
    InitWindow(false, jid);
    if (dropped_) return;
    account_.dispatcher.addHandler([this](xmlElement& start, void*) { OnTransportStart(Stanza::of(start)); },
                                   std::u16string(streamId), this);
}

void CSession::InitWindow(bool sending, const JID& jid) {
    if (link_.window() == 0) {
        const OKU_CONTACT_RECORD contact = contactRecord(account_.client, jid.bare);
        const TransferWindowLink opened =
            TransferWindows(account_.client.host)
                .open(sending ? u"Wysyłanie plików" : u"Odbiór plików", contact, {onWindow, context_});
        if (dropped_) {
            // Dropped from inside the call: the host is not left with a window that nobody writes to.
            if (opened.window() != 0) TransferWindows(account_.client.host).drop(opened.window());
            return;
        }
        link_ = opened;
    }
    SetLink({}, {});
    SetCancelEnabled(true);
}

void CSession::OnOfferResult(const Stanza& stanza) {
    if (stanza.type != u"result") {
        SetStatusText(u"Błąd negocjacji sesji");
        return Drop();
    }
    const std::u16string_view method = si::chosenMethod(stanza.element);
    if (method == ns::kOob) {
        transport = std::make_unique<CTransferOOB>(account_, *this);
        SetStatusText(u"Sesja przyjęta, negocjowanie połączenia (OOB)...");
    } else if (method == ns::kIbb) {
        transport = std::make_unique<CTransferIBB>(account_, *this);
        SetStatusText(u"Sesja przyjęta, negocjowanie połączenia (IBB)...");
    } else {
        SetStatusText(u"Błąd negocjacji, sesja przyjęta ale format był nieprawidłowy.");
        return Drop();
    }
    if (!dropped_) transport->StartSending(sid, path, parseJID(stanza.from));
}

void CSession::OnTransportStart(const Stanza& stanza) {
    if (transport) transport->StartReceiving(stanza);
}

OKU_WORD OKU_CALL CSession::onWindow(OKU_WORD eventRecord, OKU_WORD, OKU_WORD context) noexcept {
    return atBoundary([&]() -> OKU_WORD {
        if (CSession* session = g_liveSessions.find(context)) session->OnWindowEvent(eventRecord);
        return 0;
    });
}

void CSession::OnWindowEvent(OKU_WORD eventRecord) {
    const auto* event = readRecord<OKU_FT_EVENT>(eventRecord);
    if (!event || event->event != OKU_FT_EVENT_CANCELLED) return;
    if (transport) transport->Abort();
    SetCancelEnabled(false);
    SetStatusText(u"Anulowano");
    Drop();
}

void CSession::Drop() {
    if (dropped_) return;
    const OKU_WORD window = std::exchange(link_, {}).window();
    retire();
    if (window != 0) TransferWindows(account_.client.host).drop(window);
    owner_.RemoveSession(*this);
}

void CSession::retire() {
    dropped_ = true;
    link_ = {};
    g_liveSessions.remove(context_);
    account_.dispatcher.removeByUser(this);
    if (transport) transport->retire();
}

}  // namespace protolink
