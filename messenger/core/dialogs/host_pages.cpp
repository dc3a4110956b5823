// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/dialogs/host_pages.h"

#include <algorithm>
#include <array>
#include <QCoreApplication>
#include <utility>

#include "host/oku/dialogs.h"
#include "host/oku/windows.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/dialogs/dialog_input.h"
#include "messenger/core/dialogs/dialog_windows.h"

namespace oku {
namespace {

constexpr quint32 kConfirm = 1;
constexpr quint32 kCancel = 2;

QString noPage() { return QCoreApplication::translate("Dialogs", "Nie ma takiej strony."); }

QList<DialogPage> valuesOf(const std::vector<WindowServices::Page>& pages) {
    QList<DialogPage> values;
    for (const WindowServices::Page& page : pages) values.append({page.id, page.caption});
    return values;
}

/// The page of this id; the first one where it is empty, null where there is none.
const WindowServices::Page* named(const std::vector<WindowServices::Page>& pages, const QString& id) {
    const auto found = std::find_if(pages.begin(), pages.end(), [&](const WindowServices::Page& page) {
        return page.callback && (id.isEmpty() || page.id == id);
    });
    return found == pages.end() ? nullptr : &*found;
}

/// The record of a contact, which points into whoever owns it.
OKU_CONTACT_RECORD contactRecord(const QString& jid, const QString& pfClass, std::uint32_t netId) {
    auto contact = makeRecord<OKU_CONTACT_RECORD>();
    contact.id = widePointer(jid);
    contact.pfClass = widePointer(pfClass);
    contact.netId = netId;
    return contact;
}

}  // namespace

HostPages::HostPages(WindowServices& offered, EventRegistry& events, DialogWindows& windows, DialogInput& input,
                     QObject* parent)
    : QObject(parent), offered_(offered), events_(events), windows_(windows), input_(input) {
    connect(&windows_, &DialogWindows::destroyed, this, [this](int window) { open_.erase(window); });
    connect(&input_, &DialogInput::pageCommanded, this, &HostPages::onPageCommand);
}

QList<DialogPage> HostPages::options() const {
    std::vector<Page> pages = offered_.optionPages();
    std::erase_if(pages, [](const Page& page) { return !page.callback; });
    return valuesOf(pages);
}

QList<DialogPage> HostPages::properties(const AccountEntry& account) const {
    return valuesOf(staticPages({account.pfClass, account.netId, {}}));
}

std::vector<HostPages::Page> HostPages::staticPages(const Owner& owner) const {
    std::vector<Page> pages = offered_.propertyPages();
    std::erase_if(pages, [&](const Page& page) {
        return !page.callback || page.netId != owner.netId || page.pfClass != owner.pfClass;
    });
    return pages;
}

std::vector<HostPages::Page> HostPages::pagesOf(const Owner& owner) {
    std::vector<Page> pages = staticPages(owner);
    if (owner.jid.isEmpty()) return pages;
    const OKU_CONTACT_RECORD contact = contactRecord(owner.jid, owner.pfClass, owner.netId);
    auto event = makeRecord<OKU_PROPERTIES_EVENT>();
    event.event = OKU_PROPERTIES_OPEN;
    event.contact = &contact;
    const auto raise = [&](OKU_WORD word) { events_.fire(u"OKU/PropertiesAddPages", wordOf(&event), word); };
    for (Page& page : offered_.contactPages(raise)) pages.push_back(std::move(page));
    std::erase_if(pages, [](const Page& page) { return !page.callback; });
    return pages;
}

QString HostPages::askProperties(const AccountEntry& account, const QString& jid) {
    const Owner owner{account.pfClass, account.netId, jid};
    const auto ask = [this, owner, of = account.jid()] {
        emit propertyPagesTold(of, owner.jid, valuesOf(pagesOf(owner)));
    };
    return input_.take(
        0, [] { return QString(); }, ask);
}

QString HostPages::openOptions(const QString& id) {
    const Page* found = named(offered_.optionPages(), id);
    return found ? openLater(*found, {}, false) : noPage();
}

QString HostPages::openProperties(const AccountEntry& account, const QString& jid, const QString& id) {
    const Owner owner{account.pfClass, account.netId, jid};
    const auto pages = staticPages(owner);
    if (const Page* found = named(pages, id)) return openLater(*found, owner, jid.isEmpty());
    if (id.isEmpty() || jid.isEmpty()) return noPage();
    return input_.take(
        0, [] { return QString(); }, [this, owner, id] { openContactPage(owner, id); });
}

void HostPages::openContactPage(const Owner& owner, const QString& id) {
    const auto pages = pagesOf(owner);
    const Page* found = named(pages, id);
    if (!found) {
        emit input_.refused(0, noPage());
        return;
    }
    if (const int page = open(*found, owner, false); page != 0) show(page);
}

/// A new one, unseen; 0 where it is open, and is shown anew.
int HostPages::open(const Page& page, const Owner& owner, bool adds) {
    for (const auto& [number, other] : open_) {
        if (other.page.id != page.id || other.owner.jid != owner.jid || other.owner.netId != owner.netId) continue;
        // One that the plugin has not filled yet is shown when that has been done.
        const OpenDialog* dialog = std::as_const(windows_).find(number);
        if (dialog && dialog->shown) windows_.show(number, true);
        return 0;
    }
    OpenDialog dialog;
    dialog.window.page = true;
    dialog.window.title = page.caption;
    const int number = windows_.open(std::move(dialog));
    open_.emplace(number, Open{page, owner, 0, adds});
    return number;
}

QString HostPages::openLater(const Page& page, const Owner& owner, bool adds) {
    const int number = open(page, owner, adds);
    if (number == 0) return {};
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
    // The page may go while the plugin is told.
    const Page offered = open.page;
    const Owner owner = open.owner;
    const OKU_CONTACT_RECORD contact = contactRecord(owner.jid, owner.pfClass, owner.netId);
    auto record = makeRecord<OKU_PAGE_EVENT>();
    record.event = event;
    record.page = &open.word;
    record.contact = owner.jid.isEmpty() ? nullptr : &contact;
    record.parent = static_cast<OKU_WORD>(page);
    const bool wantsTexts = event == OKU_PAGE_SHOW;
    record.title = wantsTexts ? title.data() : nullptr;
    record.description = wantsTexts ? description.data() : nullptr;
    const OKU_WORD result = offered.callback(wordOf(&record), 0, offered.context);
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
        page, [this, page] { return fault(page); }, [this, page] { store(page, OKU_PAGE_APPLY); });
}

bool HostPages::store(int page, std::uint32_t event) {
    if (send(page, open_.at(page).adds ? std::uint32_t{OKU_PAGE_ADD} : event) != 0) {
        emit input_.refused(page, QCoreApplication::translate("Dialogs", "Tego, co wpisano, nie udało się zapisać."));
        return false;
    }
    emit applied(page);
    return true;
}

QString HostPages::confirm(int page) {
    return input_.take(
        page, [this, page] { return fault(page); },
        [this, page] {
            if (store(page, OKU_PAGE_OK)) dismiss(page);
        });
}

QString HostPages::close(int page) {
    return input_.take(
        page, [this, page] { return fault(page); }, [this, page] { dismiss(page); });
}

void HostPages::onPageCommand(int page, quint32 button) {
    if (button == kConfirm) confirm(page);
    if (button == kCancel) close(page);
}

void HostPages::dismiss(int page) {
    send(page, OKU_PAGE_HIDE);
    send(page, OKU_PAGE_DESTROY);
    windows_.destroy(page);
}

}  // namespace oku
