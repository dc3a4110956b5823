// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A window as the logic sees it, whoever draws it. One body stands for each target, and one for the tests.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/oku/base.h"
#include "ui/control.h"

namespace protolink {

enum class WindowEventKind {
    Command,
    Changed,
    RowActivated,
    RowMenu,
    Menu,
    KeyDown,
    KeyUp,
    Sized,
    Close,
    Ended,
    Posted,
    Timer,
};

struct WindowEvent {
    WindowEventKind kind = WindowEventKind::Command;
    std::uint32_t control = 0;
    std::int64_t number = 0;  // row, menu command, key, result, posted number
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// The key whose presses a control tells, where it is asked to.
inline constexpr std::int64_t kReturnKey = 13;

class WindowListener {
public:
    virtual ~WindowListener() = default;
    /// The result counts for keys: true takes the key away from the control.
    virtual bool onWindowEvent(const WindowEvent& event) = 0;
};

/// A row of a list: its number, its text, and the fields to show, each with its label.
struct ListRow {
    std::uint64_t number = 0;
    std::u16string text;
    std::vector<std::pair<std::u16string, std::u16string>> fields;
};

/// How a service of the host is told of a control: by its param and its extra.
struct ControlName {
    OKU_WORD window = 0;
    OKU_WORD control = 0;
};

/// An open window. It goes with this object, or before with `destroy`; after that nothing comes of it any more, and
/// whatever is still asked of it does nothing. What is set here is not told back.
class WindowView {
public:
    virtual ~WindowView() = default;

    /// What a message box names as its owner; 0 once the window has gone.
    virtual OKU_WORD handle() const = 0;
    /// A window opens unseen. Showing one that is seen brings it to the front.
    virtual void show(bool visible) = 0;
    virtual void destroy() = 0;
    /// Ends a modal window: `Ended` with the result comes later.
    virtual void end(std::int32_t result) = 0;
    /// `Posted` with the number comes later, not from inside the call.
    virtual void post(std::uint32_t number) = 0;
    /// Of a child: what the button `kOkButton` or `kCancelButton` of the window around it does is to be done, later.
    virtual void commandParent(std::uint32_t button) = 0;
    /// `Timer` comes every so many milliseconds until the timer is killed or the window goes.
    virtual void startTimer(std::uint32_t milliseconds) = 0;
    virtual void killTimer() = 0;

    virtual void setTitle(const std::u16string& text) = 0;
    virtual void setHeading(const std::u16string& text) = 0;
    virtual void setDescription(const std::u16string& text) = 0;

    /// Empty when it cannot be told.
    virtual std::u16string text(std::uint32_t control) const = 0;
    virtual void setText(std::uint32_t control, const std::u16string& text) = 0;
    virtual bool checked(std::uint32_t control) const = 0;
    virtual void setChecked(std::uint32_t control, bool checked) = 0;
    /// The chosen item of a drop-down; nothing when none is, or when it cannot be told.
    virtual std::optional<std::size_t> selection(std::uint32_t control) const = 0;
    virtual void select(std::uint32_t control, std::size_t item) = 0;
    virtual void addItem(std::uint32_t control, const std::u16string& text) = 0;
    virtual void clearItems(std::uint32_t control) = 0;
    /// `kWholeWindow` is all that is in the window.
    virtual void setEnabled(std::uint32_t control, bool enabled) = 0;
    virtual void setReadOnly(std::uint32_t control, bool readOnly) = 0;
    virtual void focus(std::uint32_t control) = 0;
    /// `kWholeWindow` is a child inside its parent.
    virtual void place(std::uint32_t control, const Rectangle& rectangle) = 0;
    virtual ControlName nameOf(std::uint32_t control) const = 0;

    /// A number that the list has not is a new row at the end; one that it has replaces that row in its place.
    virtual void setRow(std::uint32_t list, const ListRow& row) = 0;
    virtual void clearRows(std::uint32_t list) = 0;
    /// The number of the selected row, 0 for none.
    virtual std::uint64_t selectedRow(std::uint32_t list) const = 0;
    /// Opens a menu where the user points at; `Menu` with the command comes later, or never.
    virtual void openMenu(std::uint32_t control, std::span<const MenuRow> rows) = 0;
};

/// How a window stands to another one.
struct WindowPlace {
    enum class Kind { Free, Modal, Child } kind = Kind::Free;
    OKU_WORD parent = 0;    // a window's handle; of a child also what a page of the host gave
    Rectangle inside = {};  // of a child: where in its parent
};

/// Who opens windows.
class WindowFactory {
public:
    virtual ~WindowFactory() = default;
    /// Null when no window opens. The listener lives until the window has gone.
    virtual std::shared_ptr<WindowView> open(const WindowLayout& layout, const std::u16string& heading,
                                             const std::u16string& description, WindowPlace place,
                                             WindowListener& listener) = 0;
};

}  // namespace protolink
