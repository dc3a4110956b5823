#pragma once

#include <memory>
#include <optional>
#include <QObject>

#include "messenger/core/options.h"
#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/core/values/info.h"
#include "messenger/core/values/log_line.h"
#include "messenger/core/values/message.h"
#include "messenger/core/values/windows.h"

namespace oku {

/// The whole messenger without a display: the plugin, its host's services, the models. User interfaces stand on this
/// class and on nothing else of the core.
///
/// One object a process, used on one thread with an event loop (a QCoreApplication must exist). Every command returns
/// at once: what needs the plugin waits in a queue while a call into the plugin is on the stack (a message box that
/// stays open holds one there). Signals may be emitted while the plugin is on the stack; calling commands from a slot
/// is allowed. Accounts are named by their bare JID. A command for an unknown account, or one that cannot be carried
/// out, returns a reason (one clear line for the user); an empty string means that it was taken.
class Messenger : public QObject {
    Q_OBJECT

public:
    explicit Messenger(MessengerOptions options, QObject* parent = nullptr);
    ~Messenger() override;

    /// Opens the profile and loads the plugin. Returns an empty string, or one line with the reason of the failure
    /// (missing or foreign module, profile that cannot be written). Nothing connects by itself.
    [[nodiscard]] QString start();
    /// Unloads the plugin as soon as no call into it is on the stack (open boxes are answered with no or OK), closes
    /// everything and emits finished(). Safe to call twice.
    void shutdown();
    [[nodiscard]] bool running() const;
    /// The profile's directory, ending in the separator.
    [[nodiscard]] QString profileDir() const;

    // Accounts ------------------------------------------------------------------------------------------------------

    /// Accounts that have a JID, in the order of their files. The first is the one that commands default to.
    [[nodiscard]] QList<Account> accounts() const;
    [[nodiscard]] std::optional<Account> account(const QString& jid) const;
    /// Adds the account, or changes the one that has this bare JID: its password (unless empty) and the settings given
    /// (numbers and booleans become integers, the rest text). A JID without a resource gets one. A further account
    /// makes the plugin load anew, as it looks for account files only then; accounts that were online go back online.
    /// The password goes to the key ring; without one a box asks whether it may lie in the account's file, unless
    /// `OKU/PasswordInFile` says so.
    QString addAccount(const QString& jid, const QString& password, const QVariantMap& settings = {});
    /// Removes the account with its settings, contact list and passwords; its history stays unless `withHistory`. It
    /// signs off before, with all others, which go back online. accountRemoved() follows.
    QString removeAccount(const QString& jid, bool withHistory = false);
    /// Sets the own status. A choice made while a login is under way is kept and given when the roster is complete.
    QString setStatus(const QString& account, Status status, const QString& description = {});
    /// A setting of the account: an integer or a text; invalid when it is not set.
    [[nodiscard]] QVariant settingValue(const QString& account, const QString& key) const;
    /// Changes a setting and writes the account's file at once. Where that failed the reason says so, but the change
    /// counts, and is written as soon as it can be.
    QString setSetting(const QString& account, const QString& key, const QVariant& value);

    // Contacts ------------------------------------------------------------------------------------------------------

    [[nodiscard]] QList<Contact> contacts(const QString& account) const;
    [[nodiscard]] std::optional<Contact> contact(const QString& account, const QString& jid) const;
    /// Puts a contact on the roster (without a name, under its JID's first part) and asks for its presence.
    QString addContact(const QString& account, const QString& jid, const QString& name = {}, const QString& group = {});
    QString renameContact(const QString& account, const QString& jid, const QString& name);
    QString moveContact(const QString& account, const QString& jid, const QString& group);
    QString removeContact(const QString& account, const QString& jid);
    QString subscribe(const QString& account, const QString& jid);
    /// Answers a request for authorization with yes; `askInReturn` asks for the contact's presence too.
    QString authorize(const QString& account, const QString& jid, bool askInReturn = false);
    QString deny(const QString& account, const QString& jid);
    /// Requests for authorization that wait for an answer, at most 1000 of them.
    [[nodiscard]] QStringList pendingAuthorizations(const QString& account) const;

    // Conversation --------------------------------------------------------------------------------------------------

    /// Writes the message to the history and sends it, or keeps it for the next login. messageSent() or messageQueued()
    /// follows. `number` (may be null) receives the message's number in the history.
    QString sendMessage(const QString& account, const QString& to, const QString& body,
                        MessageKind kind = MessageKind::chat, const QString& subject = {}, qint64* number = nullptr);
    /// Sends a message that is failed or not confirmed once more; it keeps its number.
    QString resendMessage(qint64 number);
    /// Takes a message back that waits for a login; it goes from the history. messageStateChanged() tells it.
    QString cancelMessage(qint64 number);
    QString sendTyping(const QString& account, const QString& to, bool composing);
    /// Sets the contact's count of unread messages to 0.
    void markRead(const QString& account, const QString& jid);
    /// The newest `limit` messages, oldest first. An empty `with` means all contacts; `search` keeps those whose body
    /// or subject holds all its words or parts of words (case and diacritics don't count).
    [[nodiscard]] QList<Message> history(const QString& account, const QString& with, int limit = 20,
                                         const QString& search = {}) const;
    enum class ExportFormat { text, json };
    /// Writes a conversation to a file (an empty `with`: all of the account) that only its owner can read. A file that
    /// is there already is only replaced with `replace`, for which the user is to be asked; a link never is.
    QString exportHistory(const QString& account, const QString& with, ExportFormat format, const QString& path,
                          bool replace = false) const;

    // Plugin windows ------------------------------------------------------------------------------------------------

    /// Answers an open message box. The button must fit: ok for a notice, yes or no for a question.
    QString answerBox(int number, BoxButton button);
    [[nodiscard]] QList<MessageBox> openBoxes() const;
    /// The items of a menu, in the order in which they stand (highest first).
    [[nodiscard]] QList<MenuItem> menu(const QString& parent) const;
    /// The account's status menu; its name is what menu() takes.
    [[nodiscard]] QString statusMenu(const QString& account) const;
    /// An item that chooses a status, and the status window, do so as setStatus() does.
    QString activateMenu(const QString& id);
    QString confirmStatusWindow(const QString& account, Status status, const QString& description, bool protect);

    // Wire ----------------------------------------------------------------------------------------------------------

    /// Sends raw XML on the account's stream.
    QString sendRaw(const QString& account, const QString& xml);
    /// Turns the signal xmlSeen() on or off for all accounts.
    void setConsole(bool on);
    [[nodiscard]] bool console() const;
    /// Asks each resource of the contact for its client and features; infoReceived() follows for each, at the latest
    /// after 10 s with what is known, then infoComplete().
    QString requestInfo(const QString& account, const QString& jid);
    /// serverInfoReceived() follows, at the latest after 10 s.
    QString requestServerInfo(const QString& account);
    /// Accepts the certificate with this SHA-256 fingerprint (64 hexadecimal digits, colons may part the bytes) for the
    /// account from now on, beside those accepted earlier; empty takes all of them back.
    QString pinCertificate(const QString& account, const QString& fingerprint);

signals:
    /// An account was added or changed.
    void accountChanged(const QString& account);
    void accountRemoved(const QString& account);
    void connectionChanged(const QString& account, oku::ConnectionState state, const QString& reason);
    void ownStatusChanged(const QString& account, oku::Status status, const QString& description);
    /// The account's list is complete: after a login, and once at start with the last list that is known. What became
    /// different with it is not told one by one.
    void rosterComplete(const QString& account);
    /// A contact was added or changed (name, group, subscription, presence). Told once for all that changed in one turn
    /// of the event loop.
    void contactChanged(const QString& account, const oku::Contact& contact);
    void unreadChanged(const QString& account, const QString& jid, int unread);
    void contactRemoved(const QString& account, const QString& jid);
    /// A contact's presence as it came, before contactChanged() tells the sum of its resources.
    void presenceReceived(const QString& account, const QString& jid, const oku::Resource& resource);
    /// A message came. It stands in the history already.
    void messageReceived(const QString& account, const oku::Message& message);
    /// A message was handed to the connection.
    void messageSent(const QString& account, const oku::Message& message);
    /// A message waits for the next login.
    void messageQueued(const QString& account, const oku::Message& message);
    /// The delivery state of a message that was sent earlier changed (unconfirmed, failed, sent), or one
    /// that waited was cancelled.
    void messageStateChanged(const QString& account, const oku::Message& message);
    void typingReceived(const QString& account, const QString& jid, bool composing);
    /// Somebody asks to see the own presence: answer with authorize() or deny().
    void authorizationRequested(const QString& account, const QString& jid);
    /// A message box of the plugin is open and waits for answerBox().
    void boxOpened(const oku::MessageBox& box);
    void boxClosed(int number);
    void menuChanged(const QString& parent);
    void statusWindowRequested(const QString& account, const oku::StatusWindow& window);
    /// A text for the user; `account` may be empty.
    void noticed(const QString& account, const QString& text);
    void logged(const oku::LogLine& line);
    /// The console is on: `incoming` tells the direction. Secrets are masked.
    void xmlSeen(const QString& account, bool incoming, const QString& data);
    void infoReceived(const QString& account, const oku::ContactInfo& info);
    void infoComplete(const QString& account, const QString& jid);
    void serverInfoReceived(const QString& account, const oku::ServerInfo& info);
    /// A certificate was refused; the connection ended. pinCertificate() accepts it.
    void certificateRefused(const QString& account, const oku::CertificateProblem& problem);
    /// The plugin works on the user's own card (true) or has finished.
    void busyChanged(bool busy);
    /// shutdown() is done: the plugin is unloaded and all files are written.
    void finished();

private:
    class Private;
    std::unique_ptr<Private> d;
};

}  // namespace oku
