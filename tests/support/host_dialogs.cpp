// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin's own windows, as a strict host draws them: each is told with all that is in it, each change by itself.
#include <algorithm>
#include <array>

#include "tests/support/dialog_windows.h"
#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {

namespace {

constexpr std::array<const char*, 12> kKinds = {"",     "label",  "edit",      "password",
                                                "text", "check",  "drop-down", "edit-drop-down",
                                                "list", "button", "separator", "group"};
constexpr std::uint32_t kDropDown = 6;
constexpr std::uint32_t kEditDropDown = 7;
constexpr std::uint32_t kList = 8;
constexpr std::uint32_t kAnyLabel = 0xFFFFFFFF;

enum Value { Text = 1, Checked, Selection, Row, Enabled, ReadOnly, Focus, AddItem, ClearItems };

/// The open window of this handle; complains when there is none.
DialogWindow* openWindow(RecordingHost& host, OKU_WORD handle, const char* service) {
    const auto found = host.dialogs.all.find(handle);
    if (found != host.dialogs.all.end() && found->second.open) return &found->second;
    host.complainDead(std::string(service) + " of a dead window");
    return nullptr;
}

DialogControl* controlOf(RecordingHost& host, DialogWindow& window, std::uint32_t id) {
    const auto found = window.controls.find(id);
    if (found != window.controls.end()) return &found->second;
    host.complain("window " + std::to_string(window.templateId) + " has no control " + std::to_string(id));
    return nullptr;
}

Line lineOf(const DialogWindow& window, const std::string& what) {
    return Line{"window " + std::to_string(window.templateId) + " " + what, {}, {}, {}};
}

std::string itemsText(const std::vector<std::string>& items) {
    std::string text;
    for (const auto& item : items) text += (text.empty() ? "" : "|") + item;
    return text;
}

void tellControl(RecordingHost& host, const void* record, std::uint32_t id, const DialogControl& control) {
    Line line{controlWord(control.kind) + (id == kAnyLabel ? "" : " " + std::to_string(id)), {}, {}, {}};
    for (auto& field : readRecord(layouts::kControl, record, host.context())) line.fields.push_back(std::move(field));
    if (!control.items.empty()) line.field("items", itemsText(control.items));
    if (control.selection >= 0) line.field("selection", static_cast<long long>(control.selection));
    const auto at = [&](std::size_t offset) { return std::to_string(peek<std::int32_t>(record, offset)); };
    const std::string place = at(48) + "," + at(52) + "," + at(56) + "," + at(60);
    if (place != "0,0,0,0") line.fields.push_back({"at", {place, false}});
    host.plain(std::move(line));
}

DialogControl readControl(const void* record) {
    DialogControl control;
    control.kind = peek<std::uint32_t>(record, 4);
    const auto flags = peek<std::uint32_t>(record, 12);
    control.enabled = (flags & 1) == 0;
    control.readOnly = (flags & 2) != 0;
    control.checked = (flags & 4) != 0;
    control.tellsKeys = (flags & 16) != 0;
    control.text = copyText(peek<const void*>(record, 16));
    const auto* items = peek<const char16_t* const*>(record, 32);
    for (std::uint32_t i = 0; i < peek<std::uint32_t>(record, 40); ++i) control.items.push_back(copyText(items[i]));
    control.selection = peek<std::int32_t>(record, 44);
    const bool drops = control.kind == kDropDown;
    if (drops && control.selection >= 0 && control.selection < static_cast<std::int64_t>(control.items.size()))
        control.text = control.items[static_cast<std::size_t>(control.selection)];
    return control;
}

void readControls(RecordingHost& host, DialogWindow& window, const void* opened) {
    const auto* at = peek<const char*>(opened, 32);
    const auto count = peek<std::uint32_t>(opened, 40);
    for (std::uint32_t i = 0; i < count; ++i, at += peek<std::uint32_t>(at, 0)) {
        const auto control = readControl(at);
        const auto id = peek<std::uint32_t>(at, 8);
        if (control.kind == 0 || control.kind >= kKinds.size()) host.complain("a control of no kind");
        if (id == 0) host.complain("a control without a number");
        if (id != kAnyLabel && !window.controls.emplace(id, control).second)
            host.complain("two controls of the number " + std::to_string(id));
        tellControl(host, at, id, control);
    }
}

/// What the new window lies in, or takes the input from.
void checkParent(RecordingHost& host, const DialogWindow& window) {
    if (window.parent == 0 || host.pageParents.count(window.parent) != 0) return;
    const auto parent = host.dialogs.all.find(window.parent);
    if (parent == host.dialogs.all.end() || !parent->second.open)
        host.complainDead("a window opens over a dead one");
    else if (window.modal && !host.dialogs.takesInput(window.parent))
        host.complainDead("modal windows nest");
}

OKU_WORD open(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    const auto fields = readRecord(layouts::kWindow, recordAt(param), host.context());
    if (extra != 0) host.complain("UI/WindowOpen has an extra");
    DialogWindow window;
    window.templateId = peek<std::uint32_t>(recordAt(param), 4);
    window.parent = peek<OKU_WORD>(recordAt(param), 48);
    window.modal = (peek<std::uint32_t>(recordAt(param), 44) & 1) != 0;
    window.handler = callbackAt(param, 56, 64).handler;
    window.context = callbackAt(param, 56, 64).context;
    window.title = textAt(param, 8);
    window.heading = textAt(param, 16);
    window.description = textAt(param, 24);
    checkParent(host, window);
    Line line{"opens window " + std::to_string(window.templateId), {}, {}, {}};
    line.text(window.title);
    for (const auto& field : fields) line.fields.push_back(field);
    const auto parent = host.dialogs.all.find(window.parent);
    if (parent != host.dialogs.all.end()) line.field("parent", static_cast<long long>(parent->second.templateId));
    if (host.pageParents.count(window.parent) != 0) line.fields.push_back({"parent", {"page", false}});
    const auto answer = host.scripted("UI/WindowOpen");
    host.plain(std::move(line));
    readControls(host, window, recordAt(param));
    if (answer) return *answer;
    const auto handle = ++host.nextHandle;
    host.dialogs.all[handle] = std::move(window);
    return handle;
}

OKU_WORD show(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    if (auto* window = openWindow(host, param, "UI/WindowShow")) {
        window->shown = extra != 0;
        host.plain(Line{(extra ? "shows window " : "hides window ") + std::to_string(window->templateId), {}, {}, {}});
    }
    return 0;
}

OKU_WORD destroy(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    if (extra != 0) host.complain("UI/WindowDestroy has an extra");
    auto* window = openWindow(host, param, "UI/WindowDestroy");
    if (!window) return 0;
    for (const auto& [handle, other] : host.dialogs.all) {
        if (other.open && other.parent == param) host.complainDead("a window goes before those that stand on it");
    }
    window->open = false;
    std::erase_if(host.dialogs.queue, [param](const DialogEvent& event) { return event.window == param; });
    host.plain(Line{"destroys window " + std::to_string(window->templateId), {}, {}, {}});
    return 0;
}

OKU_WORD end(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    auto* window = openWindow(host, param, "UI/WindowEnd");
    if (!window) return 0;
    if (!window->modal) host.complain("UI/WindowEnd of a window that is not modal");
    if (window->ending) host.complain("UI/WindowEnd of a window that has ended");
    window->ending = true;
    window->shown = false;
    host.dialogs.queue.push_back({param, 10, extra});
    auto line = lineOf(*window, "ends");
    line.field("result", extra);
    host.plain(std::move(line));
    return 0;
}

OKU_WORD post(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    auto* window = openWindow(host, param, "UI/WindowPost");
    if (!window) return 0;
    host.dialogs.queue.push_back({param, 11, extra});
    host.plain(lineOf(*window, "posts " + std::to_string(extra)));
    return 0;
}

OKU_WORD parentCommand(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    auto* window = openWindow(host, param, "UI/ParentCommand");
    if (!window) return 0;
    if (window->parent == 0 || window->modal) host.complain("UI/ParentCommand of a window that lies in none");
    host.plain(lineOf(*window, "commands its parent " + std::to_string(extra)));
    return 0;
}

/// The control is named as in "UI/RowsClear".
OKU_WORD listGroups(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    if (const auto answer = host.scripted("OKU/CTL/EnumGroupsHWND")) return *answer;
    auto* window = openWindow(host, param, "OKU/CTL/EnumGroupsHWND");
    auto* control = window ? controlOf(host, *window, static_cast<std::uint32_t>(extra)) : nullptr;
    if (!control) return 0;
    if (control->kind != kDropDown && control->kind != kEditDropDown)
        host.complain("groups in a control without items");
    control->items.insert(control->items.end(), host.groups.begin(), host.groups.end());
    host.plain(lineOf(*window, "lists groups in " + std::to_string(extra)));
    return 1;
}

OKU_WORD text(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    static constexpr std::array<const char*, 4> kNames = {"", "title", "heading", "description"};
    readRecord(layouts::kWindowText, recordAt(param), host.context());
    const auto which = peek<std::uint32_t>(recordAt(param), 4);
    auto* window = openWindow(host, peek<OKU_WORD>(recordAt(param), 8), "UI/WindowText");
    if (!window) return 0;
    if (which == 0 || which >= kNames.size()) return host.complain("a window has no text of that number"), 0;
    const std::array<std::string*, 4> kept = {nullptr, &window->title, &window->heading, &window->description};
    *kept.at(which) = textAt(param, 16);
    auto line = lineOf(*window, kNames.at(which));
    line.text(*kept.at(which));
    host.plain(std::move(line));
    return 0;
}

/// Takes one value over, and writes it into the line.
void change(RecordingHost& host, DialogControl& control, Line& line, std::uint32_t what, const void* record) {
    const auto number = peek<std::int64_t>(record, 24);
    const auto text = copyText(peek<const void*>(record, 32));
    const auto tellNumber = [&](const char* name) { line.fields.push_back({name, {std::to_string(number), false}}); };
    switch (what) {
        case Text:
            control.text = text;
            line.field("text", text);
            return;
        case Checked:
            control.checked = number != 0;
            return tellNumber("checked");
        case Selection:
            control.selection = number;
            if (number >= static_cast<std::int64_t>(control.items.size())) host.complainDead("there is no such item");
            return tellNumber("selection");
        case Enabled:
            control.enabled = number != 0;
            return tellNumber("enabled");
        case ReadOnly:
            control.readOnly = number != 0;
            return tellNumber("readOnly");
        case Focus:
            line.fields.push_back({"focus", {"1", false}});
            return;
        case AddItem:
            control.items.push_back(text);
            line.field("item", text);
            return;
        case ClearItems:
            control.items.clear();
            control.selection = -1;
            line.fields.push_back({"items", {"none", false}});
            return;
        default:
            host.complain("a control has no value of that number");
    }
}

OKU_WORD setValue(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto* record = recordAt(param);
    readRecord(layouts::kControlValue, record, host.context());
    const auto what = peek<std::uint32_t>(record, 4);
    const auto id = peek<std::uint32_t>(record, 16);
    auto* window = openWindow(host, peek<OKU_WORD>(record, 8), "UI/ControlSet");
    if (!window) return 0;
    if (id == 0) {
        if (what != Enabled) host.complain("the whole window has no such value");
        window->enabled = peek<std::int64_t>(record, 24) != 0;
        host.plain(lineOf(*window, window->enabled ? "enabled" : "disabled"));
        return 0;
    }
    if (auto* control = controlOf(host, *window, id)) {
        auto line = lineOf(*window, "sets " + std::to_string(id));
        change(host, *control, line, what, record);
        host.plain(std::move(line));
    }
    return 0;
}

OKU_WORD getValue(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    auto* record = reinterpret_cast<void*>(param);
    readRecord(layouts::kControlValue, record, host.context());
    if (const auto answer = host.scripted("UI/ControlGet")) return *answer;
    auto* window = openWindow(host, peek<OKU_WORD>(record, 8), "UI/ControlGet");
    auto* control = window ? controlOf(host, *window, peek<std::uint32_t>(record, 16)) : nullptr;
    if (!control) return 0;
    switch (peek<std::uint32_t>(record, 4)) {
        case Text:
            host.dialogs.lent = toUtf16(control->text);
            poke(record, 32, host.dialogs.lent.c_str());
            return 1;
        case Checked:
            poke(record, 24, static_cast<std::int64_t>(control->checked));
            return 1;
        case Selection:
            poke(record, 24, control->selection);
            return 1;
        case Row:
            poke(record, 24, control->selectedRow);
            return 1;
        default:
            host.complain("a control gives no value of that number");
            return 0;
    }
}

OKU_WORD place(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto* record = recordAt(param);
    auto fields = readRecord(layouts::kControlPlace, record, host.context());
    auto* window = openWindow(host, peek<OKU_WORD>(record, 8), "UI/ControlPlace");
    const auto id = peek<std::uint32_t>(record, 4);
    if (!window || (id != 0 && !controlOf(host, *window, id))) return 0;
    if (id == 0 && window->parent == 0) host.complain("a window is placed that lies in none");
    auto line = lineOf(*window, id == 0 ? "placed" : "places " + std::to_string(id));
    line.fields = std::move(fields);
    host.plain(std::move(line));
    return 0;
}

DialogControl* listOf(RecordingHost& host, DialogWindow& window, std::uint32_t id) {
    auto* control = controlOf(host, window, id);
    if (control && control->kind != kList) host.complain("a row of a control that is no list");
    return control;
}

OKU_WORD setRow(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto* record = recordAt(param);
    readRecord(layouts::kRow, record, host.context());
    auto* window = openWindow(host, peek<OKU_WORD>(record, 8), "UI/RowSet");
    auto* list = window ? listOf(host, *window, peek<std::uint32_t>(record, 4)) : nullptr;
    if (!list) return 0;
    const auto number = peek<OKU_WORD>(record, 16);
    DialogRow row{textAt(param, 24), {}};
    const auto* at = peek<const char*>(record, 32);
    for (std::uint32_t i = 0; i < peek<std::uint32_t>(record, 40); ++i, at += peek<std::uint32_t>(at, 0)) {
        readRecord(layouts::kRowField, at, host.context());
        row.fields.push_back(copyText(peek<const void*>(at, 8)) + " " + copyText(peek<const void*>(at, 16)));
    }
    if (number == 0) host.complain("a row without a number");
    if (window->rows.count(number) == 0) list->rows.push_back(number);
    auto line = lineOf(*window, "row " + std::to_string(number));
    line.text(row.text);
    for (const auto& field : row.fields) line.text(field);
    window->rows[number] = std::move(row);
    host.plain(std::move(line));
    return 0;
}

OKU_WORD clearRows(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    auto* window = openWindow(host, param, "UI/RowsClear");
    auto* list = window ? listOf(host, *window, static_cast<std::uint32_t>(extra)) : nullptr;
    if (!list) return 0;
    for (const auto row : list->rows) window->rows.erase(row);
    list->rows.clear();
    list->selectedRow = 0;
    host.plain(lineOf(*window, "clears " + std::to_string(extra)));
    return 0;
}

OKU_WORD menu(RecordingHost& host, OKU_WORD param, OKU_WORD) {
    const auto* record = recordAt(param);
    readRecord(layouts::kPopupMenu, record, host.context());
    auto* window = openWindow(host, peek<OKU_WORD>(record, 8), "UI/MenuOpen");
    if (!window || !controlOf(host, *window, peek<std::uint32_t>(record, 24))) return 0;
    window->menu.clear();
    auto line = lineOf(*window, "menu");
    const auto* at = peek<const char*>(record, 16);
    for (std::uint32_t i = 0; i < peek<std::uint32_t>(record, 4); ++i, at += peek<std::uint32_t>(at, 0)) {
        readRecord(layouts::kPopupItem, at, host.context());
        const auto flags = peek<std::uint32_t>(at, 16);
        const auto command = peek<std::uint32_t>(at, 4);
        const auto caption = copyText(peek<const void*>(at, 8));
        if ((flags & 4) != 0) {
            line.text("-");
            continue;
        }
        window->menu[command] = {caption, (flags & 1) == 0};
        line.text(std::to_string(command) + " " + caption + ((flags & 1) != 0 ? " (disabled)" : "") +
                  ((flags & 2) != 0 ? " (default)" : ""));
    }
    host.plain(std::move(line));
    return 0;
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {.name = "UI/WindowOpen", .tellAndAct = open},
    {.name = "UI/WindowShow", .tellAndAct = show},
    {.name = "UI/WindowDestroy", .tellAndAct = destroy},
    {.name = "UI/WindowEnd", .tellAndAct = end},
    {.name = "UI/WindowPost", .tellAndAct = post},
    {.name = "UI/ParentCommand", .tellAndAct = parentCommand},
    {.name = "OKU/CTL/EnumGroupsHWND", .tellAndAct = listGroups},
    {.name = "UI/WindowText", .tellAndAct = text},
    {.name = "UI/ControlSet", .tellAndAct = setValue},
    {.name = "UI/ControlGet", .tellAndAct = getValue},
    {.name = "UI/ControlPlace", .tellAndAct = place},
    {.name = "UI/RowSet", .tellAndAct = setRow},
    {.name = "UI/RowsClear", .tellAndAct = clearRows},
    {.name = "UI/MenuOpen", .tellAndAct = menu},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> dialogServices() { return kRows; }

std::string controlWord(std::uint32_t kind) { return kind < kKinds.size() ? kKinds.at(kind) : std::to_string(kind); }

bool DialogWindows::takesInput(OKU_WORD handle) const {
    const auto found = all.find(handle);
    if (found == all.end() || !found->second.open || !found->second.enabled || found->second.ending) return false;
    for (const auto& [other, window] : all) {
        if (window.open && window.modal && !window.ending && window.parent == handle) return false;
    }
    return true;
}

const std::pair<const OKU_WORD, DialogWindow>* DialogWindows::find(std::uint32_t templateId) const {
    const std::pair<const OKU_WORD, DialogWindow>* best = nullptr;
    for (const auto& entry : all) {
        if (entry.second.templateId != templateId) continue;
        if (!best || entry.second.open || !best->second.open) best = &entry;
    }
    return best;
}

}  // namespace harness
