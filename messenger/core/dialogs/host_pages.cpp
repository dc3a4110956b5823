// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/dialogs/host_pages.h"

#include <algorithm>
#include <array>
#include <QCoreApplication>
#include <utility>

#include "host/oku/dialogs.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/dialogs/dialog_input.h"
#include "messenger/core/dialogs/dialog_windows.h"

namespace oku {
namespace {

using Page = WindowServices::Page;

bool belongsTo(const Page& page, const AccountEntry& account) {
    return page.callback && account.registered && page.netId == account.netId && page.pfClass == account.pfClass;
}

QString noPage() { return QCoreApplication::translate("Dialogs", "Nie ma takiej strony."); }

}  // namespace

HostPages::HostPages(const WindowServices& offered, DialogWindows& windows, DialogInput& input, QObject* parent)
    : QObject(parent), offered_(offered), windows_(windows), input_(input) {
    connect(&windows_, &DialogWindows::destroyed, this, [this](int window) { open_.erase(window); });
}

QList<DialogPage> HostPages::options() const {
    QList<DialogPage> pages;
    for (const Page& page : offered_.optionPages()) {
        if (page.callback) pages.append({page.id, page.caption});
    }
    return pages;
}

QList<DialogPage> HostPages::properties(const AccountEntry& account) const {
    QList<DialogPage> pages;
    for (const Page& page : offered_.propertyPages()) {
        if (belongsTo(page, account)) pages.append({page.id, page.caption});
    }
    return pages;
}

QString HostPages::openOptions(const QString& id) {
    const auto& pages = offered_.optionPages();
    const auto found = std::find_if(pages.begin(), pages.end(),
                                    [&](const Page& page) { return page.callback && (id.isEmpty() || page.id == id); });
    return found == pages.end() ? noPage() : open(*found, {}, false);
}

QString HostPages::openProperties(const AccountEntry& account, const QString& jid, const QString& id) {
    const auto& pages = offered_.propertyPages();
    const auto found = std::find_if(pages.begin(), pages.end(), [&](const Page& page) {
        return belongsTo(page, account) && (id.isEmpty() || page.id == id);
    });
    return found == pages.end() ? noPage() : open(*found, jid, jid.isEmpty());
}

QString HostPages::open(const Page& page, const QString& jid, bool adds) {
    for (const auto& [number, other] : open_) {
        if (other.page.id != page.id || other.jid != jid) continue;
        windows_.show(number, true);
        return {};
    }
    OpenDialog dialog;
    dialog.window.page = true;
    dialog.window.title = page.caption;
    const int number = windows_.open(std::move(dialog));
    open_.emplace(number, Open{page, 0, jid, adds});
    return input_.take(
        number, [this, number] { return has(number) ? QString() : noPage(); }, [this, number] { show(number); });
}

// A page that the plugin has put nothing into is not shown.
void HostPages::show(int page) {
    const OKU_WORD refused = send(page, OKU_PAGE_SHOW);
    const OpenDialog* dialog = std::as_const(windows_).find(page);
    if (dialog && !dialog->inside.empty() && refused == 0) {
        windows_.show(page, true);
        return;
    }
    dismiss(page);
    emit input_.refused(page, QCoreApplication::translate("Dialogs", "Ta strona jest pusta."));
}

OKU_WORD HostPages::send(int page, std::uint32_t event) {
    const auto found = open_.find(page);
    if (found == open_.end()) return 1;
    Open& open = found->second;
    std::array<char16_t, OKU_PAGE_TEXT_CAPACITY> title = {};
    std::array<char16_t, OKU_PAGE_TEXT_CAPACITY> description = {};
    auto contact = makeRecord<OKU_CONTACT_RECORD>();
    const QString jid = open.jid;
    const QString pfClass = open.page.pfClass;
    contact.id = widePointer(jid);
    contact.pfClass = widePointer(pfClass);
    contact.netId = open.page.netId;
    auto record = makeRecord<OKU_PAGE_EVENT>();
    record.event = event;
    record.page = &open.word;
    record.contact = jid.isEmpty() ? nullptr : &contact;
    record.parent = static_cast<OKU_WORD>(page);
    const bool wantsTexts = event == OKU_PAGE_SHOW;
    record.title = wantsTexts ? title.data() : nullptr;
    record.description = wantsTexts ? description.data() : nullptr;
    const OKU_WORD result = open.page.callback(wordOf(&record), 0, open.page.context);
    OpenDialog* dialog = windows_.find(page);
    if (!wantsTexts || !dialog) return result;
    // Whoever fills the buffers may leave the last letter behind.
    title.back() = description.back() = 0;
    if (title.front()) dialog->window.title = wideText(title.data());
    dialog->window.description = wideText(description.data());
    return result;
}

QString HostPages::fault(int page) const { return has(page) ? input_.windowFault(page) : noPage(); }

QString HostPages::apply(int page) {
    return input_.take(
        page, [this, page] { return fault(page); },
        [this, page] { send(page, open_.at(page).adds ? OKU_PAGE_ADD : OKU_PAGE_APPLY); });
}

QString HostPages::confirm(int page) {
    return input_.take(
        page, [this, page] { return fault(page); },
        [this, page] {
            if (send(page, open_.at(page).adds ? OKU_PAGE_ADD : OKU_PAGE_OK) == 0) dismiss(page);
        });
}

QString HostPages::close(int page) {
    return input_.take(
        page, [this, page] { return fault(page); }, [this, page] { dismiss(page); });
}

void HostPages::dismiss(int page) {
    send(page, OKU_PAGE_HIDE);
    send(page, OKU_PAGE_DESTROY);
    windows_.destroy(page);
}

}  // namespace oku
