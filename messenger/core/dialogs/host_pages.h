// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/values/dialogs.h"
#include "messenger/core/windows/window_services.h"

namespace oku {

struct AccountEntry;
class DialogInput;
class DialogWindows;

/// The pages of options and of a contact's properties: each a window of the messenger, in which the plugin opens its
/// own when it is told that the page is seen.
class HostPages : public QObject {
    Q_OBJECT

public:
    HostPages(const WindowServices& offered, DialogWindows& windows, DialogInput& input, QObject* parent = nullptr);

    [[nodiscard]] QList<DialogPage> options() const;
    [[nodiscard]] QList<DialogPage> properties(const AccountEntry& account) const;
    [[nodiscard]] bool has(int page) const { return open_.contains(page); }

    /// As DialogsFace has them.
    QString openOptions(const QString& id);
    QString openProperties(const AccountEntry& account, const QString& jid, const QString& id);
    QString apply(int page);
    QString confirm(int page);
    QString close(int page);

private:
    struct Open {
        WindowServices::Page page;
        OKU_WORD word = 0;  ///< the plugin's own, at an address that stays
        QString jid;        ///< empty where there is no contact
        bool adds = false;  ///< what is entered becomes a new contact
    };

    QString open(const WindowServices::Page& page, const QString& jid, bool adds);
    void show(int page);
    void dismiss(int page);
    /// Gives the callback's result; 1, that it was not done, where the page has gone.
    OKU_WORD send(int page, std::uint32_t event);
    [[nodiscard]] QString fault(int page) const;

    const WindowServices& offered_;
    DialogWindows& windows_;
    DialogInput& input_;
    std::map<int, Open> open_;
};

}  // namespace oku
