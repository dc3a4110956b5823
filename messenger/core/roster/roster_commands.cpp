// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/roster/roster_commands.h"

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/wire/iq_queries.h"
#include "messenger/core/xml/tag_scanner.h"
#include "messenger/core/xml/xml_text.h"

namespace oku {
namespace {

/// The condition of an error answer; empty for a result.
QString errorCondition(const QByteArray& answer) {
    const auto list = splitStanzas({answer.constData(), static_cast<std::size_t>(answer.size())});
    if (list.stanzas.empty() || list.stanzas.front().attribute("type") != "error") return {};
    const XmlChild* error = list.stanzas.front().child("error");
    if (!error) return QStringLiteral("error");
    const auto content = std::string_view(answer.constData(), static_cast<std::size_t>(answer.size()))
                             .substr(error->content.begin, error->content.end - error->content.begin);
    TagScanner scanner(content);
    const auto condition = scanner.next();
    return condition ? QString::fromStdString(std::string(condition->name)) : QStringLiteral("error");
}

/// An identity that a handler of the plugin takes; the texts must outlive it.
OKU_CONTACT_RECORD identityOf(const AccountEntry& account, const QString& jid, const QString& pfClass) {
    auto record = makeRecord<OKU_CONTACT_RECORD>();
    record.id = widePointer(jid);
    record.pfClass = widePointer(pfClass);
    record.netId = account.netId;
    return record;
}

}  // namespace

QString notConnected() { return QCoreApplication::translate("Contacts", "Konto nie jest połączone."); }

RosterCommands::RosterCommands(PluginQueue& queue, IqQueries& queries, ContactService& contacts, QObject* parent)
    : QObject(parent), queue_(queue), queries_(queries), contacts_(contacts) {}

QString RosterCommands::known(AccountEntry& account, const QString& jid) const {
    if (!account.loggedIn()) return notConnected();
    if (contacts_.list(account).has(bareJid(jid))) return {};
    return QCoreApplication::translate("Contacts", "Nie ma takiego kontaktu: %1").arg(jid);
}

QString RosterCommands::add(AccountEntry& account, const QString& jid, const QString& name, const QString& group) {
    if (!account.loggedIn()) return notConnected();
    if (QString fault = addressFault(jid); !fault.isEmpty()) return fault;
    const QString bare = bareJid(jid);
    const QString shown = !name.isEmpty() ? name : nodeOf(bare).isEmpty() ? bare : nodeOf(bare);
    set(account, bare, shown, group.isEmpty() ? QStringList() : QStringList(group), true);
    return {};
}

QString RosterCommands::rename(AccountEntry& account, const QString& jid, const QString& name) {
    if (const QString reason = known(account, jid); !reason.isEmpty()) return reason;
    const QString bare = bareJid(jid);
    set(account, bare, name, contacts_.list(account).groups(bare), false);
    return {};
}

QString RosterCommands::move(AccountEntry& account, const QString& jid, const QString& group) {
    if (const QString reason = known(account, jid); !reason.isEmpty()) return reason;
    const QString bare = bareJid(jid);
    const auto contact = contacts_.list(account).contact(bare);
    set(account, bare, contact->name, group.isEmpty() ? QStringList() : QStringList(group), false);
    return {};
}

void RosterCommands::set(AccountEntry& account, const QString& jid, const QString& name, const QStringList& groups,
                         bool subscribe) {
    QString item = QStringLiteral("<item jid=\"%1\"").arg(xmlEscaped(jid));
    if (!name.isEmpty()) item += QStringLiteral(" name=\"") + xmlEscaped(name) + u'"';
    item += u'>';
    for (const QString& group : groups)
        item += QStringLiteral("<group>") + xmlEscaped(group) + QStringLiteral("</group>");
    const QString query =
        QStringLiteral("<query xmlns=\"jabber:iq:roster\">") + item + QStringLiteral("</item></query>");
    const auto answered = [this, &account, jid](const std::optional<QByteArray>& answer) {
        const QString condition = answer ? errorCondition(*answer) : QString();
        if (condition.isEmpty()) return;
        emit noticed(
            account.jid(),
            QCoreApplication::translate("Contacts", "Serwer odmówił zmiany kontaktu %1: %2").arg(jid, condition));
    };
    queue_.post(account.key, [this, &account, jid, query, subscribe, answered] {
        if (!queries_.send(account, {}, QStringLiteral("set"), query, answered)) {
            emit noticed(account.jid(), notConnected());
        } else if (subscribe) {
            sendSubscription(account, jid);
        }
    });
}

void RosterCommands::sendSubscription(AccountEntry& account, const QString& jid) {
    const QString xml = QStringLiteral("<presence to=\"%1\" type=\"subscribe\"/>").arg(xmlEscaped(jid));
    if (!queries_.sendRaw(account, xml.toUtf8())) emit noticed(account.jid(), notConnected());
}

QString RosterCommands::remove(AccountEntry& account, const QString& jid) {
    if (const QString reason = known(account, jid); !reason.isEmpty()) return reason;
    queue_.post(account.key, [this, &account, bare = bareJid(jid)] {
        if (!account.registered || !account.deleteHandler) return;
        auto record = identityOf(account, bare, account.pfClass);
        const OKU_WORD failed = account.deleteHandler(wordOf(&record), 0, account.context);
        if (failed) emit noticed(account.jid(), notConnected());
    });
    return {};
}

QString RosterCommands::subscribe(AccountEntry& account, const QString& jid) {
    if (!account.loggedIn()) return notConnected();
    if (QString fault = addressFault(jid); !fault.isEmpty()) return fault;
    queue_.post(account.key, [this, &account, bare = bareJid(jid)] { sendSubscription(account, bare); });
    return {};
}

QString RosterCommands::answer(AccountEntry& account, const QString& jid, int bits) {
    if (!account.loggedIn()) return notConnected();
    queue_.post(account.key, [this, &account, bare = bareJid(jid), bits] {
        if (!account.registered || !account.authorizationHandler) return;
        auto record = identityOf(account, bare, account.pfClass);
        const OKU_WORD failed = account.authorizationHandler(wordOf(&record), bits, account.context);
        if (failed) {
            emit noticed(account.jid(), notConnected());
        } else {
            account.authorizations.remove(bare);
        }
    });
    return {};
}

}  // namespace oku
