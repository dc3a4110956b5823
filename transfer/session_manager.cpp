// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/session_manager.h"

#include <algorithm>
#include <utility>

#include "plugin/boundary.h"

namespace protolink {

CSessionManager::CSessionManager(CClientClass& client, StreamOutput& output, CProtoEventDispatcher& dispatcher,
                                 Contacts& contacts, OKU_HANDLER downloadTick)
    : client_(client),
      contacts_(contacts),
      downloads_(client, downloadTick),
      account_{client, output, dispatcher, downloads_} {}

CSessionManager::~CSessionManager() { end(); }

std::shared_ptr<CSession> CSessionManager::begin() {
    // Kept from its first moment on, so that whatever ends it later finds it.
    return sessions_.emplace_back(std::make_shared<CSession>(account_, *this));
}

void CSessionManager::SendFile(const std::u16string& contact, const std::u16string& path) {
    if (ended_) return;
    const std::shared_ptr<CSession> session = begin();
    const ResourceList& resources = contacts_.entry(contact).resources;
    const auto able = std::find_if(resources.begin(), resources.end(),
                                   [](const ResourceEntry& entry) { return entry.resFileTransfer != 0; });
    // Without a resource the offer goes to the bare address and a slash all the same.
    const std::u16string resource = able == resources.end() ? std::u16string() : able->resource;
    session->OfferFile(contact, path, resource);
}

bool CSessionManager::DispatchStanza(const Stanza& stanza) {
    // Sessions may end while they are asked.
    const std::vector<std::shared_ptr<CSession>> asked = sessions_;
    return std::any_of(asked.begin(), asked.end(), [&](const std::shared_ptr<CSession>& session) {
        return !session->dropped() && session->transport && session->transport->HandleStanza(stanza);
    });
}

void CSessionManager::RemoveSession(CSession& session) {
    const auto found = std::find_if(sessions_.begin(), sessions_.end(),
                                    [&](const std::shared_ptr<CSession>& kept) { return kept.get() == &session; });
    if (found == sessions_.end()) return;
    std::shared_ptr<CSession> removed = std::move(*found);
    sessions_.erase(found);
    // A call of the session may still be on the stack.
    releaseAfterCall(std::move(removed));
}

void CSessionManager::end() {
    ended_ = true;
    for (std::shared_ptr<CSession>& session : std::exchange(sessions_, {})) {
        session->retire();
        releaseAfterCall(std::move(session));
    }
    downloads_.end();
}

}  // namespace protolink
