// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/talk/dialog_page.h"

namespace oku::terminal {

/// What is shown of the window that is looked at: its page, the rows of a list or the choices of a control, a part at a
/// time, and what changes meanwhile.
class DialogView : public QObject {
public:
    explicit DialogView(const Desk& desk);

    /// Looks at a window and shows its page; 0: at none.
    void look(int window);
    [[nodiscard]] int window() const { return window_; }
    /// As it was called when it was seen last.
    [[nodiscard]] QString title() const { return title_; }

    void showPage();
    /// The rows of a list from a place on, which begins at 0. Those only that hold `wanted`, where it is not empty.
    void showRows(const PageRow& row, qsizetype from, const QString& wanted = {});
    /// The choices of a control in the same way, from about the one that is chosen.
    void showItems(const PageRow& row, const QString& wanted = {});
    /// Goes on in what was shown last, or back.
    void walk(int parts);

    /// A control has changed, or with control 0 the window itself: told together with what changes with it.
    void touch(int window, quint32 control);
    /// The user has changed a control: it is told in any case.
    void answer(int window, quint32 control);
    /// What has changed is told from now on, or kept to itself.
    void setQuiet(bool quiet) { quiet_ = quiet; }

private:
    using Places = QSet<QPair<int, quint32>>;  ///< controls, behind their windows

    /// What is shown a part at a time.
    struct Walk {
        enum class Kind { Page, Rows, Items } kind = Kind::Page;
        int number = 0;  ///< of the row whose list it is
        QString wanted;
        qsizetype from = 0;
        qsizetype count = 0;  ///< of all
    };
    /// Of a window, beside its controls.
    struct Texts {
        QString heading;
        QString description;
        bool takesInput = true;
        QList<int> children;
    };

    void showPart(Walk walk);
    Walk showPagePart(Walk walk);
    Walk showRowsPart(Walk walk, const PageRow& row);
    Walk showItemsPart(Walk walk, const PageRow& row);
    void tellMore(qsizetype end, qsizetype count);
    void tellEnd(const Walk& walk, const QString& hint);
    void tellTouched();
    /// Gives whether anything was told that concerns the whole window.
    bool tellTexts();
    void tellControls(const Places& touched, bool withLists);
    bool hasNews(const QPair<int, quint32>& list, bool touched, bool withLists);

    Desk desk_;
    DialogsFace& dialogs_;
    int window_ = 0;
    QString title_;
    Texts told_;
    Walk walk_;
    QTimer telling_;
    Places touched_;
    bool textsTouched_ = false;
    bool quiet_ = false;
    QHash<QPair<int, quint32>, QString> rowsTold_;
    /// Lists, by how many rows they had when they were told last: one that fills is not told with each row.
    QHash<QPair<int, quint32>, qsizetype> listsTold_;
    Places listsTouched_;
};

}  // namespace oku::terminal
