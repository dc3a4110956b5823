// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Windows that nobody draws: they keep what they are told, and count how often they are asked.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ui/window_view.h"

namespace dialogs_test {

using namespace protolink;

class RecordedWindow final : public WindowView {
public:
    RecordedWindow(WindowLayout openedAs, WindowPlace where, WindowListener& to, OKU_WORD number)
        : opened(std::move(openedAs)), placed(where), listener(to), handle_(number) {
        for (const Control& control : opened.controls) controls[control.id] = control;
    }

    OKU_WORD handle() const override { return handle_; }
    void show(bool visible) override { seen = visible; }
    void destroy() override { handle_ = 0; }
    void end(std::int32_t result) override { ended = result; }
    void post(std::uint32_t number) override { posted.push_back(number); }
    void commandParent(std::uint32_t button) override { commanded.push_back(button); }
    void startTimer(std::uint32_t milliseconds) override { timer = milliseconds; }
    void killTimer() override { timer = 0; }
    void setTitle(const std::u16string& text) override { opened.title = text; }
    void setHeading(const std::u16string& text) override { heading = text; }
    void setDescription(const std::u16string& text) override { description = text; }
    std::u16string text(std::uint32_t control) const override {
        ++asked;
        return controls.at(control).text;
    }
    void setText(std::uint32_t control, const std::u16string& text) override { controls.at(control).text = text; }
    bool checked(std::uint32_t control) const override {
        ++asked;
        return controls.at(control).checked;
    }
    void setChecked(std::uint32_t control, bool checked) override { controls.at(control).checked = checked; }
    std::optional<std::size_t> selection(std::uint32_t control) const override {
        ++asked;
        const std::int32_t item = controls.at(control).selection;
        return item < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(item));
    }
    void select(std::uint32_t control, std::size_t item) override {
        controls.at(control).selection = static_cast<std::int32_t>(item);
    }
    void addItem(std::uint32_t control, const std::u16string& text) override {
        controls.at(control).items.push_back(text);
    }
    void clearItems(std::uint32_t control) override { controls.at(control).items.clear(); }
    void setEnabled(std::uint32_t control, bool enabled) override {
        ++enabledCalls;
        if (control == kWholeWindow) {
            allEnabled = enabled;
        } else {
            controls.at(control).disabled = !enabled;
        }
    }
    void setReadOnly(std::uint32_t control, bool readOnly) override { controls.at(control).readOnly = readOnly; }
    void focus(std::uint32_t control) override { focused = control; }
    void place(std::uint32_t control, const Rectangle& rectangle) override {
        if (control == kWholeWindow) {
            placed.inside = rectangle;
        } else {
            controls.at(control).place = rectangle;
        }
    }
    ControlName nameOf(std::uint32_t control) const override { return {handle_, static_cast<OKU_WORD>(control)}; }
    void setRow(std::uint32_t, const ListRow& row) override {
        ++rowsSet;
        rows[row.number] = row;
    }
    void clearRows(std::uint32_t) override { rows.clear(); }
    std::uint64_t selectedRow(std::uint32_t) const override { return selected; }
    void openMenu(std::uint32_t, std::span<const MenuRow> menuRows) override {
        menu.assign(menuRows.begin(), menuRows.end());
    }

    bool tell(const WindowEvent& event) { return listener.onWindowEvent(event); }
    void press(std::uint32_t control) { tell({.kind = WindowEventKind::Command, .control = control}); }

    WindowLayout opened;
    WindowPlace placed;
    WindowListener& listener;
    std::map<std::uint32_t, Control> controls;
    std::map<std::uint64_t, ListRow> rows;
    std::vector<MenuRow> menu;
    std::vector<std::uint32_t> posted;
    std::vector<std::uint32_t> commanded;
    std::u16string heading;
    std::u16string description;
    std::optional<std::int32_t> ended;
    std::uint64_t selected = 0;
    std::uint32_t timer = 0;
    std::uint32_t focused = 0;
    bool seen = false;
    bool allEnabled = true;
    std::size_t rowsSet = 0;
    std::size_t enabledCalls = 0;
    mutable std::size_t asked = 0;

private:
    OKU_WORD handle_;
};

class RecordingWindows final : public WindowFactory {
public:
    std::shared_ptr<WindowView> open(const WindowLayout& layout, const std::u16string& heading,
                                     const std::u16string& description, WindowPlace place,
                                     WindowListener& listener) override {
        auto window =
            std::make_shared<RecordedWindow>(layout, place, listener, static_cast<OKU_WORD>(windows.size() + 1));
        window->heading = heading;
        window->description = description;
        windows.push_back(window);
        return window;
    }

    /// The newest window of this template; the test fails by its exception when there was none.
    RecordedWindow& newest(std::uint32_t templateId) {
        for (auto window = windows.rbegin(); window != windows.rend(); ++window)
            if ((*window)->opened.templateId == templateId) return **window;
        throw std::out_of_range("no such window");
    }

    std::vector<std::shared_ptr<RecordedWindow>> windows;
};

}  // namespace dialogs_test
