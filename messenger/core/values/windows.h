// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

#include "messenger/core/values/status.h"

namespace oku {

enum class BoxStyle { error, warning, information, question };
enum class BoxButton { ok = 1, yes = 6, no = 7 };

/// The same word as the enumerator's.
QString boxStyleWord(BoxStyle style);

/// A message box that waits for WindowsFace::answerBox().
struct MessageBox {
    int number = 0;
    QString text;
    QString title;
    BoxStyle style = BoxStyle::information;
    bool holds = false;  ///< a call into the plugin waits for the answer, and with it everything else
    int seconds = 0;     ///< answered with no after this time; 0: waits for the person, however long
};

/// The menu of the program itself, in which the plugin's own windows are.
QString programMenu();

/// One item of a menu of the plugin.
struct MenuItem {
    QString id;
    QString parent;
    QString caption;
    QString icon;
    int order = 0;
    bool separator = false;
};

/// A status window that the plugin asked for: the person picks status, description and protection, and the answer
/// goes to WindowsFace::confirmStatusWindow().
struct StatusWindow {
    QString title;
    QList<Status> choices;
    Status status = Status::online;
    QString description;
    bool protect = false;  ///< keep the description when the host sets a status
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::MessageBox)
