// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/passwords/passwords.h"

#include <algorithm>
#include <QPointer>

#include "messenger/core/storage/settings_service.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"
#include "messenger/core/windows/message_boxes.h"

namespace oku {
namespace {

const QString kUser = QString::fromUtf16(setting::user);

QString inFileKey() { return QString::fromUtf16(setting::passwordInFile); }

}  // namespace

const std::array<Passwords::Kind, 2> Passwords::kKinds{{
    {setting::password, setting::passwordInRing, u""},
    {setting::proxyPassword, setting::proxyPasswordInRing, u"#proxy"},
}};

Passwords::Passwords(SettingsService& settings, MessageBoxes& boxes, std::shared_ptr<KeyRing> ring, QObject* parent)
    : QObject(parent), settings_(settings), boxes_(boxes), ring_(std::move(ring)) {
    connect(&settings, &SettingsService::changed, this, &Passwords::changed);
}

bool Passwords::Account::loading() const {
    return std::any_of(secrets.begin(), secrets.end(), [](const Secret& secret) { return secret.loading; });
}

std::array<Passwords::Place, 2> Passwords::placesOf(Account& account) {
    return {Place{account, kKinds[0], account.secrets[0]}, Place{account, kKinds[1], account.secrets[1]}};
}

void Passwords::load(const std::shared_ptr<SettingsFile>& file) {
    Account& known = accounts_[file->path()];
    known.file = file;
    for (const Place& place : placesOf(known)) load(place);
}

void Passwords::load(const Place& place) {
    Secret& secret = place.secret;
    secret.jid = bareJid(place.file().text(kUser));
    secret.password = place.current();
    if (secret.loading || !place.inRing()) return;
    place.file().keepOffDisk(place.key(), true);
    if (!secret.password.isEmpty()) return;
    if (!ring_) {
        loaded(place, {}, QCoreApplication::translate("Passwords", "ten program nie obsługuje pęku kluczy"));
        return;
    }
    secret.loading = true;
    const auto done = [self = QPointer(this), path = place.file().path(), kind = number(place)](const QString& password,
                                                                                                const QString& error) {
        if (self) self->loaded(self->place(path, kind), password, error);
    };
    ring_->read(place.ringName(), done);
}

void Passwords::loaded(const Place& place, const QString& password, const QString& error) {
    Secret& secret = place.secret;
    secret.loading = false;
    if (!error.isEmpty()) {
        emit noticed(secret.jid,
                     QCoreApplication::translate("Passwords", "Pęk kluczy nie podał hasła (%1). Podaj je jeszcze raz.")
                         .arg(error));
    } else if (place.current().isEmpty()) {
        // Given anew meanwhile, the user's counts.
        secret.password = password;
        place.file().set(place.key(), password);
    }
    if (place.account.loading()) return;
    for (const auto& then : std::exchange(place.account.waiting, {})) then();
}

void Passwords::whenLoaded(const QString& path, std::function<void()> then) {
    Account& known = accounts_[path];
    if (!known.loading()) {
        then();
        return;
    }
    known.waiting.push_back(std::move(then));
}

void Passwords::forget(const QString& path) {
    const auto found = accounts_.find(path);
    if (found == accounts_.end() || !found->second.file) return;
    Account& account = found->second;
    if (account.question) boxes_.answer(account.question, BoxButton::no);
    for (const Place& place : placesOf(account)) {
        if (ring_ && place.inRing()) {
            ++writes_;
            ring_->remove(place.ringName(), [self = QPointer(this), jid = place.secret.jid](const QString& error) {
                if (self) self->removedFromRing(jid, error);
            });
        }
        place.secret.jid.clear();
        place.secret.password.clear();
    }
}

void Passwords::removedFromRing(const QString& jid, const QString& error) {
    if (!error.isEmpty()) {
        emit noticed(
            jid, QCoreApplication::translate("Passwords", "Hasło konta %1 zostało w pęku kluczy: %2").arg(jid, error));
    }
    if (--writes_ == 0) emit written();
}

void Passwords::changed(const QString& path, const QString& key) {
    const bool agreed = key == inFileKey();
    const auto isPassword = [&](const Kind& kind) { return key == QString::fromUtf16(kind.key); };
    if (!agreed && key != kUser && std::none_of(kKinds.begin(), kKinds.end(), isPassword)) return;
    Account& known = accounts_[path];
    known.file = settings_.store(path);
    for (const Place& place : placesOf(known)) {
        if (place.current().isEmpty()) continue;
        if (!agreed) {
            take(place);
        } else if (!place.inRing()) {
            keepInFile(place);
        }
    }
}

void Passwords::take(const Place& place) {
    Secret& secret = place.secret;
    const QString jid = bareJid(place.file().text(kUser));
    const QString password = place.current();
    if (jid == secret.jid && password == secret.password) return;
    secret.jid = jid;
    secret.password = password;
    // Not written for a moment, not even while it is asked where it may be.
    place.file().keepOffDisk(place.key(), true);
    if (!jid.isEmpty()) keep(place);
}

void Passwords::keep(const Place& place) {
    if (!ring_) {
        keepInFile(place);
        return;
    }
    ++writes_;
    const auto done = [self = QPointer(this), path = place.file().path(), kind = number(place),
                       password = place.secret.password](const QString& error) {
        if (self) self->keptInRing(self->place(path, kind), password, error);
    };
    ring_->write(place.ringName(), place.secret.password, done);
}

void Passwords::keptInRing(const Place& place, const QString& password, const QString& error) {
    if (password == place.secret.password) {
        SettingsFile& file = place.file();
        file.set(QString::fromUtf16(place.kind.inRing), error.isEmpty() ? QVariant(1) : QVariant());
        file.keepOffDisk(place.key(), true);
        file.write();
        if (!error.isEmpty()) keepInFile(place);
    }
    if (--writes_ == 0) emit written();
}

void Passwords::keepInFile(const Place& place) {
    SettingsFile& file = place.file();
    const QVariant agreed = file.value(inFileKey());
    if (!agreed.isValid()) {
        ask(place.account, place.secret.jid);
        return;
    }
    file.keepOffDisk(place.key(), agreed.toLongLong() == 0);
    file.write();
}

void Passwords::ask(Account& account, const QString& jid) {
    if (account.question || !asking_) return;
    const QString text =
        QCoreApplication::translate(
            "Passwords",
            "Nie ma systemowego pęku kluczy. Czy zachować hasło konta %1 w jego pliku, który tylko Ty możesz odczytać? "
            "Inaczej trzeba je podawać po każdym uruchomieniu.")
            .arg(jid);
    account.question = boxes_.ask(QCoreApplication::translate("Passwords", "Hasło"), text,
                                  [this, path = account.file->path()](BoxButton button) {
                                      Account& asked = accounts_[path];
                                      asked.question = 0;
                                      if (!asking_) return;
                                      asked.file->set(inFileKey(), button == BoxButton::yes ? 1 : 0);
                                      asked.file->write();
                                  });
}

}  // namespace oku
