#pragma once

#include <functional>
#include <map>
#include <memory>
#include <QObject>
#include <vector>

#include "messenger/core/key_ring.h"
#include "messenger/core/settings_file.h"

namespace oku {

class MessageBoxes;
class SettingsService;

/// Where the accounts' passwords are kept: in the key ring when there is one that takes them; otherwise in the
/// account's file, once the user has agreed; otherwise nowhere, and they are known until the program ends. The settings
/// give them to the plugin all the same, wherever they lie. A password that stands in a file already stays there until
/// it changes.
class Passwords : public QObject {
    Q_OBJECT

public:
    /// `ring` may be null.
    Passwords(SettingsService& settings, MessageBoxes& boxes, std::shared_ptr<KeyRing> ring, QObject* parent = nullptr);

    /// Asks the key ring for the password of the account whose settings these are, when it lies there.
    void load(const std::shared_ptr<SettingsFile>& file);
    /// Runs `then` when the account's password is known, or known to be lost: mostly at once.
    void whenLoaded(const QString& path, std::function<void()> then);
    /// From here on an answer to an open question is not the user's own.
    void stopAsking() { asking_ = false; }
    /// The key ring has not answered to all that was given to it.
    [[nodiscard]] bool writing() const { return writes_ > 0; }

signals:
    void noticed(const QString& account, const QString& text);
    /// writing() has become false.
    void written();

private:
    struct Account {
        std::shared_ptr<SettingsFile> file;
        QString jid;       ///< as it was kept last
        QString password;  ///< likewise
        bool loading = false;
        int question = 0;  ///< the open one about the file; 0 for none
        std::vector<std::function<void()>> waiting;
    };

    void changed(const QString& path, const QString& key);
    void keep(Account& account);
    void keepInFile(Account& account);
    void ask(Account& account);
    void loaded(Account& account, const QString& password, const QString& error);
    void keptInRing(Account& account, const QString& password, const QString& error);

    SettingsService& settings_;
    MessageBoxes& boxes_;
    std::shared_ptr<KeyRing> ring_;
    std::map<QString, Account> accounts_;  ///< by the path of their settings
    int writes_ = 0;
    bool asking_ = true;
};

}  // namespace oku
