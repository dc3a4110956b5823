// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/torture/quick_host.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "host/oku/log.h"
#include "host/oku/menu.h"
#include "host/oku/netlib.h"
#include "host/oku/notify.h"
#include "host/oku/pep.h"
#include "host/oku/protocol.h"
#include "host/oku/settings.h"
#include "host/oku/timer.h"
#include "host/oku/transfer.h"
#include "host/oku/windows.h"
#include "host/util/utf.h"

namespace torture {
namespace {

QuickHost* g_current = nullptr;

template <typename Record>
Record& at(OKU_WORD word) {
    return *reinterpret_cast<Record*>(word);
}

/// A name alone, or the address of a word that points to the name.
std::u16string timerName(OKU_WORD param) {
    std::uint64_t first = 0;
    std::memcpy(&first, reinterpret_cast<const void*>(param), sizeof first);
    return textAt((first >> 48) == 0 ? reinterpret_cast<const void*>(first) : reinterpret_cast<const void*>(param));
}

}  // namespace

bool g_inPlugin = false;

std::u16string textAt(const void* text) {
    return text ? std::u16string(static_cast<const char16_t*>(text)) : std::u16string();
}

std::string narrow(std::u16string_view text) { return wtou(text); }

std::uint32_t netOf(std::u16string_view socket) {
    std::uint32_t net = 0;
    for (const char16_t digit : socket.substr(socket.rfind(u'/') + 1)) net = net * 10 + (digit - u'0');
    return net;
}

bool Call::takesBack() const {
    constexpr std::array<std::u16string_view, 9> kNames{
        u"fnDestroy",       u"evDestroy",      u"hookRemove",  u"OKU/Timer/Destroy", u"OKU/Settings/Destroy",
        u"OKU/ProtocolDel", u"NetLib/Destroy", u"NetLib/Close"};
    return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

/// What the host does for the services that it has; all others answer 1.
struct QuickServices {
    using Act = OKU_WORD (*)(QuickHost& host, OKU_WORD param, OKU_WORD extra);

    static OKU_WORD settingsInit(QuickHost& host, OKU_WORD param, OKU_WORD) {
        host.stores[++host.nextHandle_] = textAt(reinterpret_cast<const void*>(param));
        return host.nextHandle_;
    }
    static OKU_WORD settingsGet(QuickHost& host, OKU_WORD param, OKU_WORD) {
        auto& record = at<OKU_SETTINGS_RECORD>(param);
        const auto store = host.stores.find(record.store);
        if (store == host.stores.end()) return 0;
        const auto& file = host.settings[store->second];
        const auto value = file.find(std::u16string_view(record.key));
        if (value == file.end()) return 0;
        if (record.type == OKU_SETTING_INTEGER) {
            if (const auto* number = std::get_if<std::int32_t>(&value->second)) record.value = *number;
            return 1;
        }
        const auto* text = std::get_if<std::u16string>(&value->second);
        if (!text || record.length == 0) return 0;
        const std::size_t length = std::min<std::size_t>(text->size(), record.length - 1);
        auto* const buffer = reinterpret_cast<char16_t*>(record.value);
        std::copy_n(text->data(), length, buffer);
        buffer[length] = u'\0';
        return 1;
    }
    static OKU_WORD settingsSet(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<OKU_SETTINGS_RECORD>(param);
        const auto store = host.stores.find(record.store);
        if (store == host.stores.end()) return 0;
        auto& value = host.settings[store->second][record.key];
        if (record.type == OKU_SETTING_INTEGER) {
            value = static_cast<std::int32_t>(record.value);
        } else {
            value = textAt(reinterpret_cast<const void*>(record.value));
        }
        return 1;
    }
    static OKU_WORD settingsDestroy(QuickHost& host, OKU_WORD param, OKU_WORD) {
        host.stores.erase(param);
        return 0;
    }
    static OKU_WORD timerCreate(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<OKU_TIMER_RECORD>(param);
        host.timers[record.id] = {
            {record.handler, record.context}, host.clock + record.interval, record.interval, record.oneShot != 0};
        return 1;
    }
    static OKU_WORD timerDestroy(QuickHost& host, OKU_WORD param, OKU_WORD) {
        host.timers.erase(timerName(param));
        return 1;
    }
    static OKU_WORD protocolAdd(QuickHost& host, OKU_WORD param, OKU_WORD) {
        auto& record = at<OKU_PROTOCOL_RECORD>(param);
        record.netId = ++host.netsEverAdded;
        host.protocols[record.netId] = {
            {record.authorizationHandler, record.context}, {record.deleteHandler, record.context}, record.flags};
        return 1;
    }
    static OKU_WORD protocolDel(QuickHost& host, OKU_WORD, OKU_WORD extra) {
        host.protocols.erase(static_cast<std::uint32_t>(extra));
        return 1;
    }
    static OKU_WORD menuAdd(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<OKU_MENU_RECORD>(param);
        host.menuItems[textAt(record.id)] = {record.callback, record.context};
        return 1;
    }
    static OKU_WORD statusWindow(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<OKU_STATUS_WINDOW_PREPARE>(param);
        host.statusWindows[record.netId] = {record.callback, record.context};
        return 1;
    }
    static OKU_WORD directory(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<OKU_DIRECTORY>(param);
        const std::size_t length = std::min<std::size_t>(host.directory.size(), record.capacity - 1);
        std::copy_n(host.directory.data(), length, record.buffer);
        record.buffer[length] = u'\0';
        return 1;
    }
    static OKU_WORD socketCreate(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<NL_CREATE_RECORD>(param);
        host.sockets[textAt(record.name)] = {record.callback, record.context};
        return 1;
    }
    static OKU_WORD socketConnect(QuickHost& host, OKU_WORD param, OKU_WORD) {
        if (host.onConnect) host.onConnect(netOf(at<NL_CONNECT_RECORD>(param).socket));
        return 1;
    }
    static OKU_WORD socketSend(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<NL_SEND_RECORD>(param);
        if (host.onSend) host.onSend(netOf(record.socket), {record.data, record.length});
        return 1;
    }
    static OKU_WORD socketTls(QuickHost& host, OKU_WORD param, OKU_WORD) {
        if (host.onTls) host.onTls(netOf(textAt(reinterpret_cast<const void*>(param))));
        return 1;
    }
    static OKU_WORD socketClose(QuickHost& host, OKU_WORD param, OKU_WORD) {
        if (host.onClose) host.onClose(netOf(textAt(reinterpret_cast<const void*>(param))));
        return 1;
    }
    static OKU_WORD socketDestroy(QuickHost& host, OKU_WORD param, OKU_WORD) {
        host.sockets.erase(textAt(reinterpret_cast<const void*>(param)));
        return 1;
    }
    static OKU_WORD OKU_CALL updateWindow(OKU_WORD param, OKU_WORD extra, OKU_WORD) {
        const Side side(false);
        return g_current->enter(u"updateFn", param, extra).value_or(0);
    }
    static OKU_WORD initWindow(QuickHost& host, OKU_WORD param, OKU_WORD) {
        auto& record = at<OKU_FT_INIT_RECORD>(param);
        host.transferWindows.push_back({record.callback, record.callbackData});
        record.updateFn = updateWindow;
        return ++host.nextHandle_;
    }
    static OKU_WORD ask(QuickHost&, OKU_WORD param, OKU_WORD) {
        constexpr std::u16string_view kFolder = u"/received/";
        auto& record = at<OKU_FT_ASK_RECORD>(param);
        std::copy_n(kFolder.data(), kFolder.size(), record.path);
        record.path[kFolder.size()] = u'\0';
        return 1;
    }
    static OKU_WORD publish(QuickHost& host, OKU_WORD param, OKU_WORD) {
        constexpr std::u16string_view kAddress = u"http://host.example/file";
        auto& record = at<OK7_PREPARE_RECORD>(param);
        host.publications.push_back({record.stateCallback, record.stateData});
        std::copy_n(kAddress.data(), kAddress.size() + 1, record.result->url);
        return 1;
    }
    static OKU_WORD choose(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& record = at<OKU_FILE_CHOOSER>(param);
        host.choosers.push_back({record.callback, record.context});
        return 1;
    }
    static OKU_WORD contactAdd(QuickHost& host, OKU_WORD param, OKU_WORD) {
        auto& record = at<OKU_CONTACT_ADD>(param);
        auto& handle = host.contacts[record.identity.netId][textAt(record.identity.id)];
        if (handle == 0) handle = ++host.nextHandle_;
        return record.handle = handle;
    }
    static OKU_WORD contactFind(QuickHost& host, OKU_WORD param, OKU_WORD) {
        const auto& identity = at<OKU_CONTACT_IDENTITY>(param);
        const auto& known = host.contacts[identity.netId];
        const auto found = known.find(textAt(identity.id));
        return found == known.end() ? 0 : found->second;
    }
    static OKU_WORD contactsClear(QuickHost& host, OKU_WORD, OKU_WORD extra) {
        host.contacts.erase(static_cast<std::uint32_t>(extra));
        return 1;
    }
    static OKU_WORD hooks(QuickHost& host, OKU_WORD param, OKU_WORD extra) {
        const auto& hook = at<OKU_PROTOCOL_HOOK>(param);
        if (hook.kind == OKU_HOOK_MESSAGE_IN && hook.phase == OKU_PHASE_AFTER && host.onMessage)
            host.onMessage(at<OKU_MESSAGE_DATA>(extra));
        return 0;
    }
    static OKU_WORD nothing(QuickHost&, OKU_WORD, OKU_WORD) { return 0; }

    static OKU_WORD call(QuickHost& host, std::u16string_view name, OKU_WORD param, OKU_WORD extra) {
        static const std::unordered_map<std::u16string_view, Act> kActs{
            {u"OKU/Settings/Init", settingsInit},
            {u"OKU/Settings/Get", settingsGet},
            {u"OKU/Settings/Set", settingsSet},
            {u"OKU/Settings/Destroy", settingsDestroy},
            {u"OKU/Timer/Create", timerCreate},
            {u"OKU/Timer/Destroy", timerDestroy},
            {u"OKU/ProtocolAdd", protocolAdd},
            {u"OKU/ProtocolDel", protocolDel},
            {u"OKU/Menu/Add", menuAdd},
            {u"OKU/StatusWND/Prepare", statusWindow},
            {u"OKU/Info/GetCacheDir", directory},
            {u"OKU/Info/GetProfileDir", directory},
            {u"NetLib/Create", socketCreate},
            {u"NetLib/ConnectService", socketConnect},
            {u"NetLib/Send", socketSend},
            {u"NetLib/InitSSL", socketTls},
            {u"NetLib/Close", socketClose},
            {u"NetLib/Destroy", socketDestroy},
            {u"OKU/CTL/AddContact", contactAdd},
            {u"OKU/CTL/FndContact", contactFind},
            {u"OKU/CTL/DeleteAll", contactsClear},
            {u"OKU/CallProtolHooks", hooks},
            {u"OKU/NL/GetDefaultSettings", nothing},
            {u"OKU/FTInitWindow", initWindow},
            {u"OKU/FTAskForConfirmation", ask},
            {u"OK7/PrepareFile", publish},
            {u"UI/FileChooser", choose},
        };
        const auto found = kActs.find(name);
        return found == kActs.end() ? 1 : found->second(host, param, extra);
    }
};

struct QuickTable {
    static OKU_WORD OKU_CALL create(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) {
        const Side side(false);
        QuickHost& host = *g_current;
        if (const auto answer = host.enter(u"fnCreate", reinterpret_cast<OKU_WORD>(name), 0)) return *answer;
        host.services[name] = {handler, context};
        host.serviceHandles_[++host.nextHandle_] = name;
        return host.nextHandle_;
    }
    static OKU_WORD OKU_CALL destroy(OKU_WORD handle) {
        const Side side(false);
        QuickHost& host = *g_current;
        if (const auto answer = host.enter(u"fnDestroy", handle, 0)) return *answer;
        const auto found = host.serviceHandles_.find(handle);
        if (found == host.serviceHandles_.end()) return 0;
        host.services.erase(found->second);
        host.serviceHandles_.erase(found);
        return 1;
    }
    static OKU_WORD OKU_CALL call(const char16_t* name, OKU_WORD param, OKU_WORD extra) {
        const Side side(false);
        QuickHost& host = *g_current;
        if (const auto answer = host.enter(name, param, extra)) return *answer;
        return QuickServices::call(host, name, param, extra);
    }
    static OKU_WORD OKU_CALL createEvent(const char16_t* name) {
        const Side side(false);
        QuickHost& host = *g_current;
        if (const auto answer = host.enter(u"evCreate", reinterpret_cast<OKU_WORD>(name), 0)) return *answer;
        host.events.insert(++host.nextHandle_);
        return host.nextHandle_;
    }
    static OKU_WORD OKU_CALL destroyEvent(OKU_WORD event) {
        const Side side(false);
        QuickHost& host = *g_current;
        if (const auto answer = host.enter(u"evDestroy", event, 0)) return *answer;
        host.events.erase(event);
        return 1;
    }
    static OKU_WORD OKU_CALL notify(OKU_WORD, OKU_WORD param, OKU_WORD extra) {
        const Side side(false);
        return g_current->enter(u"evNotify", param, extra).value_or(0);
    }
    static OKU_WORD OKU_CALL addHook(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) {
        const Side side(false);
        QuickHost& host = *g_current;
        if (const auto answer = host.enter(u"hookAdd", reinterpret_cast<OKU_WORD>(name), 0)) return *answer;
        host.hooks[++host.nextHandle_] = {name, {handler, context}};
        return host.nextHandle_;
    }
    static OKU_WORD OKU_CALL removeHook(OKU_WORD handle) {
        const Side side(false);
        QuickHost& host = *g_current;
        if (const auto answer = host.enter(u"hookRemove", handle, 0)) return *answer;
        host.hooks.erase(handle);
        return 1;
    }

    static constexpr OKU_FUNCTION_TABLE kTable{create,      destroy,      call,   0,       0,
                                               createEvent, destroyEvent, notify, addHook, removeHook};
};

QuickHost::QuickHost() { g_current = this; }
QuickHost::~QuickHost() { g_current = nullptr; }
const OKU_FUNCTION_TABLE* QuickHost::table() { return &QuickTable::kTable; }

std::optional<OKU_WORD> QuickHost::enter(std::u16string_view name, OKU_WORD param, OKU_WORD extra) {
    const std::size_t index = calls++;
    if (name == u"OKU/CTL/EnableDrawing") drawing = param != 0;
    if (trace) write(name, param, extra);
    return before ? before({name, param, extra, index}) : std::nullopt;
}

void QuickHost::write(std::u16string_view name, OKU_WORD param, OKU_WORD extra) {
    std::string line = narrow(name);
    const auto add = [&line](const void* text) { line += " '" + narrow(textAt(text)) + "'"; };
    const auto number = [&line](std::int64_t value) { line += " " + std::to_string(value); };
    if (name == u"OKU/Log") {
        number(at<OKU_LOG_RECORD>(param).level);
        add(at<OKU_LOG_RECORD>(param).text);
    } else if (name == u"NetLib/Send") {
        line.append(" ").append(at<NL_SEND_RECORD>(param).data, at<NL_SEND_RECORD>(param).length);
    } else if (name == u"OKU/CTL/SetContactState") {
        const auto& state = at<OKU_CONTACT_STATE>(param);
        add(state.contact->id);
        add(state.resource->resource);
        add(state.description);
        number(state.resource->priority);
        number(state.status);
    } else if (name == u"OKU/CTL/AddContact") {
        const auto& contact = at<OKU_CONTACT_ADD>(param);
        add(contact.identity.id);
        add(contact.name);
        add(contact.group);
        number(contact.authorization);
    } else if (name == u"evNotify") {
        number(at<OKU_PEP_EVENT>(param).kind);
        add(at<OKU_PEP_EVENT>(param).contact.id);
    } else if (name == u"OKU/ShowStandardNotify") {
        add(at<OKU_NOTIFY>(param).title);
        add(at<OKU_NOTIFY>(param).text);
    } else if (name == u"UI/MessageBox") {
        add(at<OKU_MESSAGE_BOX>(param).text);
    } else if (name == u"OKU/CallProtolHooks") {
        const auto& hook = at<OKU_PROTOCOL_HOOK>(param);
        number(hook.kind);
        number(hook.phase);
        if (hook.kind == OKU_HOOK_MESSAGE_IN) {
            const auto& message = at<OKU_MESSAGE_DATA>(extra);
            add(message.id);
            add(message.resource->resource);
            add(message.subject);
            add(message.body);
            number(message.flags);
            number(message.time);
        } else if (hook.kind == OKU_HOOK_STREAM_IN) {
            line.append(" ").append(at<OKU_HOOK_DATA>(extra).data, at<OKU_HOOK_DATA>(extra).length);
        }
    }
    std::replace(line.begin(), line.end(), '\n', '|');
    trace->append(line).push_back('\n');
}

std::string QuickHost::leftovers() const {
    std::string left;
    const auto tell = [&left](const char* what, std::u16string_view name) {
        left += std::string(what) + " " + narrow(name) + "\n";
    };
    for (const auto& [handle, name] : serviceHandles_) tell("service", name);
    for (const auto& [handle, hook] : hooks) tell("hook", hook.first);
    for (const auto& [name, timer] : timers) tell("timer", name);
    for (const auto& [name, socket] : sockets) tell("socket", name);
    for (const auto& [handle, path] : stores) tell("settings", path);
    for (const auto& [net, protocol] : protocols) left += "account " + std::to_string(net) + "\n";
    for (const OKU_WORD event : events) left += "event " + std::to_string(event) + "\n";
    if (!drawing) left += "the contact list is not drawn\n";
    return left;
}

void QuickHost::forgetPlugin() {
    menuItems.clear();
    statusWindows.clear();
    transferWindows.clear();
    choosers.clear();
    publications.clear();
    contacts.clear();
    netsEverAdded = 0;
}

}  // namespace torture
