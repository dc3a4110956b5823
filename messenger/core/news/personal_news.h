// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QObject>

#include "host/oku/pep.h"
#include "messenger/core/values/news.h"

namespace oku {

struct AccountEntry;
class Accounts;
class ContactService;
class EventRegistry;
class PluginQueue;
class ServiceRegistry;

/// What contacts, and the user's other clients, publish of themselves (XEP-0163), and what the user does. Hears
/// "XMPP/OnPEPEvent" behind the listeners that came with the plugin. What somebody publishes who is not on the contact
/// list ends here, so that strangers have no way to show pop-ups.
class PersonalNews : public QObject {
    Q_OBJECT

public:
    PersonalNews(ServiceRegistry& services, Accounts& accounts, ContactService& contacts, PluginQueue& queue,
                 QObject* parent = nullptr);

    /// Listens for as long as the plugin is loaded.
    void listen(EventRegistry& events);

    /// Each gives the reason when it cannot be published; an empty value takes back what was. While the plugin is held
    /// by a box it waits, and a failure is told by refused().
    QString publish(AccountEntry& account, const Tune& tune);
    QString publish(AccountEntry& account, const Mood& mood);
    QString publish(AccountEntry& account, const Location& location);
    /// Takes back the tune of an account that is about to leave. A call into the plugin: only from the queue.
    void takeBackTune(const AccountEntry& account) const;

signals:
    /// `from` is a contact's bare JID, or the account's own.
    void tune(const QString& account, const QString& from, const oku::Tune& tune);
    void mood(const QString& account, const QString& from, const oku::Mood& mood);
    void location(const QString& account, const QString& from, const oku::Location& location);
    void refused(const QString& account, const QString& reason);

private:
    static OKU_WORD OKU_CALL onEvent(OKU_WORD param, OKU_WORD extra, OKU_WORD context);
    bool take(const OKU_PEP_EVENT& event, OKU_WORD data);
    /// `publish` hands its data to the plugin and gives the plugin's answer.
    QString give(AccountEntry& account, std::function<bool()> publish);
    bool call(const AccountEntry& account, std::uint32_t kind, OKU_WORD data) const;

    ServiceRegistry& services_;
    Accounts& accounts_;
    ContactService& contacts_;
    PluginQueue& queue_;
};

}  // namespace oku
