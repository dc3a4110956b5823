// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <QObject>

#include "host/oku/contact.h"
#include "messenger/core/roster/contact_list.h"
#include "messenger/core/values/contact.h"

namespace oku {

class Accounts;
struct AccountEntry;
class PluginQueue;
class ServiceRegistry;

/// "OKU/CTL/...": what the plugin does to the contact lists of its accounts.
class ContactService : public QObject {
    Q_OBJECT

public:
    ContactService(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent = nullptr);

    /// The list of an account; made, with what is kept of it, when it is not there yet.
    ContactList& list(const AccountEntry& account);
    /// All groups that contacts are in, in order.
    [[nodiscard]] QStringList groups() const;
    /// While the plugin starts it adds what its own file holds. Where the host has a list of its own, that one counts.
    void setStarting(bool starting) { starting_ = starting; }
    void saveAll();
    /// Drops the account's list, and its file. The plugin must not be loaded.
    void forget(const QString& key);
    void dropPlugin();

signals:
    void changed(const QString& account, const oku::Contact& contact);
    void unreadChanged(const QString& account, const QString& jid, int unread);
    void removed(const QString& account, const QString& jid);
    /// A list was rebuilt from the server's answer.
    void rebuilt(const QString& key);
    void noticed(const QString& account, const QString& text);
    void presence(const QString& account, const QString& jid, const oku::Resource& resource);

private:
    struct Handle {
        QString key;
        QString jid;
    };

    OKU_WORD add(OKU_WORD param);
    OKU_WORD find(OKU_WORD param);
    OKU_WORD remove(OKU_WORD handle);
    OKU_WORD setIcon(OKU_WORD handle, OKU_WORD icon, bool there);
    OKU_WORD enableDrawing(bool on);
    OKU_WORD deleteAll(OKU_WORD netId);
    OKU_WORD setState(OKU_WORD param);
    OKU_WORD setAllOffline(OKU_WORD netId);
    OKU_WORD handleOf(const QString& key, const QString& jid);

    Accounts& accounts_;
    std::map<QString, std::unique_ptr<ContactList>> lists_;
    std::map<OKU_WORD, Handle> handles_;
    std::map<std::pair<QString, QString>, OKU_WORD> handlesByName_;
    OKU_WORD lastHandle_ = 0;
    bool starting_ = false;
};

}  // namespace oku
