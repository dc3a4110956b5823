// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/host_table.h"
#include "messenger/core/boundary/plugin_loader.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/timer_service.h"
#include "messenger/core/cards/checked_pictures.h"
#include "messenger/core/cards/contact_cards.h"
#include "messenger/core/cards/contact_pictures.h"
#include "messenger/core/cards/own_cards.h"
#include "messenger/core/cards/own_picture.h"
#include "messenger/core/connections/line_guards.h"
#include "messenger/core/connections/sessions.h"
#include "messenger/core/connections/sign_off.h"
#include "messenger/core/connections/socket_bridge.h"
#include "messenger/core/connections/status_choices.h"
#include "messenger/core/dialogs/dialog_input.h"
#include "messenger/core/dialogs/dialog_services.h"
#include "messenger/core/dialogs/dialog_windows.h"
#include "messenger/core/dialogs/host_pages.h"
#include "messenger/core/news/personal_news.h"
#include "messenger/core/news/popups.h"
#include "messenger/core/news/tune_companion.h"
#include "messenger/core/options.h"
#include "messenger/core/passwords/passwords.h"
#include "messenger/core/plugin_reload.h"
#include "messenger/core/roster/authorizations.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/roster/info_requests.h"
#include "messenger/core/roster/roster_commands.h"
#include "messenger/core/storage/profile.h"
#include "messenger/core/storage/settings_service.h"
#include "messenger/core/talk/arrivals.h"
#include "messenger/core/talk/delivery.h"
#include "messenger/core/talk/history.h"
#include "messenger/core/talk/typing_notices.h"
#include "messenger/core/transfers/file_choosers.h"
#include "messenger/core/transfers/file_offers.h"
#include "messenger/core/transfers/file_publisher.h"
#include "messenger/core/transfers/received_files.h"
#include "messenger/core/transfers/transfer_windows.h"
#include "messenger/core/windows/contact_menus.h"
#include "messenger/core/windows/links.h"
#include "messenger/core/windows/menu_model.h"
#include "messenger/core/windows/message_boxes.h"
#include "messenger/core/windows/status_windows.h"
#include "messenger/core/windows/window_services.h"
#include "messenger/core/wire/console.h"
#include "messenger/core/wire/hook_chain.h"
#include "messenger/core/wire/iq_queries.h"
#include "messenger/core/wire/log_service.h"
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
    [[nodiscard]] bool shuttingDown() const { return shuttingDown_; }
    /// Loads the plugin into its slots, and takes it out again; only from the queue.
    void load();
    void unload();

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
    MessageBoxes boxes{services, options.alarms};
    Passwords passwords{settings, boxes, options.keyRing};
    LinkService links{services, options.linkOpener};
    MenuModel menus{services, queue};
    ContactMenus contactMenus{events, queue};
    StatusWindows statusWindows{services, accounts, queue};
    WindowServices windows{services};
    DialogWindows dialogs;
    DialogInput dialogInput{dialogs, queue};
    DialogServices dialogServices{services, dialogs, dialogInput};
    HostPages pages{windows, events, dialogs, dialogInput};
    ContactService contacts{services, accounts, queue};
    Authorizations authorizations{services, accounts};
    HookChain hooks{services, accounts};
    Console console;
    IqQueries queries{services};
    StreamWatch watch;
    History history;
    Delivery delivery{services, queue, history, queries};
    TypingNotices typing;
    Arrivals arrivals{{watch, typing, contacts, history}};
    SocketBridge sockets;
    StatusChoices choices{services, queue, sockets};
    LineGuards guards{settings, accounts, choices};
    Sessions sessions;
    SignOff signOff{accounts, choices, sockets, passwords};
    PluginReload reload{*this};
    RosterCommands roster{queue, queries, contacts};
    CheckedPictures pictures{options.pictures.get(), profile.cacheDirectory()};
    ContactPictures contactPictures{services, accounts, contacts, pictures};
    ContactCards contactCards{services, accounts, queue, pictures};
    OwnPictureFile ownPicture{{events, queue, accounts, options.pictures.get()}, profile.directory()};
    OwnCards ownCards{{services, accounts, queue, queries, boxes, ownPicture}};
    InfoRequests info{queue, queries, contacts};
    TransferWindows transfers{services, accounts, queue};
    FileOffers offers{{services, accounts, queue, contacts, transfers}, options.alarms};
    FileChoosers choosers{services, accounts, queue, transfers};
    ReceivedFiles received{transfers, boxes, links};
    PersonalNews news{services, accounts, contacts, queue};
    Popups popups{services, queue, links};
    TuneCompanion companion{accounts, news, options.players, options.alarms};
    FilePublisher publisher;

signals:
    void noticed(const QString& account, const QString& text);
    void finished();

private:
    void connectParts();
    void connectCards();
    void cardsLost(const AccountEntry& account);
    void dropPlugin();
    void finishShutdown();

    bool shuttingDown_ = false;
    bool finished_ = false;
    QTimer tidying_;
};

}  // namespace oku
