// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The settings that the plugin reads and stores.
#include <cstring>

#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

OKU_WORD settingsInit(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto handle = host.nextStore++;
    const auto path = copyText(recordAt(param));
    host.stores[handle] = {path, {}, false};
    return handle;
}

OpenSettings* store(RecordingHost& host, OKU_WORD handle, const char* service) {
    const auto found = host.stores.find(handle);
    if (found != host.stores.end()) return &found->second;
    host.complainDead(std::string(service) + " on a dead settings store");
    return nullptr;
}

OKU_WORD settingsRead(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    auto* opened = store(host, param, "OKU/Settings/Read");
    if (!opened) return 0;
    opened->read = true;
    opened->values = host.settingsFiles[opened->path];
    return 1;
}

OKU_WORD settingsWrite(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    auto* opened = store(host, param, "OKU/Settings/Write");
    if (!opened) return 0;
    host.settingsFiles[opened->path] = opened->values;
    return 1;
}

OKU_WORD settingsDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    if (store(host, param, "OKU/Settings/Destroy")) host.stores.erase(param);
    return 0;
}

OKU_WORD getSetting(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    auto* record = reinterpret_cast<void*>(param);
    readRecord(layouts::kSettings, record, host.context());
    const auto key = copyText(peek<const void*>(record, 8));
    const bool isText = peek<std::uint32_t>(record, 16) == 3;
    const auto length = peek<std::uint32_t>(record, 32);
    if (length != (isText ? 4096u : 0u)) host.complain("OKU/Settings/Get of " + key + " with another capacity");
    auto* from = store(host, peek<OKU_WORD>(record, 40), "OKU/Settings/Get");
    Line line{std::string("reads ") + (isText ? "text " : "number ") + key, {}, {}, "none"};
    if (peek<OKU_WORD>(record, 40) != 1) line.field("store", peek<OKU_WORD>(record, 40));
    if (from && !from->read) host.complainDead("OKU/Settings/Get of " + key + " before Read");
    const auto value = from ? from->values.find(key) : SettingsFile::iterator();
    const bool found =
        !host.scripted("OKU/Settings/Get") && from && value != from->values.end() && value->second.isText == isText;
    if (found && isText) {
        const auto text = toUtf16(value->second.text).substr(0, length - 1);
        std::memcpy(peek<void*>(record, 24), text.c_str(), (text.size() + 1) * sizeof(char16_t));
        line.result = quoted(value->second.text);
    } else if (found) {
        poke(record, 24, static_cast<OKU_WORD>(value->second.number));
        line.result = std::to_string(value->second.number);
    }
    host.record({Event::Category::SettingsRead, std::move(line), {}});
    return found ? 1 : 0;
}

OKU_WORD setSetting(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto* record = reinterpret_cast<const void*>(param);
    readRecord(layouts::kSettings, record, host.context());
    const auto key = copyText(peek<const void*>(record, 8));
    const bool isText = peek<std::uint32_t>(record, 16) == 3;
    const auto handle = peek<OKU_WORD>(record, 40);
    Line line{"stores " + key, {}, {}, {}};
    Setting setting{isText, 0, {}};
    if (isText) {
        setting.text = copyText(peek<const void*>(record, 24));
        if (toUtf16(setting.text).size() != peek<std::uint32_t>(record, 32)) {
            host.complain("OKU/Settings/Set of " + key + " tells another length than its text has");
        }
        line.text(setting.text);
    } else {
        setting.number = peek<std::int32_t>(record, 24);
        if (peek<std::uint32_t>(record, 32) != 0) host.complain("OKU/Settings/Set of a number with a length");
        line.number(setting.number);
    }
    if (handle != 1) line.field("store", handle);
    const auto answer = host.scripted("OKU/Settings/Set");
    if (auto* to = store(host, handle, "OKU/Settings/Set"); to && !answer) to->values[key] = setting;
    host.plain(std::move(line));
    return answer.value_or(1);
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"OKU/Settings/Init", {K::Text, "path"}, {K::Module, "module"}, settingsInit},
    {"OKU/Settings/Read", {K::Net, "store"}, {}, settingsRead},
    {"OKU/Settings/Write", {K::Net, "store"}, {}, settingsWrite},
    {"OKU/Settings/Destroy", {K::Net, "store"}, {K::Module, "module"}, settingsDestroy},
    {.name = "OKU/Settings/Get", .tellAndAct = getSetting},
    {.name = "OKU/Settings/Set", .tellAndAct = setSetting},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> settingsServices() { return kRows; }

}  // namespace harness
