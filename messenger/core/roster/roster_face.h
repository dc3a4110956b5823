// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QList>
#include <QObject>
#include <QStringList>

#include "messenger/core/values/contact.h"
#include "messenger/core/values/info.h"

namespace oku {

/// The contacts of the accounts, and what they and the servers tell of themselves. MessengerFace says what holds for
/// all faces.
class RosterFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual QList<Contact> contacts(const QString& account) const = 0;
    [[nodiscard]] virtual std::optional<Contact> contact(const QString& account, const QString& jid) const = 0;
    /// Puts a contact on the roster (without a name, under its JID's first part) and asks for its presence.
    virtual QString addContact(const QString& account, const QString& jid, const QString& name = {},
                               const QString& group = {}) = 0;
    virtual QString renameContact(const QString& account, const QString& jid, const QString& name) = 0;
    virtual QString moveContact(const QString& account, const QString& jid, const QString& group) = 0;
    virtual QString removeContact(const QString& account, const QString& jid) = 0;
    virtual QString subscribe(const QString& account, const QString& jid) = 0;
    /// Answers a request for authorization with yes; `askInReturn` asks for the contact's presence too.
    virtual QString authorize(const QString& account, const QString& jid, bool askInReturn = false) = 0;
    virtual QString deny(const QString& account, const QString& jid) = 0;
    /// Requests for authorization that wait for an answer, at most 1000 of them.
    [[nodiscard]] virtual QStringList pendingAuthorizations(const QString& account) const = 0;
    /// Asks each resource of the contact for its client and features; infoReceived() follows for each, at the latest
    /// after 10 s with what is known, then infoComplete().
    virtual QString requestInfo(const QString& account, const QString& jid) = 0;
    /// serverInfoReceived() follows, at the latest after 10 s.
    virtual QString requestServerInfo(const QString& account) = 0;

signals:
    /// The account's list is complete: after a login, and once at start with the last list that is known. What became
    /// different with it is not told one by one.
    void rosterComplete(const QString& account);
    /// A contact was added or changed (name, group, subscription, presence). Told once for all that changed in one turn
    /// of the event loop.
    void contactChanged(const QString& account, const oku::Contact& contact);
    void unreadChanged(const QString& account, const QString& jid, int unread);
    void contactRemoved(const QString& account, const QString& jid);
    /// A contact's presence as it came, before contactChanged() tells the sum of its resources.
    void presenceReceived(const QString& account, const QString& jid, const oku::Resource& resource);
    /// Somebody asks to see the own presence: answer with authorize() or deny().
    void authorizationRequested(const QString& account, const QString& jid);
    void infoReceived(const QString& account, const oku::ContactInfo& info);
    void infoComplete(const QString& account, const QString& jid);
    void serverInfoReceived(const QString& account, const oku::ServerInfo& info);
};

}  // namespace oku
