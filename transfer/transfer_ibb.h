// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A file in the stream itself, one block at a time (in-band bytestreams, XEP-0047).
//
//   sender                                  receiver
//   StartSending        open     ->         StartReceiving, opens the file
//   OnOpenResult        <-     result
//   SendBlock           data     ->         writes the block
//   OnDataAck           <-     result       SendClose behind the last byte
//   SendClose           close   <->         HandleStanza
#pragma once

#include <cstdint>
#include <string>

#include "transfer/transfer_base.h"

namespace protolink {

class CTransferIBB final : public CTransferBase {
public:
    using CTransferBase::CTransferBase;

    void Abort() override;
    bool HandleStanza(const Stanza& stanza) override;
    void StartSending(const std::u16string& sid, const std::u16string& path, const JID& jid) override;
    void StartReceiving(const Stanza& stanza) override;

private:
    using Answer = void (CTransferIBB::*)(const Stanza&);

    void OnOpenResult(const Stanza& stanza);
    void OnDataAck(const Stanza& stanza);
    void OnCloseAck(const Stanza& stanza);

    void SendBlock();
    void SendClose();
    void TakeBlock(const Stanza& stanza, const xmlElement& data);
    void await(const std::u16string& id, Answer answer);
    std::u16string composeClose(const std::u16string& id) const;
    void refuseStart(const Stanza& stanza, std::u16string_view code, std::u16string_view condition);

    std::uint32_t blockSize_ = 0;  // bytes; only the sender sets it
    std::uint32_t seq_ = 0;        // of the next block
    std::u16string target_;        // the other side's full JID; stays empty for the receiver
};

}  // namespace protolink
