// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/tiny_plugin.h"

#include <unistd.h>
#include <filesystem>

#include "host/oku/avatar.h"
#include "host/oku/cards.h"
#include "host/oku/message.h"
#include "host/oku/netlib.h"
#include "host/oku/settings.h"
#include "host/oku/windows.h"

namespace {

tiny::State state;

struct Inside {
    Inside() { state.deepest = std::max(state.deepest, ++state.inside); }
    ~Inside() { --state.inside; }
};

template <typename T>
OKU_WORD word(T* pointer) {
    return reinterpret_cast<OKU_WORD>(pointer);
}

OKU_WORD call(const char16_t* name, OKU_WORD param = 0, OKU_WORD extra = 0) {
    return state.table->fnCall(name, param, extra);
}

std::string narrow(const char16_t* text) {
    std::string result;
    for (; text && *text; ++text) result += *text < 128 ? static_cast<char>(*text) : '?';
    return result;
}

tiny::Account& accountAt(OKU_WORD context) { return *reinterpret_cast<tiny::Account*>(context); }

OKU_WORD raise(const tiny::Account& account, std::uint32_t kind, std::uint32_t phase, OKU_WORD extra = 0) {
    OKU_PROTOCOL_HOOK hook{};
    hook.size = sizeof hook;
    hook.pfClass = u"XMPP";
    hook.netId = static_cast<std::int32_t>(account.netId);
    hook.kind = kind;
    hook.phase = phase;
    return call(u"OKU/CallProtolHooks", word(&hook), extra);
}

/// As the plugin offers outgoing text to the listeners. False when one took it.
bool offer(const tiny::Account& account, std::string text) {
    OKU_HOOK_DATA data{sizeof data, 0, text.data(), static_cast<std::uint32_t>(text.size()), 1};
    if (raise(account, OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE, word(&data))) return false;
    raise(account, OKU_HOOK_STREAM_OUT, OKU_PHASE_AFTER, word(&data));
    return true;
}

OKU_WORD statusSet(OKU_WORD param, OKU_WORD, OKU_WORD context) {
    const Inside inside;
    const auto* record = reinterpret_cast<const OKU_STATUS_SET*>(param);
    auto& account = accountAt(context);
    state.log.push_back("status " + std::to_string(record->status) + " " + narrow(record->description));
    if (record->status == OKU_STATUS_OFFLINE) account.flags = 0;
    if (state.onStatus) state.onStatus(account, record->status);
    return 1;
}

OKU_WORD rawSend(OKU_WORD param, OKU_WORD, OKU_WORD context) {
    const Inside inside;
    const auto* record = reinterpret_cast<const OKU_RAW_SEND*>(param);
    const auto& account = accountAt(context);
    if (!(account.flags & OKU_FLAG_AUTHORIZED)) return 0;
    const std::string text(record->data, record->length);
    if (!offer(account, text)) return 0;
    state.log.push_back("raw " + text);
    return static_cast<OKU_WORD>(text.size());
}

OKU_WORD messageSend(OKU_WORD param, OKU_WORD flags, OKU_WORD context) {
    const Inside inside;
    const auto* record = reinterpret_cast<const OKU_MESSAGE_SEND*>(param);
    const auto& account = accountAt(context);
    const std::string body = narrow(record->body);
    if (state.sendFails || record->flags != static_cast<std::uint32_t>(flags)) return 1;
    offer(account,
          "<message to='" + narrow(record->contact.id) + "' id='m-" + body + "'><body>" + body + "</body></message>");
    state.log.push_back("message " + narrow(record->contact.id) + " " + body + " " + std::to_string(record->flags));
    return 0;
}

OKU_WORD typingSend(OKU_WORD param, OKU_WORD composing, OKU_WORD) {
    const Inside inside;
    const auto* record = reinterpret_cast<const OKU_CONTACT_RECORD*>(param);
    state.log.push_back("typing " + narrow(record->id) + (composing ? " 1" : " 0"));
    return 0;
}

OKU_WORD cardAsked(const char* what, OKU_WORD token, const std::string& whose, OKU_WORD context) {
    const Inside inside;
    state.log.push_back(std::string(what) + whose);
    if (state.onCard) state.onCard(accountAt(context), what, token);
    return 0;
}

OKU_WORD contactCard(OKU_WORD param, OKU_WORD, OKU_WORD context) {
    const auto* record = reinterpret_cast<const OKU_CONTACT_CARD_REQUEST*>(param);
    return cardAsked("PFGetContactVCard", record->token, " " + narrow(record->jid), context);
}

template <const char* name>
OKU_WORD ownCard(OKU_WORD param, OKU_WORD, OKU_WORD context) {
    return cardAsked(name, reinterpret_cast<const OKU_OWN_CARD_REQUEST*>(param)->token, "", context);
}

constexpr char kGetCard[] = "PFGetMyVCard";
constexpr char kSetCard[] = "PFSetMyVCard";
constexpr char kGetPicture[] = "PFGetMyAvatar";
constexpr char kSetPicture[] = "PFSetMyAvatar";

OKU_WORD avatarChanged(OKU_WORD param, OKU_WORD, OKU_WORD context) {
    const Inside inside;
    const auto* record = reinterpret_cast<const OKU_AVATAR_CHANGED*>(param);
    state.log.push_back("avatar " + std::to_string(accountAt(context).netId) + " " + narrow(record->hash) + " " +
                        std::to_string(record->action));
    return 0;
}

OKU_WORD authorization(OKU_WORD param, OKU_WORD bits, OKU_WORD context) {
    const Inside inside;
    const auto* record = reinterpret_cast<const OKU_CONTACT_RECORD*>(param);
    if (!(accountAt(context).flags & OKU_FLAG_AUTHORIZED)) return 1;
    state.log.push_back("authorization " + narrow(record->id) + " " + std::to_string(bits));
    return 0;
}

OKU_WORD deletion(OKU_WORD param, OKU_WORD, OKU_WORD context) {
    const Inside inside;
    const auto* record = reinterpret_cast<const OKU_CONTACT_RECORD*>(param);
    if (!(accountAt(context).flags & OKU_FLAG_AUTHORIZED)) return 1;
    state.log.push_back("delete " + narrow(record->id));
    return 0;
}

OKU_WORD socketEvent(OKU_WORD param, OKU_WORD data, OKU_WORD context) {
    const Inside inside;
    const auto* event = reinterpret_cast<const NL_EVENT*>(param);
    if (state.onSocket) state.onSocket(accountAt(context), event->kind, data);
    return 0;
}

std::u16string directory(const char16_t* service) {
    char16_t buffer[261] = {};
    OKU_DIRECTORY record{sizeof record, 0, buffer, 261, 0, u"config"};
    call(service, word(&record));
    return buffer;
}

void registerAccount(tiny::Account& account) {
    OKU_PROTOCOL_RECORD record{};
    record.size = sizeof record;
    record.pfClass = u"XMPP";
    record.shortName = u"XMPP";
    record.caption = u"XMPP";
    record.uuid = u"";
    record.wantedNumber = -1;
    record.authorizationHandler = authorization;
    record.deleteHandler = deletion;
    record.context = word(&account);
    record.flags = &account.flags;
    call(u"OKU/ProtocolAdd", word(&record));
    account.netId = record.netId;
}

void makeSocket(tiny::Account& account) {
    const std::string name = "XMPP/Socket/" + std::to_string(account.netId);
    account.socket.assign(name.begin(), name.end());
    NL_CREATE_RECORD record{};
    record.size = sizeof record;
    record.kind = 2;
    record.callback = socketEvent;
    record.context = word(&account);
    record.name = account.socket.c_str();
    call(u"NetLib/Create", word(&record));
}

void makeAccount(const std::u16string& path) {
    auto& account = state.accounts.emplace_back();
    account.path = path;
    account.store = call(u"OKU/Settings/Init", word(account.path.c_str()), state.module);
    call(u"OKU/Settings/Read", account.store);
    registerAccount(account);
    makeSocket(account);
    const std::pair<const char*, OKU_HANDLER> services[] = {
        {"PFStatusSet", statusSet},         {"PFRawSend", rawSend},
        {"PFMessageSend", messageSend},     {"PFTNSend", typingSend},
        {"PFGetContactVCard", contactCard}, {kGetCard, ownCard<kGetCard>},
        {kSetCard, ownCard<kSetCard>},      {kGetPicture, ownCard<kGetPicture>},
        {kSetPicture, ownCard<kSetPicture>}};
    for (const auto& [shortName, handler] : services) {
        const std::string name = "XMPP/" + std::to_string(account.netId) + "/" + shortName;
        const std::u16string wide(name.begin(), name.end());
        account.services.push_back(state.table->fnCreate(wide.c_str(), handler, word(&account)));
    }
    account.avatarHook = state.table->hookAdd(u"OKU/OnAvatarChanged", avatarChanged, word(&account));
}

void dropAccount(tiny::Account& account) {
    account.flags = 0;
    state.table->hookRemove(account.avatarHook);
    call(u"OKU/Settings/Write", account.store);
    call(u"OKU/Settings/Destroy", account.store, state.module);
    call(u"NetLib/Destroy", word(account.socket.c_str()));
    call(u"OKU/ProtocolDel", word(u"XMPP"), account.netId);
    call(u"OKU/CTL/DeleteAll", word(u"XMPP"), account.netId);
    for (const OKU_WORD service : account.services) state.table->fnDestroy(service);
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] tiny::State* tinyState() { return &state; }

[[gnu::visibility("default")]] const OKU_PLUGIN_INFO* queryPlugInfo() {
    static const OKU_PLUGIN_INFO info = {sizeof(OKU_PLUGIN_INFO), u"Tiny", u"", u"", u"", u"", u"", u"", {}, {}};
    return &info;
}

[[gnu::visibility("default")]] OKU_WORD pluginLoad(OKU_WORD module, const OKU_FUNCTION_TABLE* table) {
    const Inside inside;
    state.module = module;
    state.table = table;
    ++state.loads;
    state.currentDirectory = std::filesystem::current_path().string();
    state.profileDir = directory(u"OKU/Info/GetProfileDir");
    state.cacheDir = directory(u"OKU/Info/GetCacheDir");
    makeAccount(state.profileDir + u"tiny.config");
    std::vector<std::u16string> found;
    for (const auto& file : std::filesystem::directory_iterator(std::filesystem::path(state.profileDir))) {
        const std::u16string name = file.path().filename().u16string();
        if (name.starts_with(u"tiny_") && name.ends_with(u".config")) found.push_back(state.profileDir + name);
    }
    for (const auto& path : found) makeAccount(path);
    return 0;
}

[[gnu::visibility("default")]] OKU_WORD pluginUnload() {
    const Inside inside;
    state.log.push_back("unload");
    if (state.onUnload) state.onUnload();
    for (auto& account : state.accounts) dropAccount(account);
    state.accounts.clear();
    return 0;
}

}  // extern "C"
