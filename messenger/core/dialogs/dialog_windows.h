// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <QHash>
#include <QObject>
#include <vector>

#include "host/oku/base.h"
#include "messenger/core/values/dialogs.h"

namespace oku {

/// The rows of one list. Rows are found by their places and by the plugin's numbers without a walk.
struct DialogRows {
    QList<DialogRow> rows;
    std::vector<OKU_WORD> keys;         ///< the plugin's number of each row
    QHash<OKU_WORD, qsizetype> places;  ///< by the plugin's number
    qint64 before = 0;                  ///< rows that were there before the list was cleared
    qsizetype selected = -1;

    [[nodiscard]] qsizetype placeOf(qint64 number) const;
};

/// What the messenger keeps of one window.
struct OpenDialog {
    DialogWindow window;
    OKU_HANDLER callback = nullptr;  ///< null for a page of the messenger
    OKU_WORD context = 0;
    bool shown = false;
    bool enabled = true;
    bool ended = false;  ///< a modal one whose end was told
    int modals = 0;      ///< open over it
    std::vector<int> inside;
    QHash<quint32, qsizetype> places;  ///< of the controls
    QHash<quint32, DialogRows> lists;

    [[nodiscard]] DialogControl* control(quint32 id);
    [[nodiscard]] const DialogControl* control(quint32 id) const;
    [[nodiscard]] const DialogRows* list(quint32 id) const;
};

/// All windows of the plugin that are open. Numbers of windows are the handles that the plugin gets, and no number is
/// used twice, so what comes late finds nobody.
class DialogWindows : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Null where there is none.
    [[nodiscard]] OpenDialog* find(int number);
    [[nodiscard]] const OpenDialog* find(int number) const;
    [[nodiscard]] bool seen(const OpenDialog& dialog) const;
    /// Whether the user may do something in it: it and what it lies in are seen and enabled, and no modal one is over.
    [[nodiscard]] bool takesInput(const OpenDialog& dialog) const;
    [[nodiscard]] std::size_t count() const { return windows_.size(); }
    /// As DialogsFace tells them.
    [[nodiscard]] QList<int> numbersSeen() const;
    [[nodiscard]] std::optional<DialogWindow> value(int number) const;

    /// Takes a window over, unseen; gives its number, 0 where the window named as its parent is not open.
    int open(OpenDialog dialog);
    void show(int number, bool shown);
    /// With what lies in it or stands over it.
    void destroy(int number);
    /// Takes a modal one from the user, and gives its parent its input back. False where that has happened or it is
    /// none.
    bool end(int number);
    void setEnabled(int number, bool enabled);
    void setRow(OpenDialog& dialog, quint32 list, OKU_WORD key, DialogRow row);
    void clearRows(OpenDialog& dialog, quint32 list);
    void openMenu(OpenDialog& dialog, quint32 control, QList<DialogMenuItem> items);
    /// All go, without a word to the plugin.
    void dropAll();

    /// Tells of a window that is seen; of others nothing.
    void tellChanged(const OpenDialog& dialog);
    void tellControl(const OpenDialog& dialog, quint32 control);
    void tellItem(const OpenDialog& dialog, quint32 control, const QString& item);
    void tellNoItems(const OpenDialog& dialog, quint32 control);
    void tellFocus(const OpenDialog& dialog, quint32 control);

signals:
    void opened(int window);
    void closed(int window);
    void changed(int window);
    void controlChanged(int window, quint32 control);
    void itemAdded(int window, quint32 control, const QString& item);
    void itemsCleared(int window, quint32 control);
    void rowAdded(int window, quint32 list, const oku::DialogRow& row);
    void rowChanged(int window, quint32 list, const oku::DialogRow& row);
    void rowsCleared(int window, quint32 list);
    void menuOpened(int window, quint32 control, const QList<oku::DialogMenuItem>& items);
    void focused(int window, quint32 control);
    /// It is no more, seen or not.
    void destroyed(int window);

private:
    [[nodiscard]] OpenDialog* ownerOf(const OpenDialog& modal);
    void closeModal(OpenDialog& modal);
    void hide(OpenDialog& dialog);
    void tellOpened(int number);
    void tellClosed(int number);

    std::map<int, OpenDialog> windows_;
    int lastNumber_ = 0;
};

}  // namespace oku
