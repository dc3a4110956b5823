// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/accounts/accounts.h"

#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/storage/settings_service.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {

QString AccountEntry::jid() const {
    const QString user = settings->text(QString::fromUtf16(setting::user));
    if (user != user_) {
        jid_ = bareJid(user);
        user_ = user;
    }
    return jid_;
}

QString AccountEntry::domain() const { return domainOf(jid()); }

bool AccountEntry::clearTextAllowed() const {
    return settings->number(QString::fromUtf16(setting::allowClearText), 0) != 0;
}

std::u16string AccountEntry::service(const char16_t* shortName) const {
    return QStringLiteral("%1/%2/%3").arg(pfClass).arg(netId).arg(wideText(shortName)).toStdU16String();
}

ConnectionState AccountEntry::currentState() const {
    if (ready()) return ConnectionState::online;
    if (loggedIn()) return ConnectionState::authorized;
    if (has(OKU_FLAG_ENCRYPTION_ACTIVATED)) return ConnectionState::encrypted;
    if (has(OKU_FLAG_CONNECTED)) return ConnectionState::connected;
    return has(OKU_FLAG_CONNECTING) ? ConnectionState::connecting : ConnectionState::offline;
}

Accounts::Accounts(ServiceRegistry& services, SettingsService& settings, QObject* parent)
    : QObject(parent), settings_(settings) {
    connect(&settings, &SettingsService::opened, this, [this](const QString& path) {
        if (byKey(path)) return;
        entries_.push_back(std::make_unique<AccountEntry>());
        entries_.back()->key = path;
        entries_.back()->settings = settings_.store(path);
    });
    services.provide(u"OKU/ProtocolAdd", [this](OKU_WORD param, OKU_WORD) { return add(param); });
    services.provide(u"OKU/ProtocolDel", [this](OKU_WORD, OKU_WORD netId) { return remove(netId); });
    // The address and the name of an account are read from its settings, where they come from.
    services.provide(u"OKU/PFSetInfo",
                     [](OKU_WORD param, OKU_WORD) -> OKU_WORD { return recordAt<OKU_PF_INFO>(param) ? 1 : 0; });
}

template <typename Test>
AccountEntry* Accounts::first(Test test) const {
    for (const auto& entry : entries_) {
        if (test(*entry)) return entry.get();
    }
    return nullptr;
}

AccountEntry* Accounts::byKey(const QString& key) const {
    return first([&](const AccountEntry& entry) { return entry.key == key; });
}

AccountEntry* Accounts::byJid(const QString& jid) const {
    const QString bare = bareJid(jid);
    if (bare.isEmpty()) return nullptr;
    return first([&](const AccountEntry& entry) { return entry.jid() == bare; });
}

AccountEntry* Accounts::byNetId(std::uint32_t netId) const {
    return first([=](const AccountEntry& entry) { return entry.registered && entry.netId == netId; });
}

AccountEntry* Accounts::byContext(OKU_WORD context) const {
    return first([=](const AccountEntry& entry) { return entry.registered && entry.context == context; });
}

AccountEntry* Accounts::bySocket(const QString& socket) const {
    return first([&](const AccountEntry& entry) { return entry.registered && entry.socket == socket; });
}

AccountEntry* Accounts::inPlugin(const QString& jid) const {
    auto* entry = byJid(jid);
    return entry && entry->registered ? entry : nullptr;
}

QString Accounts::noAccount(const QString& jid) {
    return QCoreApplication::translate("Messenger", "Nie ma takiego konta: %1").arg(jid);
}

void Accounts::dropPlugin() {
    for (const auto& entry : entries_) {
        entry->registered = false;
        entry->flags = nullptr;
        entry->socket.clear();
    }
}

// An account tells itself by the value of "protoUUID" in its settings. One without it is the one whose settings were
// opened last, as that is what comes right before the registration.
AccountEntry* Accounts::ownerOf(const OKU_PROTOCOL_RECORD& record) const {
    const QString uuid = wideText(record.uuid);
    if (!uuid.isEmpty()) {
        auto* entry = first([&](const AccountEntry& candidate) {
            return !candidate.registered && candidate.settings->text(QStringLiteral("protoUUID")) == uuid;
        });
        if (entry) return entry;
    }
    auto* last = byKey(settings_.lastOpened());
    return last && !last->registered ? last : nullptr;
}

OKU_WORD Accounts::add(OKU_WORD param) {
    auto* record = recordAt<OKU_PROTOCOL_RECORD>(param);
    auto* entry = record ? ownerOf(*record) : nullptr;
    if (!entry) return 0;
    std::uint32_t number = record->wantedNumber > 0 ? static_cast<std::uint32_t>(record->wantedNumber) : 1;
    while (byNetId(number)) ++number;
    entry->registered = true;
    entry->netId = record->netId = number;
    entry->pfClass = wideText(record->pfClass);
    entry->authorizationHandler = record->authorizationHandler;
    entry->deleteHandler = record->deleteHandler;
    entry->context = record->context;
    entry->flags = record->flags;
    emit registered(entry);
    return 1;
}

OKU_WORD Accounts::remove(OKU_WORD netId) {
    auto* entry = byNetId(static_cast<std::uint32_t>(netId));
    if (!entry) return 0;
    entry->registered = false;
    entry->flags = nullptr;
    emit unregistered(entry);
    return 1;
}

}  // namespace oku
