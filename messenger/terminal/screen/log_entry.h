// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// What the messenger told, as it is kept for the display, and how it is laid out in lines.
#pragma once

#include <QDateTime>
#include <QHashFunctions>
#include <QString>
#include <vector>

#include "messenger/terminal/screen/style.h"

namespace oku::terminal {

/// The other side of a conversation. An empty `jid` is nobody.
struct Peer {
    QString account;
    QString jid;

    /// Addresses differ more often than accounts do.
    bool operator==(const Peer& other) const { return jid == other.jid && account == other.account; }
    bool none() const { return jid.isEmpty(); }
};

inline size_t qHash(const Peer& peer, size_t seed = 0) { return qHashMulti(seed, peer.account, peer.jid); }

/// Where an entry shows: in the main window and its conversation, in its conversation only, or in these and the window
/// that was looked at when it came (what must not be missed).
enum class Shown { Both, ConversationOnly, InSight };

/// Undelivered: what the messenger says of a message that came back.
enum class EntryKind { Information, Listing, Incoming, Outgoing, Undelivered };

struct LogEntry {
    QDateTime time;  ///< shown as local time; to find that takes the system longer than all else of an entry
    EntryKind kind = EntryKind::Information;
    Style style = Style::Plain;
    QString mark;  ///< one sign in front of what is no message
    QString who;   ///< the writer of a message that came, the receiver of one that was sent
    QString text;  ///< may have several lines; harmless, see printable()
    Peer peer;
    Shown shown = Shown::Both;
    Peer alsoIn;          ///< a further window that shows it
    qint64 message = 0;   ///< its number in the history
    bool queued = false;  ///< a message that waits for the login
    int hang = 2;         ///< columns by which the further lines of a listing are set in
};

/// Whether the entry is shown in this conversation.
inline bool standsIn(const LogEntry& entry, const Peer& window) {
    return entry.peer == window || entry.alsoIn == window;
}

struct LogLayout {
    int columns = 80;
    bool conversation = false;  ///< the window of one contact
    bool manyAccounts = false;  ///< name the account in the main window
    QString me;                 ///< the own name in a conversation
};

/// The entry in lines of at most `columns`: time, writer and text in columns of their own where there is room for them.
std::vector<Line> layOut(const LogEntry& entry, const LogLayout& layout);

/// The line between two days.
Line dayLine(const QDate& day, int columns);

}  // namespace oku::terminal
