#include "messenger/core/passwords/passwords.h"

#include <algorithm>
#include <QPointer>

#include "messenger/core/storage/settings_service.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"
#include "messenger/core/windows/message_boxes.h"

namespace oku {
namespace {

const QString kUser = QStringLiteral("XMPP/User");

QString inFileKey() { return QString::fromUtf16(setting::passwordInFile); }

}  // namespace

const std::array<Passwords::Kind, 2> Passwords::kKinds{{
    {u"XMPP/Pass", setting::passwordInRing, u""},
    {u"XMPP/Proxy/Pass", setting::proxyPasswordInRing, u"#proxy"},
}};

Passwords::Passwords(SettingsService& settings, MessageBoxes& boxes, std::shared_ptr<KeyRing> ring, QObject* parent)
    : QObject(parent), settings_(settings), boxes_(boxes), ring_(std::move(ring)) {
    connect(&settings, &SettingsService::changed, this, &Passwords::changed);
}

bool Passwords::Account::loading() const {
    return std::any_of(secrets.begin(), secrets.end(), [](const Secret& secret) { return secret.loading; });
}

Passwords::Account& Passwords::account(const QString& path) {
    const auto [place, added] = accounts_.try_emplace(path);
    Account& account = place->second;
    for (std::size_t i = 0; added && i < kKinds.size(); ++i) {
        account.secrets[i].account = &account;
        account.secrets[i].kind = &kKinds[i];
    }
    return account;
}

void Passwords::load(const std::shared_ptr<SettingsFile>& file) {
    Account& known = account(file->path());
    known.file = file;
    for (Secret& secret : known.secrets) load(secret);
}

void Passwords::load(Secret& secret) {
    SettingsFile& file = *secret.account->file;
    secret.jid = bareJid(file.text(kUser));
    secret.password = secret.current();
    if (secret.loading || !secret.inRing()) return;
    file.keepOffDisk(secret.key(), true);
    if (!secret.password.isEmpty()) return;
    if (!ring_) {
        loaded(secret, {}, QCoreApplication::translate("Passwords", "ten program nie obsługuje pęku kluczy"));
        return;
    }
    secret.loading = true;
    ring_->read(secret.ringName(),
                [this, &secret](const QString& password, const QString& error) { loaded(secret, password, error); });
}

void Passwords::loaded(Secret& secret, const QString& password, const QString& error) {
    secret.loading = false;
    if (!error.isEmpty()) {
        emit noticed(secret.jid,
                     QCoreApplication::translate("Passwords", "Pęk kluczy nie podał hasła (%1). Podaj je jeszcze raz.")
                         .arg(error));
    } else if (secret.current().isEmpty()) {
        // Given anew meanwhile, the user's counts.
        secret.password = password;
        secret.account->file->set(secret.key(), password);
    }
    if (secret.account->loading()) return;
    for (const auto& then : std::exchange(secret.account->waiting, {})) then();
}

void Passwords::whenLoaded(const QString& path, std::function<void()> then) {
    Account& known = account(path);
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
    for (Secret& secret : account.secrets) {
        if (ring_ && secret.inRing()) {
            ++writes_;
            ring_->remove(secret.ringName(), [self = QPointer(this), jid = secret.jid](const QString& error) {
                if (self) self->removedFromRing(jid, error);
            });
        }
        secret.jid.clear();
        secret.password.clear();
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
    Account& known = account(path);
    known.file = settings_.store(path);
    for (Secret& secret : known.secrets) {
        if (secret.current().isEmpty()) continue;
        if (!agreed) {
            take(secret);
        } else if (!secret.inRing()) {
            keepInFile(secret);
        }
    }
}

void Passwords::take(Secret& secret) {
    const QString jid = bareJid(secret.account->file->text(kUser));
    const QString password = secret.current();
    if (jid == secret.jid && password == secret.password) return;
    secret.jid = jid;
    secret.password = password;
    // Not written for a moment, not even while it is asked where it may be.
    secret.account->file->keepOffDisk(secret.key(), true);
    if (!jid.isEmpty()) keep(secret);
}

void Passwords::keep(Secret& secret) {
    if (!ring_) {
        keepInFile(secret);
        return;
    }
    ++writes_;
    const auto done = [self = QPointer(this), &secret, password = secret.password](const QString& error) {
        if (self) self->keptInRing(secret, password, error);
    };
    ring_->write(secret.ringName(), secret.password, done);
}

void Passwords::keptInRing(Secret& secret, const QString& password, const QString& error) {
    if (password == secret.password) {
        SettingsFile& file = *secret.account->file;
        file.set(QString::fromUtf16(secret.kind->inRing), error.isEmpty() ? QVariant(1) : QVariant());
        file.keepOffDisk(secret.key(), true);
        file.write();
        if (!error.isEmpty()) keepInFile(secret);
    }
    if (--writes_ == 0) emit written();
}

void Passwords::keepInFile(Secret& secret) {
    SettingsFile& file = *secret.account->file;
    const QVariant agreed = file.value(inFileKey());
    if (!agreed.isValid()) {
        ask(*secret.account, secret.jid);
        return;
    }
    file.keepOffDisk(secret.key(), agreed.toLongLong() == 0);
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
    account.question =
        boxes_.ask(QCoreApplication::translate("Passwords", "Hasło"), text, [this, &account](BoxButton button) {
            account.question = 0;
            if (!asking_) return;
            account.file->set(inFileKey(), button == BoxButton::yes ? 1 : 0);
            account.file->write();
        });
}

}  // namespace oku
