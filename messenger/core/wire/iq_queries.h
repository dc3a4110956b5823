// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <QByteArray>
#include <QObject>

#include "messenger/core/wire/hook_chain.h"

namespace oku {

class ServiceRegistry;

/// The messenger's own requests on an account's stream, sent through "PFRawSend". Their answers are blanked out before
/// the plugin parses them, as it never asked.
class IqQueries : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    /// The whole answer as bytes of XML, or nothing when none came in time or the connection ended.
    using Answer = std::function<void(const std::optional<QByteArray>& answer)>;

    explicit IqQueries(ServiceRegistry& services, QObject* parent = nullptr);

    /// Sends an iq; a call into the plugin, so only from the queue. `to` may be empty, `payload` is XML. False when it
    /// could not be sent; `answer` is not called then.
    bool send(AccountEntry& account, const QString& to, const QString& type, const QString& payload, Answer answer,
              int timeout = 10000);
    /// Raw bytes on the account's stream; only from the queue. True when the connection took them.
    bool sendRaw(AccountEntry& account, const QByteArray& xml);
    /// The connection has ended: nothing of it will be answered.
    void connectionEnded(const AccountEntry& account);

    bool onProtocolEvent(ProtocolEvent& event) override;

private:
    struct Pending {
        const AccountEntry* account;
        QString to;
        Answer answer;
    };

    void finish(const std::string& id, const std::optional<QByteArray>& answer);

    ServiceRegistry& services_;
    std::map<std::string, Pending> pending_;
    quint64 lastNumber_ = 0;
};

}  // namespace oku
