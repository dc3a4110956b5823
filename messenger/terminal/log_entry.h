// What the messenger told, as it is kept for the display, and how it is laid out in lines.
#pragma once

#include <QDateTime>
#include <QString>
#include <vector>

#include "messenger/terminal/style.h"

namespace oku::terminal {

// The other side of a conversation. An empty `jid` is nobody.
struct Peer {
    QString account;
    QString jid;

    bool operator==(const Peer&) const = default;
    bool none() const { return jid.isEmpty(); }
};

// Where an entry shows: in the main window and its conversation, in its conversation only, or in these and the window
// that was looked at when it came (what must not be missed).
enum class Shown { Both, ConversationOnly, InSight };

// Undelivered: what the messenger says of a message that came back.
enum class EntryKind { Information, Listing, Incoming, Outgoing, Undelivered };

struct LogEntry {
    QDateTime time;
    EntryKind kind = EntryKind::Information;
    Style style = Style::Plain;
    QString mark;  // one sign in front of what is no message
    QString who;   // the writer of a message that came, the receiver of one that was sent
    QString text;  // may have several lines; harmless, see printable()
    Peer peer;
    Shown shown = Shown::Both;
    Peer inSight;         // the conversation that was looked at when it came
    qint64 message = 0;   // its number in the history
    bool queued = false;  // a message that waits for the login
    int hang = 2;         // columns by which the further lines of a listing are set in
};

struct LogLayout {
    int columns = 80;
    bool conversation = false;  // the window of one contact
    bool manyAccounts = false;  // name the account in the main window
    QString me;                 // the own name in a conversation
};

// The entry in lines of at most `columns`: time, writer and text in columns of their own where there is room for them.
std::vector<Line> layOut(const LogEntry& entry, const LogLayout& layout);

// The line between two days.
Line dayLine(const QDate& day, int columns);

}  // namespace oku::terminal
