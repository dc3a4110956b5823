// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/windows/status_windows.h"

#include <algorithm>

#include "host/oku/windows.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

constexpr std::uint32_t kMostStatuses = 64;

}  // namespace

StatusWindows::StatusWindows(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent)
    : QObject(parent), accounts_(accounts), queue_(queue) {
    services.provide(u"OKU/StatusWND/Prepare", [this](OKU_WORD param, OKU_WORD) { return prepare(param); });
    services.provide(u"OKU/StatusWND/Show", [this](OKU_WORD param, OKU_WORD) { return show(param); });
    services.provide(u"OKU/StatusWND/SetTexts", [this](OKU_WORD param, OKU_WORD) { return setTexts(param); });
}

const StatusWindows::Prepared* StatusWindows::find(const AccountEntry& account) const {
    const auto found = windows_.find(account.key);
    return found != windows_.end() && found->second.callback ? &found->second : nullptr;
}

void StatusWindows::confirm(const AccountEntry& account, Status status, const QString& description, bool protect) {
    const Prepared* prepared = find(account);
    if (!prepared) return;
    auto event = makeRecord<OKU_STATUS_WINDOW_EVENT>();
    event.event = OKU_STATUS_WINDOW_CONFIRMED;
    event.status = static_cast<std::uint32_t>(status);
    event.description = widePointer(description);
    event.protect = protect ? 1 : 0;
    prepared->callback(wordOf(&event), 0, prepared->context);
}

OKU_WORD StatusWindows::prepare(OKU_WORD param) {
    const auto* record = recordAt<OKU_STATUS_WINDOW_PREPARE>(param);
    const auto* account = record ? accounts_.byNetId(record->netId) : nullptr;
    if (!account) return 0;
    Prepared& prepared = windows_[account->key];
    prepared.window.title = wideText(record->title);
    prepared.window.choices.clear();
    for (std::uint32_t at = 0; record->statuses && at < std::min(record->statusCount, kMostStatuses); ++at) {
        prepared.window.choices.append(static_cast<Status>(record->statuses[at]));
    }
    prepared.callback = record->callback;
    prepared.context = record->context;
    return 1;
}

OKU_WORD StatusWindows::show(OKU_WORD param) {
    const auto* record = recordAt<OKU_STATUS_WINDOW_SHOW>(param);
    const auto* account = record ? accounts_.byNetId(record->netId) : nullptr;
    if (!account) return 0;
    StatusWindow& window = windows_[account->key].window;
    window.status = static_cast<Status>(record->status);
    window.description = wideText(record->description);
    window.protect = record->protect != 0;
    // The plugin gives the window's texts when it is asked, and not before.
    queue_.post(account->key, [this, account] {
        const Prepared* prepared = find(*account);
        if (!prepared) return;
        auto event = makeRecord<OKU_STATUS_WINDOW_EVENT>();
        event.event = OKU_STATUS_WINDOW_WANTS_TEXTS;
        event.window = static_cast<OKU_WORD>(account->netId);
        prepared->callback(wordOf(&event), 0, prepared->context);
        emit requested(account->jid(), prepared->window);
    });
    return 1;
}

OKU_WORD StatusWindows::setTexts(OKU_WORD param) {
    const auto* record = recordAt<OKU_STATUS_WINDOW_TEXTS>(param);
    const auto* account = record ? accounts_.byNetId(static_cast<std::uint32_t>(record->window)) : nullptr;
    if (!account) return 0;
    windows_[account->key].window.title = wideText(record->title);
    return 1;
}

}  // namespace oku
