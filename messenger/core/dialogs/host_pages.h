// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>
#include <vector>

#include "host/oku/base.h"
#include "messenger/core/values/dialogs.h"
#include "messenger/core/windows/window_services.h"

namespace oku {

struct AccountEntry;
class DialogInput;
class DialogWindows;
class EventRegistry;

/// The pages of options and of a contact's properties: each a window of the messenger, in which the plugin opens its
/// own when it is told that the page is seen.
class HostPages : public QObject {
    Q_OBJECT

public:
    HostPages(WindowServices& offered, EventRegistry& events, DialogWindows& windows, DialogInput& input,
              QObject* parent = nullptr);

    [[nodiscard]] QList<DialogPage> options() const;
    [[nodiscard]] QList<DialogPage> properties(const AccountEntry& account) const;
    [[nodiscard]] bool has(int page) const { return open_.contains(page); }

    /// As DialogsFace has them.
    QString askProperties(const AccountEntry& account, const QString& jid);
    QString openOptions(const QString& id);
    QString openProperties(const AccountEntry& account, const QString& jid, const QString& id);
    QString apply(int page);
    QString confirm(int page);
    QString close(int page);

signals:
    void propertyPagesTold(const QString& account, const QString& jid, const QList<oku::DialogPage>& pages);
    void applied(int page);

private:
    using Page = WindowServices::Page;

    /// Whose pages are looked for.
    struct Owner {
        QString pfClass;
        std::uint32_t netId = 0;
        QString jid;  ///< the contact; empty for a new one
    };
    struct Open {
        Page page;
        Owner owner;
        OKU_WORD word = 0;  ///< the plugin's own, at an address that stays
        bool adds = false;  ///< what is entered becomes a new contact
    };

    [[nodiscard]] std::vector<Page> staticPages(const Owner& owner) const;
    /// All pages of a contact; asks the plugin, so only in the turn of something that the user wants.
    std::vector<Page> pagesOf(const Owner& owner);
    int open(const Page& page, const Owner& owner, bool adds);
    QString openLater(const Page& page, const Owner& owner, bool adds);
    void openContactPage(const Owner& owner, const QString& id);
    void onPageCommand(int page, quint32 button);
    void show(int page);
    void dismiss(int page);
    /// Hands over what was entered; false, and told, when the plugin could not carry it out.
    bool store(int page, std::uint32_t event);
    /// Gives the callback's result; 1, that it was not done, where the page has gone.
    OKU_WORD send(int page, std::uint32_t event);
    [[nodiscard]] QString fault(int page) const;

    WindowServices& offered_;
    EventRegistry& events_;
    DialogWindows& windows_;
    DialogInput& input_;
    std::map<int, Open> open_;
};

}  // namespace oku
