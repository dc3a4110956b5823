// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The file transfers of one account.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "im/contact_entry.h"
#include "router/routing.h"
#include "transfer/downloads.h"
#include "transfer/session.h"

namespace protolink {

class CSessionManager final : public SessionOwner {
public:
    CSessionManager(CClientClass& client, StreamOutput& output, CProtoEventDispatcher& dispatcher, Contacts& contacts,
                    OKU_HANDLER downloadTick);
    ~CSessionManager() override;

    /// Offers a file to the first resource of the contact that takes files, or to no resource by name when none does.
    void SendFile(const std::u16string& contact, const std::u16string& path);
    /// A peer's offer of a file (stream initiation).
    void HandleOffer(const Stanza& stanza);
    /// Bytes of a file in the stream: they go to the first session that takes them. False when none does.
    bool DispatchStanza(const Stanza& stanza);
    void RemoveSession(CSession& session) override;

    /// The host's timer while something is downloaded.
    OKU_WORD onDownloadTick(OKU_WORD eventRecord) { return downloads_.onTick(eventRecord); }
    /// Tells the threads of downloads to end, and waits for none.
    void stopDownloads() { downloads_.stop(); }
    /// Ends all sessions and leaves their windows to the host. No session begins any more.
    void end();

private:
    std::shared_ptr<CSession> begin();
    void take(const Stanza& stanza, const xmlElement& file, std::u16string_view method, const std::u16string& folder);

    CClientClass& client_;
    Contacts& contacts_;
    Downloads downloads_;
    TransferAccount account_;
    std::vector<std::shared_ptr<CSession>> sessions_;  // in order of creation
    bool ended_ = false;
};

}  // namespace protolink
