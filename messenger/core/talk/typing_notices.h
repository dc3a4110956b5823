// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <QObject>
#include <QTimer>

namespace oku {

class Accounts;
struct AccountEntry;
class ContactService;
class PluginQueue;
class ServiceRegistry;

/// "OKU/PFTNSet": which contacts are typing. A notice that nothing follows goes away by itself; those of strangers, of
/// whom there may be any number, are not taken.
class TypingNotices : public QObject {
    Q_OBJECT

public:
    TypingNotices(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, ContactService& contacts,
                  int seconds, QObject* parent = nullptr);
    /// Tells the contact that the user is typing, or not any more. Nothing happens while the account is not online, or
    /// where its settings say that nobody is told.
    void send(AccountEntry& account, const QString& jid, bool composing);
    void set(const QString& account, const QString& jid, bool composing);
    /// Takes all notices of an account back.
    void clear(const QString& account);

signals:
    void changed(const QString& account, const QString& jid, bool composing);

private:
    ServiceRegistry& services_;
    PluginQueue& queue_;
    std::map<std::pair<QString, QString>, std::unique_ptr<QTimer>> timers_;  ///< of those who are shown as typing
    int seconds_;
};

}  // namespace oku
