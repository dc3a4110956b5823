#include "messenger/core/passwords.h"

#include <QPointer>

#include "messenger/core/jid_text.h"
#include "messenger/core/message_boxes.h"
#include "messenger/core/messenger.h"
#include "messenger/core/settings_service.h"

namespace oku {
namespace {

const QString kPassword = QStringLiteral("XMPP/Pass");
const QString kUser = QStringLiteral("XMPP/User");

QString inFileKey() { return QString::fromUtf16(setting::passwordInFile); }
QString inRingKey() { return QString::fromUtf16(setting::passwordInRing); }

}  // namespace

Passwords::Passwords(SettingsService& settings, MessageBoxes& boxes, std::shared_ptr<KeyRing> ring, QObject* parent)
    : QObject(parent), settings_(settings), boxes_(boxes), ring_(std::move(ring)) {
    connect(&settings, &SettingsService::changed, this, &Passwords::changed);
}

void Passwords::load(const std::shared_ptr<SettingsFile>& file) {
    Account& account = accounts_[file->path()];
    account.file = file;
    account.jid = bareJid(file->text(kUser));
    account.password = file->text(kPassword);
    if (account.loading || file->number(inRingKey(), 0) == 0) return;
    file->keepOffDisk(kPassword, true);
    if (!account.password.isEmpty()) return;
    if (!ring_) {
        loaded(account, {}, QCoreApplication::translate("Passwords", "ten program nie obsługuje pęku kluczy"));
        return;
    }
    account.loading = true;
    // Entries are never taken out of the map.
    ring_->read(account.jid,
                [this, &account](const QString& password, const QString& error) { loaded(account, password, error); });
}

void Passwords::loaded(Account& account, const QString& password, const QString& error) {
    account.loading = false;
    if (!error.isEmpty()) {
        emit noticed(account.jid,
                     QCoreApplication::translate("Passwords", "Pęk kluczy nie podał hasła (%1). Podaj je jeszcze raz.")
                         .arg(error));
    } else if (account.file->text(kPassword).isEmpty()) {
        // Given anew meanwhile, the user's counts.
        account.password = password;
        account.file->set(kPassword, password);
    }
    for (const auto& then : std::exchange(account.waiting, {})) then();
}

void Passwords::whenLoaded(const QString& path, std::function<void()> then) {
    const auto found = accounts_.find(path);
    if (found == accounts_.end() || !found->second.loading) {
        then();
        return;
    }
    found->second.waiting.push_back(std::move(then));
}

void Passwords::changed(const QString& path, const QString& key) {
    if (key != kPassword && key != kUser && key != inFileKey()) return;
    Account& account = accounts_[path];
    account.file = settings_.store(path);
    const QString jid = bareJid(account.file->text(kUser));
    const QString password = account.file->text(kPassword);
    if (password.isEmpty()) return;
    if (key == inFileKey()) {
        if (account.file->number(inRingKey(), 0) == 0) keepInFile(account);
        return;
    }
    if (jid == account.jid && password == account.password) return;
    account.jid = jid;
    account.password = password;
    // Not written for a moment, not even while it is asked where it may be.
    account.file->keepOffDisk(kPassword, true);
    if (!jid.isEmpty()) keep(account);
}

void Passwords::keep(Account& account) {
    if (!ring_) {
        keepInFile(account);
        return;
    }
    ++writes_;
    const auto done = [self = QPointer(this), &account, password = account.password](const QString& error) {
        if (self) self->keptInRing(account, password, error);
    };
    ring_->write(account.jid, account.password, done);
}

void Passwords::keptInRing(Account& account, const QString& password, const QString& error) {
    if (password == account.password) {
        account.file->set(inRingKey(), error.isEmpty() ? QVariant(1) : QVariant());
        account.file->keepOffDisk(kPassword, true);
        account.file->write();
        if (!error.isEmpty()) keepInFile(account);
    }
    if (--writes_ == 0) emit written();
}

void Passwords::keepInFile(Account& account) {
    const QVariant agreed = account.file->value(inFileKey());
    if (!agreed.isValid()) {
        ask(account);
        return;
    }
    account.file->keepOffDisk(kPassword, agreed.toLongLong() == 0);
    account.file->write();
}

void Passwords::ask(Account& account) {
    if (account.question || !asking_) return;
    const QString text =
        QCoreApplication::translate(
            "Passwords",
            "Nie ma systemowego pęku kluczy. Czy zachować hasło konta %1 w jego pliku, który tylko Ty możesz odczytać? "
            "Inaczej trzeba je podawać po każdym uruchomieniu.")
            .arg(account.jid);
    account.question =
        boxes_.ask(QCoreApplication::translate("Passwords", "Hasło"), text, [this, &account](BoxButton button) {
            account.question = 0;
            if (!asking_) return;
            account.file->set(inFileKey(), button == BoxButton::yes ? 1 : 0);
            account.file->write();
        });
}

}  // namespace oku
