#include "plugin/client_class.h"

#include <array>
#include <utility>

#include "host/util/format.h"
#include "platform/platform.h"
#include "plugin/boundary.h"
#include "plugin/identifiers.h"
#include "plugin/plugin_state.h"

namespace {

constexpr std::uint32_t kKeepaliveMilliseconds = 60000;

/// The statuses that the status window offers, in its order.
constexpr std::array<std::uint32_t, 7> kWindowStatuses{1, 2, 3, 4, 5, 6, 7};

}  // namespace

CClientClass::CClientClass(AccountFiles accountFiles, const Host& accountHost)
    : host(accountHost), files(std::move(accountFiles)) {}

CClientClass::~CClientClass() = default;

void CClientClass::init(const AccountEntries& entries, PluginState& state) {
    settings.open(host, files.configPath);
    const std::u16string uuid = readIdentity();
    host.protocolAdd({uuid, entries.authorization, entries.contactDelete, context, &flags}, netId);
    host.setProtocolInfo(netId, jid.bare, jid.node);
    addStatusMenu(entries);
    const OKU_WORD icon =
        host.addOptionsPage(formatText(u"XMPP/Options/%d", netId), files.displayName, {entries.optionsPage, context});
    if (icon) platform::destroyIcon(static_cast<std::uint64_t>(icon));
    host.statusWindowPrepare(kWindowStatuses, netId, {entries.statusResult, context});
    socketName = lutCID(u"XMPP/Socket/%d", netId);
    host.socketCreate(socketName, {entries.socketEvent, context});
    timerName = lutCID(u"XMPP/Timer/%d", netId);
    host.timerCreate(timerName, kKeepaliveMilliseconds, {entries.keepaliveTick, context}, false);
    registerEntries(entries);
    state.ownAvatarHash = settings.getString(u"AV/Hash");
    showStatusIcon(Status::Offline);
    layers->rosterLoad();
    layers->resetState();
}

std::u16string CClientClass::readIdentity() {
    jid = parseJID(settings.getString(u"XMPP/User"));
    std::u16string uuid = settings.getString(u"protoUUID");
    if (uuid.empty()) {
        uuid = lutGenerateUUID();
        settings.setString(u"protoUUID", uuid);
    }
    descProtect = static_cast<std::uint32_t>(settings.getInt(u"desc/Protect", 0));
    statusDescription = settings.getString(u"desc/String");
    return uuid;
}

void CClientClass::registerEntries(const AccountEntries& entries) {
    // Room first: a handle that could not be kept would stay registered when the plugin has gone.
    services_.reserve(entries.services.size());
    hooks_.reserve(entries.hooks.size() + 1);
    for (const auto& service : entries.services)
        services_.push_back(host.createNetService(netId, service.name, service.handler, context));
    const auto attach = [this](const AccountEntry& hook) {
        hooks_.push_back(host.addHook(hook.name, hook.handler, context));
    };
    attach(entries.hintHook);
    host.addPropertiesPage(accountServiceName(netId, u"Properties"), netId, {entries.propertiesPage, context});
    for (const auto& hook : entries.hooks) attach(hook);
}

void CClientClass::shutdown() {
    // Whatever fails here, nothing may stay registered: the host would call into a library that has gone.
    tolerate([&] { layers->rosterSave(); });
    tolerate([&] { settings.setString(u"desc/String", std::u16string(statusDescription)); });
    tolerate([&] { layers->disconnect(true); });
    host.timerDestroy(timerName);
    settings.save();
    settings.close();
    host.socketDestroy(socketName);
    host.protocolDelete(netId);
    host.deleteAllContacts(netId);
    for (const OKU_WORD service : services_) host.destroyService(service);
    for (const OKU_WORD hook : hooks_) host.removeHook(hook);
    layers->freeZInput();
    tolerate([&] { layers->dropReconnection(); });
    // A call of this account may still be on the stack: what it does from here on reaches nobody.
    host.mute();
    settings.mute();
}
