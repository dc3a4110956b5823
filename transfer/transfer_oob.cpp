// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/transfer_oob.h"

#include <utility>

#include "host/services/file_publishing.h"
#include "host/util/xml_compose.h"
#include "im/stanza_errors.h"
#include "plugin/boundary.h"
#include "router/namespaces.h"
#include "transfer/downloads.h"
#include "transfer/session.h"

namespace protolink {

namespace {

/// Outlives the plugin's state, which is made later: transports take themselves out when they go.
LiveObjects<CTransferOOB> g_liveTransports;

std::u16string notFound() { return buildStanzaError(u"404", u"item-not-found", u"cancel", {}); }

}  // namespace

CTransferOOB::CTransferOOB(const TransferAccount& account, CSession& session)
    : CTransferBase(account, session), context_(g_liveTransports.add(*this)) {
    session.SetCancelEnabled(true);
}

CTransferOOB::~CTransferOOB() { g_liveTransports.remove(context_); }

void CTransferOOB::retire() {
    g_liveTransports.remove(context_);
    if (job_) job_->detachWindow();
    CTransferBase::retire();
}

void CTransferOOB::StartSending(const std::u16string& sid, const std::u16string& path, const JID& jid) {
    SetSid(sid);
    const std::u16string url =
        FilePublishing(account_.client.host).prepare(path, {onState, context_}, {onProgress, context_});
    if (!session_) return;
    const std::u16string query = lutCPW(u"query", lutCPW(u"url", lutXMLEscapeW(url)), {{u"xmlns", ns::kOob}});
    const std::u16string target = jid.bare + u"/" + jid.resource;
    // The receiver waits for the stanza with this id.
    account_.output.sendText(lutCPW(u"iq", query, {{u"type", u"set"}, {u"id", sid}, {u"to", target}}));
    if (!session_) return;
    CSession& session = *session_;
    session.SetStatusText(u"Oczekiwanie na połączenie...");
    session.SetCancelEnabled(true);
}

OKU_WORD OKU_CALL CTransferOOB::onState(OKU_WORD state, OKU_WORD, OKU_WORD context) noexcept {
    return atBoundary([&]() -> OKU_WORD {
        if (CTransferOOB* transport = g_liveTransports.find(context)) transport->published(state);
        return 0;
    });
}

void CTransferOOB::published(OKU_WORD state) {
    if (state == OK7_STATE_FAILED) {
        ReportFailure(u"Błąd");
    } else if (state == OK7_STATE_SENT) {
        ReportFinished(u"Wysłano", false, true);
    } else if (state == OK7_STATE_RUNNING && session_) {
        const CSession& session = *session_;
        ReportStart(u"Przesyłanie...");
        session.SetCancelEnabled(false);
        session.ClearValue96();
    }
}

OKU_WORD OKU_CALL CTransferOOB::onProgress(OKU_WORD position, OKU_WORD total, OKU_WORD context) noexcept {
    return atBoundary([&]() -> OKU_WORD {
        CTransferOOB* const transport = g_liveTransports.find(context);
        if (!transport || !transport->session_) return 0;
        const CSession& session = *transport->session_;
        session.SetTotalSize(static_cast<std::uint64_t>(total));
        session.SetProgress(static_cast<std::uint64_t>(position));
        return 0;
    });
}

void CTransferOOB::StartReceiving(const Stanza& stanza) {
    const xmlElement* query = stanza.child(u"query", ns::kOob);
    const xmlElement* url = query ? query->GetChildPtr(u"url") : nullptr;
    if (!url || url->text.empty()) {
        account_.output.sendText(
            lutCPW(u"iq", notFound(), {{u"id", stanza.id}, {u"type", u"error"}, {u"to", stanza.from}}));
        return;
    }
    if (!session_) return;
    SetSid(stanza.id);
    url_ = url->text;
    peer_ = stanza.from;
    job_ = std::make_shared<DownloadJob>(session_->window(), session_->size, session_->path, session_->chosenName());
    account_.downloads.start(url_, job_,
                             [account = account_, context = context_, sid = GetSid(), peer = peer_](bool received) {
                                 finish(account, context, sid, peer, received);
                             });
}

void CTransferOOB::finish(const TransferAccount& account, OKU_WORD context, const std::u16string& sid,
                          const std::u16string& peer, bool received) {
    CTransferOOB* const transport = g_liveTransports.find(context);
    CSession* const session = transport ? transport->session_ : nullptr;
    if (session && received) {
        transport->ReportFinished(u"Odebrano", true, false);
    } else if (session) {
        session->SetState(OKU_FT_FAILED);
        session->SetStatusText(u"Błąd");
    }
    account.output.sendText(lutCPW(u"iq", received ? std::u16string() : notFound(),
                                   {{u"id", sid}, {u"type", received ? u"result" : u"error"}, {u"to", peer}}));
    if (session) session->Drop();
}

}  // namespace protolink
