// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A peer's offer of a file.
#include <utility>

#include "host/services/transfer_windows.h"
#include "host/util/format.h"
#include "host/util/numbers.h"
#include "router/namespaces.h"
#include "transfer/session_manager.h"
#include "transfer/stream_initiation.h"
#include "transfer/transfer_ibb.h"
#include "transfer/transfer_oob.h"

namespace protolink {

void CSessionManager::HandleOffer(const Stanza& stanza) {
    const xmlElement* offer = stanza.child(u"si", ns::kStreamInitiation);
    if (ended_ || !offer) return;
    const std::u16string_view method = si::offeredMethods(*offer).best();
    if (method.empty()) {
        account_.output.sendText(si::composeNoValidStreams(stanza));
        return;
    }
    const xmlElement* file = offer->GetChildPtr(u"file", ns::kFileTransfer);
    if (!file) return;
    const std::u16string sender = parseJID(stanza.from).bare;
    const std::u16string question = formatText(u"Czy chcesz odebrać %s (%sb) od %s?", file->GetAttribute(u"name"),
                                               file->GetAttribute(u"size"), sender);
    std::u16string folder = client_.settings.get(setting::kReceivedFiles);
    const OfferAnswer answer = TransferWindows(client_.host).ask(question, sender, folder);
    // The question may have stood there for long, and the account may have gone meanwhile.
    if (ended_ || answer == OfferAnswer::Ignore) return;
    if (answer == OfferAnswer::Refuse) {
        account_.output.sendText(si::composeRefusal(stanza));
        return;
    }
    take(stanza, *file, method, folder);
}

void CSessionManager::take(const Stanza& stanza, const xmlElement& file, std::u16string_view method,
                           const std::u16string& folder) {
    const std::shared_ptr<CSession> session = begin();
    const std::u16string sid(stanza.child(u"si", ns::kStreamInitiation)->GetAttribute(u"id"));
    session->ExpectFile(folder, file.GetAttribute(u"name"), sid, parseJID(stanza.from));
    if (session->dropped()) return;
    if (method == ns::kOob) {
        session->transport = std::make_unique<CTransferOOB>(account_, *session);
    } else {
        session->transport = std::make_unique<CTransferIBB>(account_, *session);
    }
    if (session->dropped()) return;
    session->sid = sid;
    // A size below zero or beyond 2 GiB is one that no file reaches: such a transfer ends by the sender's word.
    session->size = static_cast<std::uint64_t>(std::int64_t{parseInt32(file.GetAttribute(u"size"))});
    account_.output.sendText(si::composeAcceptance(stanza, method));
}

}  // namespace protolink
