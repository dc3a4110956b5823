#include "tests/support/host_services.h"

#include "tests/support/text.h"

namespace harness {

using K = HostServices::Argument::Kind;

constexpr HostServices::Argument kNone{};

const HostServices::Row HostServices::kRows[] = {
    {"OKU/Settings/Init", {K::Text, "path"}, {K::Module, "module"}, settingsInit},
    {"OKU/Settings/Read", {K::Net, "store"}, kNone, settingsRead},
    {"OKU/Settings/Write", {K::Net, "store"}, kNone, settingsWrite},
    {"OKU/Settings/Destroy", {K::Net, "store"}, {K::Module, "module"}, settingsDestroy},
    {"OKU/Timer/Create", {K::Record, "", &layouts::kTimer}, kNone, timerCreate},
    {"OKU/Timer/Destroy", {K::TimerName, "id"}, kNone, timerDestroy},
    {"OKU/ProtocolAdd", {K::Record, "", &layouts::kProtocol}, kNone, protocolAdd},
    {"OKU/ProtocolDel", {K::Class, "class"}, {K::Net, "net"}, protocolDel},
    {"OKU/PFSetInfo", {K::Record, "", &layouts::kInfo}, kNone, nothing},
    {"OKU/Menu/Add", {K::Record, "", &layouts::kMenu}, kNone, menuAdd},
    {"OKU/Menu/Modify", {K::Record, "", &layouts::kMenu}, kNone, nothing},
    {"OKU/AddOptionsPage", {K::Module, "module"}, {K::Record, "", &layouts::kOptionsPage}, optionsPage},
    {"OKU/PropertiesStaticPageAdd", {K::Record, "", &layouts::kPropertiesPage}, kNone, nothing},
    {"OKU/StatusWND/Prepare", {K::Record, "", &layouts::kStatusPrepare}, kNone, statusWindow},
    {"OKU/StatusWND/Show", {K::Record, "", &layouts::kStatusShow}, kNone, nothing},
    {"OKU/StatusWND/SetTexts", {K::Record, "", &layouts::kStatusTexts}, kNone, nothing},
    {"UI/MessageBox", {K::Record, "", &layouts::kMessageBox}, kNone, messageBox},
    {"MyVCard/SignalBusyness", {K::Number, "busy"}, kNone, nothing},
    {"OKU/Graph/ICCreate", {K::Record, "", &layouts::kIconClass}, kNone, nothing},
    {"OKU/Graph/AddIC", {K::Text, "name"}, {K::Text, "fallback"}, nothing},
    {"OKU/Graph/LoadIS", {K::Record, "", &layouts::kIconSet}, kNone, nothing},
    {"OKU/Graph/Load", {K::Record, "", &layouts::kIconLoad}, kNone, nothing},
    {"OKU/Info/GetCacheDir", {K::Record, "", &layouts::kDirectory}, kNone, cacheDirectory},
    {"OKU/Info/GetProfileDir", {K::Record, "", &layouts::kDirectory}, kNone, profileDirectory},
    {"NetLib/Create", {K::Record, "", &layouts::kSocketCreate}, kNone, socketCreate},
    {"NetLib/ConnectService", {K::Record, "", &layouts::kSocketConnect}, kNone, socketConnect},
    {"NetLib/InitSSL", {K::Text, "socket"}, kNone, socketUse},
    {"NetLib/Close", {K::Text, "socket"}, kNone, socketUse},
    {"NetLib/Destroy", {K::Text, "socket"}, kNone, socketDestroy},
    {"OKU/NL/GetDefaultSettings", kNone, kNone, proxyDefaults},
    {"OKU/CTL/EnableDrawing", {K::Number, "on"}, kNone, nothing},
    {"OKU/CTL/DeleteAll", {K::Class, "class"}, {K::Net, "net"}, contactsClear},
    {"OKU/CTL/SetAllOffline", {K::Class, "class"}, {K::Net, "net"}, nothing},
    {"OKU/CTL/AddContact", {K::Record, "", &layouts::kContactAdd}, kNone, contactAdd},
    {"OKU/CTL/AddContactIcon", {K::Contact, "contact"}, {K::Record, "", &layouts::kContactIcon}, contactIcon},
    {"OKU/CTL/FndContact", {K::Record, "", &layouts::kContactIdentity}, kNone, contactFind},
    {"OKU/CTL/DelContact", {K::Contact, "contact"}, kNone, contactDelete},
    {"OKU/CTL/SetContactState", {K::Record, "", &layouts::kContactState}, kNone, nothing},
    {"OKU/PFTNSet", {K::Record, "", &layouts::kContact}, {K::Number, "composing"}, nothing},
    {"OKU/PFAskForAuth", {K::Record, "", &layouts::kContact}, kNone, nothing},
};

const HostServices::Row* HostServices::find(const std::string& service) {
    for (const auto& row : kRows) {
        if (service == row.name) return &row;
    }
    return nullptr;
}

void HostServices::show(RecordingHost& host, Line& line, const Argument& argument, OKU_WORD word) {
    switch (argument.kind) {
        case K::Zero:
            return;
        case K::Number:
            line.field(argument.name, word);
            return;
        case K::Text:
            line.field(argument.name, copyText(reinterpret_cast<const void*>(word)));
            return;
        case K::Module:
            if (word != host.module) line.field(argument.name, word);
            return;
        case K::Net:
            if (word != 1) line.field(argument.name, word);
            return;
        case K::Class:
            if (const auto text = copyText(reinterpret_cast<const void*>(word)); text != "XMPP") {
                line.field(argument.name, text);
            }
            return;
        case K::Contact: {
            const auto found = host.contacts_.find(word);
            line.field(argument.name, found == host.contacts_.end() ? "none" : found->second.substr(2));
            return;
        }
        case K::TimerName: {
            bool byReference = false;
            line.field(argument.name, timerName(word, byReference));
            if (byReference) line.fields.push_back({"shape", {"reference", false}});
            return;
        }
        case K::Record:
            for (auto& field : readRecord(*argument.layout, reinterpret_cast<const void*>(word), host.context())) {
                line.fields.push_back(std::move(field));
            }
            return;
    }
}

OKU_WORD HostServices::call(RecordingHost& host, const std::string& service, OKU_WORD param, OKU_WORD extra) {
    if (service == "OKU/Log") return log(host, param);
    if (service == "OKU/Settings/Get") return getSetting(host, param);
    if (service == "OKU/Settings/Set") return setSetting(host, param);
    if (service == "OKU/CallProtolHooks") return hook(host, param, extra);
    if (service == "NetLib/Send") return send(host, param);
    const Row* row = find(service);
    if (!row) {
        host.complain("the host has no service " + service);
        host.plain(Line{"call " + service, {}, {}, {}});
        return 0;
    }
    Line line{"call " + service, {}, {}, {}};
    if (service == "OKU/NL/GetDefaultSettings") {
        if (peek<std::uint32_t>(reinterpret_cast<void*>(param), 0) != 1556)
            host.complain("NL_PROXY_DEFAULTS has another size");
        show(host, line, {}, param);
    } else {
        show(host, line, row->param, param);
        if (row->param.kind == K::Zero && param != 0) line.field("param", param);
    }
    show(host, line, row->extra, extra);
    if (row->extra.kind == K::Zero && extra != 0) line.field("extra", extra);
    // What is scripted is taken before the event is told: a trigger may call again.
    const auto answer = host.scripted(service);
    host.plain(std::move(line));
    return answer ? *answer : row->act(host, param, extra);
}

OKU_WORD HostServices::log(RecordingHost& host, OKU_WORD param) {
    const auto* record = reinterpret_cast<const void*>(param);
    if (!record) return host.complain("OKU/Log without a record"), 0;
    readRecord(layouts::kLog, record, host.context());
    const auto level = peek<std::int32_t>(record, 4);
    const auto* tag = peek<const void*>(record, 8);
    Line line;
    line.head = level == -2 && !tag ? "user" : "log " + std::to_string(level) + " " + (tag ? copyText(tag) : "none");
    line.text(copyText(peek<const void*>(record, 16)));
    host.plain(std::move(line));
    return 0;
}

OKU_WORD HostServices::send(RecordingHost& host, OKU_WORD param) {
    const auto* record = reinterpret_cast<const void*>(param);
    const auto fields = readRecord(layouts::kSocketSend, record, host.context());
    const auto* data = peek<const char*>(record, 8);
    const auto length = peek<std::uint32_t>(record, 16);
    const auto socket = copyText(peek<const void*>(record, 24));
    if (!host.sockets.count(socket)) host.complainDead("NetLib/Send on the dead socket " + socket);
    const auto number = socket.substr(socket.rfind('/') + 1);
    Event event{Event::Category::Sent, {}, std::string(data, length)};
    event.line.head = number == "1" ? "C:" : "C@" + number + ":";
    const auto net = static_cast<std::uint32_t>(std::atoi(number.c_str()));
    const auto protocol = host.protocols.find(net);
    const bool compressed = protocol != host.protocols.end() && (*protocol->second.flags & 16) != 0;
    if (compressed) {
        event.data = host.compression[net].inflate(event.data);
    } else {
        host.compression.erase(net);
    }
    const auto clear = event.data.substr(0, event.data.find('\0'));
    for (const auto& told : host.lastOut_) {
        if (told != clear && !host.failingCall) host.complain("a send without its two stream hooks: " + clear);
    }
    for (auto& told : host.lastOut_) told.clear();
    const auto answer = host.scripted("NetLib/Send");
    host.record(std::move(event));
    return answer.value_or(static_cast<OKU_WORD>(length));
}

}  // namespace harness
