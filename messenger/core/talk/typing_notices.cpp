// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/typing_notices.h"

#include <vector>

#include "host/oku/contact.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {

TypingNotices::TypingNotices(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue,
                             ContactService& contacts, int seconds, QObject* parent)
    : QObject(parent), services_(services), queue_(queue), seconds_(seconds) {
    services.provide(u"OKU/PFTNSet", [this, &accounts, &contacts](OKU_WORD param, OKU_WORD composing) -> OKU_WORD {
        const auto* contact = recordAt<OKU_CONTACT_RECORD>(param);
        const auto* account = contact ? accounts.byNetId(contact->netId) : nullptr;
        if (!account) return 0;
        const QString jid = bareJid(wideText(contact->id));
        if (composing != 0 && !contacts.list(*account).has(jid)) return 0;
        set(account->jid(), jid, composing != 0);
        return 1;
    });
}

void TypingNotices::send(AccountEntry& account, const QString& jid, bool composing) {
    const bool wanted = account.settings->number(QString::fromUtf16(setting::sendTyping), 1) != 0;
    if (!wanted || !account.ready()) return;
    queue_.post(account.key, [this, &account, jid, composing] {
        if (!account.registered) return;
        auto record = makeRecord<OKU_CONTACT_RECORD>();
        record.id = widePointer(jid);
        record.pfClass = widePointer(account.pfClass);
        record.netId = account.netId;
        services_.call(account.service(u"PFTNSend"), wordOf(&record), composing ? 1 : 0);
    });
}

void TypingNotices::set(const QString& account, const QString& jid, bool composing) {
    const auto key = std::pair(account, jid);
    const auto found = timers_.find(key);
    if (!composing) {
        if (found == timers_.end()) return;
        found->second.release()->deleteLater();
        timers_.erase(found);
        emit changed(account, jid, false);
        return;
    }
    if (found != timers_.end()) {
        found->second->start();
        return;
    }
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    timer->setInterval(seconds_ * 1000);
    connect(timer.get(), &QTimer::timeout, this, [this, account, jid] { set(account, jid, false); });
    timer->start();
    timers_.emplace(key, std::move(timer));
    emit changed(account, jid, true);
}

void TypingNotices::clear(const QString& account) {
    std::vector<QString> jids;
    for (const auto& [key, timer] : timers_) {
        if (key.first == account) jids.push_back(key.second);
    }
    for (const QString& jid : jids) set(account, jid, false);
}

}  // namespace oku
