// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "ui/host_windows.h"

#include <utility>

#include "host/record.h"
#include "host/services/timers.h"
#include "host/services/window_host.h"
#include "host/util/format.h"
#include "plugin/boundary.h"
#include "ui/host_window_records.h"

namespace protolink {

namespace {

class HostWindow;

/// Outlives the plugin's state, which is made later.
LiveObjects<HostWindow> g_liveWindows;

class HostWindow final : public WindowView {
public:
    HostWindow(const Host& host, WindowListener& listener)
        : timers_(host), windows_(host), listener_(listener), context_(g_liveWindows.add(*this)) {}
    ~HostWindow() override { destroyWindow(); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    bool open(const WindowLayout& layout, const std::u16string& heading, const std::u16string& description,
              WindowPlace place) {
        const ControlRecords controls(layout.controls);
        OKU_WINDOW record = windowRecord(layout, place);
        record.heading = heading.c_str();
        record.description = description.c_str();
        record.controls = controls.records().data();
        record.controlCount = static_cast<std::uint32_t>(controls.records().size());
        record.callback = onEvent;
        record.context = context_;
        handle_ = windows_.open(record);
        return handle_ != 0;
    }

    OKU_WORD handle() const override { return handle_; }
    void show(bool visible) override {
        if (handle_) windows_.show(handle_, visible);
    }
    void destroy() override { destroyWindow(); }
    void end(std::int32_t result) override {
        if (handle_) windows_.end(handle_, result);
    }
    void post(std::uint32_t number) override {
        if (handle_) windows_.post(handle_, number);
    }
    void commandParent(std::uint32_t button) override {
        if (handle_) windows_.commandParent(handle_, button);
    }
    void startTimer(std::uint32_t milliseconds) override {
        if (!handle_) return;
        timerName_ = lutCID(u"XMPP/Window/%d", context_);
        timers_.create(timerName_, milliseconds, {onTimer, context_}, false);
    }
    void killTimer() override {
        if (timerName_.empty()) return;
        const std::u16string name = std::exchange(timerName_, {});
        timers_.destroy(name);
    }

    void setTitle(const std::u16string& text) override { setWindowText(OKU_WINDOW_TITLE, text); }
    void setHeading(const std::u16string& text) override { setWindowText(OKU_WINDOW_HEADING, text); }
    void setDescription(const std::u16string& text) override { setWindowText(OKU_WINDOW_DESCRIPTION, text); }

    std::u16string text(std::uint32_t control) const override {
        return handle_ ? windows_.text(handle_, control) : std::u16string();
    }
    void setText(std::uint32_t control, const std::u16string& text) override {
        if (handle_) windows_.setControlText(handle_, control, OKU_VALUE_TEXT, text);
    }
    bool checked(std::uint32_t control) const override { return number(control, OKU_VALUE_CHECKED).value_or(0) != 0; }
    void setChecked(std::uint32_t control, bool checked) override { set(control, OKU_VALUE_CHECKED, checked); }
    std::optional<std::size_t> selection(std::uint32_t control) const override {
        const auto item = number(control, OKU_VALUE_SELECTION);
        return item && *item >= 0 ? std::optional(static_cast<std::size_t>(*item)) : std::nullopt;
    }
    void select(std::uint32_t control, std::size_t item) override {
        set(control, OKU_VALUE_SELECTION, static_cast<std::int64_t>(item));
    }
    void addItem(std::uint32_t control, const std::u16string& text) override {
        if (handle_) windows_.setControlText(handle_, control, OKU_VALUE_ADD_ITEM, text);
    }
    void clearItems(std::uint32_t control) override { set(control, OKU_VALUE_CLEAR_ITEMS, 0); }
    void setEnabled(std::uint32_t control, bool enabled) override { set(control, OKU_VALUE_ENABLED, enabled); }
    void setReadOnly(std::uint32_t control, bool readOnly) override { set(control, OKU_VALUE_READ_ONLY, readOnly); }
    void focus(std::uint32_t control) override { set(control, OKU_VALUE_FOCUS, 0); }
    void place(std::uint32_t control, const Rectangle& rectangle) override {
        if (!handle_) return;
        auto record = makeRecord<OKU_CONTROL_PLACE>();
        record.control = control;
        record.window = handle_;
        record.x = rectangle.x;
        record.y = rectangle.y;
        record.width = rectangle.width;
        record.height = rectangle.height;
        windows_.place(record);
    }

    ControlName nameOf(std::uint32_t control) const override { return {handle_, static_cast<OKU_WORD>(control)}; }

    void setRow(std::uint32_t list, const ListRow& row) override {
        if (!handle_) return;
        const std::vector<OKU_ROW_FIELD> fields = fieldRecords(row);
        auto record = makeRecord<OKU_ROW>();
        record.control = list;
        record.window = handle_;
        record.row = static_cast<OKU_WORD>(row.number);
        record.text = row.text.c_str();
        record.fields = fields.empty() ? nullptr : fields.data();
        record.fieldCount = static_cast<std::uint32_t>(fields.size());
        windows_.setRow(record);
    }
    void clearRows(std::uint32_t list) override {
        if (handle_) windows_.clearRows(handle_, list);
    }
    std::uint64_t selectedRow(std::uint32_t list) const override {
        return static_cast<std::uint64_t>(number(list, OKU_VALUE_ROW).value_or(0));
    }
    void openMenu(std::uint32_t control, std::span<const MenuRow> rows) override {
        if (handle_) windows_.openMenu(handle_, control, menuRecords(rows));
    }

private:
    static OKU_WORD OKU_CALL onEvent(OKU_WORD eventRecord, OKU_WORD, OKU_WORD context) noexcept {
        return atBoundary([&]() -> OKU_WORD {
            HostWindow* const window = g_liveWindows.find(context);
            const auto event = readWindowEvent(eventRecord);
            // Until the host has given a handle there is no window of which anything could come.
            if (!window || !event || !window->handle_) return 0;
            return window->listener_.onWindowEvent(*event) ? 1 : 0;
        });
    }

    static OKU_WORD OKU_CALL onTimer(OKU_WORD eventRecord, OKU_WORD, OKU_WORD context) noexcept {
        return atBoundary([&]() -> OKU_WORD {
            HostWindow* const window = g_liveWindows.find(context);
            if (window && Timers::isTick(eventRecord)) window->listener_.onWindowEvent({WindowEventKind::Timer});
            return 0;
        });
    }

    void destroyWindow() {
        g_liveWindows.remove(context_);
        if (!handle_) return;
        killTimer();
        windows_.destroy(std::exchange(handle_, 0));
    }

    void setWindowText(std::uint32_t which, const std::u16string& text) {
        if (handle_) windows_.setText(handle_, which, text);
    }
    void set(std::uint32_t control, std::uint32_t what, std::int64_t number) {
        if (handle_) windows_.setNumber(handle_, control, what, number);
    }
    std::optional<std::int64_t> number(std::uint32_t control, std::uint32_t what) const {
        return handle_ ? windows_.number(handle_, control, what) : std::nullopt;
    }

    Timers timers_;
    WindowHost windows_;
    WindowListener& listener_;
    OKU_WORD context_;
    OKU_WORD handle_ = 0;
    std::u16string timerName_;  // empty while none runs
};

}  // namespace

std::shared_ptr<WindowView> HostWindows::open(const WindowLayout& layout, const std::u16string& heading,
                                              const std::u16string& description, WindowPlace place,
                                              WindowListener& listener) {
    auto window = std::make_shared<HostWindow>(host_, listener);
    if (!window->open(layout, heading, description, place)) return nullptr;
    return window;
}

}  // namespace protolink
