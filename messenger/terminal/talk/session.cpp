#include "messenger/terminal/talk/session.h"

#include <algorithm>
#include <utility>

#include "messenger/core/values/setting_keys.h"
#include "messenger/terminal/screen/printable.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/commands.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr std::size_t kLongestLog = 5000;
constexpr int kHistoryAtOpening = 20;
constexpr QChar kDivider = u'─';

bool isCommand(const QString& line) { return line.startsWith(u'/') && !line.startsWith(QLatin1String("//")); }

// Whole lines that were pasted end in a line feed that nobody means.
QString withoutLineFeedsBehind(QString line) {
    while (line.endsWith(u'\n')) line.chop(1);
    return line;
}

bool countsAsUnread(const LogEntry& entry) {
    return entry.kind == EntryKind::Incoming || entry.kind == EntryKind::Undelivered;
}

// What of a typed line goes to the other side: a second slash in front sends a text that begins with one.
QString textOf(const QString& line) { return line.startsWith(QLatin1String("//")) ? line.mid(1) : line; }

}  // namespace

Session::Session(MessengerFace& messenger, Display& display, SessionOptions options)
    : messenger_(messenger),
      display_(display),
      options_(std::move(options)),
      commands_(std::make_unique<Commands>(*this)) {
    const auto hear = [this](auto& face, auto signal, auto function) {
        QObject::connect(&face, signal, &context_,
                         [this, function](const auto&... values) { (this->*function)(values...); });
    };
    hear(messenger_.accounts(), &AccountsFace::accountChanged, &Session::accountChanged);
    hear(messenger_.accounts(), &AccountsFace::accountRemoved, &Session::accountRemoved);
    hear(messenger_.accounts(), &AccountsFace::connectionChanged, &Session::connectionChanged);
    hear(messenger_.accounts(), &AccountsFace::ownStatusChanged, &Session::ownStatusChanged);
    hear(messenger_.accounts(), &AccountsFace::certificateRefused, &Session::certificateRefused);
    hear(messenger_.roster(), &RosterFace::rosterComplete, &Session::rosterComplete);
    hear(messenger_.roster(), &RosterFace::contactChanged, &Session::contactChanged);
    hear(messenger_.roster(), &RosterFace::contactRemoved, &Session::contactRemoved);
    hear(messenger_.roster(), &RosterFace::presenceReceived, &Session::presenceReceived);
    hear(messenger_.roster(), &RosterFace::authorizationRequested, &Session::authorizationRequested);
    hear(messenger_.roster(), &RosterFace::infoReceived, &Session::infoReceived);
    hear(messenger_.roster(), &RosterFace::infoComplete, &Session::infoComplete);
    hear(messenger_.roster(), &RosterFace::serverInfoReceived, &Session::serverInfoReceived);
    hear(messenger_.talk(), &TalkFace::messageReceived, &Session::messageReceived);
    hear(messenger_.talk(), &TalkFace::messageSent, &Session::messageSent);
    hear(messenger_.talk(), &TalkFace::messageQueued, &Session::messageQueued);
    hear(messenger_.talk(), &TalkFace::messageStateChanged, &Session::messageStateChanged);
    hear(messenger_.talk(), &TalkFace::typingReceived, &Session::typingReceived);
    hear(messenger_.windows(), &WindowsFace::boxOpened, &Session::boxOpened);
    hear(messenger_.windows(), &WindowsFace::boxClosed, &Session::boxClosed);
    hear(messenger_.windows(), &WindowsFace::noticed, &Session::noticed);
    hear(messenger_.wire(), &WireFace::logged, &Session::logged);
    hear(messenger_.wire(), &WireFace::xmlSeen, &Session::xmlSeen);
    hear(messenger_, &MessengerFace::finished, &Session::finished);
    typingPause_.setSingleShot(true);
    typingPause_.setInterval(options_.typingPause);
    QObject::connect(&typingPause_, &QTimer::timeout, &context_, [this] { stopTyping(); });
}

Session::~Session() = default;

QString Session::start() {
    if (const QString reason = messenger_.start(); !reason.isEmpty()) return reason;
    tell(say(Text::Welcome), Style::Heading, QStringLiteral("*"));
    for (const Account& one : messenger_.accounts().accounts()) {
        toldAccounts_.append(one.jid);
        rosterComplete(one.jid);
    }
    const QString wanted = std::exchange(options_.account, bareJid(options_.account));
    const QString password = std::exchange(options_.password, {});
    readContactView();
    const QList<Account> accounts = messenger_.accounts().accounts();
    const auto isWanted = [this](const Account& one) { return one.jid == options_.account; };
    bool stored = true;
    if (!wanted.isEmpty() && !password.isEmpty())
        stored = storeAccount(wanted, password, {});
    else if (!wanted.isEmpty() && std::none_of(accounts.begin(), accounts.end(), isWanted))
        addAccount(wanted, {});
    else if (accounts.isEmpty())
        tell(say(Text::NoAccountYet));
    else
        tell(say(Text::AccountChosen, account()));
    if (stored && !secret_) connectAtStart();
    return {};
}

void Session::quit() {
    if (std::exchange(ending_, true)) return;
    tell(say(Text::Ending));
    stopTyping();
    messenger_.shutdown();
}

void Session::submit(const QString& typed) {
    const QString line = withoutLineFeedsBehind(typed);
    if (secret_ && line.isEmpty()) {
        cancelSecret();
        return;
    }
    if (secret_) {
        const auto request = std::exchange(secret_, nullptr);
        request->use(line);
        display_.changed();
        return;
    }
    if (line.trimmed().isEmpty()) return;
    if (isCommand(line)) {
        if (const QString reason = commands_->run(line); !reason.isEmpty()) tellError(reason);
        display_.changed();
        return;
    }
    const Peer peer = windows_.partner();
    const QString reason = peer.none() ? say(Text::NoConversation) : send(peer, textOf(line));
    if (!reason.isEmpty()) tellError(reason);
}

QString Session::send(const Peer& peer, const QString& text) {
    // The message itself ends the typing.
    typingTo_ = {};
    typingPause_.stop();
    return messenger_.talk().sendMessage(peer.account, peer.jid, text, MessageKind::chat, {});
}

void Session::typed(const QString& text) {
    const Peer peer = windows_.partner();
    const bool composing =
        !secret_ && !peer.none() && !text.isEmpty() && (!isCommand(text) || text.startsWith(QLatin1String("/me ")));
    if (!composing || !(peer == typingTo_)) stopTyping();
    if (!composing) return;
    if (peer == typingTo_) return typingPause_.start();
    if (!sendsTyping(peer.account)) return;
    const auto contact = messenger_.roster().contact(peer.account, peer.jid);
    if (!contact || contact->resources.isEmpty()) return;
    if (!messenger_.talk().sendTyping(peer.account, peer.jid, true).isEmpty()) return;
    typingTo_ = peer;
    typingPause_.start();
}

void Session::stopTyping() {
    const Peer peer = std::exchange(typingTo_, {});
    typingPause_.stop();
    // A notice that cannot be sent has nobody to end it for.
    if (!peer.none()) static_cast<void>(messenger_.talk().sendTyping(peer.account, peer.jid, false));
}

bool Session::sendsTyping(const QString& account) const {
    const QVariant value = messenger_.accounts().settingValue(account, QString::fromUtf16(setting::sendTyping));
    return !value.isValid() || value.toInt() != 0;
}

QString Session::account() const {
    if (!options_.account.isEmpty()) return options_.account;
    const QList<Account> accounts = messenger_.accounts().accounts();
    return accounts.isEmpty() ? QString() : accounts.first().jid;
}

// Entries -------------------------------------------------------------------------------------------------------------

void Session::append(LogEntry entry) {
    if (!entry.time.isValid()) entry.time = QDateTime::currentDateTimeUtc();
    if (entry.shown == Shown::InSight) entry.alsoIn = windows_.current();
    const bool shown = shows(entry);
    if (log_.size() >= kLongestLog) dropOldest();
    log_.push_back(std::move(entry));
    if (shown) display_.appended(log_.back());
    display_.changed();
}

// What is gone from a conversation can be read in its history when it is looked at again.
void Session::dropOldest() {
    if (log_.front().message != 0) historyLoaded_.remove(log_.front().peer);
    log_.pop_front();
}

bool Session::shows(const LogEntry& entry) const {
    const Peer current = windows_.current();
    if (!current.none() && standsIn(entry, current)) return true;
    return (current.none() || options_.oneWindow) && entry.shown != Shown::ConversationOnly;
}

std::vector<const LogEntry*> Session::entries() const {
    std::vector<const LogEntry*> result;
    for (const LogEntry& entry : log_)
        if (shows(entry)) result.push_back(&entry);
    return result;
}

void Session::tellOf(const Peer& peer, const QString& text, Style style, const QString& mark, Shown shown) {
    LogEntry entry;
    entry.peer = peer;
    entry.text = printable(text, true);
    entry.style = style;
    entry.mark = mark;
    entry.shown = shown;
    append(std::move(entry));
}

Shown Session::whereAsked() const { return windows_.current().none() ? Shown::Both : Shown::ConversationOnly; }

void Session::tell(const QString& text, Style style, const QString& mark) {
    tellOf(windows_.current(), text, style, mark, whereAsked());
}

void Session::tellError(const QString& reason) { tell(reason, Style::Error, QStringLiteral("!")); }

void Session::list(const QString& text, Style style, int hang) {
    LogEntry entry;
    entry.kind = EntryKind::Listing;
    entry.peer = windows_.current();
    entry.text = printable(text, true);
    entry.style = style;
    entry.hang = hang;
    entry.shown = whereAsked();
    append(std::move(entry));
}

void Session::clearWindow() {
    std::erase_if(log_, [this](const LogEntry& entry) { return shows(entry); });
    display_.changed();
}

// Windows -------------------------------------------------------------------------------------------------------------

void Session::openConversation(const Peer& peer) { showWindow(windows_.open(peer)); }

bool Session::showWindow(int number) {
    stopTyping();
    if (!windows_.show(number)) return false;
    const Peer peer = windows_.current();
    if (!peer.none()) {
        if (!windows_.partner().none()) loadHistory(peer);
        divideFromNew(peer, windows_.unread(peer));
        windows_.setUnread(peer, 0);
        messenger_.talk().markRead(peer.account, peer.jid);
        display_.contactTouched(peer);
    }
    display_.changed();
    return true;
}

void Session::closeConversation() {
    stopTyping();
    const Peer closed = windows_.current();
    windows_.closeCurrent();
    display_.contactTouched(closed);
    display_.changed();
}

// What was said before stands above what came since the start, which is in the log already.
void Session::loadHistory(const Peer& peer) {
    if (historyLoaded_.contains(peer)) return;
    historyLoaded_.insert(peer);
    std::vector<LogEntry> older;
    for (const Message& message : messenger_.talk().history(peer.account, peer.jid, kHistoryAtOpening, {})) {
        const bool known = std::any_of(log_.begin(), log_.end(), [&](const LogEntry& entry) {
            return entry.message != 0 && entry.message == message.number;
        });
        if (known) continue;
        LogEntry entry = messageEntry(message);
        entry.shown = Shown::ConversationOnly;
        older.push_back(std::move(entry));
    }
    if (options_.oneWindow)
        for (const LogEntry& entry : older) display_.appended(entry);
    log_.insert(log_.begin(), std::make_move_iterator(older.begin()), std::make_move_iterator(older.end()));
}

// Above the first unread message stands a line that says so, until the conversation is shown again.
void Session::divideFromNew(const Peer& peer, int unread) {
    std::erase_if(log_, [&](const LogEntry& entry) { return entry.peer == peer && entry.mark == kDivider; });
    auto first = log_.end();
    while (unread > 0 && first != log_.begin()) {
        --first;
        if (standsIn(*first, peer) && countsAsUnread(*first)) --unread;
    }
    if (first == log_.end() || options_.oneWindow) return;
    LogEntry divider;
    divider.time = first->time;
    divider.peer = peer;
    divider.mark = kDivider;
    divider.text = say(Text::NewMessages);
    divider.style = Style::Notice;
    divider.shown = Shown::ConversationOnly;
    log_.insert(first, std::move(divider));
}

// Contacts ------------------------------------------------------------------------------------------------------------

QString Session::nameOf(const Peer& peer) const {
    if (peer == Windows::strangers()) return say(Text::Strangers);
    const auto contact = messenger_.roster().contact(peer.account, peer.jid);
    return oneLine(contact && !contact->name.isEmpty() ? contact->name : peer.jid);
}

QString Session::findContact(const QString& text, QString& jid) const {
    const QList<Contact> contacts = messenger_.roster().contacts(account());
    QStringList exact;
    QStringList beginning;
    for (const Contact& contact : contacts) {
        if (contact.jid == bareJid(text) || contact.name.compare(text, Qt::CaseInsensitive) == 0)
            exact.append(contact.jid);
        else if (contact.name.startsWith(text, Qt::CaseInsensitive) ||
                 contact.jid.startsWith(text, Qt::CaseInsensitive))
            beginning.append(contact.jid);
    }
    const QStringList& found = exact.isEmpty() ? beginning : exact;
    if (exact.isEmpty() && text.contains(u'@')) {
        jid = bareJid(text);
        return {};
    }
    if (found.isEmpty()) return say(Text::NoSuchContact, text);
    if (found.size() > 1) return say(Text::ManyContacts, text, found.join(QStringLiteral(", ")));
    jid = found.first();
    return {};
}

}  // namespace oku::terminal
