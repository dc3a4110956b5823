// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <QObject>
#include <vector>

#include "messenger/core/passwords/key_ring.h"
#include "messenger/core/storage/settings_file.h"

namespace oku {

class MessageBoxes;
class SettingsService;

/// Where the accounts' passwords, and those for their proxies, are kept: in the key ring when there is one that takes
/// them; otherwise in the account's file, once the user has agreed; otherwise nowhere, and they are known until the
/// program ends. The settings give them to the plugin all the same, wherever they lie. A password that stands in a file
/// already stays there until it changes.
class Passwords : public QObject {
    Q_OBJECT

public:
    /// `ring` may be null.
    Passwords(SettingsService& settings, MessageBoxes& boxes, std::shared_ptr<KeyRing> ring, QObject* parent = nullptr);

    /// Asks the key ring for the passwords of the account whose settings these are, when they lie there.
    void load(const std::shared_ptr<SettingsFile>& file);
    /// Runs `then` when the account's passwords are known, or known to be lost: mostly at once.
    void whenLoaded(const QString& path, std::function<void()> then);
    /// Removes the passwords of the account with these settings from the key ring, and knows them no more.
    void forget(const QString& path);
    /// From here on an answer to an open question is not the user's own.
    void stopAsking() { asking_ = false; }
    /// The key ring has not answered to all that was given to it.
    [[nodiscard]] bool writing() const { return writes_ > 0; }

signals:
    void noticed(const QString& account, const QString& text);
    /// writing() has become false.
    void written();

private:
    /// A password of the account's settings, and what tells that it lies in the key ring.
    struct Kind {
        const char16_t* key;
        const char16_t* inRing;
        const char16_t* ringSuffix;  ///< of the name in the key ring, behind the account's address
    };
    static const std::array<Kind, 2> kKinds;

    struct Secret {
        QString jid;       ///< as it was kept last
        QString password;  ///< likewise
        bool loading = false;
    };

    struct Account {
        std::shared_ptr<SettingsFile> file;
        std::array<Secret, 2> secrets;  ///< in the order of kKinds
        int question = 0;               ///< the open one about the file; 0 for none
        std::vector<std::function<void()>> waiting;

        [[nodiscard]] bool loading() const;
    };

    /// One password of one account, while a function runs. What comes later finds it by path and kind.
    struct Place {
        Account& account;
        const Kind& kind;
        Secret& secret;

        [[nodiscard]] SettingsFile& file() const { return *account.file; }
        [[nodiscard]] QString key() const { return QString::fromUtf16(kind.key); }
        [[nodiscard]] QString ringName() const { return secret.jid + QString::fromUtf16(kind.ringSuffix); }
        [[nodiscard]] QString current() const { return file().text(key()); }
        [[nodiscard]] bool inRing() const { return file().number(QString::fromUtf16(kind.inRing), 0) != 0; }
    };

    static std::array<Place, 2> placesOf(Account& account);
    [[nodiscard]] Place place(const QString& path, std::size_t kind) { return placesOf(accounts_[path])[kind]; }
    [[nodiscard]] static std::size_t number(const Place& place) {
        return static_cast<std::size_t>(&place.kind - kKinds.data());
    }
    void changed(const QString& path, const QString& key);
    void load(const Place& place);
    void take(const Place& place);
    void keep(const Place& place);
    void keepInFile(const Place& place);
    void ask(Account& account, const QString& jid);
    void loaded(const Place& place, const QString& password, const QString& error);
    void removedFromRing(const QString& jid, const QString& error);
    void keptInRing(const Place& place, const QString& password, const QString& error);

    SettingsService& settings_;
    MessageBoxes& boxes_;
    std::shared_ptr<KeyRing> ring_;
    std::map<QString, Account> accounts_;  ///< by the path of their settings; never taken out
    int writes_ = 0;
    bool asking_ = true;
};

}  // namespace oku
