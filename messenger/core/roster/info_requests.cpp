// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/roster/info_requests.h"

#include <QXmlStreamReader>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/roster/roster_commands.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/wire/iq_queries.h"

namespace oku {
namespace {

const QString kDisco = QStringLiteral("<query xmlns=\"http://jabber.org/protocol/disco#info\"/>");
const QString kVersion = QStringLiteral("<query xmlns=\"jabber:iq:version\"/>");

void readVersion(const QByteArray& answer, ContactInfo& info) {
    QXmlStreamReader reader(answer);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        if (reader.name() == QLatin1String("name"))
            info.client = reader.readElementText();
        else if (reader.name() == QLatin1String("version"))
            info.version = reader.readElementText();
        else if (reader.name() == QLatin1String("os"))
            info.os = reader.readElementText();
    }
}

void readDisco(const QByteArray& answer, QStringList& identities, QStringList& features) {
    QXmlStreamReader reader(answer);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        const auto attributes = reader.attributes();
        if (reader.name() == QLatin1String("feature"))
            features.append(attributes.value(QLatin1String("var")).toString());
        if (reader.name() == QLatin1String("identity")) {
            const auto text = [&](const char* name) { return attributes.value(QLatin1String(name)).toString(); };
            identities.append((text("category") + u'/' + text("type") + u' ' + text("name")).trimmed());
        }
    }
}

}  // namespace

/// One request to a contact: done when all of its resources have answered.
struct InfoRequests::Round {
    QString jid;
    int waiting = 0;
};

InfoRequests::InfoRequests(PluginQueue& queue, IqQueries& queries, ContactService& contacts, QObject* parent)
    : QObject(parent), queue_(queue), queries_(queries), contacts_(contacts) {}

QString InfoRequests::askContact(AccountEntry& account, const QString& jid) {
    if (!account.loggedIn()) return notConnected();
    const QString bare = bareJid(jid);
    const auto contact = contacts_.list(account).contact(bare);
    if (!contact) return QCoreApplication::translate("Contacts", "Nie ma takiego kontaktu: %1").arg(jid);
    queue_.post(account.key, [this, &account, contact] {
        auto round = std::make_shared<Round>();
        round->jid = contact->jid;
        round->waiting = static_cast<int>(contact->resources.size());
        for (const Resource& resource : contact->resources) askResource(account, round, resource);
        if (round->waiting == 0) emit contactComplete(account.jid(), round->jid);
    });
    return {};
}

void InfoRequests::askResource(AccountEntry& account, const std::shared_ptr<Round>& round, const Resource& resource) {
    struct Asked {
        ContactInfo info;
        int waiting = 2;
    };
    auto asked = std::make_shared<Asked>();
    asked->info.jid = round->jid;
    asked->info.resource = resource;
    const QString to = resource.name.isEmpty() ? round->jid : round->jid + u'/' + resource.name;
    const auto done = [this, &account, round, asked] {
        if (--asked->waiting > 0) return;
        emit contactAnswered(account.jid(), asked->info);
        if (--round->waiting == 0) emit contactComplete(account.jid(), round->jid);
    };
    const auto version = [asked, done](const std::optional<QByteArray>& answer) {
        if (answer) readVersion(*answer, asked->info);
        done();
    };
    const auto disco = [asked, done](const std::optional<QByteArray>& answer) {
        QStringList identities;
        if (answer) readDisco(*answer, identities, asked->info.features);
        done();
    };
    const QString get = QStringLiteral("get");
    if (!queries_.send(account, to, get, kVersion, version)) done();
    if (!queries_.send(account, to, get, kDisco, disco)) done();
}

QString InfoRequests::askServer(AccountEntry& account) {
    if (!account.loggedIn()) return notConnected();
    queue_.post(account.key, [this, &account] {
        ServerInfo info;
        info.domain = account.domain();
        const auto answered = [this, &account, info](const std::optional<QByteArray>& answer) mutable {
            if (answer) readDisco(*answer, info.identities, info.features);
            emit serverAnswered(account.jid(), info);
        };
        if (!queries_.send(account, info.domain, QStringLiteral("get"), kDisco, answered)) {
            emit serverAnswered(account.jid(), info);
        }
    });
    return {};
}

}  // namespace oku
