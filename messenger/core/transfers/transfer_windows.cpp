// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/transfer_windows.h"

#include <algorithm>
#include <limits>
#include <QCoreApplication>
#include <utility>

#include "host/oku/transfer.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

constexpr int kBetweenTellings = 250;  // milliseconds, while bytes move
constexpr qsizetype kMostEnded = 100;  // that are remembered

/// A size below zero comes as a very large number.
qint64 sizeOf(quint64 told) {
    constexpr auto most = static_cast<quint64>(std::numeric_limits<qint64>::max());
    return told > most ? -1 : static_cast<qint64>(told);
}

TransferState stateAtTheEnd(const Transfer& transfer, bool cancelled) {
    if (cancelled) return TransferState::cancelled;
    if (transfer.state != TransferState::running) return TransferState::failed;
    return transfer.position < transfer.size ? TransferState::incomplete : TransferState::done;
}

}  // namespace

TransferWindows::TransferWindows(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent)
    : QObject(parent),
      accounts_(accounts),
      queue_(queue),
      updates_(queue, [this](const WindowUpdate& one) { update(one); }) {
    clock_.start();
    telling_.setSingleShot(true);
    telling_.setInterval(kBetweenTellings);
    connect(&telling_, &QTimer::timeout, this, &TransferWindows::tellUntold);
    connect(&queue, &PluginQueue::callFinished, this, [this] { expected_.reset(); });
    services.provide(u"OKU/FTInitWindow", [this](OKU_WORD param, OKU_WORD) { return init(param); });
    services.provide(u"OKU/FTDropWindow", [this](OKU_WORD handle, OKU_WORD) { return drop(handle); });
}

OKU_WORD TransferWindows::init(OKU_WORD param) {
    auto* record = recordAt<OKU_FT_INIT_RECORD>(param);
    const auto* contact = record ? recordAt<OKU_CONTACT_RECORD>(wordOf(record->contact)) : nullptr;
    const auto* account = contact ? accounts_.byNetId(contact->netId) : nullptr;
    if (!account) return 0;
    Window window;
    window.key = account->key;
    window.callback = record->callback;
    window.context = record->callbackData;
    Transfer& transfer = window.transfer;
    transfer.number = ++lastNumber_;
    transfer.account = account->jid();
    transfer.contact = bareJid(wideText(contact->id));
    transfer.text = wideText(record->status);
    if (auto known = std::exchange(expected_, {}); known && known->contact == transfer.contact) {
        transfer.direction = known->direction;
        transfer.name = known->name;
        transfer.path = known->path;
        transfer.size = known->size;
        window.possiblePaths = std::move(known->possiblePaths);
    }
    record->updateFn = WindowUpdates::handler();
    record->updateData = transfer.number;
    const int number = transfer.number;
    tell(windows_.emplace(number, std::move(window)).first->second);
    return number;
}

OKU_WORD TransferWindows::drop(OKU_WORD handle) {
    updates_.forget(handle);
    Window* window = open(handle);
    if (!window) return 0;
    end(*window, stateAtTheEnd(window->transfer, window->cancelled));
    return 1;
}

void TransferWindows::end(Window& window, TransferState state) {
    window.callback = nullptr;
    Transfer& transfer = window.transfer;
    transfer.state = state;
    transfer.cancellable = false;
    transfer.speed = 0;
    transfer.secondsLeft = -1;
    const int number = transfer.number;
    tell(window);
    emit ended(number);
    forgetOldest();
}

TransferWindows::Window* TransferWindows::open(OKU_WORD handle) {
    const auto found = windows_.find(static_cast<int>(handle));
    return found == windows_.end() || hasEnded(found->second.transfer.state) ? nullptr : &found->second;
}

void TransferWindows::update(const WindowUpdate& update) {
    Window* const window = open(update.window);
    if (!window) return;
    Transfer& transfer = window->transfer;
    lastWritten_ = transfer.number;
    const auto has = [&](std::uint32_t group) { return (update.mask & group) == group; };
    if (has(OKU_FT_TOTAL)) transfer.size = sizeOf(update.total);
    if (has(OKU_FT_CANCEL)) transfer.cancellable = update.cancellable;
    if (has(OKU_FT_STATUS_TEXT)) transfer.text = update.status;
    if (has(OKU_FT_LINK) && !update.linkTarget.isEmpty()) transfer.path = update.linkTarget;
    // One that failed is dropped soon, and then it has ended.
    if (has(OKU_FT_STATE))
        transfer.state = update.state == OKU_FT_RUNNING ? TransferState::running : TransferState::negotiating;
    if (has(OKU_FT_POSITION)) moveTo(*window, update.position);
    window->untold = true;
    if (!telling_.isActive()) telling_.start();
}

void TransferWindows::moveTo(Window& window, quint64 position) {
    Transfer& transfer = window.transfer;
    transfer.position = std::max<qint64>(sizeOf(position), 0);
    window.pace.add(clock_.elapsed(), transfer.position);
    transfer.speed = window.pace.speed();
    transfer.secondsLeft = window.pace.secondsLeft(transfer.size);
}

void TransferWindows::tell(Window& window) {
    window.untold = false;
    emit changed(Transfer(window.transfer));
}

// Whoever hears of one may end others.
void TransferWindows::tellUntold() {
    for (const int number : numbers([](const Window& window) { return window.untold; })) {
        const auto found = windows_.find(number);
        if (found != windows_.end()) tell(found->second);
    }
}

template <typename Test>
QList<int> TransferWindows::numbers(Test test) const {
    QList<int> list;
    for (const auto& [number, window] : windows_)
        if (test(window)) list.append(number);
    return list;
}

void TransferWindows::forgetOldest() {
    qsizetype endedOnes = std::count_if(windows_.begin(), windows_.end(),
                                        [](const auto& one) { return hasEnded(one.second.transfer.state); });
    for (auto at = windows_.begin(); at != windows_.end() && endedOnes > kMostEnded;) {
        const bool old = hasEnded(at->second.transfer.state);
        at = old ? windows_.erase(at) : std::next(at);
        if (old) --endedOnes;
    }
}

bool TransferWindows::receives(const QString& path) const {
    return std::any_of(windows_.begin(), windows_.end(), [&](const auto& one) {
        const Transfer& transfer = one.second.transfer;
        return transfer.direction == Direction::in && !hasEnded(transfer.state) &&
               (transfer.path == path || one.second.possiblePaths.contains(path));
    });
}

QList<Transfer> TransferWindows::transfers() const {
    QList<Transfer> list;
    for (const auto& [number, window] : windows_) list.append(window.transfer);
    return list;
}

std::optional<Transfer> TransferWindows::transfer(int number) const {
    const auto found = windows_.find(number);
    return found == windows_.end() ? std::nullopt : std::optional(found->second.transfer);
}

QList<int> TransferWindows::sending(const AccountEntry& account, const QString& path) const {
    QList<int> list = numbers([&](const Window& window) {
        return window.key == account.key && window.transfer.direction == Direction::out &&
               !hasEnded(window.transfer.state) && window.transfer.path == path;
    });
    if (list.removeOne(lastWritten_)) list.prepend(lastWritten_);
    return list;
}

bool TransferWindows::cancel(int number) {
    Window* const window = open(number);
    if (!window || !window->callback || !window->transfer.cancellable) return false;
    queue_.post(window->key, [this, number] {
        Window* const still = open(number);
        if (!still || !still->callback) return;
        still->cancelled = true;
        auto event = makeRecord<OKU_FT_EVENT>();
        event.event = OKU_FT_EVENT_CANCELLED;
        still->callback(wordOf(&event), 0, still->context);
    });
    return true;
}

void TransferWindows::dropPlugin() {
    for (const int number : numbers([](const Window& window) { return !hasEnded(window.transfer.state); })) {
        updates_.forget(number);
        Window* const window = open(number);
        if (!window) continue;
        window->transfer.text = QCoreApplication::translate("Transfers", "Przerwano");
        end(*window, TransferState::failed);
    }
}

}  // namespace oku
