// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include "messenger/core/values/windows.h"

namespace oku {

struct AccountEntry;
class EventRegistry;
class PluginQueue;

/// What the plugin permits in the menu of a contact ("OKU/OnMenuRebuild").
class ContactMenus : public QObject {
    Q_OBJECT

public:
    ContactMenus(EventRegistry& events, PluginQueue& queue, QObject* parent = nullptr)
        : QObject(parent), events_(events), queue_(queue) {}

    /// told() answers, from the event loop. `inChat`: the menu is one of an open conversation.
    void ask(const AccountEntry& account, const QString& jid, bool inChat);

signals:
    void told(const QString& account, const QString& jid, const QList<oku::MenuItem>& items);

private:
    EventRegistry& events_;
    PluginQueue& queue_;
};

}  // namespace oku
