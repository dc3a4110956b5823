// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/roster/contact_list.h"

#include <algorithm>
#include <QCollator>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>

#include "messenger/core/values/json_text.h"

namespace oku {
namespace {

constexpr qsizetype kMostDetails = 100000;  // of contacts that never come
constexpr qsizetype kMostResources = 64;    // of a contact, who chooses how many there are

bool isOlder(const Resource& a, const Resource& b) {
    return std::tie(a.changed, a.order) < std::tie(b.changed, b.order);
}

/// Puts a resource behind the others; where there are too many, the oldest makes room.
void append(QList<Resource>& resources, const Resource& resource) {
    if (resources.size() >= kMostResources) {
        resources.erase(std::min_element(resources.begin(), resources.end(), isOlder));
    }
    resources.append(resource);
}

/// The sum of a contact's resources, as a list shows it.
void sumUp(Contact& contact) {
    const auto best =
        std::max_element(contact.resources.begin(), contact.resources.end(), [](const Resource& a, const Resource& b) {
            return a.priority != b.priority ? a.priority < b.priority : isOlder(a, b);
        });
    contact.status = best == contact.resources.end() ? Status::offline : best->status;
    contact.description = best == contact.resources.end() ? QString() : best->description;
}

/// By group, then by name, as the person's language orders them; of equal ones the address decides. What a text comes
/// to in that order is found once for each, and once for a group.
void sortByName(QList<Contact>& contacts) {
    struct Row {
        const QCollatorSortKey* group;
        QCollatorSortKey name;
        qsizetype place;
    };
    const QCollator collator;
    std::map<QString, QCollatorSortKey> groups;
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(contacts.size()));
    for (qsizetype at = 0; at < contacts.size(); ++at) {
        const Contact& contact = contacts[at];
        auto group = groups.find(contact.group);
        if (group == groups.end()) group = groups.emplace(contact.group, collator.sortKey(contact.group)).first;
        rows.push_back({&group->second, collator.sortKey(contact.name), at});
    }
    std::sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
        if (a.group != b.group) {
            if (const int order = a.group->compare(*b.group)) return order < 0;
        }
        if (const int order = a.name.compare(b.name)) return order < 0;
        return contacts[a.place].jid < contacts[b.place].jid;
    });
    QList<Contact> sorted;
    sorted.reserve(contacts.size());
    for (const Row& row : rows) sorted.append(std::move(contacts[row.place]));
    contacts = std::move(sorted);
}

}  // namespace

ContactList::ContactList(QString path, QObject* parent)
    : QObject(parent), file_(std::move(path), [this] { return asJson(); }) {
    connect(&file_, &ContactFile::noticed, this, &ContactList::noticed);
}

void ContactList::load() {
    for (const auto& value : file_.load()) {
        const QJsonObject object = value.toObject();
        Entry entry;
        entry.contact.jid = object[QStringLiteral("jid")].toString();
        if (entry.contact.jid.isEmpty()) continue;
        entry.contact.name = object[QStringLiteral("name")].toString();
        entry.contact.group = object[QStringLiteral("group")].toString();
        entry.contact.subscription = object[QStringLiteral("subscription")].toString();
        entry.contact.waiting = object[QStringLiteral("waiting")].toBool();
        entry.groups = object[QStringLiteral("groups")].toVariant().toStringList();
        entries_.insert_or_assign(entry.contact.jid, std::move(entry));
    }
}

QByteArray ContactList::asJson() const {
    JsonText list;
    list.beginList();
    for (const auto& [jid, entry] : entries_) {
        list.beginObject();
        list.put("jid", jid);
        list.put("name", entry.contact.name);
        list.put("group", entry.contact.group);
        list.put("groups", entry.groups);
        list.put("subscription", entry.contact.subscription);
        list.put("waiting", entry.contact.waiting);
        list.endObject();
    }
    list.endList();
    return std::move(list).take();
}

void ContactList::add(const Basics& basics) {
    const bool isNew = !entries_.contains(basics.jid);
    Entry& entry = entries_[basics.jid];
    entry.stale = false;
    Contact& contact = entry.contact;
    const Contact before = contact;
    contact.jid = basics.jid;
    contact.name = basics.name;
    contact.group = shared(basics.group);
    if (basics.waiting) {
        contact.waiting = *basics.waiting;
        contact.subscription = QStringLiteral("none");
    }
    if (const auto found = details_.find(basics.jid); found != details_.end()) {
        const ContactDetails details = found->second;
        details_.erase(found);
        setDetails(basics.jid, details);
    }
    const bool same = before.name == contact.name && before.group == contact.group &&
                      before.subscription == contact.subscription && before.waiting == contact.waiting;
    if (isNew || !same) {
        file_.change();
        touch(entry);
    }
}

void ContactList::remove(const QString& jid) {
    if (!entries_.erase(jid)) return;
    file_.change();
    gone_.append(jid);
    scheduleTelling();
}

void ContactList::setDrawing(bool on) {
    drawing_ = on;
    if (!on) return;
    const bool wasRebuilding = rebuilding_;
    if (wasRebuilding) {
        std::erase_if(entries_, [this](const auto& pair) {
            if (pair.second.stale) gone_.append(pair.first);
            return pair.second.stale;
        });
        rebuilding_ = false;
        details_.clear();
        // A list is known from the first one on, even when it is empty.
        if (!gone_.isEmpty() || !file_.known()) file_.change();
        file_.save();
        file_.setHeld(false);
    }
    scheduleTelling();
    if (wasRebuilding) emit rebuilt();
}

void ContactList::beginRebuild() {
    rebuilding_ = true;
    file_.setHeld(true);  // written when it is complete, never half-way
    for (auto& [jid, entry] : entries_) entry.stale = true;
}

void ContactList::abortRebuild() {
    if (!rebuilding_) return;
    rebuilding_ = false;
    drawing_ = true;
    for (auto& [jid, entry] : entries_) entry.stale = false;
    file_.setHeld(false);
    scheduleTelling();
}

void ContactList::setPresence(const QString& jid, const Resource& presence) {
    const auto found = entries_.find(jid);
    if (found == entries_.end()) return;
    Resource resource = presence;
    resource.order = ++lastPresence_;
    auto& resources = found->second.contact.resources;
    if (resource.status == Status::offline && resource.name.isEmpty()) {
        resources.clear();
    } else {
        const auto known = std::find_if(resources.begin(), resources.end(),
                                        [&](const Resource& other) { return other.name == resource.name; });
        // Whoever cannot be reached is not there; an error about the address tells nothing of resources that are.
        if (resource.status == Status::offline || resource.status == Status::error) {
            if (known != resources.end()) resources.erase(known);
        } else if (known != resources.end()) {
            *known = resource;
        } else {
            append(resources, resource);
        }
    }
    sumUp(found->second.contact);
    // What somebody said on leaving is still worth showing.
    if (resources.isEmpty()) found->second.contact.description = resource.description;
    touch(found->second);
}

void ContactList::setAllOffline() {
    for (auto& [jid, entry] : entries_) {
        Contact& contact = entry.contact;
        const bool nothingTold = contact.tune.isEmpty() && contact.mood.isEmpty();
        if (contact.resources.isEmpty() && contact.status == Status::offline && nothingTold) continue;
        contact.resources.clear();
        contact.tune.clear();
        contact.mood.clear();
        sumUp(entry.contact);
        touch(entry);
    }
}

void ContactList::setNews(const QString& jid, QString Contact::*field, const QString& text) {
    const auto found = entries_.find(jid);
    if (found == entries_.end() || found->second.contact.*field == text) return;
    found->second.contact.*field = text;
    touch(found->second);
}

void ContactList::setDetails(const QString& jid, const ContactDetails& details) {
    const auto found = entries_.find(jid);
    if (found == entries_.end() || found->second.stale) {
        if (static_cast<qsizetype>(details_.size()) < kMostDetails) details_[jid] = details;
        if (found == entries_.end()) return;
    }
    Contact& contact = found->second.contact;
    const bool same = contact.subscription == details.subscription && contact.waiting == details.asked &&
                      found->second.groups == details.groups;
    if (same) return;
    contact.subscription = shared(details.subscription);
    contact.waiting = details.asked;
    found->second.groups.clear();
    for (const QString& group : details.groups) found->second.groups.append(shared(group));
    file_.change();
    touch(found->second);
}

QString ContactList::shared(const QString& text) { return *texts_.insert(text); }

QStringList ContactList::groups(const QString& jid) const {
    const auto found = entries_.find(jid);
    return found == entries_.end() ? QStringList() : found->second.groups;
}

void ContactList::addUnread(const QString& jid) {
    const auto found = entries_.find(jid);
    if (found == entries_.end()) return;
    emit unreadChanged(jid, ++found->second.contact.unread);
}

void ContactList::clearUnread(const QString& jid) {
    const auto found = entries_.find(jid);
    if (found == entries_.end() || found->second.contact.unread == 0) return;
    found->second.contact.unread = 0;
    emit unreadChanged(jid, 0);
}

QList<Contact> ContactList::contacts() const {
    QList<Contact> list;
    list.reserve(static_cast<qsizetype>(entries_.size()));
    for (const auto& [jid, entry] : entries_) list.append(entry.contact);
    sortByName(list);
    return list;
}

std::optional<Contact> ContactList::contact(const QString& jid) const {
    const auto found = entries_.find(jid);
    return found == entries_.end() ? std::nullopt : std::optional(found->second.contact);
}

void ContactList::touch(Entry& entry) {
    if (!std::exchange(entry.touched, true)) touched_.append(entry.contact.jid);
    scheduleTelling();
}

void ContactList::scheduleTelling() {
    if (!drawing_ || rebuilding_ || (touched_.isEmpty() && gone_.isEmpty())) return;
    if (std::exchange(tellingSoon_, true)) return;
    QMetaObject::invokeMethod(this, &ContactList::tellChanges, Qt::QueuedConnection);
}

void ContactList::tellChanges() {
    tellingSoon_ = false;
    if (!drawing_ || rebuilding_) return;
    QStringList gone = std::exchange(gone_, {});
    gone.removeDuplicates();
    const QStringList touched = std::exchange(touched_, {});
    for (const QString& jid : gone) {
        if (!has(jid)) emit removed(jid);
    }
    for (const QString& jid : touched) {
        const auto found = entries_.find(jid);
        // One that went and came back stands here twice.
        if (found == entries_.end() || !std::exchange(found->second.touched, false)) continue;
        const Contact contact = found->second.contact;
        emit changed(contact);
    }
}

void ContactList::dropChanges() {
    for (const QString& jid : touched_) {
        if (const auto found = entries_.find(jid); found != entries_.end()) found->second.touched = false;
    }
    touched_.clear();
    gone_.clear();
}

}  // namespace oku
