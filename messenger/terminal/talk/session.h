// The interactive messenger without its display: keeps the log and the windows, turns what the messenger tells into
// words, and takes the lines that are typed.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <vector>

#include "messenger/core/messenger_face.h"
#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/info.h"
#include "messenger/core/values/log_line.h"
#include "messenger/core/values/message.h"
#include "messenger/core/values/windows.h"
#include "messenger/terminal/screen/line_editor.h"
#include "messenger/terminal/screen/log_entry.h"
#include "messenger/terminal/talk/contact_tree.h"
#include "messenger/terminal/talk/windows.h"

namespace oku::terminal {

class Commands;

// Where a session shows itself.
class Display {
public:
    virtual ~Display() = default;
    // An entry that the window which is seen shows.
    virtual void appended(const LogEntry& entry) = 0;
    // Something else may look different now: status, title, prompt, window.
    virtual void changed() = 0;
    virtual int columns() const = 0;
    // Of the log; less where something stands beside it.
    virtual int logColumns() const { return columns(); }
    // What a list shows of this one, or of all, may be different now.
    virtual void contactTouched(const Peer&) {}
    virtual void contactsReset() {}
    // The messenger is unloaded: the program ends.
    virtual void ended() = 0;
};

// How the list of contacts beside the log is seen.
struct ContactView {
    std::optional<bool> shown;  // nothing: where the screen is wide
    bool reachableOnly = false;
};

struct SessionOptions {
    QString account;           // the chosen account, added when it is not there; empty: the first one
    QString password;          // of that account; empty: asked for when it is new
    QString status;            // to be set once the account is there; empty: none
    bool verbose = false;      // tell the log
    bool oneWindow = false;    // show all in one window, whatever conversation is open; typing notices too
    QString startDirectory;    // what relative paths are relative to
    int typingPause = 10'000;  // milliseconds without a key after which nobody is typing any more
};

class Session final {
public:
    Session(MessengerFace& messenger, Display& display, SessionOptions options);
    ~Session();

    // Starts the messenger and says how things are. Gives the reason of a failure.
    QString start();
    // Unloads the plugin; Display::ended follows.
    void quit();

    // A line that was typed: a command, a text for the open conversation, or a secret that was asked for.
    void submit(const QString& typed);
    // The line being typed has changed.
    void typed(const QString& text);

    // What the display shows.
    std::vector<const LogEntry*> entries() const;
    LogLayout layout() const;
    Line title() const;
    Line status() const;
    QString prompt() const;
    bool wantsSecret() const { return static_cast<bool>(secret_); }
    void cancelSecret();
    Completion complete(const QString& text, qsizetype cursor) const;

    // What commands use.
    MessengerFace& messenger() const { return messenger_; }
    const Windows& windows() const { return windows_; }
    QString account() const;
    void chooseAccount(const QString& jid) { options_.account = jid; }
    // Columns of the log, where answers stand.
    int columns() const { return display_.logColumns(); }
    bool oneWindow() const { return options_.oneWindow; }
    const QString& startDirectory() const { return options_.startDirectory; }
    // The chosen account's contact with this name, beginning of a name or address. Gives a reason when nobody fits, or
    // more than one.
    QString findContact(const QString& text, QString& jid) const;
    QString nameOf(const Peer& peer) const;
    // An answer, in the window that is seen: it was asked for there.
    void tell(const QString& text, Style style = Style::Plain, const QString& mark = QStringLiteral("-"));
    // A line of an answer; what does not fit into it is set in by `hang` columns.
    void list(const QString& text, Style style = Style::Plain, int hang = 2);
    void tellError(const QString& reason);
    // Opens the conversation and shows it.
    void openConversation(const Peer& peer);
    void closeConversation();
    // False when there is no such window.
    bool showWindow(int number);
    // Asks for a text that is not shown, and hands it on.
    void askSecret(const QString& question, std::function<void(const QString& secret)> use);
    // Somebody's request for authorization has its answer: the next one is told again.
    void requestAnswered(const Peer& peer) { askedBy_.remove(peer.account + u'\n' + peer.jid); }
    // Sends a message. Gives the reason of a refusal.
    QString send(const Peer& peer, const QString& text);
    void clearWindow();
    // The list of contacts: how it is seen, which the account remembers, and what it shows: the contacts of all
    // accounts and whom one talks to beside them.
    const ContactView& contactView() const { return contactView_; }
    void setContactView(const ContactView& view);
    QStringList accountNames() const;
    void eachListed(const std::function<void(const ListedContact&)>& take) const;
    std::optional<ListedContact> listed(const Peer& peer) const;
    bool isTyping(const Peer& peer) const;
    // The fingerprint that was refused last; empty when none was.
    QString refusedCertificate(const QString& account) const { return refusedCertificates_.value(account); }
    // Sets the chosen account's status. To log in it needs a password, and asks for it where none is known. Gives the
    // reason of a refusal.
    QString setStatus(Status status, const QString& description);
    // Asks for the password, then adds the account or changes it. `server` may be empty.
    void addAccount(const QString& jid, const QString& server);

    void accountChanged(const QString& account);
    void accountRemoved(const QString& account);
    void connectionChanged(const QString& account, ConnectionState state, const QString& reason);
    void ownStatusChanged(const QString& account, Status status, const QString& description);
    void rosterComplete(const QString& account);
    void contactChanged(const QString& account, const Contact& contact);
    void contactRemoved(const QString& account, const QString& jid);
    void presenceReceived(const QString& account, const QString& jid, const Resource& resource);
    void messageReceived(const QString& account, const Message& message);
    void messageSent(const QString& account, const Message& message);
    void messageQueued(const QString& account, const Message& message);
    void messageStateChanged(const QString& account, const Message& message);
    void typingReceived(const QString& account, const QString& jid, bool composing);
    void authorizationRequested(const QString& account, const QString& jid);
    void boxOpened(const MessageBox& box);
    void boxClosed(int number);
    void noticed(const QString& account, const QString& text);
    void logged(const LogLine& line);
    void xmlSeen(const QString& account, bool incoming, const QString& data);
    void infoReceived(const QString& account, const ContactInfo& info);
    void infoComplete(const QString& account, const QString& jid);
    void serverInfoReceived(const QString& account, const ServerInfo& info);
    void certificateRefused(const QString& account, const CertificateProblem& problem);
    void finished();

private:
    struct SecretRequest {
        QString question;
        std::function<void(const QString&)> use;
    };

    // What of a contact is told when it changes.
    struct KnownContact {
        QString name;
        QString group;
        QString subscription;
        bool waiting = false;
    };
    static KnownContact knownOf(const Contact& contact) {
        return {contact.name, contact.group, contact.subscription, contact.waiting};
    }

    void append(LogEntry entry);
    void dropOldest();
    bool shows(const LogEntry& entry) const;
    Shown whereAsked() const;
    LogEntry messageEntry(const Message& message) const;
    // How much of itself the status line shows.
    struct StatusLineKind {
        bool words = true;       // of the own status, beside its mark
        bool allWindows = true;  // not only those that matter now
        int nameColumns = 12;
        bool wholeAddress = true;
    };
    Line statusLine(const StatusLineKind& kind) const;
    Line windowNames(const StatusLineKind& kind) const;
    // Of the conversations that can stand there, in order: no more than the line has columns.
    std::vector<int> numbersInBar(bool all) const;
    void tellOf(const Peer& peer, const QString& text, Style style, const QString& mark, Shown shown = Shown::Both);
    bool hasPassword(const QString& account) const;
    // False when the messenger refused it, which is told.
    bool storeAccount(const QString& jid, const QString& password, const QVariantMap& settings);
    void connectAtStart();
    void readContactView();
    ListedContact listedOf(const QString& account, const Contact& contact) const;
    void loadHistory(const Peer& peer);
    void divideFromNew(const Peer& peer, int unread);
    void tellContact(const QString& account, const KnownContact& before, const Contact& now);
    void tellRemoved(const Peer& peer, const QString& name);
    bool isContact(const Peer& peer) const { return messenger_.roster().contact(peer.account, peer.jid).has_value(); }
    // The window, open, for what somebody wrote: his own, or the one that strangers share.
    Peer windowOf(const Peer& peer);
    bool isNewPresence(const Peer& peer, const Resource& resource);
    void stopTyping();
    bool sendsTyping(const QString& account) const;

    MessengerFace& messenger_;
    Display& display_;
    SessionOptions options_;
    std::unique_ptr<Commands> commands_;
    QObject context_;  // of calls that come later: gone with the session
    std::deque<LogEntry> log_;
    Windows windows_;
    ContactView contactView_;
    std::unique_ptr<SecretRequest> secret_;
    QSet<Peer> historyLoaded_;
    QStringList toldAccounts_;
    QHash<QString, QHash<QString, KnownContact>> known_;  // contacts as they were told last, by account and JID
    struct ToldPresence {
        QString resource;
        Status status;
        QString description;
    };
    // What was told last of contacts' resources: a few, for which a table of its own would take ten times as much.
    QHash<Peer, std::vector<ToldPresence>> presences_;
    QHash<QString, ConnectionState> connections_;
    QHash<QString, QString> refusedCertificates_;
    QSet<QString> askedBy_;            // by account and JID: whose request for authorization was told
    QHash<QString, QString> notices_;  // by account: what was told since its connection changed
    Peer typingTo_;                    // who was told that we are typing
    QTimer typingPause_;
    bool ending_ = false;
};

}  // namespace oku::terminal
