#pragma once

#include <map>
#include <QObject>
#include <QTimer>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/host_table.h"
#include "messenger/core/boundary/plugin_loader.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/timer_service.h"
#include "messenger/core/connections/sessions.h"
#include "messenger/core/connections/sign_off.h"
#include "messenger/core/connections/socket_bridge.h"
#include "messenger/core/options.h"
#include "messenger/core/passwords/passwords.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/roster/info_requests.h"
#include "messenger/core/roster/roster_commands.h"
#include "messenger/core/storage/profile.h"
#include "messenger/core/storage/settings_service.h"
#include "messenger/core/talk/delivery.h"
#include "messenger/core/talk/history.h"
#include "messenger/core/talk/typing_notices.h"
#include "messenger/core/values/status.h"
#include "messenger/core/windows/menu_model.h"
#include "messenger/core/windows/message_boxes.h"
#include "messenger/core/windows/window_services.h"
#include "messenger/core/wire/clear_text_guard.h"
#include "messenger/core/wire/console.h"
#include "messenger/core/wire/digest_check.h"
#include "messenger/core/wire/hook_chain.h"
#include "messenger/core/wire/iq_queries.h"
#include "messenger/core/wire/log_service.h"
#include "messenger/core/wire/stanza_guard.h"
#include "messenger/core/wire/stream_watch.h"

namespace oku {

/// All parts of the host, made in the order in which they need each other, and the plugin's coming and going.
class HostCore : public QObject {
    Q_OBJECT

public:
    explicit HostCore(MessengerOptions options, QObject* parent = nullptr);
    ~HostCore() override;

    [[nodiscard]] QString start();
    void shutdown();
    [[nodiscard]] bool running() const { return loader.loaded(); }
    /// Loads the plugin anew, so that it finds the file of this new account. Accounts that are online sign off before,
    /// and go back online; without any it has been done on return. `key` is the path of the account's settings.
    void reload(const QString& newAccount, const QString& key);
    /// Removes an account with its files and passwords, in the same way; its history too when that is wanted.
    void removeAccount(const AccountEntry& account, bool withHistory);
    /// Chooses a status; while a new load is waited for, the one that the account is to have then.
    void setStatus(AccountEntry& account, Status status, const QString& description);
    /// The same for an account that is new and not loaded yet; false when no such account is waited for.
    bool setStatusOfNew(const QString& jid, Status status, const QString& description);

    /// Picks a menu item; false when there is none. One that chooses a status is such a choice (Sessions::choose()).
    bool activateMenu(const QString& id);
    /// Confirms the account's status window; false when it has none.
    bool confirmStatusWindow(AccountEntry& account, Status status, const QString& description, bool protect);
    /// Sends XML of the user's on the account's stream. An empty string, or the reason.
    QString rawXml(AccountEntry& account, const QString& xml);

    const MessengerOptions options;
    Profile profile;
    ServiceRegistry services;
    EventRegistry events;
    PluginQueue queue;
    HostTable table{services, events, queue};
    PluginLoader loader;
    SettingsService settings{services};
    Accounts accounts{services, settings};
    LogService log;
    TimerService timers{services, queue};
    MessageBoxes boxes{services};
    Passwords passwords{settings, boxes, options.keyRing};
    MenuModel menus{services, queue};
    WindowServices windows{services, accounts, queue};
    ContactService contacts{services, accounts, queue};
    HookChain hooks{services, accounts};
    Console console;
    StanzaGuard guard;
    ClearTextGuard clearTextGuard;
    DigestCheck digestCheck;
    IqQueries queries{services};
    StreamWatch watch;
    History history;
    Delivery delivery{services, queue, history, queries};
    TypingNotices typing;
    SocketBridge sockets;
    Sessions sessions;
    RosterCommands roster{queue, queries, contacts};
    InfoRequests info{queue, queries, contacts};

signals:
    void accountChanged(const QString& account);
    void accountRemoved(const QString& account);
    void noticed(const QString& account, const QString& text);
    void finished();

private:
    void connectParts();
    void connectGuards();
    /// Ends a connection that cannot be trusted, and tells why. It is not dialled again.
    void endUntrusted(AccountEntry& account, const QString& reason);
    void load();
    void unload();
    void dropPlugin();
    void finishShutdown();
    /// What the accounts that are not offline are to go back to.
    void keepChoices();
    void startReload();
    void loadAnew();
    void setStatusAfterReload(const QString& key, Status status, const QString& description);
    struct Removal {
        QString key;
        QString jid;
        bool withHistory;
    };
    void forget(const Removal& account);

    bool shuttingDown_ = false;
    bool finished_ = false;
    SignOff signOff_{accounts, sessions, sockets, passwords};
    bool reloading_ = false;                              ///< loadAnew() follows
    std::map<QString, AccountEntry::Choice> backOnline_;  ///< what follows it, by the accounts' keys
    std::vector<Removal> removals_;                       ///< what is removed then
    std::map<QString, QString> newAccounts_;              ///< that are told of then: key by JID
    QTimer tidying_;
};

}  // namespace oku
