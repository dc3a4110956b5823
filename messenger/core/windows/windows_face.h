// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

#include "messenger/core/values/windows.h"

namespace oku {

/// What wants the user's eyes: texts, and the boxes, menus and windows of the plugin. MessengerFace says what holds for
/// all faces.
class WindowsFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Answers an open message box. The button must fit: ok for a notice, yes or no for a question.
    virtual QString answerBox(int number, BoxButton button) = 0;
    [[nodiscard]] virtual QList<MessageBox> openBoxes() const = 0;
    /// The items of a menu, in the order in which they stand (highest first).
    [[nodiscard]] virtual QList<MenuItem> menu(const QString& parent) const = 0;
    /// Asks the plugin what the menu of a contact may offer; contactMenuTold() answers. `inChat`: it is the menu of an
    /// open conversation.
    virtual QString askContactMenu(const QString& account, const QString& jid, bool inChat) = 0;
    /// The account's status menu; its name is what menu() takes.
    [[nodiscard]] virtual QString statusMenu(const QString& account) const = 0;
    /// An item that chooses a status, and the status window, do so as setStatus() does.
    virtual QString activateMenu(const QString& id) = 0;
    virtual QString confirmStatusWindow(const QString& account, Status status, const QString& description,
                                        bool protect) = 0;

signals:
    /// A message box of the plugin is open and waits for answerBox().
    void boxOpened(const oku::MessageBox& box);
    void boxClosed(int number);
    void menuChanged(const QString& parent);
    /// In the plugin's order; the id of an item names what it does, such as "OKU/Contact/Chat".
    void contactMenuTold(const QString& account, const QString& jid, const QList<oku::MenuItem>& items);
    void statusWindowRequested(const QString& account, const oku::StatusWindow& window);
    /// A text for the user; `account` may be empty.
    void noticed(const QString& account, const QString& text);
};

}  // namespace oku
