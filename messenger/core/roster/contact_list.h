// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <QObject>
#include <QSet>
#include <QStringList>

#include "messenger/core/roster/contact_file.h"
#include "messenger/core/values/contact.h"

namespace oku {

/// The contact list of one account.
///
/// What changed in one turn of the event loop is told at its end, once for each contact, and not while drawing is off.
/// Between beginRebuild() and the moment when drawing goes on again everything that was not added once more is about to
/// go; what was, keeps its unread count and its resources. A rebuild that is not brought to an end is taken back by
/// abortRebuild(), and the list stays as it was. The list is kept in a file, so that it can be shown before a login.
///
/// Long, because whatever changes an entry also decides whether it is told, kept in the file or part of a rebuild.
class ContactList : public QObject {
    Q_OBJECT

public:
    /// What the plugin tells of a contact. `authorization` is empty while the plugin does not tell it.
    struct Basics {
        QString jid;
        QString name;
        QString group;
        std::optional<bool> waiting;
    };

    /// `path`: the file of the list; an empty one means that it is not kept.
    explicit ContactList(QString path, QObject* parent = nullptr);

    void load();
    /// Writes now what changed, which happens by itself soon after a change.
    void save() { file_.save(); }

    /// Whether a list was ever kept: then the plugin's own file, which is added at its start, shows nothing new.
    [[nodiscard]] bool known() const { return file_.known(); }

    void add(const Basics& basics);
    void remove(const QString& jid);
    [[nodiscard]] bool has(const QString& jid) const { return entries_.contains(jid); }

    void setDrawing(bool on);
    void beginRebuild();
    [[nodiscard]] bool rebuilding() const { return rebuilding_; }
    void abortRebuild();

    /// A resource's presence; `offline` takes it away, and all of them when it has no name.
    void setPresence(const QString& jid, const Resource& resource);
    /// Takes the tunes and moods as well: what was published while nobody listened is not known.
    void setAllOffline();
    /// A contact's tune or mood, in lines; empty: none any more.
    void setNews(const QString& jid, QString Contact::*field, const QString& text);

    /// Tells what has changed now, not at the end of the turn.
    void tellChanges();
    /// What has changed is told in another way: all contacts at once.
    void dropChanges();

    /// Unknown contacts are remembered until they are added.
    void setDetails(const QString& jid, const ContactDetails& details);
    /// All groups of a contact, as the server has them.
    [[nodiscard]] QStringList groups(const QString& jid) const;

    void addUnread(const QString& jid);
    void clearUnread(const QString& jid);

    [[nodiscard]] QList<Contact> contacts() const;  ///< by group, then by name
    [[nodiscard]] std::optional<Contact> contact(const QString& jid) const;

signals:
    void changed(const oku::Contact& contact);
    void unreadChanged(const QString& jid, int unread);
    void removed(const QString& jid);
    /// A rebuild came to its end.
    void rebuilt();
    void noticed(const QString& text);

private:
    struct Entry {
        Contact contact;
        QStringList groups;
        bool stale = false;    ///< not added once more in this rebuild
        bool touched = false;  ///< stands in touched_
    };

    void touch(Entry& entry);
    void scheduleTelling();
    [[nodiscard]] QByteArray asJson() const;
    /// The same text, kept once for all contacts.
    QString shared(const QString& text);

    ContactFile file_;
    std::map<QString, Entry> entries_;
    std::map<QString, ContactDetails> details_;  ///< of contacts that are not in the list yet
    QSet<QString> texts_;                        ///< groups and subscriptions, of which there are few
    QStringList touched_;                        ///< in the order in which they changed
    QStringList gone_;
    quint64 lastPresence_ = 0;
    bool tellingSoon_ = false;
    bool drawing_ = true;
    bool rebuilding_ = false;
};

}  // namespace oku
