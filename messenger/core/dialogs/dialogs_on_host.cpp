// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/dialogs/dialogs_on_host.h"

#include <algorithm>
#include <utility>

#include "host/oku/dialogs.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/dialogs/dialog_input.h"
#include "messenger/core/dialogs/dialog_windows.h"
#include "messenger/core/dialogs/host_pages.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

class DialogsOnHost final : public DialogsFace {
public:
    explicit DialogsOnHost(const DialogParts& parts) : parts_(parts) {
        const DialogWindows* windows = &parts_.windows;
        connect(windows, &DialogWindows::opened, this, &DialogsFace::opened);
        connect(windows, &DialogWindows::closed, this, &DialogsFace::closed);
        connect(windows, &DialogWindows::changed, this, &DialogsFace::changed);
        connect(windows, &DialogWindows::controlChanged, this, &DialogsFace::controlChanged);
        connect(windows, &DialogWindows::itemAdded, this, &DialogsFace::itemAdded);
        connect(windows, &DialogWindows::itemsCleared, this, &DialogsFace::itemsCleared);
        connect(windows, &DialogWindows::rowAdded, this, &DialogsFace::rowAdded);
        connect(windows, &DialogWindows::rowChanged, this, &DialogsFace::rowChanged);
        connect(windows, &DialogWindows::rowsCleared, this, &DialogsFace::rowsCleared);
        connect(windows, &DialogWindows::menuOpened, this, &DialogsFace::menuOpened);
        connect(windows, &DialogWindows::focused, this, &DialogsFace::focused);
        connect(&parts_.pages, &HostPages::applied, this, &DialogsFace::applied);
        connect(&parts_.input, &DialogInput::refused, this, &DialogsFace::refused);
        connect(&parts_.pages, &HostPages::propertyPagesTold, this, &DialogsFace::propertyPagesTold);
    }

    QList<int> windows() const override { return parts_.windows.numbersSeen(); }
    std::optional<DialogWindow> window(int number) const override { return parts_.windows.value(number); }

    std::optional<DialogControl> control(int window, quint32 id) const override {
        const OpenDialog* dialog = std::as_const(parts_.windows).find(window);
        const DialogControl* found = dialog && parts_.windows.seen(*dialog) ? dialog->control(id) : nullptr;
        return found ? std::optional(*found) : std::nullopt;
    }

    qsizetype rowCount(int window, quint32 list) const override {
        const DialogRows* rows = rowsOf(window, list);
        return rows ? rows->rows.size() : 0;
    }

    QList<DialogRow> rows(int window, quint32 list, qsizetype from, qsizetype count) const override {
        const DialogRows* rows = rowsOf(window, list);
        if (!rows || from < 0 || from >= rows->rows.size() || count <= 0) return {};
        return rows->rows.mid(from, count);
    }

    QString fill(int window, quint32 control, const QString& text) override {
        return parts_.input.fill(window, control, text);
    }
    QString choose(int window, quint32 control, qint64 item) override {
        return parts_.input.choose(window, control, item);
    }
    QString setChecked(int window, quint32 control, bool checked) override {
        return parts_.input.setChecked(window, control, checked);
    }
    QString press(int window, quint32 button) override { return parts_.input.press(window, button); }
    QString pressReturn(int window, quint32 control) override { return parts_.input.pressReturn(window, control); }
    QString activateRow(int window, quint32 list, qint64 row) override {
        return parts_.input.onRow(window, list, row, OKU_WINDOW_ROW_ACTIVATED);
    }
    QString openRowMenu(int window, quint32 list, qint64 row) override {
        return parts_.input.onRow(window, list, row, OKU_WINDOW_ROW_MENU);
    }
    QString takeFromMenu(int window, quint32 command) override { return parts_.input.takeFromMenu(window, command); }
    QString close(int window) override {
        return parts_.pages.has(window) ? parts_.pages.close(window) : parts_.input.close(window);
    }

    QList<DialogPage> optionPages() const override { return parts_.pages.options(); }
    QList<DialogPage> propertyPages(const QString& account) const override {
        const auto* entry = parts_.accounts.inPlugin(account);
        return entry ? parts_.pages.properties(*entry) : QList<DialogPage>();
    }
    QString askPropertyPages(const QString& account, const QString& jid) override {
        return parts_.accounts.with(
            account, [&](AccountEntry& entry) { return parts_.pages.askProperties(entry, bareJid(jid)); });
    }
    QString openOptions(const QString& id) override { return parts_.pages.openOptions(id); }
    QString openProperties(const QString& account, const QString& jid, const QString& id) override {
        return parts_.accounts.with(
            account, [&](AccountEntry& entry) { return parts_.pages.openProperties(entry, bareJid(jid), id); });
    }
    QString apply(int page) override { return parts_.pages.apply(page); }
    QString confirm(int page) override { return parts_.pages.confirm(page); }

private:
    const DialogRows* rowsOf(int window, quint32 list) const {
        const OpenDialog* dialog = std::as_const(parts_.windows).find(window);
        return dialog && parts_.windows.seen(*dialog) ? dialog->list(list) : nullptr;
    }

    DialogParts parts_;
};

}  // namespace

std::unique_ptr<DialogsFace> dialogsOnHost(const DialogParts& parts) { return std::make_unique<DialogsOnHost>(parts); }

}  // namespace oku
