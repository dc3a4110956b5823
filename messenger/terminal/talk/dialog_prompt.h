// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/talk/dialog_page.h"
#include "messenger/terminal/talk/dialog_view.h"
#include "messenger/terminal/talk/secret_prompt.h"

namespace oku::terminal {

/// The lines that are typed into the plugin's windows. It knows no single window: what is there, and what can be done
/// with it, is what the messenger tells.
///
/// Long, because what a typed line means depends on all that is shown just then: the page, a menu, or a window that has
/// gone meanwhile.
class DialogPrompt : public QObject {
public:
    DialogPrompt(const Desk& desk, SecretPrompt& secret);

    /// Whether lines that are no commands go into a window: in the conversation in which it is looked at.
    [[nodiscard]] bool active() const;
    [[nodiscard]] QString title() const;
    /// Looks at a window and shows it. Gives a reason when it is not open.
    QString enter(int window);
    /// The user has asked for a window: the next one is looked at when it opens.
    void expect() { expecting_ = true; }
    /// Carries a line out that was typed into the window. Gives the reason why it could not be.
    QString submit(const QString& line);
    /// Whether there is anything in the line that is being typed.
    void typing(bool something);
    /// The open windows, one a line.
    void list();

private:
    void onOpened(int window);
    void onClosed(int window);
    void onMenu(int window, const QList<DialogMenuItem>& items);
    void touch(int window, quint32 control);
    void lookAt(int window);
    void moveOn();
    void leave();

    QString takeFromMenu(const QString& line);
    QString onSign(const QString& sign, bool& known);
    QString onRow(const PageRow& row, const QString& value);
    QString onNumber(const PageRow& row);
    QString onList(const PageRow& row, const QString& value);
    QString onListRow(const PageRow& row, const QString& place, const QString& act);
    QString askSecret(const PageRow& row);
    QString chooseItem(const PageRow& row, const QString& value);
    /// Shows what has become of a row that the user changed.
    QString changed(const PageRow& row, const QString& reason);

    Desk desk_;
    SecretPrompt& secret_;
    DialogsFace& dialogs_;
    DialogView view_;
    Peer place_;         ///< the conversation in which the window is looked at
    QList<int> before_;  ///< those that were looked at before, and led to this one
    bool expecting_ = false;
    bool typing_ = false;
    bool stale_ = false;  ///< what is being typed was meant for what has gone meanwhile, and must not go elsewhere
    int menuWindow_ = 0;  ///< whose menu is open
    QList<DialogMenuItem> menu_;
    QTimer moving_;
};

}  // namespace oku::terminal
