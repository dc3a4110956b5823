// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/client_class.h"

#include <array>
#include <utility>

#include "host/oku/menu.h"
#include "host/services/menus.h"
#include "host/services/pages.h"
#include "host/services/protocols.h"
#include "host/services/sockets.h"
#include "host/services/status_window.h"
#include "host/services/timers.h"
#include "host/util/format.h"
#include "platform/platform.h"
#include "plugin/boundary.h"
#include "plugin/identifiers.h"
#include "plugin/own_presentation.h"
#include "plugin/status_menu.h"

namespace protolink {

namespace {

constexpr std::uint32_t kKeepaliveMilliseconds = 60000;

/// The statuses that the status window offers, in its order.
constexpr std::array<std::uint32_t, 7> kWindowStatuses{1, 2, 3, 4, 5, 6, 7};

}  // namespace

CClientClass::CClientClass(AccountFiles accountFiles, const Host& accountHost)
    : host(accountHost), files(std::move(accountFiles)) {}

CClientClass::~CClientClass() = default;

void CClientClass::init(const AccountEntries& entries, OwnPresentation& own) {
    settings.open(files.configPath);
    const std::u16string uuid = readIdentity();
    Protocols(host).add({uuid, entries.authorization, entries.contactDelete, context, &flags}, netId);
    Protocols(host).setProtocolInfo(netId, jid.bare, jid.node);
    StatusMenu(*this).add(entries);
    const OKU_WORD icon = Pages(host).addOptionsPage(formatText(u"XMPP/Options/%d", netId), files.displayName,
                                                     {entries.optionsPage, context});
    if (icon) platform::destroyIcon(static_cast<std::uint64_t>(icon));
    StatusWindow(host).prepare(kWindowStatuses, netId, {entries.statusResult, context});
    socketName = lutCID(u"XMPP/Socket/%d", netId);
    Sockets(host).create(socketName, {entries.socketEvent, context});
    timerName = lutCID(u"XMPP/Timer/%d", netId);
    Timers(host).create(timerName, kKeepaliveMilliseconds, {entries.keepaliveTick, context}, false);
    registerEntries(entries);
    own.ownAvatarHash = settings.get(setting::kAvatarHash);
    showStatusIcon(Status::Offline);
    session->rosterLoad();
    session->resetState();
}

std::u16string CClientClass::readIdentity() {
    jid = parseJID(settings.get(setting::kUser));
    std::u16string uuid = settings.get(setting::kUuid);
    if (uuid.empty()) {
        uuid = lutGenerateUUID();
        settings.set(setting::kUuid, uuid);
    }
    descProtect = static_cast<std::uint32_t>(settings.get(setting::kDescriptionProtected));
    statusDescription = settings.get(setting::kDescription);
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
    Pages(host).addPropertiesPage(accountServiceName(netId, u"Properties"), netId, {entries.propertiesPage, context});
    for (const auto& hook : entries.hooks) attach(hook);
}

void CClientClass::shutdown() {
    // Whatever fails here, nothing may stay registered: the host would call into a library that has gone.
    tolerate([&] { session->closeWindows(); });
    tolerate([&] { session->rosterSave(); });
    tolerate([&] { settings.set(setting::kDescription, std::u16string(statusDescription)); });
    tolerate([&] { session->disconnect(true); });
    Timers(host).destroy(timerName);
    settings.save();
    settings.close();
    Sockets(host).destroy(socketName);
    Protocols(host).remove(netId);
    contactList.deleteAll(netId);
    for (const OKU_WORD service : services_) host.destroyService(service);
    for (const OKU_WORD hook : hooks_) host.removeHook(hook);
    session->freeZInput();
    tolerate([&] { session->dropReconnection(); });
    tolerate([&] { session->endTransfers(); });
    // A call of this account may still be on the stack: what it does from here on reaches nobody.
    contactList.endPauses();
    host.mute();
}

void CClientClass::showStatusIcon(Status shown) const {
    MenuItem item;
    item.id = lutCID(u"XMPP/%d/Menu", netId);
    item.parent = u"OKU/Menu/Main/States";
    item.flags = OKU_MENU_CHANGE_ICON;
    item.icon = formatText(u"XMPP/Icon/%s", statusToName(shown));
    Menus(host).modify(item);
}

}  // namespace protolink
