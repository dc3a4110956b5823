// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What all ways to move a file share: the local file, and what is reported to the host's window.
#pragma once

#include <memory>
#include <string>

#include "platform/file.h"
#include "plugin/jid.h"
#include "router/stanza.h"
#include "transfer/transfer_account.h"

namespace protolink {

class CSession;

/// A transport belongs to its session. Once the session was dropped the transport has none, and does nothing any more.
class CTransferBase {
public:
    CTransferBase(const TransferAccount& account, CSession& session) : account_(account), session_(&session) {}
    virtual ~CTransferBase() = default;
    CTransferBase(const CTransferBase&) = delete;
    CTransferBase& operator=(const CTransferBase&) = delete;

    /// The user does not want to go on.
    virtual void Abort() {}
    /// True when the stanza was this transfer's.
    virtual bool HandleStanza(const Stanza&) { return false; }

    // Reports to the window; false when there is no session.
    virtual bool ReportStart(const std::u16string& text);
    virtual bool ReportStatus(const std::u16string& text);
    /// Ends the session.
    virtual bool ReportFailure(const std::u16string& text);
    /// The window keeps its state. With `drop` it ends the session.
    virtual bool ReportFinished(const std::u16string& text, bool showLink, bool drop);

    /// Opens the session's file: one that is sent for reading, one that is received for writing, and never otherwise.
    /// False when it is open already or cannot be opened.
    virtual bool OpenFile(bool forReading);
    /// False when no file was open.
    virtual bool CloseFile();

    virtual std::u16string GetSid() const;
    virtual void SetSid(std::u16string_view text);
    virtual void SetPath(const std::u16string& text);

    virtual void StartSending(const std::u16string& sid, const std::u16string& path, const JID& jid) = 0;
    virtual void StartReceiving(const Stanza& stanza) = 0;

    /// The session goes: no answer comes here any more, and no file stays open.
    virtual void retire();

protected:
    TransferAccount account_;
    CSession* session_;  // null once it was dropped
    std::unique_ptr<platform::File> file_;
    bool shutWell_ = true;  // what the system told when the last file was shut
    std::u16string peer_;   // whom an out-of-band transfer answers
};

/// Opens the file that a peer gave the name of; null when that leads out of the folder it was put behind, or when it
/// cannot be opened.
std::unique_ptr<platform::File> openReceived(const std::u16string& path, std::u16string_view chosenName);

}  // namespace protolink
