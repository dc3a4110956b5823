// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace oku {

struct AccountEntry;
class ContactService;
class IqQueries;
class PluginQueue;

/// What the user does to his contacts. The plugin has handlers for removing a contact and for answering a request for
/// authorization; adding and changing go as raw XML. Each returns an empty string, or a reason.
class RosterCommands : public QObject {
    Q_OBJECT

public:
    RosterCommands(PluginQueue& queue, IqQueries& queries, ContactService& contacts, QObject* parent = nullptr);

    QString add(AccountEntry& account, const QString& jid, const QString& name, const QString& group);
    QString rename(AccountEntry& account, const QString& jid, const QString& name);
    QString move(AccountEntry& account, const QString& jid, const QString& group);
    QString remove(AccountEntry& account, const QString& jid);
    QString subscribe(AccountEntry& account, const QString& jid);
    QString answer(AccountEntry& account, const QString& jid, int bits);

signals:
    void noticed(const QString& account, const QString& text);

private:
    void set(AccountEntry& account, const QString& jid, const QString& name, const QStringList& groups, bool subscribe);
    void sendSubscription(AccountEntry& account, const QString& jid);
    QString known(AccountEntry& account, const QString& jid) const;

    PluginQueue& queue_;
    IqQueries& queries_;
    ContactService& contacts_;
};

/// "The account is not connected", for the user.
QString notConnected();

}  // namespace oku
