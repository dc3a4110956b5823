// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The parts of one account. A new part is one line here, and its rows in routes.cpp and entries.cpp.
#pragma once

#include <memory>

#include "assembly/account_pages.h"
#include "assembly/entries.h"
#include "assembly/shared_parts.h"
#include "dialogs/contact_items.h"
#include "dialogs/dialog_account.h"
#include "extensions/contact_capabilities.h"
#include "extensions/disco_replies.h"
#include "extensions/http_confirmation.h"
#include "extensions/mail_notifications.h"
#include "extensions/ping_reply.h"
#include "extensions/rank_query.h"
#include "extensions/server_discovery.h"
#include "extensions/time_reply.h"
#include "extensions/version_reply.h"
#include "im/contact_entry.h"
#include "im/messages.h"
#include "im/presence.h"
#include "im/privacy_lists.h"
#include "im/roster.h"
#include "im/server_features.h"
#include "im/subscriptions.h"
#include "plugin/client_class.h"
#include "plugin/status_menu.h"
#include "profile/avatar_publication.h"
#include "profile/contact_avatars.h"
#include "profile/contact_cards.h"
#include "profile/own_avatar.h"
#include "profile/own_card.h"
#include "profile/pep_listeners.h"
#include "profile/pep_publisher.h"
#include "profile/personal_notice.h"
#include "profile/pubsub_events.h"
#include "profile/user_location.h"
#include "profile/user_mood.h"
#include "profile/user_tune.h"
#include "router/event_dispatcher.h"
#include "router/login_failure.h"
#include "router/negotiation.h"
#include "router/requests.h"
#include "router/stanza_router.h"
#include "stream/connection.h"
#include "stream/keepalive.h"
#include "stream/reconnection.h"
#include "stream/socket_events.h"
#include "stream/stream_output.h"
#include "stream/zip_stream.h"
#include "transfer/file_choice.h"
#include "transfer/session_manager.h"

namespace protolink {

/// Made from the wire upwards: a part stands behind those that it uses. A lower part tells a higher one through the
/// interfaces that this class implements.
class AccountParts final : public AccountSession, public StreamListener, public SessionListener {
public:
    AccountParts(CClientClass& account, std::shared_ptr<SharedParts> sharedParts);
    ~AccountParts() override;

    /// The account that the host names by a context word, or null when it has gone.
    static AccountParts* find(OKU_WORD context);
    /// The host's callbacks find the account no more.
    static void retire(OKU_WORD context);

    CClientClass& client;
    std::shared_ptr<SharedParts> shared;

    CZipStream zip;
    StreamOutput output{client, zip};
    Reconnection reconnection{client, reconnectTick};
    Connection connection{client, zip, output, reconnection, *this};
    SocketEvents socketEvents{client, connection, reconnection, *this};
    Keepalive keepalive{client, output, connection};

    CProtoEventDispatcher dispatcher;
    Requests requests{dispatcher, output};
    StanzaRouter<AccountParts> router{*this, accountRoutes()};

    LoginProgress login;
    Encryption encryption{client, output};
    Registration registration{client, connection, reconnection, requests};
    Authentication authentication{client, output, connection, login};
    StreamCompression compression{client, zip, output, connection};
    Binding binding{client, output, connection, requests, login, *this};
    LoginFailure loginFailure{client, connection, reconnection};
    Negotiation negotiation{connection, login, {encryption, registration, authentication, compression, binding}};

    StatusMenu statusMenu{client};
    Contacts contacts;
    ServerFeatures features;
    Roster roster{client, output, contacts};
    PrivacyLists privacy{output};
    ContactCapabilities contactCapabilities{client, output, contacts, shared->clientDb};
    Presence presence{client, output, reconnection, contacts, features, privacy, contactCapabilities, shared->own};
    Messages messages{client, output, contacts};
    Subscriptions subscriptions{client, contacts, roster, presence};

    MailNotifications mailNotifications{client, output};
    RankQuery rankQuery{client, requests};
    ServerDiscovery serverDiscovery{client, requests, features, privacy, presence, mailNotifications, rankQuery};
    DiscoReplies discoReplies{client, output, shared->own};
    VersionReply versionReply{client, output};
    TimeReply timeReply{client, output};
    PingReply pingReply{output};
    HttpConfirmation httpConfirmation{client, output};

    PepListeners pepListeners{client, shared->pepEvent};
    PersonalNotice personalNotice{client, contacts};
    UserTune userTune{client, pepListeners, personalNotice};
    UserMood userMood{client, pepListeners, personalNotice};
    UserLocation userLocation{client, pepListeners};
    PepPublisher pepPublisher{client, requests, features};
    PubSubEvents<AccountParts> pubSubEvents{*this, accountEventNodes()};

    ContactAvatars contactAvatars{client, output, requests, contacts, shared->avatars, connection.avatarEnabled};
    ContactVCards contactCards{client, requests, contactAvatars, shared->avatars};
    OwnCardRequest ownCardRequest{client};
    OwnVCard ownCard{client, requests, ownCardRequest};
    OwnAvatar ownAvatar{client, output, presence, shared->own, shared->directories.profile};
    AvatarPublication avatarPublication{
        client, requests, features, shared->own, shared->avatars, shared->directories.profile, ownCardRequest};

    CSessionManager sessionManager{client, output, dispatcher, contacts, downloadTick};
    FileChoice fileChoice{client, sessionManager};
    DialogAccount dialogAccount{client, dispatcher, output};
    ContactItems contactItems{client, contacts};
    AccountPages pages{{dialogAccount, contacts, features, roster, privacy, presence},
                       connection,
                       shared->windows,
                       shared->avatars,
                       informationPage};

private:
    // What the account's frame asks for.
    void setStatus(Status status, const std::u16string& description, OKU_WORD flagsWord) override;
    void forgetRetries() override;
    void resetState() override;
    void disconnect(bool closeSocket) override;
    void dropReconnection() override;
    void freeZInput() override;
    void rosterLoad() override;
    void rosterSave() override;
    void stopDownloads() override;
    void endTransfers() override;
    void closeWindows() override;

    // What the stream tells.
    void forgetSession() override;
    void onStateReset() override;
    void onSocketConnected() override;
    void onSocketClosed() override;
    void routeElements(XmlSequence& batch) override;
    void publishStatus(Status status, const std::u16string& description) override;

    // What the login tells.
    void onServerDiscoInfo(xmlElement& iq) override;
    void rosterResult(xmlElement& iq) override;
};

/// Makes a new account with all of its parts, known to the host's callbacks by its context word; `init` has to follow.
std::shared_ptr<CClientClass> assembleAccount(const AccountFiles& files, const Host& host,
                                              std::shared_ptr<SharedParts> shared);

}  // namespace protolink
