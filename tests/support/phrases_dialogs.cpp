// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a user does in the plugin's own windows, and what they show.
#include <algorithm>

#include "tests/support/phrases.h"
#include "tests/support/text.h"

namespace harness {
namespace {

enum EventKind : std::uint32_t { Command = 1, Changed, RowActivated, RowMenu, Menu, KeyDown, KeyUp, Sized, Close };

using Entry = std::pair<const OKU_WORD, DialogWindow>;

/// The window that a line names with `in=`, or the newest one that takes input and has this control.
const Entry& windowWith(Scene& scene, const Line& line, std::uint32_t control) {
    const auto& dialogs = scene.stage.host.dialogs;
    if (const auto* named = line.find("in")) {
        const auto* found = dialogs.find(static_cast<std::uint32_t>(std::stoul(named->text)));
        if (!found) throw NotThere("there is no such window");
        return *found;
    }
    for (auto entry = dialogs.all.rbegin(); entry != dialogs.all.rend(); ++entry) {
        if (entry->second.open && entry->second.controls.count(control) != 0) return *entry;
    }
    throw NotThere("there is no window with such a control");
}

/// A control that the user can use; a strict user touches no other.
DialogControl& usable(Scene& scene, const Entry& entry, std::uint32_t control) {
    auto& window = scene.stage.host.dialogs.all.at(entry.first);
    const auto found = window.controls.find(control);
    if (found == window.controls.end()) throw NotThere("there is no such control");
    const bool inert = !window.open || !scene.stage.host.dialogs.takesInput(entry.first) || !found->second.enabled;
    if (inert && !scene.mode.onlyDrive) scene.fail("the user cannot use " + std::to_string(control));
    return found->second;
}

std::uint32_t numberIn(const std::string& rest) { return static_cast<std::uint32_t>(std::stoul(rest)); }
std::uint32_t lastNumber(const Line& line) { return numberIn(line.lastWord()); }

/// the user presses 6028
void presses(Scene& scene, const Line& line, const std::string& rest) {
    const auto control = numberIn(rest);
    const auto& entry = windowWith(scene, line, control);
    usable(scene, entry, control);
    scene.result(line, scene.stage.dialogEvent(entry.first, {.kind = Command, .control = control}));
}

/// the user types "text" into 6026
void types(Scene& scene, const Line& line, const std::string&) {
    const auto control = lastNumber(line);
    const auto& entry = windowWith(scene, line, control);
    auto& edited = usable(scene, entry, control);
    if (edited.readOnly && !scene.mode.onlyDrive) scene.fail("nothing can be typed there");
    edited.text = scene.textOf(line);
    scene.result(line, scene.stage.dialogEvent(entry.first, {.kind = Changed, .control = control}));
}

/// the user checks 55; the user unchecks 55
void checks(Scene& scene, const Line& line, const std::string& rest) {
    const auto control = numberIn(rest);
    const auto& entry = windowWith(scene, line, control);
    usable(scene, entry, control).checked = startsWith(line.head, "the user checks");
    scene.result(line, scene.stage.dialogEvent(entry.first, {.kind = Command, .control = control}));
}

/// the user picks item 1 in 6027; item -1 is none
void picks(Scene& scene, const Line& line, const std::string& rest) {
    const auto control = lastNumber(line);
    const auto& entry = windowWith(scene, line, control);
    auto& dropDown = usable(scene, entry, control);
    dropDown.selection = std::stoll(rest);
    if (dropDown.selection >= static_cast<std::int64_t>(dropDown.items.size())) scene.fail("there is no such item");
    dropDown.text = dropDown.selection < 0 ? "" : dropDown.items.at(static_cast<std::size_t>(dropDown.selection));
    scene.result(line, scene.stage.dialogEvent(entry.first, {.kind = Changed, .control = control}));
}

/// The list that shows a row, with its window.
std::pair<const Entry*, std::uint32_t> listWith(Scene& scene, std::int64_t row) {
    for (const auto& entry : scene.stage.host.dialogs.all) {
        if (!entry.second.open) continue;
        for (const auto& [id, control] : entry.second.controls) {
            if (std::find(control.rows.begin(), control.rows.end(), row) != control.rows.end()) return {&entry, id};
        }
    }
    throw NotThere("there is no such row");
}

/// the user activates row 1; the user opens the menu of row 1; the user selects row 1
void onRow(Scene& scene, const Line& line, const std::string& rest) {
    const auto row = std::stoll(rest);
    const auto [entry, list] = listWith(scene, row);
    usable(scene, *entry, list).selectedRow = row;
    if (startsWith(line.head, "the user selects")) return;
    const auto kind = startsWith(line.head, "the user activates") ? RowActivated : RowMenu;
    scene.result(line, scene.stage.dialogEvent(entry->first, {.kind = kind, .control = list, .number = row}));
}

/// the user takes 1000 from the menu
void takes(Scene& scene, const Line& line, const std::string& rest) {
    const auto command = numberIn(rest);
    for (auto& [handle, window] : scene.stage.host.dialogs.all) {
        const auto item = window.menu.find(command);
        if (!window.open || item == window.menu.end()) continue;
        if (!item->second.enabled && !scene.mode.onlyDrive) scene.fail("this item is disabled");
        window.menu.clear();
        return scene.result(line, scene.stage.dialogEvent(handle, {.kind = Menu, .number = command}));
    }
    throw NotThere("there is no such item in a menu");
}

/// the user hits Return in 6026: the key goes down and up; the result is that of both
void hitsReturn(Scene& scene, const Line& line, const std::string& rest) {
    const auto control = numberIn(rest);
    const auto& entry = windowWith(scene, line, control);
    if (!usable(scene, entry, control).tellsKeys && !scene.mode.onlyDrive) scene.fail("it does not tell its keys");
    const auto handle = entry.first;
    const auto down = scene.stage.dialogEvent(handle, {.kind = KeyDown, .control = control, .number = 13});
    const auto up = scene.stage.dialogEvent(handle, {.kind = KeyUp, .control = control, .number = 13});
    scene.result(line, down && up ? 1 : 0);
}

const Entry& namedWindow(Scene& scene, const std::string& rest) {
    const auto* found = scene.stage.host.dialogs.find(numberIn(rest));
    if (!found) throw NotThere("there was no such window");
    return *found;
}

/// the user closes window 6003
void closes(Scene& scene, const Line& line, const std::string& rest) {
    const auto& entry = namedWindow(scene, rest);
    scene.result(line, scene.stage.dialogEvent(entry.first, {.kind = Close}));
}

/// the user sizes window 6003 width=800 height=600
void sizes(Scene& scene, const Line& line, const std::string& rest) {
    const auto& entry = namedWindow(scene, rest);
    const auto width = static_cast<std::int32_t>(scene.number(line, "width"));
    const auto height = static_cast<std::int32_t>(scene.number(line, "height"));
    scene.result(line, scene.stage.dialogEvent(entry.first, {.kind = Sized, .width = width, .height = height}));
}

/// event of window 6003 kind=1 control=6028: any event, also of a window that has gone, or from a control that rests
void anyEvent(Scene& scene, const Line& line, const std::string& rest) {
    const auto& entry = namedWindow(scene, rest);
    if (line.find("null")) return scene.result(line, scene.stage.dialogNull(entry.first));
    scene.result(line, scene.stage.dialogEvent(entry.first,
                                               {.kind = static_cast<std::uint32_t>(scene.number(line, "kind")),
                                                .control = static_cast<std::uint32_t>(scene.number(line, "control")),
                                                .number = scene.number(line, "number")}));
}

/// the host delivers: the oldest event that waits in its queue
void delivers(Scene& scene, const Line& line, const std::string&) {
    auto& queue = scene.stage.host.dialogs.queue;
    if (queue.empty()) throw NotThere("nothing waits in the host's queue");
    const auto next = queue.front();
    queue.pop_front();
    scene.result(line, scene.stage.dialogEvent(next.window, {.kind = next.kind, .number = next.number}));
}

void compare(Scene& scene, const Line& line, const char* name, const std::string& actual) {
    const auto* wanted = line.find(name);
    if (!wanted || scene.mode.onlyDrive) return;
    if (!Pattern::parse(wanted->text).match(actual, scene.variables))
        scene.fail(std::string(name) + " is " + harness::quoted(actual));
}

/// the window 6003 shows title="..." heading="..." description="..." rows=2
void windowShows(Scene& scene, const Line& line, const std::string& rest) {
    const auto& window = namedWindow(scene, rest).second;
    if (!window.open && !scene.mode.onlyDrive) scene.fail("it has gone");
    compare(scene, line, "title", window.title);
    compare(scene, line, "heading", window.heading);
    compare(scene, line, "description", window.description);
    compare(scene, line, "rows", std::to_string(window.rows.size()));
    compare(scene, line, "enabled", window.enabled ? "1" : "0");
    compare(scene, line, "seen", window.shown ? "1" : "0");
}

/// the control 6026 shows text="..." checked=1 selection=0 enabled=1 items="a|b"
void controlShows(Scene& scene, const Line& line, const std::string& rest) {
    const auto& control = windowWith(scene, line, numberIn(rest)).second.controls.at(numberIn(rest));
    std::string items;
    for (const auto& item : control.items) items += (items.empty() ? "" : "|") + item;
    compare(scene, line, "text", control.text);
    compare(scene, line, "checked", control.checked ? "1" : "0");
    compare(scene, line, "selection", std::to_string(control.selection));
    compare(scene, line, "enabled", control.enabled ? "1" : "0");
    compare(scene, line, "items", items);
    compare(scene, line, "readOnly", control.readOnly ? "1" : "0");
}

void noWindow(Scene& scene, const Line&, const std::string&) {
    for (const auto& [handle, window] : scene.stage.host.dialogs.all) {
        if (window.open && !scene.mode.onlyDrive) scene.fail("there is one: " + std::to_string(window.templateId));
    }
}

// clang-format off
constexpr Phrase kPhrases[] = {
    {"the user presses ", presses},
    {"the user types ", types},
    {"the user checks ", checks},
    {"the user unchecks ", checks},
    {"the user picks item ", picks},
    {"the user activates row ", onRow},
    {"the user opens the menu of row ", onRow},
    {"the user selects row ", onRow},
    {"the user takes ", takes},
    {"the user hits Return in ", hitsReturn},
    {"the user closes window ", closes},
    {"the user sizes window ", sizes},
    {"event of window ", anyEvent},
    {"the host delivers", delivers},
    {"the window shows ", windowShows, Role::Player},
    {"the control shows ", controlShows, Role::Player},
    {"no window is open", noWindow, Role::Player},
};
// clang-format on

}  // namespace

std::span<const Phrase> dialogPhrases() { return kPhrases; }

}  // namespace harness
