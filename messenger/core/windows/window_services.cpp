// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/windows/window_services.h"

#include <utility>

#include "host/oku/graphics.h"
#include "host/oku/windows.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

WindowServices::Page propertiesPage(const OKU_PROPERTIES_PAGE& record) {
    return {wideText(record.id),      {},          wideText(record.caption), record.callback, record.context,
            wideText(record.pfClass), record.netId};
}

}  // namespace

WindowServices::WindowServices(ServiceRegistry& services) {
    provideGraphics(services);
    services.provide(u"OKU/AddOptionsPage", [this](OKU_WORD, OKU_WORD extra) { return addOptionsPage(extra); });
    services.provide(u"OKU/PropertiesStaticPageAdd",
                     [this](OKU_WORD param, OKU_WORD) { return addPropertiesPage(param); });
    services.provide(u"OKU/PropertiesPageAdd",
                     [this](OKU_WORD param, OKU_WORD word) { return addContactPage(param, word); });
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
    propertyPages_.push_back(propertiesPage(*record));
    return 1;
}

OKU_WORD WindowServices::addContactPage(OKU_WORD param, OKU_WORD word) {
    const auto* record = recordAt<OKU_PROPERTIES_PAGE>(param);
    if (!record || !asking_ || word != word_) return 0;
    contactPages_.push_back(propertiesPage(*record));
    return 1;
}

std::vector<WindowServices::Page> WindowServices::contactPages(const std::function<void(OKU_WORD word)>& raise) {
    asking_ = true;
    raise(++word_);
    asking_ = false;
    return std::exchange(contactPages_, {});
}

}  // namespace oku
