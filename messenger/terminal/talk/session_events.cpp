// What the messenger tells, in words.
#include <algorithm>
#include <QTimer>

#include "messenger/terminal/screen/printable.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/commands.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

const QString kDash = QStringLiteral("-");
const QString kBang = QStringLiteral("!");
const QString kAsk = QStringLiteral("?");
constexpr std::size_t kMostResources = 64;  // remembered of one contact

Style connectionStyle(ConnectionState state, const QString& reason) {
    if (state == ConnectionState::online) return Style::Online;
    if (state == ConnectionState::offline) return reason.isEmpty() ? Style::Offline : Style::Error;
    return Style::Faint;
}

QString withDescription(const QString& text, const QString& description) {
    return description.isEmpty() ? text : text + QStringLiteral(" — ") + oneLine(description);
}

}  // namespace

void Session::accountChanged(const QString& account) {
    display_.changed();
    if (toldAccounts_.contains(account)) return;
    toldAccounts_.append(account);
    display_.contactsReset();
    tellOf({account, {}}, say(Text::AccountIsThere, account), Style::Plain, kDash);
}

void Session::accountRemoved(const QString& account) {
    toldAccounts_.removeAll(account);
    known_.remove(account);
    connections_.remove(account);
    refusedCertificates_.remove(account);
    if (options_.account == account) options_.account.clear();
    display_.contactsReset();
    tellOf({account, {}}, say(Text::AccountGone, account), Style::Plain, kDash);
}

void Session::connectionChanged(const QString& account, ConnectionState state, const QString& reason) {
    connections_.insert(account, state);
    if (state == ConnectionState::offline) {
        presences_.removeIf([&](auto entry) { return entry.key().account == account; });
        askedBy_.removeIf([&](const QString& who) { return who.startsWith(account + u'\n'); });
        windows_.forgetTyping(account);
        if (typingTo_.account == account) typingTo_ = {};
    }
    QString text = connectionText(state, messenger_.accounts().encrypted(account));
    const bool told = notices_.take(account) == reason;  // the plugin's own notice said it already
    if (!reason.isEmpty() && !told) text += QStringLiteral(": ") + oneLine(reason);
    const bool settled = state == ConnectionState::online || state == ConnectionState::offline;
    tellOf({account, {}}, text, connectionStyle(state, reason), reason.isEmpty() ? kDash : kBang,
           settled ? Shown::InSight : Shown::Both);
}

void Session::ownStatusChanged(const QString& account, Status status, const QString& description) {
    tellOf({account, {}}, withDescription(say(Text::OwnStatus, statusText(status)), description), statusStyle(status),
           statusMark(status));
}

// Contacts that are new with a list are not told: after the first login that is all of them.
void Session::rosterComplete(const QString& account) {
    const QList<Contact> contacts = messenger_.roster().contacts(account);
    QHash<QString, KnownContact> before = std::exchange(known_[account], {});
    QHash<QString, KnownContact>& known = known_[account];
    known.reserve(contacts.size());
    for (const Contact& contact : contacts) {
        known.insert(contact.jid, knownOf(contact));
        windows_.befriend({account, contact.jid});
        if (const auto was = before.constFind(contact.jid); was != before.constEnd()) {
            tellContact(account, *was, contact);
            before.erase(was);
        }
        const Peer peer{account, contact.jid};
        if (contact.unread == 0 || windows_.current() == peer) continue;
        windows_.open(peer);
        windows_.setUnread(peer, contact.unread);
    }
    for (auto gone = before.cbegin(); gone != before.cend(); ++gone) tellRemoved({account, gone.key()}, gone->name);
    display_.contactsReset();
    display_.changed();
}

void Session::contactChanged(const QString& account, const Contact& contact) {
    windows_.befriend({account, contact.jid});
    QHash<QString, KnownContact>& known = known_[account];
    const auto before = known.constFind(contact.jid);
    if (before != known.constEnd())
        tellContact(account, *before, contact);
    else if (connections_.value(account, ConnectionState::offline) == ConnectionState::online)
        tellOf({account, contact.jid},
               say(Text::ContactAdded, oneLine(contact.name), contact.jid, oneLine(contact.group)), Style::Plain,
               QStringLiteral("+"));
    known.insert(contact.jid, knownOf(contact));
    display_.contactTouched({account, contact.jid});
    display_.changed();
}

void Session::tellContact(const QString& account, const KnownContact& before, const Contact& now) {
    const Peer peer{account, now.jid};
    if (before.name != now.name)
        tellOf(peer, say(Text::ContactRenamed, oneLine(before.name), oneLine(now.name)), Style::Plain, kDash);
    if (before.group != now.group)
        tellOf(peer, say(Text::ContactMoved, oneLine(now.name), oneLine(now.group)), Style::Plain, kDash);
    if (before.subscription != now.subscription || before.waiting != now.waiting)
        tellOf(peer, say(Text::ContactSubscription, oneLine(now.name), subscriptionText(now)), Style::Plain, kDash);
}

void Session::contactRemoved(const QString& account, const QString& jid) {
    display_.contactTouched({account, jid});
    tellRemoved({account, jid}, known_[account].take(jid).name);
}

void Session::tellRemoved(const Peer& peer, const QString& name) {
    tellOf(peer, say(Text::ContactRemoved, oneLine(name.isEmpty() ? peer.jid : name), peer.jid), Style::Plain, kDash);
}

void Session::presenceReceived(const QString& account, const QString& jid, const Resource& resource) {
    // The server tells us of ourselves too.
    const auto own = [&] {
        return messenger_.accounts().settingValue(account, QStringLiteral("XMPP/User")).toString().section(u'/', 1);
    };
    if (jid == account && resource.name == own()) return;
    const Peer peer{account, jid};
    if (!isNewPresence(peer, resource)) return;
    const QString name = nameOf(peer);
    const QString who = resource.name.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, oneLine(resource.name));
    tellOf(peer, withDescription(QStringLiteral("%1: %2").arg(who, statusText(resource.status)), resource.description),
           statusStyle(resource.status), statusMark(resource.status));
}

// Remembers it. Of strangers nothing is remembered, of contacts no more resources than a contact can have.
bool Session::isNewPresence(const Peer& peer, const Resource& resource) {
    const bool gone = resource.status == Status::offline;
    auto known = presences_.find(peer);
    if (known == presences_.end()) {
        if (gone || (peer.jid != peer.account && !isContact(peer))) return !gone;
        known = presences_.insert(peer, {});
    }
    std::vector<ToldPresence>& told = *known;
    const auto before =
        std::find_if(told.begin(), told.end(), [&](const ToldPresence& one) { return one.resource == resource.name; });
    if (before == told.end()) {
        if (gone) return false;
        if (told.size() >= kMostResources) told.erase(told.begin());
        told.push_back({resource.name, resource.status, resource.description});
        return true;
    }
    if (gone) {
        told.erase(before);
        return true;
    }
    if (before->status == resource.status && before->description == resource.description) return false;
    before->status = resource.status;
    before->description = resource.description;
    return true;
}

// Messages ------------------------------------------------------------------------------------------------------------

LogEntry Session::messageEntry(const Message& message) const {
    LogEntry entry;
    const bool incoming = message.direction == Direction::in;
    entry.kind = incoming ? EntryKind::Incoming : EntryKind::Outgoing;
    entry.time = message.time;
    entry.peer = {message.account, message.contact};
    entry.who = nameOf(entry.peer);
    entry.message = message.number;
    entry.queued = message.state == DeliveryState::queued;
    QString text = message.body;
    if (text.startsWith(QLatin1String("/me ")))
        text = QStringLiteral("* %1 %2").arg(incoming ? entry.who : message.account.section(u'@', 0, 0), text.mid(4));
    if (!message.subject.isEmpty()) text = say(Text::WithSubject, message.subject, text);
    if (message.delayed.isValid()) {
        const QString written = message.delayed.toLocalTime().toString(QStringLiteral("d.MM.yyyy HH:mm"));
        text = say(Text::WrittenAt, written, text);
    }
    if (message.failed) {
        // The plugin's words about a message of ours, not the other side's.
        entry.kind = EntryKind::Undelivered;
        entry.mark = kBang;
        text = QStringLiteral("%1: %2").arg(entry.who, text);
    }
    if (entry.queued) text = say(Text::StillQueued, text);
    if (message.state == DeliveryState::unconfirmed) text = say(Text::StillUnconfirmed, message.number, text);
    entry.text = printable(text, true);
    if (message.failed || message.state == DeliveryState::failed) entry.style = Style::Error;
    return entry;
}

void Session::messageReceived(const QString& account, const Message& message) {
    const Peer peer{account, message.contact};
    windows_.setTyping(peer, false);
    const Peer window = windowOf(peer);
    if (windows_.current() == window)
        messenger_.talk().markRead(account, message.contact);
    else
        windows_.setUnread(window, windows_.unread(window) + 1);
    display_.contactTouched(peer);
    LogEntry entry = messageEntry(message);
    if (!(window == peer)) {
        entry.alsoIn = window;
        entry.text = QStringLiteral("<%1> %2").arg(oneLine(peer.jid), entry.text);
    }
    append(std::move(entry));
}

Peer Session::windowOf(const Peer& peer) {
    if (!windows_.isOpen(peer) && !isContact(peer)) return windows_.openForStranger(peer);
    windows_.open(peer);
    return peer;
}

// A message that waited for the login stays where it was written, and is told no second time.
void Session::messageSent(const QString&, const Message& message) {
    LogEntry sent = messageEntry(message);
    const auto waiting = std::find_if(log_.rbegin(), log_.rend(), [&](const LogEntry& entry) {
        return entry.queued && entry.message == message.number;
    });
    if (options_.oneWindow || waiting == log_.rend()) {
        append(std::move(sent));
        return;
    }
    sent.time = waiting->time;
    sent.shown = waiting->shown;
    *waiting = std::move(sent);
    display_.changed();
}

void Session::messageQueued(const QString&, const Message& message) { append(messageEntry(message)); }

void Session::messageStateChanged(const QString& account, const Message& message) {
    const Peer peer{account, message.contact};
    const bool cancelled = message.state == DeliveryState::cancelled;
    if (cancelled) {
        std::erase_if(log_, [&](const LogEntry& entry) { return entry.queued && entry.message == message.number; });
    }
    const bool good = cancelled || message.state == DeliveryState::sent;
    QString text = deliveryText(message, nameOf(peer));
    if (!good) text += QStringLiteral(" — ") + say(Text::ResendHint, message.number);
    tellOf(peer, text, good ? Style::Faint : Style::Error, good ? kDash : kBang);
}

void Session::typingReceived(const QString& account, const QString& jid, bool composing) {
    const Peer peer{account, jid};
    windows_.setTyping(peer, composing);
    if (options_.oneWindow && composing) tellOf(peer, say(Text::IsTyping, nameOf(peer)), Style::Faint, kDash);
    display_.changed();
}

// What waits for the person
// --------------------------------------------------------------------------------------------

// Who asks again and again is told of once, until there is an answer or the next connection.
void Session::authorizationRequested(const QString& account, const QString& jid) {
    const qsizetype before = askedBy_.size();
    askedBy_.insert(account + u'\n' + jid);
    if (askedBy_.size() == before) return;
    tellOf({account, jid}, say(Text::WantsPresence, nameOf({account, jid}), jid), Style::Question, kAsk,
           Shown::InSight);
}

void Session::boxOpened(const MessageBox& box) {
    const QString text = QStringLiteral("%1: %2").arg(box.title, box.text);
    if (box.style == BoxStyle::question) {
        tellOf({}, text + u'\n' + say(Text::AnswerHint, box.number), Style::Question, kAsk, Shown::InSight);
        return;
    }
    const bool error = box.style == BoxStyle::error || box.style == BoxStyle::warning;
    tellOf({}, text, error ? Style::Error : Style::Notice, kBang, Shown::InSight);
    // A notice has been read when it is shown, and the plugin waits until it is answered.
    QTimer::singleShot(0, &context_, [this, number = box.number] {
        if (const QString reason = messenger_.windows().answerBox(number, BoxButton::ok); !reason.isEmpty())
            tellError(reason);
    });
}

void Session::boxClosed(int) { display_.changed(); }

void Session::noticed(const QString& account, const QString& text) {
    notices_.insert(account, text);
    tellOf({account, {}}, text, Style::Notice, kBang, Shown::InSight);
}

void Session::certificateRefused(const QString& account, const CertificateProblem& problem) {
    refusedCertificates_.insert(account, problem.fingerprint);
    tellOf({account, {}}, certificateText(problem) + u'\n' + say(Text::PinHint), Style::Error, kBang, Shown::InSight);
}

// Log, console, answers
// ------------------------------------------------------------------------------------------------

void Session::logged(const LogLine& line) {
    if (!options_.verbose) return;
    tellOf({}, QStringLiteral("[%1] %2").arg(line.tag, line.text), line.level <= 0 ? Style::Error : Style::Faint,
           QStringLiteral("#"));
}

void Session::xmlSeen(const QString& account, bool incoming, const QString& data) {
    tellOf({account, {}}, data.trimmed(), incoming ? Style::Theirs : Style::Mine, QString(incoming ? u'⇐' : u'⇒'));
}

void Session::infoReceived(const QString& account, const ContactInfo& info) {
    const auto row = [this](Text label, const QString& value) {
        if (!value.isEmpty()) list(QStringLiteral("  ") + say(label) + QStringLiteral(": ") + oneLine(value));
    };
    const Resource& resource = info.resource;
    list(QStringLiteral("%1/%2").arg(nameOf({account, info.jid}), oneLine(resource.name)), Style::Heading);
    row(Text::InfoPresence, QStringLiteral("%1 %2")
                                .arg(statusMark(resource.status))
                                .arg(withDescription(statusText(resource.status), resource.description)));
    row(Text::InfoPriority, QString::number(resource.priority));
    if (resource.changed.isValid())
        row(Text::InfoChanged, resource.changed.toLocalTime().toString(QStringLiteral("d.MM.yyyy HH:mm:ss")));
    row(Text::InfoClient, QStringLiteral("%1 %2").arg(info.client, info.version).trimmed());
    row(Text::InfoSystem, info.os);
    row(Text::InfoFeatures, info.features.join(QStringLiteral(", ")));
}

void Session::infoComplete(const QString& account, const QString& jid) {
    tell(say(Text::InfoDone, nameOf({account, jid})), Style::Faint);
}

void Session::serverInfoReceived(const QString&, const ServerInfo& info) {
    list(info.domain, Style::Heading);
    for (const QString& identity : info.identities) list(QStringLiteral("  ") + identity);
    list(QStringLiteral("  ") + say(Text::InfoFeatures) + QStringLiteral(": ") +
         info.features.join(QStringLiteral(", ")));
}

void Session::finished() { display_.ended(); }

}  // namespace oku::terminal
