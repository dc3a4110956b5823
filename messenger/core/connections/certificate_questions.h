// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <map>
#include <QObject>
#include <QSet>

#include "messenger/core/net/socket_types.h"
#include "messenger/core/values/account.h"

namespace oku {

class Accounts;
struct AccountEntry;
class MessageBoxes;

/// Asks the user about bad certificates, and keeps those that were accepted in the account's settings.
class CertificateQuestions : public QObject {
    Q_OBJECT

public:
    using Decide = std::function<void(const net::ConnectionId& waiting, net::CertificateDecision decision)>;

    /// `decide` gets the answers, for the connections that wait for them.
    CertificateQuestions(Accounts& accounts, MessageBoxes& boxes, Decide decide)
        : accounts_(accounts), boxes_(boxes), decide_(std::move(decide)) {}

    /// Asks for the account whose key is `owner`. Where the same question is open already, its answer goes to this
    /// connection.
    void ask(const QString& owner, const net::ConnectionId& id, const net::BadCertificate& certificate);
    /// From now on the account accepts it. Nothing happens without an account.
    static void keep(AccountEntry* account, const QByteArray& fingerprint);
    /// The SHA-256 fingerprints that the account accepts.
    static QSet<QByteArray> accepted(const AccountEntry& account);

signals:
    void refused(const QString& account, const oku::CertificateProblem& problem);

private:
    Accounts& accounts_;
    MessageBoxes& boxes_;
    Decide decide_;
    /// The open questions about an account's certificate, each with the connection that waits for its answer. It may
    /// not be the one that it was asked for: servers do not wait for as long as a person thinks.
    std::map<std::pair<QString, QByteArray>, net::ConnectionId> open_;
};

}  // namespace oku
