// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The windows of file transfers, the question about an offered file, files that the host publishes, and its chooser.
#include <algorithm>

#include "host/oku/transfer.h"
#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

RecordingHost* updated = nullptr;

/// How a window shows what an update of this mask tells.
struct UpdateRow {
    std::uint32_t mask;
    const char* name;
    std::size_t offset;
    FieldKind kind;
    std::size_t again;  // where the same value stands a second time; 0 for nowhere
};
constexpr UpdateRow kUpdates[] = {
    {0x800, "text", 8, FieldKind::Text, 0},    {0x3000, "link", 32, FieldKind::Text, 0},
    {0x30, "total", 56, FieldKind::Word, 72},  {0x3000048, "position", 48, FieldKind::Word, 64},
    {0x1, "state", 80, FieldKind::U32, 0},     {0x200, "cancel", 92, FieldKind::U32, 0},
    {0x400, "value96", 96, FieldKind::U32, 0},
};

/// The record's bytes that this update's mask does not name are zero.
void checkRest(RecordingHost& host, const char* record, const UpdateRow& row) {
    std::vector<bool> named(sizeof(OKU_FT_UPDATE_RECORD), false);
    const auto name = [&](std::size_t offset, std::size_t width) {
        std::fill_n(named.begin() + static_cast<std::ptrdiff_t>(offset), width, true);
    };
    const std::size_t width = row.kind == FieldKind::U32 ? 4 : 8;
    name(0, 8);
    name(104, 8);
    name(row.offset, width);
    if (row.again) name(row.again, width);
    if (row.mask == 0x3000) name(40, 8);
    for (std::size_t i = 0; i < named.size(); ++i)
        if (!named[i] && record[i] != 0) host.complain("a window's update is not zero at " + std::to_string(i));
}

OKU_WORD OKU_CALL update(OKU_WORD word, OKU_WORD second, OKU_WORD data) {
    RecordingHost& host = *updated;
    const auto* record = reinterpret_cast<const char*>(word);
    const auto found = host.transferWindows.find(peek<OKU_WORD>(record, 104));
    if (found == host.transferWindows.end()) return host.complainDead("an update of a dead window"), 0;
    if (peek<std::uint32_t>(record, 0) != 112 || second != 0 || data != found->second.data)
        host.complain("a window's update has another size, argument or data word");
    const auto row = std::find_if(std::begin(kUpdates), std::end(kUpdates),
                                  [&](const UpdateRow& known) { return known.mask == peek<std::uint32_t>(record, 4); });
    if (row == std::end(kUpdates)) return host.complain("a window's update has an unknown mask"), 0;
    checkRest(host, record, *row);
    Line line{"window", {}, {}, {}};
    if (row->kind == FieldKind::Text) {
        line.field(row->name, copyText(peek<const void*>(record, row->offset)));
        if (row->mask == 0x3000) line.field("target", copyText(peek<const void*>(record, 40)));
    } else {
        const auto value = row->kind == FieldKind::U32 ? peek<std::uint32_t>(record, row->offset)
                                                       : peek<std::int64_t>(record, row->offset);
        line.field(row->name, static_cast<long long>(value));
        if (row->again && peek<std::int64_t>(record, row->again) != value)
            host.complain("a window's update tells two values");
    }
    if (found->second.number != 1) line.field("window", static_cast<long long>(found->second.number));
    host.plain(std::move(line));
    return 0;
}

OKU_WORD initWindow(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    updated = &host;
    const auto handle = ++host.nextHandle;
    const OKU_WORD number = ++host.windowsOpened;
    host.transferWindows[handle] = {callbackAt(param, 8, 16), number, handle * 7};
    poke(reinterpret_cast<void*>(param), 64, &update);
    poke(reinterpret_cast<void*>(param), 72, handle * 7);
    return handle;
}

OKU_WORD dropWindow(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    const auto found = host.transferWindows.find(param);
    Line line{"call OKU/FTDropWindow", {}, {}, {}};
    if (extra != 0) line.field("extra", extra);
    if (found == host.transferWindows.end()) {
        host.complainDead("OKU/FTDropWindow of a dead window");
    } else if (found->second.number != 1) {
        line.field("window", static_cast<long long>(found->second.number));
    }
    host.plain(std::move(line));
    // The callback is kept: a host may call it late.
    if (found != host.transferWindows.end()) host.droppedWindows[found->second.number] = found->second.callback;
    host.transferWindows.erase(param);
    return 0;
}

OKU_WORD ask(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    copyWide(peek<void*>(recordAt(param), 16), host.receivedFolder, 256);
    return 1;
}

OKU_WORD prepareFile(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.publications.push_back({callbackAt(param, 32, 40), callbackAt(param, 56, 64)});
    copyWide(peek<char*>(recordAt(param), 16) + 1040, host.publishedUrl, 512);
    return 1;
}

OKU_WORD chooser(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    host.choosers.push_back(callbackAt(param, 40, 48));
    return 1;
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {"OKU/FTInitWindow", {K::Record, "", &layouts::kTransferInit}, {}, initWindow},
    {.name = "OKU/FTDropWindow", .tellAndAct = dropWindow},
    {"OKU/FTAskForConfirmation", {K::Record, "", &layouts::kTransferAsk}, {}, ask},
    {"OK7/IsEnabled", {}, {}, nothing},
    {"OK7/PrepareFile", {K::Record, "", &layouts::kPublish}, {}, prepareFile},
    {"UI/FileChooser", {K::Record, "", &layouts::kFileChooser}, {}, chooser},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> transferServices() { return kRows; }

}  // namespace harness
