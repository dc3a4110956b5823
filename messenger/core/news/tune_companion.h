// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <QObject>
#include <QSet>

#include "messenger/core/news/players.h"
#include "messenger/core/values/alarm.h"

namespace oku {

struct AccountEntry;
class Accounts;
class PersonalNews;

/// Publishes what a player plays for the accounts that are set to (`OKU/PublishTune`), and takes it back when it plays
/// no more, when that is switched off, and before the account leaves. What a lost connection or a run that was killed
/// left on the server is taken back after the next login. Who skips from tune to tune is told of at most once in 5 s.
class TuneCompanion : public QObject {
    Q_OBJECT

public:
    TuneCompanion(Accounts& accounts, PersonalNews& news, std::shared_ptr<Players> players, SetAlarm alarms,
                  QObject* parent = nullptr);

    /// An account's setting or connection may be another one.
    void reconsider();
    /// The account is about to leave. A call into the plugin: only from the queue.
    void takeBack(const AccountEntry& account);

signals:
    void noticed(const QString& account, const QString& text);

private:
    [[nodiscard]] static bool isWanted(const AccountEntry& account);
    void lookForPlayers();
    void publish(AccountEntry& account);
    /// What was published last; for an account that nothing is known of, what its settings tell of the run before.
    Tune& toldOf(const AccountEntry& account);
    static void remember(const AccountEntry& account, bool published);
    void rest();

    Accounts& accounts_;
    PersonalNews& news_;
    std::shared_ptr<Players> players_;
    SetAlarm alarms_;
    std::map<QString, Tune> told_;  ///< what was published last, by the accounts' keys
    QSet<QString> refused_;         ///< keys of accounts whose server takes none, until they log in anew
    bool looking_ = false;
    bool resting_ = false;
    std::unique_ptr<QObject> alarm_;
};

}  // namespace oku
