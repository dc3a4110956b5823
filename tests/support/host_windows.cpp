// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Menus, pages, windows, icons and directories of the host.
#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

OKU_WORD menuAdd(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.menuItems[textAt(param, 8)] = callbackAt(param, 56, 64);
    return 1;
}

OKU_WORD statusWindow(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.statusWindows[peek<std::uint32_t>(recordAt(param), 40)] = callbackAt(param, 48, 56);
    return 1;
}

OKU_WORD optionsPage(RecordingHost& host, OKU_WORD, OKU_WORD extra) {
    host.optionPages[textAt(extra, 8)] = callbackAt(extra, 56, 64);
    poke(reinterpret_cast<void*>(extra), 40, host.pageIcon);
    return 0;
}

OKU_WORD propertiesPage(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.propertyPages[textAt(param, 8)] = callbackAt(param, 56, 64);
    return 0;
}

OKU_WORD contactPage(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.contactPages[textAt(param, 8)] = callbackAt(param, 56, 64);
    return 0;
}

OKU_WORD popUp(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.popUp = callbackAt(param, 56, 64);
    return 0;
}

OKU_WORD messageBox(RecordingHost&, OKU_WORD param, OKU_WORD) {
    constexpr std::uint32_t kQuestion = 36;
    return peek<std::uint32_t>(recordAt(param), 24) == kQuestion ? 7 : 1;
}

OKU_WORD giveDirectory(RecordingHost& host, OKU_WORD param, const std::string& directory) {
    const auto capacity = peek<std::uint32_t>(recordAt(param), 16);
    if (toUtf16(directory).size() >= capacity) host.complain("no room for the directory");
    copyWide(peek<void*>(recordAt(param), 8), directory, capacity);
    return 1;
}

OKU_WORD cacheDirectory(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    return giveDirectory(host, param, host.cacheDirectory);
}

OKU_WORD profileDirectory(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    return giveDirectory(host, param, host.profileDirectory);
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"OKU/Menu/Add", {K::Record, "", &layouts::kMenu}, {}, menuAdd},
    {"OKU/Menu/Modify", {K::Record, "", &layouts::kMenu}, {}, nothing},
    {"OKU/AddOptionsPage", {K::Module, "module"}, {K::Record, "", &layouts::kOptionsPage}, optionsPage},
    {"OKU/PropertiesStaticPageAdd", {K::Record, "", &layouts::kPropertiesPage}, {}, propertiesPage},
    {"OKU/PropertiesPageAdd", {K::Record, "", &layouts::kContactPage}, {K::Number, "word"}, contactPage},
    {"OKU/StatusWND/Prepare", {K::Record, "", &layouts::kStatusPrepare}, {}, statusWindow},
    {"OKU/StatusWND/Show", {K::Record, "", &layouts::kStatusShow}, {}, nothing},
    {"OKU/StatusWND/SetTexts", {K::Record, "", &layouts::kStatusTexts}, {}, nothing},
    {"OKU/ShowStandardNotify", {K::Record, "", &layouts::kNotify}, {}, popUp},
    {"UI/OpenLink", {K::Text, "address"}, {}, nothing},
    {"UI/MessageBox", {K::Record, "", &layouts::kMessageBox}, {}, messageBox},
    {"OKU/Graph/ICCreate", {K::Record, "", &layouts::kIconClass}, {}, nothing},
    {"OKU/Graph/AddIC", {K::Text, "name"}, {K::Text, "fallback"}, nothing},
    {"OKU/Graph/LoadIS", {K::Record, "", &layouts::kIconSet}, {}, nothing},
    {"OKU/Graph/Load", {K::Record, "", &layouts::kIconLoad}, {}, nothing},
    {"OKU/Info/GetCacheDir", {K::Record, "", &layouts::kDirectory}, {}, cacheDirectory},
    {"OKU/Info/GetProfileDir", {K::Record, "", &layouts::kDirectory}, {}, profileDirectory},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> windowServices() { return kRows; }

}  // namespace harness
