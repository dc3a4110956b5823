// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QObject>
#include <vector>

#include "host/oku/menu.h"
#include "messenger/core/values/status.h"
#include "messenger/core/values/windows.h"

namespace oku {

class PluginQueue;
class ServiceRegistry;

/// "OKU/Menu/Add" and "OKU/Menu/Modify". An item is its name; adding one that exists puts the new one in its place.
/// Separators share their name, and are told apart by their menu and place.
class MenuModel : public QObject {
    Q_OBJECT

public:
    MenuModel(ServiceRegistry& services, PluginQueue& queue, QObject* parent = nullptr);

    /// In the order in which they stand: higher values first, equal ones as they came.
    [[nodiscard]] QList<MenuItem> items(const QString& parent) const;
    /// The status that this item chooses when it is one of the account's status menu; nothing for any other.
    [[nodiscard]] std::optional<Status> chosenStatus(const QString& menu, const QString& id) const;
    /// Has the item's callback called through the queue, and holds nobody meanwhile. False when there is no such item,
    /// or nothing to call.
    bool activate(const QString& id);
    /// Calls the item's callback now; only from the queue. Nothing happens when there is no such item.
    void call(const QString& id);
    void dropPlugin() { items_.clear(); }

signals:
    void changed(const QString& parent);

private:
    struct Item {
        MenuItem item;
        OKU_HANDLER callback;
        OKU_WORD context;
    };

    [[nodiscard]] const Item* find(const QString& id) const;  ///< null when there is nothing to call
    OKU_WORD add(OKU_WORD param);
    OKU_WORD modify(OKU_WORD param);

    PluginQueue& queue_;
    std::vector<Item> items_;
};

}  // namespace oku
