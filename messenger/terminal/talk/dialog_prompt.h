// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QSet>
#include <QTimer>

#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/talk/dialog_page.h"
#include "messenger/terminal/talk/secret_prompt.h"

namespace oku::terminal {

/// The plugin's windows as pages of numbered rows, and the lines that are typed into the one that is looked at. It
/// knows no single window: what is there, and what can be done with it, is what the messenger tells.
///
/// Long, because what a typed line means depends on all that is shown just then: the page, a walk, a menu, or a window
/// that has gone meanwhile.
class DialogPrompt : public QObject {
public:
    DialogPrompt(const Desk& desk, SecretPrompt& secret);

    /// Whether lines that are no commands go into a window.
    [[nodiscard]] bool active() const { return window_ != 0; }
    [[nodiscard]] QString title() const;
    /// Looks at a window and shows it. Gives a reason when it is not open.
    QString enter(int window);
    /// The user has asked for a window: the next one is looked at when it opens.
    void expect() { expecting_ = true; }
    /// Carries a line out that was typed into the window. Gives the reason why it could not be.
    QString submit(const QString& line);
    /// Whether there is anything in the line that is being typed.
    void typing(bool something) { typing_ = something; }
    /// The open windows, one a line.
    void list();

private:
    /// What is shown a part at a time.
    struct Walk {
        enum class Kind { Page, Rows, Items } kind = Kind::Page;
        int number = 0;  ///< of the row whose list it is
        qsizetype from = 0;
    };

    void onOpened(int window);
    void onClosed(int window);
    void onMenu(int window, const QList<DialogMenuItem>& items);
    void touch(int window, quint32 control);
    void tellTouched();
    void leave();

    void show(const Walk& walk);
    void showPage(const DialogWindow& window, qsizetype from);
    void showRows(const PageRow& row, qsizetype from);
    void showItems(const PageRow& row, qsizetype from);
    void tellMore(qsizetype end, qsizetype count);
    void walk(qsizetype by);

    QString takeFromMenu(const QString& line);
    QString onSign(const QString& sign, bool& known);
    QString onRow(const PageRow& row, const QString& value);
    QString onNumber(const PageRow& row);
    QString onListRow(const PageRow& row, const QString& place, const QString& act);
    QString chooseItem(const PageRow& row, const QString& value);
    [[nodiscard]] const PageRow* rowAt(const std::vector<PageRow>& rows, int number) const;

    Desk desk_;
    SecretPrompt& secret_;
    DialogsFace& dialogs_;
    int window_ = 0;     ///< the one that is looked at
    bool gone_ = false;  ///< it closed while a line was being typed, which must not go elsewhere
    bool expecting_ = false;
    bool typing_ = false;
    Walk walk_;
    int menuWindow_ = 0;  ///< whose menu is open
    QList<DialogMenuItem> menu_;
    QTimer telling_;
    QSet<QPair<int, quint32>> touched_;
    QSet<QPair<int, quint32>> told_;  ///< lists that have changed since they were looked at
    bool textsTouched_ = false;
    QSet<int> shown_;  ///< the windows that the page was made of when it was shown last
};

}  // namespace oku::terminal
