// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/history.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <QCoreApplication>
#include <utility>

#include "messenger/core/talk/history_salvage.h"
#include "messenger/core/talk/text_search.h"

namespace oku {
namespace {

constexpr int kSyncDelay = 100;                  // milliseconds from the first write that power could take away
constexpr int kRetryDelay = 2000;                // milliseconds after a write that failed
constexpr int kAll = -1;                         // no limit
constexpr std::size_t kMostKept = 10000;         // messages that could not be written
constexpr qsizetype kMostCharacters = 16 << 20;  // of their texts

QString cannotRemove(const QString& reason) {
    return QCoreApplication::translate("History", "Nie można usunąć z archiwum rozmów: %1").arg(reason);
}

qsizetype charactersOf(const Message& message) { return message.body.size() + message.subject.size(); }

}  // namespace

History::History(QString path, QObject* parent) : QObject(parent), file_(std::move(path)) {
    sync_.setSingleShot(true);
    connect(&sync_, &QTimer::timeout, this, &History::sync);
    retry_.setSingleShot(true);
    retry_.setInterval(kRetryDelay);
    connect(&retry_, &QTimer::timeout, this, &History::flush);
    connect(&retry_, &QTimer::timeout, this, &History::retried);
}

// Whoever would be told may be gone.
History::~History() {
    retry_.stop();
    write();
}

void History::close() {
    retry_.stop();
    flush();
    retry_.stop();
    sync_.stop();  // the end of the last connection does the same
    file_.close();
    const HistoryChanges lost = std::exchange(changes_, {});
    const bool keepsGone = std::any_of(lost.gone.begin(), lost.gone.end(), [](const auto& one) { return one.second; });
    if (keepsGone) emit failed(cannotRemove(file_.reason()));
    if (lost.messages.empty()) return;
    emit failed(QCoreApplication::translate("History", "Nie zapisano w archiwum rozmów wiadomości: %1.")
                    .arg(lost.messages.size()));
}

bool History::open() {
    if (file_.isOpen()) return true;
    // What is known to fail is not tried again for each message.
    if (retry_.isActive()) return false;
    if (!file_.open() && !(isDamaged() && beginAnew())) {
        fails(QCoreApplication::translate("History", "Nie można otworzyć archiwum rozmów %1: %2")
                  .arg(file_.path(), file_.reason()));
        return false;
    }
    salvage();
    if (lastNumber_ == 0) lastTold_ = file_.lastNumber();
    lastNumber_ = std::max(lastNumber_, file_.lastNumber());
    for (Message& message : changes_.messages) {
        if (message.number == 0) message.number = lastTold_ = ++lastNumber_;
    }
    return true;
}

// What was set aside and is to be taken over was written, too.
bool History::isNew() const { return toSalvage_.isEmpty() && !file_.isOpen() && !file_.exists(); }

bool History::hasRoomFor(const Message& message) const {
    return changes_.messages.size() < kMostKept && characters_ + charactersOf(message) <= kMostCharacters;
}

void History::add(Message message, std::function<void(const Message&)> tell) {
    if (!hasRoomFor(message)) flush();
    if (hasRoomFor(message)) {
        message.number = open() ? ++lastNumber_ : 0;
        characters_ += charactersOf(message);
        changes_.messages.push_back(message);
    } else if (!std::exchange(boundsTold_, true)) {
        emit failed(QCoreApplication::translate("History",
                                                "Zbyt wiele wiadomości czeka na zapis w archiwum rozmów; następne nie "
                                                "zostaną w nim zapisane."));
    }
    waiting_.push_back([this, message, tell = std::move(tell)] {
        lastTold_ = std::max(lastTold_, message.number);
        tell(message);
    });
    schedule();
}

qint64 History::addNow(Message message) {
    retry_.stop();  // somebody waits for the answer
    flush();
    if (!open()) return 0;
    message.number = ++lastNumber_;
    changes_.messages.push_back(message);
    retry_.stop();
    if (writeChanges()) return lastTold_ = message.number;
    changes_.messages.pop_back();
    return 0;
}

void History::setState(qint64 number, DeliveryState state, bool handed) {
    changes_.states[number] = {state, handed};
    schedule();
}

bool History::remove(qint64 number) {
    flush();
    changes_.states.erase(number);
    if (open() && file_.remove(QStringLiteral("number=?"), number)) return true;
    fails(cannotRemove(file_.reason()));
    return false;
}

void History::forget(const QString& account, bool withMessages) {
    if (withMessages) {
        std::erase_if(changes_.messages, [&](const Message& message) { return message.account == account; });
        characters_ = std::accumulate(changes_.messages.begin(), changes_.messages.end(), qsizetype{0},
                                      [](qsizetype sum, const Message& one) { return sum + charactersOf(one); });
    }
    // One by one where they can be read, so that one that is sent again waits anew.
    if (withMessages ? !isNew() : !failWaiting(account)) {
        bool& all = changes_.gone[account];
        all = all || withMessages;
    }
    flush();
}

bool History::failWaiting(const QString& account) {
    for (const Message& waiting : outgoing(account, DeliveryState::queued))
        changes_.states[waiting.number] = {DeliveryState::failed, false};
    return readWhole_;
}

void History::whenWritten(std::function<void()> tell) {
    if (changes_.empty() && waiting_.empty() && tellable_.empty()) {
        tell();
        return;
    }
    waiting_.push_back(std::move(tell));
    schedule();
}

void History::schedule() {
    if (!sinceFirst_.isValid()) sinceFirst_.start();
    if (sinceFirst_.hasExpired(longestTurn_)) {
        flush();
    } else if (!std::exchange(scheduled_, true)) {
        QMetaObject::invokeMethod(this, &History::flush, Qt::QueuedConnection);
    }
}

void History::flush() {
    scheduled_ = false;
    write();
    tellWritten();
}

void History::write() {
    sinceFirst_.invalidate();
    writeChanges();
    // What could not be written is to be seen all the same.
    std::move(waiting_.begin(), waiting_.end(), std::back_inserter(tellable_));
    waiting_.clear();
}

bool History::writeChanges() {
    if (changes_.empty()) return true;
    if (retry_.isActive()) return false;
    bool written = open() && file_.write(changes_);
    if (!written && file_.isOpen() && isDamaged()) written = beginAnew() && file_.write(changes_);
    if (!written) {
        fails(QCoreApplication::translate("History",
                                          "Nie można zapisać w archiwum rozmów: %1. Wiadomości są pokazywane, a zapis "
                                          "będzie ponawiany.")
                  .arg(file_.reason()));
        return false;
    }
    changes_ = {};
    characters_ = 0;
    boundsTold_ = false;
    if (!sync_.isActive()) sync_.start(kSyncDelay);
    if (std::exchange(failureTold_, false)) {
        emit failed(QCoreApplication::translate("History", "Archiwum rozmów znów działa; zapisano to, co czekało."));
    }
    return true;
}

// Whoever is told may change something and have it written, so that this function runs within itself.
void History::tellWritten() {
    while (!tellable_.empty()) {
        const auto tell = std::move(tellable_.front());
        tellable_.pop_front();
        tell();
    }
}

bool History::isDamaged() const { return file_.fault() == HistoryFile::Fault::damaged; }

bool History::beginAnew() {
    const QString aside = file_.setAside();
    if (aside.isEmpty()) return false;
    toSalvage_.append(aside);
    if (!file_.open()) return false;
    salvage();
    return true;
}

// Where there was no room for a new file, what was set aside waits until there is one.
void History::salvage() {
    for (const QString& aside : std::exchange(toSalvage_, {})) {
        const qint64 saved = salvageHistory(aside, file_);
        emit failed(
            QCoreApplication::translate("History",
                                        "Archiwum rozmów było uszkodzone i zostało zachowane jako %1. Zaczęto nowe; "
                                        "odczytane wiadomości: %2.")
                .arg(aside)
                .arg(saved));
    }
}

void History::fails(const QString& text) {
    retry_.start();
    if (!std::exchange(failureTold_, true)) emit failed(text);
}

// A checkpoint that fails leaves all in the log, and is tried again.
void History::sync() {
    if (file_.sync()) {
        syncFailureTold_ = false;
        return;
    }
    sync_.start(kRetryDelay);
    if (std::exchange(syncFailureTold_, true)) return;
    emit failed(QCoreApplication::translate("History", "Dysk nie przyjmuje archiwum rozmów: %1").arg(file_.reason()));
}

Message History::upToDate(Message message) const {
    const auto change = changes_.states.find(message.number);
    if (change != changes_.states.end()) message.state = change->second.state;
    const bool waits = message.direction == Direction::out && message.state == DeliveryState::queued;
    if (waits && changes_.gone.contains(message.account)) message.state = DeliveryState::failed;
    return message;
}

QList<Message> History::read(const QString& condition, const QVariantList& values, const Wanted& wanted, int limit) {
    QList<Message> messages;
    const auto take = [&](const QSqlQuery& row) {
        // Only what fits is read as a whole; a long history is searched in a moment then.
        if (wanted(row)) {
            const Message message = HistoryFile::messageAt(row);
            const auto gone = changes_.gone.find(message.account);
            if (gone == changes_.gone.end() || !gone->second) messages.append(upToDate(message));
        }
        return limit < 0 || messages.size() < limit;
    };
    readWhole_ = limit == 0 || (open() && file_.read(condition, values, take));
    if (!readWhole_ && file_.isOpen() && isDamaged() && beginAnew()) {
        messages.clear();
        readWhole_ = file_.read(condition, values, take);
    }
    // Why it could not be opened has been told where that was tried before. A damaged file that has just made room for
    // one that cannot be made is news.
    if (readWhole_ || (!file_.isOpen() && retry_.isActive())) return messages;
    fails(QCoreApplication::translate("History", "Nie można odczytać archiwum rozmów: %1").arg(file_.reason()));
    return messages;
}

std::optional<Message> History::message(qint64 number) {
    const auto kept = std::find_if(changes_.messages.begin(), changes_.messages.end(),
                                   [=](const Message& message) { return message.number == number; });
    if (kept != changes_.messages.end()) return *kept;
    const auto found = read(
        QStringLiteral("number=?"), {number}, [](const QSqlQuery&) { return true; }, 1);
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

QList<Message> History::find(const QString& account, const QString& with, int limit, const QString& search) {
    open();  // which tells what the last number is
    const TextSearch wanted(search);
    QList<Message> messages;
    for (auto kept = changes_.messages.rbegin(); kept != changes_.messages.rend(); ++kept) {
        const bool fits = kept->number <= lastTold_ && kept->account == account &&
                          (with.isEmpty() || kept->contact == with) && wanted.fits(kept->subject, kept->body);
        if (fits && (limit < 0 || messages.size() < limit)) messages.append(*kept);
    }
    QString condition = QStringLiteral("account=? AND number<=?");
    QVariantList values{account, lastTold_};
    if (!with.isEmpty()) {
        condition += QStringLiteral(" AND contact=?");
        values.append(with);
    }
    const auto fits = [&](const QSqlQuery& row) {
        return wanted.empty() ||
               wanted.fits(row.value(HistoryFile::kSubject).toString(), row.value(HistoryFile::kBody).toString());
    };
    const int rest = limit < 0 ? kAll : limit - static_cast<int>(messages.size());
    messages += read(condition + QStringLiteral(" ORDER BY number DESC"), values, fits, rest);
    std::reverse(messages.begin(), messages.end());
    return messages;
}

QList<Message> History::outgoing(const QString& account, DeliveryState state) {
    // Nothing can wait then, and a login need not open the database.
    readWhole_ = isNew();
    if (readWhole_) return {};
    QStringList changed;
    for (const auto& [number, change] : changes_.states) changed.append(QString::number(number));
    const QString condition =
        QStringLiteral("direction=1 AND account=? AND (state=? OR number IN (%1)) ORDER BY number")
            .arg(changed.join(u','));
    QList<Message> messages = read(
        condition, {account, static_cast<int>(state)}, [](const QSqlQuery&) { return true; }, kAll);
    messages.removeIf([=](const Message& message) { return message.state != state; });
    return messages;
}

}  // namespace oku
