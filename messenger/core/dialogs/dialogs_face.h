// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QObject>

#include "messenger/core/values/dialogs.h"

namespace oku {

/// The windows that the plugin draws on the host: what is in them, and what the user does with them. A program shows
/// what is told here and knows no single window, so it shows the next one as well. MessengerFace says what holds for
/// all faces.
///
/// What the user does is carried out in order, from the event loop: a reason that is known only then comes by
/// refused(). What the user changes is not told back as a change.
class DialogsFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The numbers of those that are seen, in the order of their opening; pages of the messenger among them.
    [[nodiscard]] virtual QList<int> windows() const = 0;
    /// Nothing for one that is not seen.
    [[nodiscard]] virtual std::optional<DialogWindow> window(int number) const = 0;
    /// Nothing for one that is not there. Without a copy of the others, of which a form may have thousands.
    [[nodiscard]] virtual std::optional<DialogControl> control(int window, quint32 id) const = 0;
    [[nodiscard]] virtual qsizetype rowCount(int window, quint32 list) const = 0;
    /// At most `count` rows from the place `from` on, which begins at 0.
    [[nodiscard]] virtual QList<DialogRow> rows(int window, quint32 list, qsizetype from, qsizetype count) const = 0;

    /// Writes a text. In a control of one line, line breaks become blanks.
    virtual QString fill(int window, quint32 control, const QString& text) = 0;
    /// The item at this place; -1 for none.
    virtual QString choose(int window, quint32 control, qint64 item) = 0;
    virtual QString setChecked(int window, quint32 control, bool checked) = 0;
    virtual QString press(int window, quint32 button) = 0;
    /// Return in a control; in 0, in the window: its default button, where the plugin does not take the key.
    virtual QString pressReturn(int window, quint32 control) = 0;
    virtual QString activateRow(int window, quint32 list, qint64 row) = 0;
    /// Asks for the row's menu, which comes by menuOpened().
    virtual QString openRowMenu(int window, quint32 list, qint64 row) = 0;
    /// Takes an item of the menu that is open.
    virtual QString takeFromMenu(int window, quint32 command) = 0;
    /// The user wants to close it. One of the plugin stays until the plugin takes it away; a page goes at once.
    virtual QString close(int window) = 0;

    [[nodiscard]] virtual QList<DialogPage> optionPages() const = 0;
    /// Those that every contact of the account has, a new one too.
    [[nodiscard]] virtual QList<DialogPage> propertyPages(const QString& account) const = 0;
    /// Asks the plugin for all pages of one contact; propertyPagesTold() answers.
    virtual QString askPropertyPages(const QString& account, const QString& jid) = 0;
    /// Opens a page: the first one where `id` is empty. An open one is told anew.
    virtual QString openOptions(const QString& id) = 0;
    /// Of a contact, any page that it has; of one that is to be added where `jid` is empty.
    virtual QString openProperties(const QString& account, const QString& jid, const QString& id) = 0;
    /// Carries out what was entered in a page; it stays open.
    virtual QString apply(int page) = 0;
    /// As apply(), and closes the page, unless the plugin could not carry it out.
    virtual QString confirm(int page) = 0;

signals:
    /// A window is seen, with all that is in it now.
    void opened(int window);
    void closed(int window);
    /// One of its texts, or whether it takes input.
    void changed(int window);
    void controlChanged(int window, quint32 control);
    void itemAdded(int window, quint32 control, const QString& item);
    void itemsCleared(int window, quint32 control);
    /// A new row at the end, or another content of one that is there.
    void rowAdded(int window, quint32 list, const oku::DialogRow& row);
    void rowChanged(int window, quint32 list, const oku::DialogRow& row);
    void rowsCleared(int window, quint32 list);
    void menuOpened(int window, quint32 control, const QList<oku::DialogMenuItem>& items);
    /// The plugin gives the keys to this control.
    void focused(int window, quint32 control);
    void propertyPagesTold(const QString& account, const QString& jid, const QList<oku::DialogPage>& pages);
    /// What was entered in a page was carried out; confirmed, the page closes then.
    void applied(int page);
    /// An operation that was taken could not be carried out when its turn came. Window 0: one that did not open.
    void refused(int window, const QString& reason);
};

}  // namespace oku
