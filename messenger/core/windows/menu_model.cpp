// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/windows/menu_model.h"

#include <algorithm>

#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {

MenuModel::MenuModel(ServiceRegistry& services, PluginQueue& queue, QObject* parent) : QObject(parent), queue_(queue) {
    services.provide(u"OKU/Menu/Add", [this](OKU_WORD param, OKU_WORD) { return add(param); });
    services.provide(u"OKU/Menu/Modify", [this](OKU_WORD param, OKU_WORD) { return modify(param); });
}

QList<MenuItem> MenuModel::items(const QString& parent) const {
    QList<MenuItem> list;
    for (const Item& item : items_) {
        if (item.item.parent == parent) list.append(item.item);
    }
    std::stable_sort(list.begin(), list.end(), [](const MenuItem& a, const MenuItem& b) { return a.order > b.order; });
    return list;
}

std::optional<Status> MenuModel::chosenStatus(const QString& menu, const QString& id) const {
    const bool isThere = std::any_of(items_.begin(), items_.end(), [&](const Item& item) {
        return item.item.id == id && item.item.parent == menu && item.callback;
    });
    // The item's last word is the status, with the protocol's own word for being offline.
    const QString word = id.mid(id.lastIndexOf(u'/') + 1).toLower();
    bool isStatus = word == QLatin1String("unavailable");
    const Status status = isStatus ? Status::offline : statusFromWord(word, &isStatus);
    return isThere && isStatus ? std::optional(status) : std::nullopt;
}

bool MenuModel::activate(const QString& id) {
    if (!find(id)) return false;
    // From the event loop: a callback may open a question, which holds whoever called until it is answered.
    QMetaObject::invokeMethod(
        this, [this, id] { queue_.post({}, [this, id] { call(id); }); }, Qt::QueuedConnection);
    return true;
}

void MenuModel::call(const QString& id) {
    const Item* const found = find(id);
    if (!found) return;  // it went while the call waited
    auto event = makeRecord<OKU_MENU_EVENT>();
    event.id = widePointer(id);
    found->callback(wordOf(&event), 0, found->context);
}

const MenuModel::Item* MenuModel::find(const QString& id) const {
    const auto wanted = [&](const Item& item) { return item.item.id == id && item.callback && !item.item.separator; };
    const auto found = std::find_if(items_.begin(), items_.end(), wanted);
    return found == items_.end() ? nullptr : &*found;
}

OKU_WORD MenuModel::add(OKU_WORD param) {
    const auto* record = recordAt<OKU_MENU_RECORD>(param);
    if (!record || !record->id) return 0;
    Item item{{wideText(record->id), wideText(record->parent), wideText(record->caption), wideText(record->icon),
               record->order, (record->flags & OKU_MENU_SEPARATOR) != 0},
              record->callback,
              record->context};
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const Item& other) {
        const bool sameName = other.item.id == item.item.id && other.item.separator == item.item.separator;
        const bool samePlace = other.item.parent == item.item.parent && other.item.order == item.item.order;
        return sameName && (!item.item.separator || samePlace);
    });
    if (found == items_.end()) {
        items_.push_back(item);
    } else {
        *found = item;
    }
    emit changed(item.item.parent);
    return 1;
}

OKU_WORD MenuModel::modify(OKU_WORD param) {
    const auto* record = recordAt<OKU_MENU_RECORD>(param);
    const QString id = record ? wideText(record->id) : QString();
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const Item& item) { return item.item.id == id; });
    if (found == items_.end()) {
        // An account's icon is changed by the name of its menu, which is no item that was added: it is made.
        return record ? add(param) : 0;
    }
    if (record->flags & OKU_MENU_CHANGE_ICON) found->item.icon = wideText(record->icon);
    if (record->caption) found->item.caption = wideText(record->caption);
    emit changed(found->item.parent);
    return 1;
}

}  // namespace oku
