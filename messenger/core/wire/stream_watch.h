// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What arrives and the plugin does not pass on, the time of delayed messages (XEP-0203, XEP-0091) among it.
#pragma once

#include <deque>
#include <map>
#include <QDateTime>
#include <QObject>

#include "messenger/core/values/contact.h"
#include "messenger/core/wire/hook_chain.h"

namespace oku {

/// Reads along what arrives, for what the plugin does not pass on: subscriptions and groups of the roster, the time at
/// which a late message was written, which message of ours came back, and what a server says when it ends a stream.
/// It changes nothing.
class StreamWatch : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    bool onProtocolEvent(ProtocolEvent& event) override;

    /// When the message that the plugin reports now was written, if it came late. The reports follow the order in which
    /// the messages arrived.
    QDateTime takeDelay(const AccountEntry& account, const QString& from, const QString& resource);

signals:
    void rosterItem(oku::AccountEntry* account, const QString& jid, const oku::ContactDetails& details);
    /// A message with this id came back with an error, from this address.
    void bounced(oku::AccountEntry* account, const QString& id, const QString& from);
    /// The server ends the stream; `condition` is the error's element name.
    void streamError(oku::AccountEntry* account, const QString& condition, const QString& text);

private:
    struct Late {
        QString from;
        QString resource;
        QDateTime written;  ///< invalid for a message that is not late
    };

    void readMessage(AccountEntry& account, const Stanza& stanza);
    void readRoster(AccountEntry& account, const Stanza& stanza, std::string_view text);
    void readStreamError(AccountEntry& account, const Stanza& stanza, std::string_view text);

    std::map<const AccountEntry*, std::deque<Late>> late_;
};

/// The time of a stamp of XEP-0203 or of the older XEP-0091 form; invalid when it is neither.
QDateTime stampTime(const QString& stamp);

}  // namespace oku
