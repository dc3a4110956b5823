#include "messenger/core/windows/window_services.h"

#include "host/oku/graphics.h"
#include "host/oku/transfer.h"
#include "host/oku/windows.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

constexpr std::uint32_t kMostStatuses = 64;

/// Param of "MyVCard/SetStatus".
struct CardStatus {
    std::uint32_t size;
    std::uint32_t reserved4;
    const char16_t* text;
    OKU_WORD token;
    const char16_t* pfClass;
    std::uint32_t netId;
    std::uint32_t reserved36;
};
OKU_ASSERT_SIZE(CardStatus, 40);
OKU_ASSERT_OFFSET(CardStatus, text, 8);
OKU_ASSERT_OFFSET(CardStatus, token, 16);
OKU_ASSERT_OFFSET(CardStatus, pfClass, 24);
OKU_ASSERT_OFFSET(CardStatus, netId, 32);

}  // namespace

WindowServices::WindowServices(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent)
    : QObject(parent), accounts_(accounts), queue_(queue) {
    provideGraphics(services);
    services.provide(u"OKU/AddOptionsPage", [this](OKU_WORD, OKU_WORD extra) { return addOptionsPage(extra); });
    services.provide(u"OKU/PropertiesStaticPageAdd",
                     [this](OKU_WORD param, OKU_WORD) { return addPropertiesPage(param); });
    services.provide(u"OKU/StatusWND/Prepare", [this](OKU_WORD param, OKU_WORD) { return prepareStatusWindow(param); });
    services.provide(u"OKU/StatusWND/Show", [this](OKU_WORD param, OKU_WORD) { return showStatusWindow(param); });
    services.provide(u"OKU/StatusWND/SetTexts",
                     [this](OKU_WORD param, OKU_WORD) { return setStatusWindowTexts(param); });
    // This messenger cannot show a transfer, so nobody can be asked: a file that somebody offers is not taken.
    services.provide(u"OKU/FTAskForConfirmation", [](OKU_WORD, OKU_WORD) -> OKU_WORD { return OKU_FT_ANSWER_REFUSE; });
    services.provide(u"MyVCard/SignalBusyness", [this](OKU_WORD busy, OKU_WORD) -> OKU_WORD {
        emit busyChanged(busy != 0);
        return 1;
    });
    services.provide(u"MyVCard/SetStatus", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* record = recordAt<CardStatus>(param);
        const auto* account = record ? accounts_.byNetId(record->netId) : nullptr;
        if (account) emit cardStatus(account->jid(), wideText(record->text));
        return account ? 1 : 0;
    });
}

void WindowServices::provideGraphics(ServiceRegistry& services) {
    services.provide(u"OKU/Graph/ICCreate", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* record = recordAt<OKU_ICON_CLASS>(param);
        if (record) icons_.push_back({wideText(record->name), {}, 0});
        return record ? 1 : 0;
    });
    services.provide(u"OKU/Graph/AddIC", [this](OKU_WORD name, OKU_WORD fallback) -> OKU_WORD {
        for (Icon& icon : icons_) {
            if (icon.name == wideText(name)) icon.fallback = wideText(fallback);
        }
        return 1;
    });
    services.provide(u"OKU/Graph/Load", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* record = recordAt<OKU_ICON_LOAD>(param);
        if (record) icons_.push_back({wideText(record->name), {}, record->resource});
        return record ? 1 : 0;
    });
    services.provide(u"OKU/Graph/LoadIS", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* record = recordAt<OKU_ICON_SET>(param);
        if (record) icons_.push_back({wideText(record->baseName), {}, 0});
        return record ? 1 : 0;
    });
}

bool WindowServices::confirmStatusWindow(AccountEntry& account, Status status, const QString& description,
                                         bool protect) {
    if (!account.statusWindowCallback) return false;
    queue_.post(account.key, [&account, status, description, protect] {
        if (!account.statusWindowCallback) return;
        auto event = makeRecord<OKU_STATUS_WINDOW_EVENT>();
        event.event = OKU_STATUS_WINDOW_CONFIRMED;
        event.status = static_cast<std::uint32_t>(status);
        event.description = widePointer(description);
        event.protect = protect ? 1 : 0;
        account.statusWindowCallback(wordOf(&event), 0, account.statusWindowContext);
    });
    return true;
}

void WindowServices::dropPlugin() {
    icons_.clear();
    optionPages_.clear();
    propertyPages_.clear();
}

OKU_WORD WindowServices::addOptionsPage(OKU_WORD extra) {
    auto* record = recordAt<OKU_OPTIONS_PAGE>(extra);
    if (!record) return 0;
    // No icon is drawn here, so there is none for the plugin to destroy.
    record->icon = 0;
    optionPages_.push_back(
        {wideText(record->id), wideText(record->parent), wideText(record->caption), record->callback, record->context});
    return 1;
}

OKU_WORD WindowServices::addPropertiesPage(OKU_WORD param) {
    const auto* record = recordAt<OKU_PROPERTIES_PAGE>(param);
    if (!record) return 0;
    propertyPages_.push_back({wideText(record->id), {}, wideText(record->caption), record->callback, record->context});
    return 1;
}

OKU_WORD WindowServices::prepareStatusWindow(OKU_WORD param) {
    const auto* record = recordAt<OKU_STATUS_WINDOW_PREPARE>(param);
    auto* account = record ? accounts_.byNetId(record->netId) : nullptr;
    if (!account) return 0;
    account->statusWindow.title = wideText(record->title);
    account->statusWindow.choices.clear();
    for (std::uint32_t at = 0; record->statuses && at < std::min(record->statusCount, kMostStatuses); ++at) {
        account->statusWindow.choices.append(static_cast<Status>(record->statuses[at]));
    }
    account->statusWindowCallback = record->callback;
    account->statusWindowContext = record->context;
    return 1;
}

OKU_WORD WindowServices::showStatusWindow(OKU_WORD param) {
    const auto* record = recordAt<OKU_STATUS_WINDOW_SHOW>(param);
    auto* account = record ? accounts_.byNetId(record->netId) : nullptr;
    if (!account) return 0;
    account->statusWindow.status = static_cast<Status>(record->status);
    account->statusWindow.description = wideText(record->description);
    account->statusWindow.protect = record->protect != 0;
    // The plugin gives the window's texts when it is asked, and not before.
    queue_.post(account->key, [this, account] {
        if (!account->statusWindowCallback) return;
        auto event = makeRecord<OKU_STATUS_WINDOW_EVENT>();
        event.event = OKU_STATUS_WINDOW_WANTS_TEXTS;
        event.window = static_cast<OKU_WORD>(account->netId);
        account->statusWindowCallback(wordOf(&event), 0, account->statusWindowContext);
        emit statusWindowRequested(account->jid(), account->statusWindow);
    });
    return 1;
}

OKU_WORD WindowServices::setStatusWindowTexts(OKU_WORD param) {
    const auto* record = recordAt<OKU_STATUS_WINDOW_TEXTS>(param);
    auto* account = record ? accounts_.byNetId(static_cast<std::uint32_t>(record->window)) : nullptr;
    if (!account) return 0;
    account->statusWindow.title = wideText(record->title);
    return 1;
}

}  // namespace oku
