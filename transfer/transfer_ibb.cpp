// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/transfer_ibb.h"

#include <optional>
#include <utility>

#include "host/util/base64.h"
#include "host/util/format.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "im/stanza_errors.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"
#include "transfer/session.h"

namespace protolink {

namespace {

constexpr std::uint32_t kBlockSize = 4096;

}  // namespace

void CTransferIBB::await(const std::u16string& id, Answer answer) {
    // Whoever was dropped while the request went out waits for nothing.
    if (!session_) return;
    account_.dispatcher.addHandler([this, answer](xmlElement& reply, void*) { (this->*answer)(Stanza::of(reply)); }, id,
                                   this);
}

void CTransferIBB::StartSending(const std::u16string& sid, const std::u16string& path, const JID& jid) {
    SetPath(path);
    seq_ = 0;
    const std::u16string open = lutCPW(
        u"open", {},
        {{u"xmlns", ns::kIbb}, {u"sid", sid}, {u"stanza", u"iq"}, {u"block-size", formatText(u"%u", kBlockSize)}});
    await(sid, &CTransferIBB::OnOpenResult);
    SetSid(sid);
    blockSize_ = kBlockSize;
    account_.output.sendText(lutCPW(u"iq", open, {{u"to", jid.full}, {u"id", sid}, {u"type", u"set"}}));
    target_ = jid.full;
}

void CTransferIBB::OnOpenResult(const Stanza& stanza) {
    if (stanza.type != u"result") {
        ReportFailure(u"Błąd otwarcia sesji");
    } else if (!OpenFile(true)) {
        ReportFailure(u"Błąd otwarcia pliku");
    } else {
        ReportStart(u"Przesyłanie...");
        SendBlock();
    }
}

void CTransferIBB::SendBlock() {
    if (!file_) return;
    const std::optional<std::string> bytes = file_->read(blockSize_);
    if (!bytes) {
        ReportFailure(u"Błąd transmisji");
        return;
    }
    const std::u16string content = utow(lutBase64Encode(*bytes));
    const std::u16string id = generateId();
    // It goes on behind 65535: a receiver of this kind does not look at it.
    const std::u16string number = formatText(u"%d", seq_++);
    session_->SetProgress(file_->position());
    const std::u16string data = lutCPW(u"data", content, {{u"xmlns", ns::kIbb}, {u"seq", number}, {u"sid", GetSid()}});
    if (!session_) return;
    account_.output.sendText(lutCPW(u"iq", data, {{u"type", u"set"}, {u"id", id}, {u"to", target_}}));
    await(id, &CTransferIBB::OnDataAck);
}

void CTransferIBB::OnDataAck(const Stanza& stanza) {
    // A receiver that closed the transfer before its end has had the file closed too.
    const std::optional<std::uint64_t> length = file_ ? file_->length() : std::nullopt;
    if (stanza.type != u"result" || !length) {
        ReportFailure(u"Błąd transmisji");
    } else if (file_->position() >= *length) {
        SendClose();
        ReportFinished(u"Gotowe", false, true);
    } else {
        SendBlock();
    }
}

std::u16string CTransferIBB::composeClose(const std::u16string& id) const {
    const std::u16string close = lutCPW(u"close", {}, {{u"xmlns", ns::kIbb}, {u"sid", GetSid()}});
    return lutCPW(u"iq", close, {{u"to", target_}, {u"id", id}, {u"type", u"set"}});
}

void CTransferIBB::SendClose() {
    // Whoever was dropped while his last byte was told has no stream left to close.
    if (!session_) return;
    CloseFile();
    const std::u16string id = generateId();
    account_.output.sendText(composeClose(id));
    await(id, &CTransferIBB::OnCloseAck);
}

void CTransferIBB::OnCloseAck(const Stanza&) { ReportFinished(u"Gotowe", false, true); }

void CTransferIBB::Abort() {
    CloseFile();
    const std::u16string close = composeClose(generateId());
    // Said once, also when the host cancels again from inside this sending.
    if (!std::exchange(target_, {}).empty()) account_.output.sendText(close);
}

void CTransferIBB::refuseStart(const Stanza& stanza, std::u16string_view code, std::u16string_view condition) {
    account_.output.sendText(lutCPW(u"iq", buildStanzaError(code, condition, u"cancel", {}),
                                    {{u"type", u"error"}, {u"id", stanza.id}, {u"to", stanza.from}}));
}

void CTransferIBB::StartReceiving(const Stanza& stanza) {
    if (stanza.type != u"set") {
        ReportFailure(u"Błąd");
        return;
    }
    const xmlElement* open = stanza.child(u"open");
    if (open && open->GetAttribute(u"stanza", u"iq") != u"iq") {
        refuseStart(stanza, u"400", u"not-acceptable");
        ReportFailure(u"Błąd, nieobsługiwany tryb transmisji ('message')");
        return;
    }
    seq_ = 0;
    if (open) SetSid(open->GetAttribute(u"sid"));
    ReportStart(u"Przesyłanie...");
    if (open && OpenFile(false)) {
        account_.output.sendText(lutCPW(u"iq", {}, {{u"type", u"result"}, {u"id", stanza.id}, {u"to", stanza.from}}));
    } else {
        refuseStart(stanza, u"404", u"item-not-found");
        ReportFailure(u"Błąd otwarcia pliku");
    }
}

bool CTransferIBB::HandleStanza(const Stanza& stanza) {
    const std::u16string sid = GetSid();
    const auto mine = [&](std::u16string_view name) { return stanza.element.GetChildPtr(name, u"sid", sid); };
    if (mine(u"open")) {
        StartReceiving(stanza);
        return false;
    }
    const xmlElement* data = mine(u"data");
    const xmlElement* close = mine(u"close");
    if (!data && !close) return false;
    // A file that no peer named is one that is sent: of it an empty block, if taken, would say that all had arrived.
    if (data && file_ && !session_->chosenName().empty()) {
        TakeBlock(stanza, *data);
        return true;
    }
    if (close && file_) {
        CloseFile();
        account_.output.sendText(lutCPW(u"iq", {}, {{u"type", u"result"}, {u"id", stanza.id}, {u"to", stanza.from}}));
        return true;
    }
    // The account outlives the session that ends here.
    StreamOutput& output = account_.output;
    if (close) ReportFinished(u"Gotowe", false, true);
    output.sendText(lutCPW(stanza.element.name, {}, {{u"type", u"error"}, {u"id", stanza.id}, {u"to", stanza.from}}));
    return true;
}

void CTransferIBB::TakeBlock(const Stanza& stanza, const xmlElement& data) {
    const bool written = file_->write(lutBase64Decode(wtou(data.text)));
    const std::optional<std::uint64_t> length = file_->length();
    if (!written || !length) {
        // A block that did not reach the disk is not confirmed.
        account_.output.sendText(
            lutCPW(stanza.element.name, {}, {{u"type", u"error"}, {u"id", stanza.id}, {u"to", stanza.from}}));
        ReportFailure(u"Błąd transmisji");
        return;
    }
    session_->SetProgress(*length);
    if (!session_) return;
    if (stanza.element.name == u"iq")
        account_.output.sendText(
            lutCPW(stanza.element.name, {}, {{u"id", stanza.id}, {u"to", stanza.from}, {u"type", u"result"}}));
    if (!session_ || *length != session_->size) return;
    // Some systems tell only then that a write went wrong. Shut it is when the sender closed while it heard of this.
    if (!(file_ ? file_->close() : shutWell_)) {
        ReportFailure(u"Błąd transmisji");
        return;
    }
    ReportStatus(u"Przesłano, zamykanie sesji");
    SendClose();
}

}  // namespace protolink
