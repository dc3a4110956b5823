// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>
#include <string>
#include <vector>

#include "messenger/core/wire/hook_chain.h"

namespace oku {

/// Whether `from` is the account itself, in any of its resources, or its server. No address counts as the server.
bool isOwnAddress(const AccountEntry& account, std::string_view from);
/// Whether `from` may answer a request that went to `to`.
bool mayAnswer(const AccountEntry& account, std::string_view to, std::string_view from);

/// Takes out of the received text what must not reach the plugin, which asks neither for an address nor for the state
/// of the line.
///
/// - Of a third party: roster pushes and roster errors from others than the account or its server, answers from another
///   address than the request went to, mail notices and shared status from outside, requests to confirm a login that
///   come from a person, sizes of offered files that are no numbers, and end tags that close nothing.
/// - Unless the user allowed clear text for the account: on a line that is not encrypted all but what leads to TLS or
/// to
///   the end; on one that is, until the session is bound, messages, presences and what is no answer. Whoever sits on
///   the line may have said it, or a server that is none of the account's.
class StanzaGuard : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    /// Something was taken out for the state of the line, for the first time on this connection.
    void distrusted(oku::AccountEntry* account);
    /// The server opens no session; `condition` is the error's element name. The plugin gives the login up without a
    /// word.
    void sessionRefused(oku::AccountEntry* account, const QString& condition);

private:
    struct Request {
        std::string to;        ///< the bare or full address that it went to
        bool session = false;  ///< a result binds the session
    };
    /// The requests that wait for an answer, by their id.
    using Requests = std::map<std::string, Request, std::less<>>;
    class Check;

    void noteRequests(const ProtocolEvent& event);
    void tell(AccountEntry& account);

    std::map<const AccountEntry*, Requests> requests_;
};

}  // namespace oku
