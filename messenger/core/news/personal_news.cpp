// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/news/personal_news.h"

#include <algorithm>
#include <memory>
#include <QCoreApplication>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/news/news_records.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/roster/roster_commands.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/xml/xml_text.h"

namespace oku {
namespace {

QString unknownField(const Location& location) {
    const auto isKnown = [](const QString& name) {
        return std::any_of(kLocationFields.begin(), kLocationFields.end(),
                           [&](const char* field) { return name == QLatin1String(field); });
    };
    for (auto at = location.keyBegin(); at != location.keyEnd(); ++at) {
        if (!isKnown(*at)) return *at;
    }
    return {};
}

QString serverWithoutEvents() {
    return QCoreApplication::translate("News", "Nie wysłano: serwer konta nie przyjmuje takich wiadomości o sobie.");
}

}  // namespace

PersonalNews::PersonalNews(ServiceRegistry& services, Accounts& accounts, ContactService& contacts, PluginQueue& queue,
                           QObject* parent)
    : QObject(parent), services_(services), accounts_(accounts), contacts_(contacts), queue_(queue) {}

void PersonalNews::listen(EventRegistry& events) { events.addHook(u"XMPP/OnPEPEvent", onEvent, wordOf(this)); }

OKU_WORD OKU_CALL PersonalNews::onEvent(OKU_WORD param, OKU_WORD extra, OKU_WORD context) {
    const auto* event = recordAt<OKU_PEP_EVENT>(param);
    return event && reinterpret_cast<PersonalNews*>(context)->take(*event, extra) ? 1 : 0;
}

bool PersonalNews::take(const OKU_PEP_EVENT& event, OKU_WORD data) {
    const auto* account = accounts_.byNetId(event.own.netId);
    if (!account) return false;
    const QString own = account->jid();
    const QString from = bareJid(wideText(event.contact.id));
    if (from != own && !contacts_.list(*account).has(from)) return true;
    const auto tell = [&](const auto* record, auto signal) {
        if (record) (this->*signal)(own, from, valueOf(*record));
    };
    if (event.kind == OKU_PEP_TUNE) tell(recordAt<OKU_PEP_TUNE_DATA>(data), &PersonalNews::tune);
    if (event.kind == OKU_PEP_MOOD) tell(recordAt<OKU_PEP_MOOD_DATA>(data), &PersonalNews::mood);
    if (event.kind == OKU_PEP_LOCATION) tell(recordAt<OKU_PEP_LOCATION_DATA>(data), &PersonalNews::location);
    return false;
}

QString PersonalNews::publish(AccountEntry& account, const Tune& tune) {
    return give(account, [this, &account, tune] {
        const auto record = recordOf(tune);
        return call(account, OKU_PEP_TUNE, wordOf(&record));
    });
}

void PersonalNews::takeBackTune(const AccountEntry& account) const {
    const auto record = makeRecord<OKU_PEP_TUNE_DATA>();
    call(account, OKU_PEP_TUNE, wordOf(&record));
}

QString PersonalNews::publish(AccountEntry& account, const Mood& mood) {
    if (mood.name.isEmpty() ? !mood.isEmpty() : !moodNames().contains(mood.name)) {
        return QCoreApplication::translate("News", "Nie ma takiego nastroju: %1").arg(mood.name);
    }
    // The plugin sends it as it stands.
    return give(account, [this, &account, mood = Mood{mood.name, xmlEscaped(mood.text)}] {
        const auto record = recordOf(mood);
        return call(account, OKU_PEP_MOOD, wordOf(&record));
    });
}

QString PersonalNews::publish(AccountEntry& account, const Location& location) {
    if (const QString name = unknownField(location); !name.isEmpty()) {
        return QCoreApplication::translate("News", "Miejsce nie ma takiego pola: %1").arg(name);
    }
    return give(account, [this, &account, location] {
        const auto record = recordOf(location);
        return call(account, OKU_PEP_LOCATION, wordOf(&record));
    });
}

QString PersonalNews::give(AccountEntry& account, std::function<bool()> publish) {
    if (!account.loggedIn()) return notConnected();
    const auto outcome = std::make_shared<std::optional<bool>>();
    const auto asking = std::make_shared<bool>(true);
    queue_.post(account.key, [this, &account, publish = std::move(publish), outcome, asking] {
        *outcome = account.registered && publish();
        if (!**outcome && !*asking) emit refused(account.jid(), serverWithoutEvents());
    });
    *asking = false;
    return outcome->value_or(true) ? QString() : serverWithoutEvents();
}

bool PersonalNews::call(const AccountEntry& account, std::uint32_t kind, OKU_WORD data) const {
    auto publish = makeRecord<OKU_PEP_PUBLISH>();
    publish.kind = kind;
    return services_.call(account.service(u"PFEPublishData"), wordOf(&publish), data) == 1;
}

}  // namespace oku
