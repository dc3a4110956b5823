// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One file transfer between the account and one resource of a contact.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/services/transfer_windows.h"
#include "plugin/jid.h"
#include "router/stanza.h"
#include "transfer/transfer_account.h"
#include "transfer/transfer_base.h"

namespace protolink {

/// A transfer as the host's window sees it.
class CTransferWindow {
public:
    virtual void OnWindowEvent(OKU_WORD eventRecord) = 0;
    virtual void Drop() = 0;
    virtual ~CTransferWindow() = default;

    void SetStatusText(const std::u16string& text) const { link_.setStatusText(text); }
    void SetLink(const std::u16string& text, const std::u16string& target) const { link_.setLink(text, target); }
    void SetTotalSize(std::uint64_t bytes) const { link_.setTotalSize(bytes); }
    void SetProgress(std::uint64_t bytes) const { link_.setProgress(bytes); }
    void SetCancelEnabled(bool enabled) const { link_.setCancelEnabled(enabled); }
    /// `OKU_FT_RUNNING` or `OKU_FT_FAILED`.
    void SetState(std::uint32_t state) const { link_.setState(state); }
    void ClearValue96() const { link_.clearValue96(); }

    const TransferWindowLink& window() const { return link_; }

protected:
    TransferWindowLink link_;  // has no window while there is none: updates are then skipped
};

/// Whoever keeps the sessions.
class SessionOwner {
public:
    virtual ~SessionOwner() = default;
    virtual void RemoveSession(CSession& session) = 0;
};

class CSession final : public CTransferWindow {
public:
    CSession(const TransferAccount& account, SessionOwner& owner);

    /// The sender's half of an offer.
    void OfferFile(const std::u16string& contact, const std::u16string& path, std::u16string_view resource);
    /// The receiver's beginning: a folder that the host gave, and a name that the other side chose. The transfer starts
    /// with the stanza whose id is `sid`.
    void ExpectFile(const std::u16string& folder, std::u16string_view name, std::u16string_view sid, const JID& jid);

    void OnWindowEvent(OKU_WORD eventRecord) override;
    /// Ends the session and its window. The object lives until the outermost call into the plugin has returned, and
    /// does nothing any more.
    void Drop() override;
    bool dropped() const { return dropped_; }

    /// What a session that goes leaves behind without its window: no handler, no open file, no context word.
    void retire();

    /// The name that the other side chose for a received file; empty for one that is sent.
    const std::u16string& chosenName() const { return chosenName_; }

    std::uint64_t size = 0;  // of the file, in bytes
    std::unique_ptr<CTransferBase> transport;
    std::u16string sid;
    std::u16string path;

private:
    static OKU_WORD OKU_CALL onWindow(OKU_WORD eventRecord, OKU_WORD, OKU_WORD context) noexcept;

    void InitWindow(bool sending, const JID& jid);
    void OnOfferResult(const Stanza& stanza);
    void OnTransportStart(const Stanza& stanza);

    TransferAccount account_;
    SessionOwner& owner_;
    OKU_WORD context_;
    std::u16string chosenName_;
    bool dropped_ = false;
};

}  // namespace protolink
