// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <QList>
#include <QObject>

#include "host/oku/notify.h"
#include "messenger/core/values/news.h"

namespace oku {

class LinkService;
class PluginQueue;
class ServiceRegistry;

/// "OKU/ShowStandardNotify". A pop-up that a click opens is kept until it is clicked, closed, or replaced by one with
/// the same key, and the plugin learns of each end; of too many the oldest goes. Any other is told and forgotten.
class Popups : public QObject {
    Q_OBJECT

public:
    Popups(ServiceRegistry& services, PluginQueue& queue, LinkService& links, QObject* parent = nullptr);

    [[nodiscard]] QList<Popup> open() const;
    /// What the click does, or that there is none: false when no such pop-up is kept.
    bool click(int number);
    bool close(int number);
    void dropPlugin();

signals:
    void shown(const oku::Popup& popup);
    void gone(int number);

private:
    struct Open {
        Popup popup;
        OKU_HANDLER callback;
        OKU_WORD user;
    };

    OKU_WORD show(OKU_WORD param);
    bool end(int number, std::uint32_t action);
    void tell(const Open& ended, std::uint32_t action);

    PluginQueue& queue_;
    LinkService& links_;
    std::deque<Open> open_;
    int lastNumber_ = 0;
    int generation_ = 0;  ///< grows when the module goes, and with it its callbacks
};

}  // namespace oku
