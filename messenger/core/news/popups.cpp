// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/news/popups.h"

#include <algorithm>
#include <utility>

#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/windows/links.h"

namespace oku {
namespace {

constexpr std::size_t kMostOpen = 32;

PopupKind kindOf(std::uint32_t kind) {
    switch (kind) {
        case OKU_NOTIFY_TUNE:
            return PopupKind::tune;
        case OKU_NOTIFY_MOOD:
            return PopupKind::mood;
        case OKU_NOTIFY_MAIL:
            return PopupKind::mail;
        default:
            return PopupKind::other;
    }
}

}  // namespace

Popups::Popups(ServiceRegistry& services, PluginQueue& queue, LinkService& links, QObject* parent)
    : QObject(parent), queue_(queue), links_(links) {
    services.provide(u"OKU/ShowStandardNotify", [this](OKU_WORD param, OKU_WORD) { return show(param); });
}

QList<Popup> Popups::open() const {
    QList<Popup> list;
    for (const Open& one : open_) list.append(one.popup);
    return list;
}

bool Popups::click(int number) { return end(number, OKU_NOTIFY_CLICKED); }

bool Popups::close(int number) { return end(number, OKU_NOTIFY_GONE); }

void Popups::dropPlugin() {
    ++generation_;
    for (const Open& one : std::exchange(open_, {})) emit gone(one.popup.number);
}

OKU_WORD Popups::show(OKU_WORD param) {
    const auto* record = recordAt<OKU_NOTIFY>(param);
    if (!record) return 0;
    Popup popup{++lastNumber_,
                kindOf(record->kind),
                wideText(record->title),
                wideLines(record->text),
                wideText(record->key),
                record->mode == OKU_NOTIFY_MODE_MAIL_KEPT,
                record->callback != nullptr};
    // The keys of tunes and moods are names that contacts chose, perhaps that of another kind of news.
    const auto older = std::find_if(open_.begin(), open_.end(), [&](const Open& one) {
        return !popup.key.isEmpty() && one.popup.key == popup.key && one.popup.kind == popup.kind;
    });
    if (older != open_.end()) close(older->popup.number);
    if (popup.opens) {
        if (open_.size() >= kMostOpen) close(open_.front().popup.number);
        open_.push_back({popup, record->callback, record->user});
    }
    emit shown(popup);
    return 1;
}

bool Popups::end(int number, std::uint32_t action) {
    const auto found =
        std::find_if(open_.begin(), open_.end(), [&](const Open& one) { return one.popup.number == number; });
    if (found == open_.end()) return false;
    const Open ended = *found;
    open_.erase(found);
    emit gone(number);
    tell(ended, action);
    return true;
}

void Popups::tell(const Open& ended, std::uint32_t action) {
    const int generation = generation_;
    queue_.post({}, [this, ended, action, generation] {
        // The module may have gone while the call waited.
        if (generation != generation_) return;
        auto event = makeRecord<OKU_NOTIFY_EVENT>();
        event.action = action;
        event.user = ended.user;
        const auto call = [&] { ended.callback(wordOf(&event), 0, 0); };
        if (action == OKU_NOTIFY_CLICKED) {
            links_.allowDuring(call);
        } else {
            call();
        }
    });
}

}  // namespace oku
