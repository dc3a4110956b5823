// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/json/json_dialogs.h"

#include <algorithm>
#include <array>
#include <utility>

#include "messenger/terminal/json/json_line.h"

namespace oku::terminal {
namespace {

QStringView shapeWord(const DialogWindow& window) {
    if (window.page) return u"page";
    if (window.modal) return u"modal";
    return window.child ? u"child" : u"window";
}

// A password is the user's own: it goes into the window and is told to nobody.
QString shownText(const DialogControl& control) {
    const bool hidden = control.kind == ControlKind::password && !control.text.isEmpty();
    return hidden ? QStringLiteral("***") : control.text;
}

void putRow(JsonLine& line, const DialogRow& row) {
    line.put("row", row.number);
    line.put("text", row.text);
    line.beginList("fields");
    for (const DialogField& field : row.fields) {
        line.beginObject();
        line.put("label", field.label);
        line.put("value", field.value);
        line.endObject();
    }
    line.endList();
}

void putState(JsonLine& line, const DialogControl& control) {
    line.put("control", control.id);
    line.put("text", shownText(control));
    line.put("name", control.name);
    line.put("enabled", control.enabled);
    line.put("readOnly", control.readOnly);
    if (control.kind == ControlKind::check) line.put("checked", control.checked);
    if (control.takesChoice()) line.put("choice", control.selection);
}

void putControl(JsonLine& line, const DialogsFace& dialogs, int window, const DialogControl& control) {
    line.beginObject();
    line.put("kind", controlKindWord(control.kind));
    putState(line, control);
    if (control.isDefault) line.put("default", true);
    if (control.takesChoice()) line.put("items", control.items);
    if (control.kind == ControlKind::list) {
        line.put("empty", control.emptyText);
        line.beginList("rows");
        for (const DialogRow& row : dialogs.rows(window, control.id, 0, dialogs.rowCount(window, control.id))) {
            line.beginObject();
            putRow(line, row);
            line.endObject();
        }
        line.endList();
    }
    line.endObject();
}

void putTexts(JsonLine& line, const DialogWindow& window) {
    line.put("window", window.number);
    line.put("input", window.takesInput);
    line.put("title", window.title);
    line.put("heading", window.heading);
    line.put("description", window.description);
}

void putMenu(JsonLine& line, const QList<DialogMenuItem>& items) {
    line.beginList("items");
    for (const DialogMenuItem& item : items) {
        line.beginObject();
        line.put("item", item.command);
        line.put("text", item.text);
        line.put("enabled", item.enabled);
        line.put("default", item.isDefault);
        line.put("separator", item.separator);
        line.endObject();
    }
    line.endList();
}

JsonLine controlEvent(QStringView event, int window, quint32 control) {
    JsonLine line(event);
    line.put("window", window);
    line.put("control", control);
    return line;
}

DialogsFace& dialogsOf(const JsonDesk& desk) { return desk.messenger.dialogs(); }
int windowOf(const JsonCommand& command) { return command.whole("window", 0); }
quint32 controlOf(const JsonCommand& command) { return static_cast<quint32>(command.whole("control", 0)); }

JsonOutcome windows(JsonDesk& desk, const QString&, const JsonCommand&) {
    const QList<int> numbers = dialogsOf(desk).windows();
    for (const int number : numbers) desk.write(windowLine(dialogsOf(desk), number));
    return {};
}

JsonOutcome fill(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).fill(windowOf(command), controlOf(command), command.text("text"))};
}

JsonOutcome choose(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).choose(windowOf(command), controlOf(command), command.whole("choice", -1))};
}

JsonOutcome check(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).setChecked(windowOf(command), controlOf(command), command.flag("checked", false))};
}

JsonOutcome press(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).press(windowOf(command), controlOf(command))};
}

JsonOutcome pressReturn(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).pressReturn(windowOf(command), controlOf(command))};
}

JsonOutcome activate(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).activateRow(windowOf(command), controlOf(command), command.whole("row", 0))};
}

JsonOutcome rowMenu(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).openRowMenu(windowOf(command), controlOf(command), command.whole("row", 0))};
}

JsonOutcome takeItem(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).takeFromMenu(windowOf(command), static_cast<quint32>(command.whole("item", 0)))};
}

JsonOutcome close(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).close(windowOf(command))};
}

constexpr JsonField kWindow{"window", JsonType::Whole, true};
constexpr JsonField kControl{"control", JsonType::Whole, true};
constexpr std::array kOfWindow = {kWindow};
constexpr std::array kOfControl = {kWindow, kControl};
constexpr std::array kReturn = {kWindow, JsonField{"control", JsonType::Whole, false}};
constexpr std::array kFill = {kWindow, kControl, JsonField{"text", JsonType::Text, true}};
constexpr std::array kChoose = {kWindow, kControl, JsonField{"choice", JsonType::Whole, true}};
constexpr std::array kCheck = {kWindow, kControl, JsonField{"checked", JsonType::Flag, true}};
constexpr std::array kRow = {kWindow, kControl, JsonField{"row", JsonType::Whole, true}};
constexpr std::array kItem = {kWindow, JsonField{"item", JsonType::Whole, true}};

constexpr std::array kCommands = std::to_array<JsonCommandRow>({
    {{"windows", {}}, false, &windows},
    {{"window-fill", kFill}, false, &fill},
    {{"window-check", kCheck}, false, &check},
    {{"window-choose", kChoose}, false, &choose},
    {{"window-press", kOfControl}, false, &press},
    {{"window-return", kReturn}, false, &pressReturn},
    {{"window-activate", kRow}, false, &activate},
    {{"window-row-menu", kRow}, false, &rowMenu},
    {{"window-menu-item", kItem}, false, &takeItem},
    {{"window-close", kOfWindow}, false, &close},
});

}  // namespace

std::span<const JsonCommandRow> jsonDialogCommands() { return kCommands; }

QByteArray windowLine(const DialogsFace& dialogs, int number) {
    const auto window = dialogs.window(number);
    if (!window) return {};
    JsonLine line(u"window");
    putTexts(line, *window);
    line.put("kind", shapeWord(*window));
    line.put("parent", window->parent);
    line.beginList("controls");
    for (const DialogControl& control : window->controls) putControl(line, dialogs, number, control);
    line.endList();
    return std::move(line).take();
}

QByteArray windowClosedLine(int window) {
    JsonLine line(u"window-closed");
    line.put("window", window);
    return std::move(line).take();
}

QByteArray windowChangedLine(const DialogsFace& dialogs, int number) {
    const auto window = dialogs.window(number);
    if (!window) return {};
    JsonLine line(u"window-changed");
    putTexts(line, *window);
    return std::move(line).take();
}

QByteArray windowControlLine(const DialogsFace& dialogs, int number, quint32 id) {
    const auto control = dialogs.control(number, id);
    if (!control) return {};
    JsonLine line(u"window-control");
    line.put("window", number);
    putState(line, *control);
    return std::move(line).take();
}

QByteArray windowItemLine(int window, quint32 control, const QString& item) {
    JsonLine line = controlEvent(u"window-item", window, control);
    line.put("item", item);
    return std::move(line).take();
}

QByteArray windowNoItemsLine(int window, quint32 control) {
    return controlEvent(u"window-no-items", window, control).take();
}

QByteArray windowRowLine(int window, quint32 list, const DialogRow& row, bool isNew) {
    JsonLine line = controlEvent(u"window-row", window, list);
    line.put("new", isNew);
    putRow(line, row);
    return std::move(line).take();
}

QByteArray windowNoRowsLine(int window, quint32 list) { return controlEvent(u"window-no-rows", window, list).take(); }

QByteArray windowMenuLine(int window, quint32 control, const QList<DialogMenuItem>& items) {
    JsonLine line = controlEvent(u"window-menu", window, control);
    putMenu(line, items);
    return std::move(line).take();
}

QByteArray windowFocusLine(int window, quint32 control) {
    return controlEvent(u"window-focus", window, control).take();
}

QByteArray pageAppliedLine(int page) {
    JsonLine line(u"page-applied");
    line.put("window", page);
    return std::move(line).take();
}

QByteArray windowRefusedLine(int window, const QString& reason) {
    JsonLine line(u"window-refused");
    line.put("window", window);
    line.put("reason", reason);
    return std::move(line).take();
}

}  // namespace oku::terminal
