// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QObject>

#include "messenger/core/dialogs/dialog_windows.h"

namespace oku {

class PluginQueue;

/// What the user does in the windows of the plugin: values change, and the windows' callbacks hear of it through the
/// queue. Each operation is looked at twice: when it is asked for, so that a reason can be given, and when its turn
/// comes, as what came before it may have taken its window away.
class DialogInput : public QObject {
    Q_OBJECT

public:
    DialogInput(DialogWindows& windows, PluginQueue& queue, QObject* parent = nullptr)
        : QObject(parent), windows_(windows), queue_(queue) {}

    /// As DialogsFace has them.
    QString fill(int window, quint32 control, const QString& text);
    QString choose(int window, quint32 control, qint64 item);
    QString setChecked(int window, quint32 control, bool checked);
    QString press(int window, quint32 button);
    QString pressReturn(int window, quint32 control);
    QString onRow(int window, quint32 list, qint64 row, std::uint32_t event);
    QString takeFromMenu(int window, quint32 command);
    QString close(int window);

    /// Raises an event behind what waits already.
    void raiseLater(int window, std::uint32_t kind, std::int64_t number);
    /// A child means a button of the window that it lies in, 1 or 2; of a page pageCommanded() tells.
    void commandParent(int child, quint32 button);
    /// Carries `run` out in its turn, from the event loop, when `fault` gives no reason against it by then.
    QString take(int window, std::function<QString()> fault, std::function<void()> run);
    /// Why nothing can be done in the window now; empty where it can.
    [[nodiscard]] QString windowFault(int window) const;

signals:
    void pageCommanded(int page, quint32 button);
    void refused(int window, const QString& reason);

private:
    using Rule = std::function<bool(const DialogControl& control)>;
    [[nodiscard]] QString controlFault(int window, quint32 control, const Rule& rule) const;
    /// Gives the callback's result, 0 where the window has gone.
    OKU_WORD raise(int window, std::uint32_t kind, quint32 control = 0, std::int64_t number = 0);
    void pressDefault(int window);
    void confirmInside(int window);

    DialogWindows& windows_;
    PluginQueue& queue_;
    int waiting_ = 0;  ///< operations whose turn has not come
};

}  // namespace oku
