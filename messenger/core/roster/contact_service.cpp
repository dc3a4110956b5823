// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/roster/contact_service.h"

#include <algorithm>
#include <QFile>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

QString listPath(const QString& settingsPath) {
    const QString suffix = QStringLiteral(".config");
    QString base = settingsPath;
    if (base.endsWith(suffix)) base.chop(suffix.size());
    return base + QStringLiteral(".contacts");
}

Resource resourceOfState(const OKU_CONTACT_STATE& state) {
    Resource resource;
    const auto* info = state.resource && state.resource->size >= sizeof(OKU_RESOURCE_INFO) ? state.resource : nullptr;
    if (info) {
        resource.name = wideText(info->resource);
        resource.priority = info->priority;
    }
    const bool known = state.status >= OKU_STATUS_ONLINE && state.status <= OKU_STATUS_ERROR;
    resource.status = known ? static_cast<Status>(state.status) : Status::online;
    resource.description = wideText(state.description);
    resource.changed = QDateTime::fromSecsSinceEpoch(state.time, Qt::UTC);
    return resource;
}

/// The icons whose tooltip tells something of a contact.
struct NewsIcon {
    QLatin1String name;
    QString Contact::*field;
};
constexpr NewsIcon kNewsIcons[] = {{QLatin1String("XMPP/UserTune"), &Contact::tune},
                                   {QLatin1String("XMPP/UserMood"), &Contact::mood}};

}  // namespace

ContactService::ContactService(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent)
    : QObject(parent), accounts_(accounts) {
    services.provide(u"OKU/CTL/AddContact", [this](OKU_WORD param, OKU_WORD) { return add(param); });
    services.provide(u"OKU/CTL/FndContact", [this](OKU_WORD param, OKU_WORD) { return find(param); });
    services.provide(u"OKU/CTL/DelContact", [this](OKU_WORD handle, OKU_WORD) { return remove(handle); });
    services.provide(u"OKU/CTL/AddContactIcon",
                     [this](OKU_WORD handle, OKU_WORD icon) { return setIcon(handle, icon, true); });
    services.provide(u"OKU/CTL/DelContactIcon",
                     [this](OKU_WORD handle, OKU_WORD icon) { return setIcon(handle, icon, false); });
    services.provide(u"OKU/CTL/EnableDrawing", [this](OKU_WORD on, OKU_WORD) { return enableDrawing(on != 0); });
    services.provide(u"OKU/CTL/DeleteAll", [this](OKU_WORD, OKU_WORD netId) { return deleteAll(netId); });
    services.provide(u"OKU/CTL/SetContactState", [this](OKU_WORD param, OKU_WORD) { return setState(param); });
    services.provide(u"OKU/CTL/SetAllOffline", [this](OKU_WORD, OKU_WORD netId) { return setAllOffline(netId); });
    // A rebuild is one piece of work of the plugin. When that has returned without an end of it (the server answered
    // with an error), what was on the list before is worth more than nothing.
    connect(&queue, &PluginQueue::callFinished, this, [this] {
        for (const auto& [key, list] : lists_) list->abortRebuild();
    });
}

ContactList& ContactService::list(const AccountEntry& account) {
    auto& list = lists_[account.key];
    if (list) return *list;
    list = std::make_unique<ContactList>(listPath(account.key));
    const QString key = account.key;
    const auto jid = [this, key] {
        const auto* entry = accounts_.byKey(key);
        return entry ? entry->jid() : QString();
    };
    connect(list.get(), &ContactList::changed, this,
            [this, jid](const Contact& contact) { emit changed(jid(), contact); });
    connect(list.get(), &ContactList::unreadChanged, this,
            [this, jid](const QString& contact, int unread) { emit unreadChanged(jid(), contact, unread); });
    connect(list.get(), &ContactList::removed, this, [this, jid](const QString& gone) { emit removed(jid(), gone); });
    connect(list.get(), &ContactList::noticed, this, [this, jid](const QString& text) { emit noticed(jid(), text); });
    connect(list.get(), &ContactList::rebuilt, this, [this, key] { emit rebuilt(key); });
    list->load();
    return *list;
}

void ContactService::saveAll() {
    for (const auto& [key, list] : lists_) list->save();
}

void ContactService::forget(const QString& key) {
    lists_.erase(key);
    QFile::remove(listPath(key));
}

void ContactService::dropPlugin() {
    for (const auto& [key, list] : lists_) {
        list->abortRebuild();
        list->setAllOffline();
        list->tellChanges();
    }
    saveAll();
    handles_.clear();
    handlesByName_.clear();
}

OKU_WORD ContactService::handleOf(const QString& key, const QString& jid) {
    OKU_WORD& handle = handlesByName_[{key, jid}];
    if (!handle) {
        handle = ++lastHandle_;
        handles_.emplace(handle, Handle{key, jid});
    }
    return handle;
}

QStringList ContactService::groups() const {
    QStringList groups;
    for (const auto& [key, list] : lists_) {
        for (const Contact& contact : list->contacts()) groups.append(contact.group);
    }
    groups.removeAll(QString());
    std::sort(groups.begin(), groups.end(),
              [](const QString& one, const QString& other) { return one.localeAwareCompare(other) < 0; });
    groups.removeDuplicates();
    return groups;
}

OKU_WORD ContactService::add(OKU_WORD param) {
    auto* record = recordAt<OKU_CONTACT_ADD>(param);
    const auto* account = record ? accounts_.byNetId(record->identity.netId) : nullptr;
    ContactList::Basics basics;
    if (record) basics = {bareJid(wideText(record->identity.id)), wideText(record->name), wideText(record->group), {}};
    if (!account || basics.jid.isEmpty()) return 0;
    if (record->fields & OKU_CONTACT_FIELDS_AUTH) basics.waiting = record->authorization == OKU_CONTACT_AUTH_ASKED;
    ContactList& contacts = list(*account);
    if (!starting_ || !contacts.known()) contacts.add(basics);
    record->handle = handleOf(account->key, basics.jid);
    return record->handle;
}

OKU_WORD ContactService::find(OKU_WORD param) {
    const auto* identity = reinterpret_cast<const OKU_CONTACT_IDENTITY*>(param);
    const auto* account = identity ? accounts_.byNetId(identity->netId) : nullptr;
    if (!account) return 0;
    const QString jid = bareJid(wideText(identity->id));
    return list(*account).has(jid) ? handleOf(account->key, jid) : 0;
}

OKU_WORD ContactService::remove(OKU_WORD handle) {
    const auto found = handles_.find(handle);
    if (found == handles_.end()) return 0;
    const Handle contact = found->second;
    handles_.erase(found);
    handlesByName_.erase({contact.key, contact.jid});
    if (const auto at = lists_.find(contact.key); at != lists_.end()) at->second->remove(contact.jid);
    return 1;
}

OKU_WORD ContactService::setIcon(OKU_WORD handle, OKU_WORD icon, bool there) {
    const auto found = handles_.find(handle);
    if (found == handles_.end()) return 0;
    const auto* record = recordAt<OKU_CONTACT_ICON>(icon);
    const auto* row = std::find_if(std::begin(kNewsIcons), std::end(kNewsIcons),
                                   [&](const NewsIcon& one) { return record && wideText(record->icon) == one.name; });
    // Nothing else is drawn here: a user interface shows a contact's icon by its status.
    if (row == std::end(kNewsIcons)) return 1;
    const auto list = lists_.find(found->second.key);
    const QString tooltip = there ? wideLines(record->tooltip) : QString();
    if (list != lists_.end()) list->second->setNews(found->second.jid, row->field, tooltip);
    return 1;
}

OKU_WORD ContactService::enableDrawing(bool on) {
    for (const auto& [key, list] : lists_) list->setDrawing(on);
    return 1;
}

OKU_WORD ContactService::deleteAll(OKU_WORD netId) {
    const auto* account = accounts_.byNetId(static_cast<std::uint32_t>(netId));
    // An account that is being unloaded is not registered any more: its list stays, to be shown at the next start.
    if (!account) return 0;
    list(*account).beginRebuild();
    return 1;
}

OKU_WORD ContactService::setState(OKU_WORD param) {
    const auto* state = recordAt<OKU_CONTACT_STATE>(param);
    const auto* identity =
        state && state->contact && state->contact->size >= sizeof(OKU_CONTACT_RECORD) ? state->contact : nullptr;
    const auto* account = identity ? accounts_.byNetId(identity->netId) : nullptr;
    if (!account) return 0;
    const QString jid = bareJid(wideText(identity->id));
    const Resource resource = resourceOfState(*state);
    emit presence(account->jid(), jid, resource);
    list(*account).setPresence(jid, resource);
    return 1;
}

OKU_WORD ContactService::setAllOffline(OKU_WORD netId) {
    const auto* account = accounts_.byNetId(static_cast<std::uint32_t>(netId));
    if (!account) return 0;
    list(*account).setAllOffline();
    return 1;
}

}  // namespace oku
