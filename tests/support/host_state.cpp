// What the recording host does when a service is called: just enough state to answer as a host.
#include <algorithm>
#include <cstring>

#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

const void* record(OKU_WORD word) { return reinterpret_cast<const void*>(word); }
std::string textAt(OKU_WORD word, std::size_t offset) { return copyText(peek<const void*>(record(word), offset)); }
Callback callbackAt(OKU_WORD word, std::size_t handler, std::size_t context) {
    return {peek<OKU_HANDLER>(record(word), handler), peek<OKU_WORD>(record(word), context)};
}

void copyWide(void* to, const std::string& text, std::size_t capacity) {
    const auto wide = toUtf16(text).substr(0, capacity - 1);
    std::memcpy(to, wide.c_str(), (wide.size() + 1) * sizeof(char16_t));
}

std::string contactKey(std::uint32_t net, const std::string& jid) { return std::to_string(net) + " " + jid; }

}  // namespace

std::string timerName(OKU_WORD param, bool& byReference) {
    if (param == 0) return {};
    // A name holds four characters or more, so that the upper half of its first word is never zero; a pointer's is.
    const auto first = peek<std::uint64_t>(record(param), 0);
    byReference = (first >> 48) == 0;
    return copyText(byReference ? record(static_cast<OKU_WORD>(first)) : record(param));
}

OKU_WORD HostServices::settingsInit(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto handle = host.nextStore_++;
    const auto path = copyText(record(param));
    host.stores_[handle] = {path, {}, false};
    return handle;
}

OKU_WORD HostServices::settingsRead(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    auto* opened = store(host, param, "OKU/Settings/Read");
    if (!opened) return 0;
    opened->read = true;
    opened->values = host.settingsFiles[opened->path];
    return 1;
}

OKU_WORD HostServices::settingsWrite(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    auto* opened = store(host, param, "OKU/Settings/Write");
    if (!opened) return 0;
    host.settingsFiles[opened->path] = opened->values;
    return 1;
}

OKU_WORD HostServices::settingsDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    if (store(host, param, "OKU/Settings/Destroy")) host.stores_.erase(param);
    return 0;
}

OKU_WORD HostServices::timerCreate(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    Timer timer{callbackAt(param, 24, 32), 0, peek<std::uint32_t>(record(param), 16),
                peek<std::uint32_t>(record(param), 40) != 0};
    timer.due = host.clock + timer.interval;
    host.timers[textAt(param, 8)] = timer;
    return 1;
}

OKU_WORD HostServices::timerDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    bool byReference = false;
    const auto name = timerName(param, byReference);
    // The cancellation of a reconnection that is not due is legal, and comes by reference.
    if (host.timers.erase(name) == 0 && !byReference) host.complainDead("OKU/Timer/Destroy of the dead timer " + name);
    return 0;
}

OKU_WORD HostServices::protocolAdd(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto net = host.nextNet_++;
    host.protocols[net] = {callbackAt(param, 72, 88), callbackAt(param, 80, 88),
                           peek<const std::uint32_t*>(record(param), 96)};
    poke(reinterpret_cast<void*>(param), 32, net);
    return 1;
}

OKU_WORD HostServices::protocolDel(RecordingHost& host, OKU_WORD, OKU_WORD extra) {
    if (host.protocols.erase(static_cast<std::uint32_t>(extra)) == 0 && extra != 0) {
        host.complainDead("OKU/ProtocolDel of the dead account " + std::to_string(extra));
    }
    return 0;
}

OKU_WORD HostServices::menuAdd(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.menuItems[textAt(param, 8)] = callbackAt(param, 56, 64);
    return 1;
}

OKU_WORD HostServices::statusWindow(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.statusWindows[peek<std::uint32_t>(record(param), 40)] = callbackAt(param, 48, 56);
    return 1;
}

OKU_WORD HostServices::optionsPage(RecordingHost& host, OKU_WORD, OKU_WORD extra) {
    poke(reinterpret_cast<void*>(extra), 40, host.pageIcon);
    return 0;
}

OKU_WORD HostServices::messageBox(RecordingHost&, OKU_WORD param, OKU_WORD) {
    constexpr std::uint32_t kQuestion = 36;
    return peek<std::uint32_t>(record(param), 24) == kQuestion ? 7 : 1;
}

OKU_WORD HostServices::giveDirectory(RecordingHost& host, OKU_WORD param, const std::string& directory) {
    const auto capacity = peek<std::uint32_t>(record(param), 16);
    if (toUtf16(directory).size() >= capacity) host.complain("no room for the directory");
    copyWide(peek<void*>(record(param), 8), directory, capacity);
    return 1;
}

OKU_WORD HostServices::cacheDirectory(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    return giveDirectory(host, param, host.cacheDirectory);
}

OKU_WORD HostServices::profileDirectory(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    return giveDirectory(host, param, host.profileDirectory);
}

OKU_WORD HostServices::socketCreate(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.sockets[textAt(param, 56)] = callbackAt(param, 32, 40);
    return 1;
}

OKU_WORD HostServices::socketConnect(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto name = textAt(param, 32);
    if (!host.sockets.count(name)) host.complainDead("NetLib/ConnectService on the dead socket " + name);
    return 1;
}

OKU_WORD HostServices::socketUse(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto name = copyText(record(param));
    if (!host.sockets.count(name)) host.complainDead("a call on the dead socket " + name);
    return 1;
}

OKU_WORD HostServices::socketDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto name = copyText(record(param));
    if (host.sockets.erase(name) == 0) host.complainDead("NetLib/Destroy of the dead socket " + name);
    return 1;
}

OKU_WORD HostServices::proxyDefaults(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    auto* out = reinterpret_cast<char*>(param);
    if (std::any_of(out + 4, out + 1556, [](char c) { return c != 0; })) {
        host.complain("NL_PROXY_DEFAULTS is not zeroed");
    }
    copyWide(out + 4, host.proxy.host, 256);
    copyWide(out + 516, host.proxy.user, 256);
    copyWide(out + 1028, host.proxy.password, 256);
    poke(out, 1540, host.proxy.port);
    poke(out, 1544, host.proxy.enabled);
    poke(out, 1548, host.proxy.type);
    poke(out, 1552, host.proxy.auth);
    return 1;
}

OKU_WORD HostServices::contactAdd(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto key = contactKey(peek<std::uint32_t>(record(param), 40), textAt(param, 24));
    const auto known = std::find_if(host.contacts_.begin(), host.contacts_.end(),
                                    [&](const auto& entry) { return entry.second == key; });
    const auto handle = known == host.contacts_.end() ? ++host.nextHandle_ : known->first;
    host.contacts_[handle] = key;
    poke(reinterpret_cast<void*>(param), 88, handle);
    return handle;
}

OKU_WORD HostServices::contactIcon(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    if (!host.contacts_.count(param)) host.complainDead("OKU/CTL/AddContactIcon on a dead contact");
    return 1;
}

OKU_WORD HostServices::contactFind(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto key = contactKey(peek<std::uint32_t>(record(param), 32), textAt(param, 16));
    const auto found = std::find_if(host.contacts_.begin(), host.contacts_.end(),
                                    [&](const auto& entry) { return entry.second == key; });
    return found == host.contacts_.end() ? 0 : found->first;
}

OKU_WORD HostServices::contactDelete(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    if (host.contacts_.erase(param) == 0) host.complainDead("OKU/CTL/DelContact of a dead contact");
    return 1;
}

OKU_WORD HostServices::contactsClear(RecordingHost& host, OKU_WORD, OKU_WORD extra) {
    std::erase_if(host.contacts_,
                  [&](const auto& entry) { return startsWith(entry.second, std::to_string(extra) + " "); });
    return 1;
}

}  // namespace harness
