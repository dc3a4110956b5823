// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/stage.h"

#include <algorithm>
#include <cstring>
#include <list>
#include <memory>

#include "host/oku/avatar.h"
#include "host/oku/cards.h"
#include "host/oku/dialogs.h"
#include "host/oku/menu.h"
#include "host/oku/message.h"
#include "host/oku/netlib.h"
#include "host/oku/notify.h"
#include "host/oku/pep.h"
#include "host/oku/protocol.h"
#include "host/oku/timer.h"
#include "host/oku/transfer.h"
#include "host/oku/windows.h"
#include "tests/support/fake_platform.h"
#include "tests/support/stage_records.h"
#include "tests/support/text.h"

namespace harness {
Stage::~Stage() {
    if (!loaded_) return;
    host.onEvent = nullptr;
    host.failingCall.reset();
    exports_.unload();
}

OKU_WORD Stage::load() {
    loaded_ = true;
    return exports_.load(host.module, host.table());
}

OKU_WORD Stage::unload() {
    loaded_ = false;
    const auto result = exports_.unload();
    if (!host.failingCall) host.checkUnloaded();
    host.forgetPlugin();
    return result;
}

OKU_WORD Stage::socketEvent(std::uint32_t kind, OKU_WORD data) {
    NL_EVENT event{sizeof(NL_EVENT), kind};
    const auto callback = required(host.sockets, "XMPP/Socket/" + std::to_string(account), "socket");
    return callback(word(&event), data);
}

OKU_WORD Stage::socketNullEvent() {
    return required(host.sockets, "XMPP/Socket/" + std::to_string(account), "socket")(0, 0);
}

std::string Stage::compressed(const std::string& bytes) {
    if ((flags() & OKU_FLAG_COMPRESSED) == 0) return bytes;
    return host.compression[account].deflate(bytes);
}

OKU_WORD Stage::receive(const std::string& bytes) {
    const std::unique_ptr<char[]> buffer(new char[bytes.size() + 1]);
    std::memcpy(buffer.get(), bytes.c_str(), bytes.size() + 1);
    NL_RECEIVED received{sizeof(NL_RECEIVED), static_cast<std::int32_t>(bytes.size()), buffer.get()};
    return socketEvent(NL_EVENT_RECEIVED, word(&received));
}

OKU_WORD Stage::tlsState(std::uint32_t state) {
    NL_TLS_STATE data{sizeof(NL_TLS_STATE), state};
    return socketEvent(NL_EVENT_TLS, word(&data));
}

OKU_WORD Stage::setStatus(std::uint32_t status, const std::optional<std::string>& description, OKU_WORD flagsWord) {
    auto record = sized<OKU_STATUS_SET>();
    const WideText text(description.value_or(""));
    record.status = status;
    record.description = description ? static_cast<const char16_t*>(text) : nullptr;
    record.flagsWord = flagsWord;
    return service("PFStatusSet", word(&record), 0);
}

OKU_WORD Stage::clickMenu(const std::string& id, const std::string& told) {
    const auto callback = required(host.menuItems, id, "menu item");
    const WideText text(told.empty() ? id : told);
    OKU_MENU_EVENT event{sizeof(OKU_MENU_EVENT), 0, text};
    return callback(word(&event), 0);
}

OKU_WORD Stage::statusWindow(std::uint32_t event, std::uint32_t status, const std::string& description,
                             std::uint32_t protect, OKU_WORD window) {
    auto record = sized<OKU_STATUS_WINDOW_EVENT>();
    const WideText text(description);
    record.event = event;
    record.status = status;
    record.description = text;
    record.protect = protect;
    record.window = window;
    return required(host.statusWindows, account, "status window")(word(&record), 0);
}

OKU_WORD Stage::statusWindowNull() { return required(host.statusWindows, account, "status window")(0, 0); }

OKU_WORD Stage::sendMessage(const std::string& jid, const std::string& body, const std::string& subject,
                            std::uint32_t flags) {
    auto record = sized<OKU_MESSAGE_SEND>();
    const WideText id(jid), pfClass("XMPP"), subjectText(subject), bodyText(body);
    record.contact = sized<OKU_CONTACT_RECORD>();
    record.contact.id = id;
    record.contact.pfClass = pfClass;
    record.contact.netId = account;
    record.subject = subjectText;
    record.body = bodyText;
    record.flags = flags;
    return service("PFMessageSend", word(&record), static_cast<OKU_WORD>(flags));
}

OKU_WORD Stage::sendTyping(const std::string& jid, OKU_WORD composing) {
    return withContact(jid, account, [&](OKU_WORD contact) { return service("PFTNSend", contact, composing); });
}

OKU_WORD Stage::askForCard(const std::string& jid, OKU_WORD token) {
    auto record = sized<OKU_CONTACT_CARD_REQUEST>();
    const WideText id(jid);
    record.token = token;
    record.jid = id;
    return service("PFGetContactVCard", word(&record), 0);
}

OKU_WORD Stage::ownCard(const std::string& shortName, OKU_WORD token) {
    auto record = sized<OKU_OWN_CARD_REQUEST>();
    record.token = token;
    return service(shortName, word(&record), 0);
}

OKU_WORD Stage::changePicture(const std::optional<std::string>& hash, std::uint32_t action) {
    auto record = sized<OKU_AVATAR_CHANGED>();
    const WideText text(hash.value_or(""));
    record.hash = hash ? static_cast<const char16_t*>(text) : nullptr;
    record.action = action;
    return raise("OKU/OnAvatarChanged", word(&record), 0);
}

OKU_WORD Stage::sendRaw(const std::string& bytes) {
    const std::unique_ptr<char[]> buffer(new char[bytes.size() + 1]);
    std::memcpy(buffer.get(), bytes.c_str(), bytes.size() + 1);
    auto record = sized<OKU_RAW_SEND>();
    record.data = buffer.get();
    record.length = static_cast<std::uint32_t>(bytes.size());
    return service("PFRawSend", word(&record), 0);
}

OKU_WORD Stage::publish(std::uint32_t kind, const RecordLayout& layout,
                        const std::map<std::string, std::string>& texts) {
    // Exactly as long as it has to be, so that a reader behind its end is caught.
    const std::size_t size = layout.size - sizeof(OKU_WORD);
    const std::unique_ptr<char[]> data(new char[size]());
    poke(data.get(), 0, static_cast<std::uint32_t>(size));
    std::list<WideText> kept;
    for (const auto& [name, text] : texts) {
        const auto field = std::find_if(layout.fields.begin(), layout.fields.end(),
                                        [&, wanted = name](const FieldLayout& f) { return f.name == wanted; });
        if (field == layout.fields.end() || field->offset >= size) throw NotThere("there is no field " + name);
        poke(data.get(), field->offset, static_cast<const char16_t*>(kept.emplace_back(text)));
    }
    OKU_PEP_PUBLISH record{sizeof(OKU_PEP_PUBLISH), kind};
    return service("PFEPublishData", word(&record), word(data.get()));
}

OKU_WORD Stage::publishNothing(std::uint32_t kind) {
    OKU_PEP_PUBLISH record{sizeof(OKU_PEP_PUBLISH), kind};
    return service("PFEPublishData", word(&record), 0);
}

OKU_WORD Stage::popUp(std::uint32_t action) {
    if (!host.popUp.handler) throw NotThere("there is no pop-up with a callback");
    OKU_NOTIFY_EVENT event{sizeof(OKU_NOTIFY_EVENT), action, host.popUp.context};
    return host.popUp.handler(word(&event), 0, 0);
}

OKU_WORD Stage::popUpNull() { return host.popUp.handler ? host.popUp.handler(0, 0, 0) : 0; }

const Protocol& Stage::protocol() const {
    const auto found = host.protocols.find(account);
    if (found == host.protocols.end()) throw NotThere("there is no account " + std::to_string(account));
    return found->second;
}

OKU_WORD Stage::deleteContact(const std::string& jid) {
    return withContact(jid, account, [&](OKU_WORD contact) { return protocol().remove(contact, 0); });
}

OKU_WORD Stage::sendFile(const std::string& jid) {
    return withContact(jid, account, [&](OKU_WORD contact) { return service("PFInitSendFile", contact, 0); });
}

namespace {
/// The element of this number, counted from 1.
template <typename List>
auto& numbered(List& list, long long number, const char* what) {
    if (number < 1 || static_cast<std::size_t>(number) > list.size())
        throw NotThere(std::string("there is no such ") + what);
    return list[static_cast<std::size_t>(number) - 1];
}
}  // namespace

OKU_WORD Stage::choose(long long chooser, const std::optional<std::string>& path, long long kind) {
    const auto callback = numbered(host.choosers, chooser, "chooser");
    const WideText text(path.value_or(""));
    auto choice = sized<OKU_FILE_CHOICE>();
    if (kind == 0) kind = path ? static_cast<int>(OKU_FILE_CHOSEN) : static_cast<int>(OKU_FILE_CHOICE_CANCELLED);
    choice.kind = static_cast<std::uint32_t>(kind);
    choice.path = path ? static_cast<const char16_t*>(text) : nullptr;
    return callback(word(&choice), 0);
}

OKU_WORD Stage::transferWindow(OKU_WORD number, std::optional<long long> event) {
    const auto open = std::find_if(host.transferWindows.begin(), host.transferWindows.end(),
                                   [&](const auto& entry) { return entry.second.number == number; });
    const auto callback =
        open == host.transferWindows.end() ? required(host.droppedWindows, number, "window") : open->second.callback;
    OKU_FT_EVENT record{sizeof(OKU_FT_EVENT), static_cast<std::uint32_t>(event.value_or(0))};
    return callback(event ? word(&record) : 0, 0);
}

OKU_WORD Stage::publishedState(long long file, OKU_WORD state) {
    const auto callback = numbered(host.publications, file, "published file").state;
    return callback(state, 0);
}

OKU_WORD Stage::publishedProgress(long long file, OKU_WORD position, OKU_WORD total) {
    const auto callback = numbered(host.publications, file, "published file").progress;
    return callback(position, total);
}

OKU_WORD Stage::authorize(const std::string& jid, OKU_WORD bits) {
    return withContact(jid, account, [&](OKU_WORD contact) { return protocol().authorize(contact, bits); });
}

OKU_WORD Stage::service(const std::string& shortName, OKU_WORD param, OKU_WORD extra) {
    const auto name = "XMPP/" + std::to_string(account) + "/" + shortName;
    const auto callback = required(host.services, name, "service");
    return callback(param, extra);
}

OKU_WORD Stage::raise(const std::string& event, OKU_WORD param, OKU_WORD extra) {
    OKU_WORD result = 0;
    const auto listeners = host.hooks;
    for (const auto& [name, callback] : listeners) {
        if (name == event) result = callback(param, extra);
    }
    return result;
}

OKU_WORD Stage::dialogEvent(OKU_WORD window, const DialogInput& input) {
    const auto& target = required(host.dialogs.all, window, "window");
    auto record = sized<OKU_WINDOW_EVENT>();
    record.kind = input.kind;
    record.window = window;
    record.control = input.control;
    record.number = input.number;
    record.width = input.width;
    record.height = input.height;
    return target.handler(word(&record), 0, target.context);
}

OKU_WORD Stage::dialogNull(OKU_WORD window) {
    const auto& target = required(host.dialogs.all, window, "window");
    return target.handler(0, 0, target.context);
}

OKU_WORD Stage::tick(const std::string& timer, std::uint32_t kind) {
    auto found = host.timers.find(timer);
    if (found == host.timers.end()) throw NotThere("there is no timer " + timer);
    const auto callback = found->second.callback;
    if (kind == OKU_TIMER_TICK && found->second.oneShot) host.timers.erase(found);
    auto event = sized<OKU_TIMER_EVENT>();
    event.kind = kind;
    return callback(word(&event), 0);
}

void Stage::pass(std::int64_t milliseconds) {
    const auto end = host.clock + milliseconds;
    for (;;) {
        const std::string* next = nullptr;
        std::int64_t due = end;
        for (const auto& [name, timer] : host.timers) {
            if (timer.due < due || (timer.due == due && !next)) next = &name, due = timer.due;
        }
        world().advance(due - host.clock);
        host.clock = due;
        if (!next) return;
        const auto name = *next;
        auto& timer = host.timers.at(name);
        timer.due += timer.interval;
        tick(name, OKU_TIMER_TICK);
    }
}

std::uint32_t Stage::flags() const {
    const auto found = host.protocols.find(account);
    return found == host.protocols.end() ? 0 : *found->second.flags;
}

}  // namespace harness
