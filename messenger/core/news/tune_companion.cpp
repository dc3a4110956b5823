// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/news/tune_companion.h"

#include <algorithm>
#include <QCoreApplication>
#include <utility>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/news/personal_news.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {
namespace {

constexpr int kRest = 5000;  // milliseconds

/// Stands for what a server has after a connection was lost: perhaps the tune still, perhaps nothing. It differs from
/// all that plays, as no player's tune has an address, and from silence.
Tune leftBehind() {
    Tune tune;
    tune.uri = QStringLiteral("unknown");
    return tune;
}

}  // namespace

TuneCompanion::TuneCompanion(Accounts& accounts, PersonalNews& news, std::shared_ptr<Players> players, SetAlarm alarms,
                             QObject* parent)
    : QObject(parent),
      accounts_(accounts),
      news_(news),
      players_(std::move(players)),
      alarms_(alarms ? std::move(alarms) : SetAlarm(&systemAlarm)) {
    if (players_) connect(players_.get(), &Players::changed, this, &TuneCompanion::reconsider);
}

bool TuneCompanion::isWanted(const AccountEntry& account) {
    return account.registered && account.settings->number(QString::fromUtf16(setting::publishTune), 0) == 1;
}

void TuneCompanion::reconsider() {
    lookForPlayers();
    const bool resting = resting_;
    for (const auto& account : accounts_.all()) {
        if (!account->ready()) {
            const auto told = told_.find(account->key);
            if (told != told_.end() && !told->second.isEmpty()) told->second = leftBehind();
            refused_.remove(account->key);
        } else if (!resting) {
            publish(*account);
        }
    }
}

void TuneCompanion::lookForPlayers() {
    const auto& all = accounts_.all();
    const bool wanted = std::any_of(all.begin(), all.end(), [](const auto& account) { return isWanted(*account); });
    if (wanted == std::exchange(looking_, wanted)) return;
    if ((!players_ || !players_->watch(wanted)) && wanted) {
        emit noticed({}, QCoreApplication::translate("News", "W tej sesji nie widać odtwarzaczy: nie ma szyny D-Bus."));
    }
}

void TuneCompanion::publish(AccountEntry& account) {
    const Tune tune = isWanted(account) && players_ ? players_->playing() : Tune();
    Tune& told = toldOf(account);
    if (tune == told || refused_.contains(account.key)) return;
    told = tune;
    // A run that is killed right after has it in its settings.
    if (!tune.isEmpty()) remember(account, true);
    const QString reason = news_.publish(account, tune);
    if (tune.isEmpty() || !reason.isEmpty()) remember(account, false);
    if (reason.isEmpty()) {
        rest();
        return;
    }
    refused_.insert(account.key);
    told_.erase(account.key);
    emit noticed(account.jid(), reason);
}

Tune& TuneCompanion::toldOf(const AccountEntry& account) {
    const auto [told, isNew] = told_.try_emplace(account.key);
    if (isNew && account.settings->number(QString::fromUtf16(setting::tuneToldOf), 0) != 0) told->second = leftBehind();
    return told->second;
}

void TuneCompanion::remember(const AccountEntry& account, bool published) {
    const QString name = QString::fromUtf16(setting::tuneToldOf);
    if (account.settings->has(name) == published) return;
    account.settings->set(name, published ? QVariant(1) : QVariant());
    // A file that cannot be written is told by itself.
    account.settings->write();
}

void TuneCompanion::rest() {
    if (std::exchange(resting_, true)) return;
    alarm_ = alarms_(kRest, [this] {
        resting_ = false;
        // It rings just now.
        if (alarm_) alarm_.release()->deleteLater();
        reconsider();
    });
}

void TuneCompanion::takeBack(const AccountEntry& account) {
    const auto told = told_.find(account.key);
    if (told == told_.end() || told->second.isEmpty() || !account.loggedIn()) return;
    told_.erase(told);
    news_.takeBackTune(account);
    remember(account, false);
}

}  // namespace oku
