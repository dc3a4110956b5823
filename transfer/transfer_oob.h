// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A file beside the stream: the sender's host publishes it under an address, which the receiver fetches (out-of-band
// data, XEP-0066).
#pragma once

#include <memory>
#include <string>

#include "transfer/download_job.h"
#include "transfer/transfer_base.h"

namespace protolink {

/// A user who cancels says nothing to the other side, and does not stop a download.
class CTransferOOB final : public CTransferBase {
public:
    CTransferOOB(const TransferAccount& account, CSession& session);
    ~CTransferOOB() override;

    void StartSending(const std::u16string& sid, const std::u16string& path, const JID& jid) override;
    void StartReceiving(const Stanza& stanza) override;
    void retire() override;

private:
    static OKU_WORD OKU_CALL onState(OKU_WORD state, OKU_WORD, OKU_WORD context) noexcept;
    static OKU_WORD OKU_CALL onProgress(OKU_WORD position, OKU_WORD total, OKU_WORD context) noexcept;
    /// The end of a download, also of one whose session has gone: its sender waits for the answer.
    static void finish(const TransferAccount& account, OKU_WORD context, const std::u16string& sid,
                       const std::u16string& peer, bool received);

    void published(OKU_WORD state);

    OKU_WORD context_;  // names this transport in the host's callbacks
    std::u16string url_;
    std::shared_ptr<DownloadJob> job_;
};

}  // namespace protolink
