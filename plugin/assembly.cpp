#include "plugin/assembly.h"

#include "extensions/discovery.h"
#include "extensions/own_caps.h"
#include "extensions/small_replies.h"
#include "host/record.h"
#include "host/services/timers.h"
#include "im/contact_entry.h"
#include "im/messages.h"
#include "im/presence.h"
#include "im/privacy_lists.h"
#include "im/roster.h"
#include "im/server_features.h"
#include "im/stanza_errors.h"
#include "im/subscriptions.h"
#include "plugin/boundary.h"
#include "profile/client_database.h"
#include "router/event_dispatcher.h"
#include "router/negotiation.h"
#include "router/stanza_router.h"
#include "stream/connection.h"
#include "stream/stream_output.h"
#include "stream/zip_stream.h"

namespace {

OKU_WORD OKU_CALL reconnectTick(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept;

/// The parts of one account, made from the wire upwards. A lower part tells a higher one through the interfaces that
/// this class implements.
class AccountParts final : public AccountLayers, public StreamListener, public SessionListener, public StanzaHandlers {
public:
    AccountParts(CClientClass& account, CapsCache& caps)
        : client(account),
          output(account, zip),
          connection(account, zip, output, *this, reconnectTick),
          negotiation(account, zip, output, connection, dispatcher, *this),
          router(account, dispatcher, negotiation, output, *this),
          roster(account, output, contacts),
          privacy(output),
          discovery(account, output, dispatcher, contacts, features, privacy, caps),
          presence(account, output, connection, contacts, features, privacy, discovery),
          messages(account, output, contacts),
          subscriptions(account, contacts, roster, presence),
          smallReplies(account, output) {
        output.attach(connection);
        discovery.attach(presence);
    }
    ~AccountParts() override;

    // What the account's frame asks for.
    void setStatus(Status status, const std::u16string& description, OKU_WORD flagsWord) override {
        connection.setStatus(status, description, flagsWord);
    }
    void forgetRetries() override { connection.retryCount = 0; }
    void resetState() override { connection.resetState(); }
    void disconnect(bool closeSocket) override { connection.disconnect(closeSocket); }
    void dropReconnection() override { connection.dropReconnection(); }
    void freeZInput() override { connection.input().freeZInput(); }
    void rosterLoad() override { roster.rosterLoad(client.files.rosterPath); }
    void rosterSave() override { roster.rosterSave(client.files.rosterPath); }

    // What the stream tells.
    void forgetSession() override { negotiation.forgetSession(); }
    void onStateReset() override {
        roster.rosterDownloaded = 0;
        negotiation.forgetAuthentication();
        presence.resetSharedStatus();
    }
    void onSocketConnected() override {
        contacts.clear();
        roster.rosterDownloaded = 0;
        features = {};
    }
    void onSocketClosed() override { dispatcher.clear(); }
    void routeElements(XmlSequence& batch) override { router.routeElements(batch); }
    void publishStatus(Status status, const std::u16string& description) override {
        presence.sendPresence(status, description);
    }

    // What negotiation tells.
    void onServerDiscoInfo(xmlElement& iq) override { discovery.onServerDiscoInfo(iq); }
    void rosterResult(xmlElement& iq) override {
        // With the shared status the first presence goes out when that is known.
        if (!features.serverHasSharedStatus) presence.sendPresence(client.status, client.statusDescription);
        roster.rebuildFrom(iq);
    }

    // What the router hands over.
    void onMessage(const Stanza& message) override { messages.onMessage(message); }
    void onPresence(const Stanza& stanza) override { presence.onPresence(stanza); }
    void onSubscribe(const Stanza& stanza) override { subscriptions.onSubscribe(stanza.from); }
    void rosterItems(const Stanza&, const xmlElement& query) override { roster.rosterItems(query); }
    void onSharedStatus(const Stanza& iq, const xmlElement& query) override { presence.onSharedStatus(iq, query); }
    void onDiscoInfo(const Stanza& iq, const xmlElement& query) override { discovery.onDiscoInfo(iq, query); }
    void onVersionIq(const Stanza& iq) override { smallReplies.onVersionIq(iq); }
    void onTimeIq(const Stanza& iq) override { smallReplies.onTimeIq(iq); }
    void onPingIq(const Stanza& iq) override { smallReplies.onPingIq(iq); }
    bool onPrivacyReply(const Stanza& stanza) override { return privacy.onPrivacyReply(stanza.element, stanza.id); }
    std::u16string_view httpStatusText(std::u16string_view code) const override { return ::httpStatusText(code); }

    CClientClass& client;
    CZipStream zip;
    StreamOutput output;
    Connection connection;
    CProtoEventDispatcher dispatcher;
    Negotiation negotiation;
    StanzaRouter router;
    Contacts contacts;
    ServerFeatures features;
    Roster roster;
    PrivacyLists privacy;
    Discovery discovery;
    Presence presence;
    Messages messages;
    Subscriptions subscriptions;
    SmallReplies smallReplies;
};

/// Outlives the plugin's state, which is made later: accounts take themselves out when they go.
LiveObjects<AccountParts> g_liveAccounts;

AccountParts::~AccountParts() { g_liveAccounts.remove(client.context); }

/// What the host gets for an account's registration: it finds the account by the context word and calls `Handler`. An
/// account that has gone answers 0.
template <OKU_WORD (*Handler)(AccountParts& account, OKU_WORD param, OKU_WORD extra)>
OKU_WORD OKU_CALL accountHandler(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept {
    return atBoundary([&]() -> OKU_WORD {
        AccountParts* account = g_liveAccounts.find(context);
        return account ? Handler(*account, param, extra) : 0;
    });
}

template <auto Member, auto Part>
OKU_WORD toPart(AccountParts& account, OKU_WORD param, OKU_WORD extra) {
    return (account.*Part.*Member)(param, extra);
}

/// A registration whose feature the plugin does not have: nothing done.
OKU_WORD notServed(AccountParts&, OKU_WORD, OKU_WORD) { return 0; }

OKU_WORD onRawSend(AccountParts& account, OKU_WORD param, OKU_WORD) {
    const auto* record = readRecord<OKU_RAW_SEND>(param);
    if (!record || !record->data || !(account.client.flags & FLAG_AUTHORIZED)) return 0;
    return account.output.sendBytes({record->data, record->length}, true);
}

OKU_WORD onKeepalive(AccountParts& account, OKU_WORD param, OKU_WORD) {
    if (Timers::isTick(param)) account.connection.onKeepaliveTick();
    return 0;
}

OKU_WORD onReconnect(AccountParts& account, OKU_WORD param, OKU_WORD) {
    if (Timers::isTick(param)) account.connection.onReconnectTick();
    return 1;
}

OKU_WORD OKU_CALL reconnectTick(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept {
    return accountHandler<onReconnect>(param, extra, context);
}

OKU_WORD onStatusSet(AccountParts& account, OKU_WORD param, OKU_WORD) { return account.client.onStatusSet(param); }
OKU_WORD onStatusMenu(AccountParts& account, OKU_WORD param, OKU_WORD) { return account.client.onStatusMenu(param); }
OKU_WORD onStatusWindow(AccountParts& account, OKU_WORD, OKU_WORD) { return account.client.onStatusWindow(); }
OKU_WORD onStatusResult(AccountParts& account, OKU_WORD param, OKU_WORD) {
    return account.client.onStatusResult(param);
}
OKU_WORD onContactDelete(AccountParts& account, OKU_WORD param, OKU_WORD) {
    return account.roster.onContactDelete(param);
}

class SharedAssembly final : public SharedParts {
public:
    void loadClientDatabase(const std::u16string& directory) override { clientDb.load(directory); }
    void saveClientDatabase(const std::u16string& directory) override { clientDb.save(directory); }
    std::u16string ownCapsVerification() const override { return ownCaps::buildOwnCaps(); }

    CClientDatabase clientDb;
};

}  // namespace

const AccountEntries& accountEntries() {
    static const AccountEntries entries{
        {
            {u"PFStatusSet", accountHandler<onStatusSet>},
            {u"PFRawSend", accountHandler<onRawSend>},
            {u"PFMessageSend", accountHandler<toPart<&Messages::onSendMessage, &AccountParts::messages>>},
            {u"PFTNSend", accountHandler<toPart<&Messages::onSendTyping, &AccountParts::messages>>},
            {u"PFGetContactVCard", accountHandler<notServed>},
            {u"PFGetMyAvatar", accountHandler<notServed>},
            {u"PFSetMyAvatar", accountHandler<notServed>},
            {u"PFGetMyVCard", accountHandler<notServed>},
            {u"PFSetMyVCard", accountHandler<notServed>},
            {u"PFInitSendFile", accountHandler<notServed>},
            {u"PFEPublishData", accountHandler<notServed>},
        },
        {u"OKU/OnHintDataRequest", accountHandler<notServed>},
        {
            {u"OKU/OnAvatarChanged", accountHandler<notServed>},
            {u"OKU/OnMenuRebuild", accountHandler<notServed>},
            {u"OKU/PropertiesAddPages", accountHandler<notServed>},
        },
        accountHandler<toPart<&Subscriptions::onContactAuth, &AccountParts::subscriptions>>,
        accountHandler<onContactDelete>,
        accountHandler<onStatusMenu>,
        accountHandler<onStatusWindow>,
        accountHandler<onStatusResult>,
        accountHandler<notServed>,
        accountHandler<notServed>,
        accountHandler<toPart<&Connection::onSocketEvent, &AccountParts::connection>>,
        accountHandler<onKeepalive>,
    };
    return entries;
}

std::unique_ptr<SharedParts> assembleSharedParts() { return std::make_unique<SharedAssembly>(); }

std::shared_ptr<CClientClass> assembleAccount(const AccountFiles& files, PluginState& state) {
    auto account = std::make_shared<CClientClass>(files, state.host);
    auto& shared = static_cast<SharedAssembly&>(*state.shared);
    auto parts = std::make_unique<AccountParts>(*account, shared.clientDb);
    account->context = g_liveAccounts.add(*parts);
    account->layers = std::move(parts);
    return account;
}

void retireAccount(OKU_WORD context) { g_liveAccounts.remove(context); }
