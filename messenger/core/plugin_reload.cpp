// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/plugin_reload.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <utility>

#include "messenger/core/host_core.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

/// What was set aside of a file because it was damaged. Passwords may stand in it. The whole ending counts: the name of
/// another account's file may begin like that.
QStringList damagedOf(const QString& path) {
    static const QRegularExpression ending(
        QRegularExpression::anchoredPattern(QStringLiteral("\\.damaged-\\d{8}-\\d{6}-\\d{3}(-\\d+)?")));
    const QFileInfo file(path);
    QStringList paths;
    for (const QString& name : file.dir().entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (name.startsWith(file.fileName()) && ending.match(name.mid(file.fileName().size())).hasMatch())
            paths.append(file.dir().filePath(name));
    }
    return paths;
}

}  // namespace

void PluginReload::addAccount(const QString& jid, const QString& key) {
    newAccounts_.insert_or_assign(jid, key);
    start();
}

void PluginReload::start() {
    core_.queue.post({}, [this] {
        keepChoices();
        waiting_ = true;
        if (backOnline_.empty()) {
            loadAnew();
        } else {
            core_.signOff.start([this] { core_.queue.post({}, [this] { loadAnew(); }); });
        }
    });
}

void PluginReload::keepChoices() {
    for (const auto& account : core_.accounts.all()) {
        if (const auto* kept = core_.choices.kept(account->key)) {
            backOnline_.insert_or_assign(account->key, Choice{kept->status, kept->description});
        } else if (account->connection != ConnectionState::offline) {
            // While it signs off, what was chosen before counts.
            const Status status = account->status == Status::offline ? Status::online : account->status;
            backOnline_.try_emplace(account->key, Choice{status, account->description});
        }
    }
}

void PluginReload::loadAnew() {
    if (core_.shuttingDown() || !std::exchange(waiting_, false)) return;
    core_.unload();
    for (const Removal& account : std::exchange(removals_, {})) forget(account);
    core_.load();
    const auto backOnline = std::exchange(backOnline_, {});
    for (const auto& [jid, key] : std::exchange(newAccounts_, {})) emit accountAdded(jid);
    for (const auto& [key, choice] : backOnline) {
        auto* account = core_.accounts.byKey(key);
        if (!account) continue;
        core_.passwords.whenLoaded(key, [this, account, status = choice.status, description = choice.description] {
            setStatus(*account, status, description);
        });
    }
}

void PluginReload::removeAccount(const AccountEntry& account, bool withHistory) {
    removals_.push_back({account.key, account.jid(), withHistory});
    start();
}

void PluginReload::forget(const Removal& account) {
    backOnline_.erase(account.key);
    core_.passwords.forget(account.key);
    core_.contacts.forget(account.key);
    QString base = account.key;
    base.chop(QStringLiteral(".config").size());
    QFile::remove(base + QStringLiteral(".roster"));
    const auto tellKept = [&](const QString& path) {
        emit noticed(account.jid, QCoreApplication::translate("HostCore", "Nie można usunąć pliku %1").arg(path));
    };
    if (!core_.settings.store(account.key)->remove()) tellKept(account.key);
    for (const QString& path : damagedOf(account.key) + damagedOf(base + QStringLiteral(".contacts"))) {
        if (!QFile::remove(path)) tellKept(path);
    }
    core_.history.forget(account.jid, account.withHistory);
    emit accountRemoved(account.jid);
}

void PluginReload::setStatus(AccountEntry& account, Status status, const QString& description) {
    if (waiting_) {
        setStatusThen(account.key, status, description);
    } else {
        core_.choices.set(account, status, description);
    }
}

bool PluginReload::setStatusOfNew(const QString& jid, Status status, const QString& description) {
    const auto found = newAccounts_.find(bareJid(jid));
    if (found == newAccounts_.end()) return false;
    setStatusThen(found->second, status, description);
    return true;
}

void PluginReload::setStatusThen(const QString& key, Status status, const QString& description) {
    if (status == Status::offline) {
        backOnline_.erase(key);
    } else {
        backOnline_.insert_or_assign(key, Choice{status, description});
    }
}

}  // namespace oku
