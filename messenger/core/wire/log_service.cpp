// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire/log_service.h"

#include "host/oku/log.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/values/setting_keys.h"
#include "messenger/core/xml/secrets.h"

namespace oku {

LogService::LogService(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, bool verbose, QObject* parent)
    : QObject(parent), accounts_(accounts), queue_(queue), verbose_(verbose) {
    services.provide(u"OKU/Log", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* record = recordAt<OKU_LOG_RECORD>(param);
        if (!record) return 0;
        write(record->level, wideText(record->tag), wideText(record->text));
        return 1;
    });
}

void LogService::write(int level, const QString& tag, const QString& text) {
    if (level == OKU_LOG_USER) {
        const auto* account = accounts_.byKey(queue_.owner());
        emit noticed(account ? account->jid() : QString(), text);
        return;
    }
    if (level >= OKU_LOG_RECONNECT && !verbose_) return;
    QStringList passwords;
    for (const auto& account : accounts_.all()) {
        for (const char16_t* key : {setting::password, setting::proxyPassword}) {
            passwords.append(account->settings->text(QString::fromUtf16(key)));
        }
    }
    emit logged({level, tag, maskedText(text, passwords)});
}

}  // namespace oku
