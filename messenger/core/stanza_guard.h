#pragma once

#include <map>
#include <string>

#include "messenger/core/hook_chain.h"

namespace oku {

/// Whether `from` is the account itself, in any of its resources, or its server. No address counts as the server.
bool isOwnAddress(const AccountEntry& account, const QString& from);
/// Whether `from` may answer a request that went to `to`.
bool mayAnswer(const AccountEntry& account, const QString& to, const QString& from);

/// Takes out of the received text what a third party must not send, as the plugin itself asks nobody's address:
/// roster pushes and roster errors from others than the account or its server, answers from another address than the
/// request went to, mail notices and shared status from outside, requests to confirm a login that come from a person,
/// and end tags that close nothing.
class StanzaGuard : public ProtocolListener {
public:
    bool onProtocolEvent(ProtocolEvent& event) override;

private:
    /// The requests that wait for an answer: id, and the bare or full address that they went to.
    using Requests = std::map<std::string, std::string>;

    void noteRequests(const ProtocolEvent& event);
    void check(ProtocolEvent& event);

    std::map<const AccountEntry*, Requests> requests_;
};

}  // namespace oku
