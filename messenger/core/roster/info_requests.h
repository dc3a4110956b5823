// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/values/contact.h"
#include "messenger/core/values/info.h"

namespace oku {

struct AccountEntry;
class ContactService;
class IqQueries;
class PluginQueue;

/// Asks contacts and servers what they are (XEP-0030, XEP-0092).
class InfoRequests : public QObject {
    Q_OBJECT

public:
    InfoRequests(PluginQueue& queue, IqQueries& queries, ContactService& contacts, QObject* parent = nullptr);

    QString askContact(AccountEntry& account, const QString& jid);
    QString askServer(AccountEntry& account);

signals:
    void contactAnswered(const QString& account, const oku::ContactInfo& info);
    void contactComplete(const QString& account, const QString& jid);
    void serverAnswered(const QString& account, const oku::ServerInfo& info);

private:
    struct Round;

    void askResource(AccountEntry& account, const std::shared_ptr<Round>& round, const Resource& resource);

    PluginQueue& queue_;
    IqQueries& queries_;
    ContactService& contacts_;
};

}  // namespace oku
