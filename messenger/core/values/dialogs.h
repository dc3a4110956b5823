// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

namespace oku {

/// What a control of a window of the plugin is. The values are those of the boundary.
enum class ControlKind {
    label = 1,
    edit,
    password,
    text,
    check,
    dropDown,
    editDropDown,
    list,
    button,
    separator,
    group
};

/// A word for the kind, such as `drop-down`.
QString controlKindWord(ControlKind kind);

/// One control. Texts are a stranger's as often as not; lines are parted by line feeds.
struct DialogControl {
    quint32 id = 0;  ///< names it within its window; 0xFFFFFFFF is no name
    ControlKind kind = ControlKind::label;
    QString text;            ///< of a button without the mark of its letter of access
    QString name;            ///< what a person calls it: the label before it, or the plugin's own word
    bool namesNext = false;  ///< a label that is the name of the control behind it
    bool enabled = true;     ///< the window may be disabled all the same
    bool readOnly = false;
    bool checked = false;
    bool isDefault = false;  ///< the button that the Return key presses
    bool tellsReturn = false;
    QStringList items;      ///< of the two kinds of drop-down
    qint64 selection = -1;  ///< the place of the item that is chosen
    QString emptyText;      ///< shown in a list without rows

    /// Whether it holds a text that a person may write.
    [[nodiscard]] bool takesText() const;
    [[nodiscard]] bool takesChoice() const;
};

struct DialogField {
    QString label;
    QString value;
};

/// One row of a list. Its number stays while it is there, and is used for no other row of the list.
struct DialogRow {
    qint64 number = 0;
    QString text;
    QList<DialogField> fields;
};

/// One item of a menu that a window has opened.
struct DialogMenuItem {
    quint32 command = 0;
    QString text;
    bool enabled = true;
    bool isDefault = false;
    bool separator = false;
};

/// A window of the plugin that is seen, or a page of the messenger that such windows lie in.
struct DialogWindow {
    int number = 0;      ///< never used for another one
    int parent = 0;      ///< the window that it lies in, or that it stands over; 0: none
    bool child = false;  ///< it lies inside `parent`, in front of the parent's own controls
    bool modal = false;  ///< `parent` takes no input while it is open
    bool page = false;   ///< it can be applied and confirmed, see DialogsFace
    bool takesInput = true;
    QString title;
    QString heading;
    QString description;
    QList<DialogControl> controls;  ///< in reading order
    QList<int> children;            ///< those inside it that are seen, in the order of their opening
    QList<DialogMenuItem> menu;     ///< the one that is open; empty: none
};

/// A page that the plugin offers: the options of an account, or what it tells of a contact.
struct DialogPage {
    QString id;
    QString caption;
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::DialogRow)
