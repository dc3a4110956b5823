// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/talk_on_host.h"

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/storage/private_file.h"
#include "messenger/core/talk/arrivals.h"
#include "messenger/core/talk/delivery.h"
#include "messenger/core/talk/history.h"
#include "messenger/core/talk/typing_notices.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/xml/xml_text.h"

namespace oku {
namespace {

class TalkOnHost final : public TalkFace {
public:
    explicit TalkOnHost(const TalkParts& parts) : parts_(parts) {
        connect(&parts_.arrivals, &Arrivals::received, this, &TalkFace::messageReceived);
        connect(&parts_.delivery, &Delivery::sent, this, &TalkFace::messageSent);
        connect(&parts_.delivery, &Delivery::queued, this, &TalkFace::messageQueued);
        connect(&parts_.delivery, &Delivery::stateChanged, this, &TalkFace::messageStateChanged);
        connect(&parts_.typing, &TypingNotices::changed, this, &TalkFace::typingReceived);
    }

    QString sendMessage(const QString& account, const QString& to, const QString& body, MessageKind kind,
                        const QString& subject, qint64* number) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) {
            if (QString fault = addressFault(to); !fault.isEmpty()) return fault;
            if (body.isEmpty()) return QCoreApplication::translate("Messenger", "Wiadomość jest pusta.");
            // They cannot stand on the wire, and what the plugin gets ends at a NUL.
            if (!isXmlText(body) || !isXmlText(subject))
                return QCoreApplication::translate("Messenger", "Wiadomość zawiera znaki, których nie można wysłać.");
            Message message;
            message.account = entry.jid();
            message.contact = bareJid(to);
            message.direction = Direction::out;
            message.subject = subject;
            message.body = body;
            message.kind = kind;
            message.time = QDateTime::currentDateTimeUtc();
            const qint64 written = parts_.delivery.send(entry, message);
            if (number) *number = written;
            return written ? QString()
                           : QCoreApplication::translate("Messenger",
                                                         "Nie można zapisać wiadomości, więc nie została wysłana.");
        });
    }

    QString resendMessage(qint64 number) override {
        const auto message = parts_.history.message(number);
        const bool again = message && message->direction == Direction::out &&
                           (message->state == DeliveryState::failed || message->state == DeliveryState::unconfirmed);
        if (!again) return QCoreApplication::translate("Messenger", "Tej wiadomości nie można wysłać ponownie.");
        return parts_.accounts.with(message->account, [&](AccountEntry& entry) {
            parts_.delivery.resend(entry, *message);
            return QString();
        });
    }

    QString cancelMessage(qint64 number) override {
        const auto message = parts_.history.message(number);
        if (!message || message->direction != Direction::out || message->state != DeliveryState::queued)
            return QCoreApplication::translate("Messenger", "Ta wiadomość nie czeka na wysłanie.");
        return parts_.accounts.with(message->account, [&](AccountEntry& entry) {
            return parts_.delivery.cancel(entry, *message)
                       ? QString()
                       : QCoreApplication::translate("Messenger", "Nie można wycofać wiadomości.");
        });
    }

    QString sendTyping(const QString& account, const QString& to, bool composing) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) {
            parts_.typing.send(entry, bareJid(to), composing);
            return QString();
        });
    }

    void markRead(const QString& account, const QString& jid) override {
        if (const auto* entry = parts_.accounts.inPlugin(account))
            parts_.contacts.list(*entry).clearUnread(bareJid(jid));
    }

    QList<Message> history(const QString& account, const QString& with, int limit,
                           const QString& search) const override {
        return parts_.history.find(bareJid(account), bareJid(with), limit, search);
    }

    QString exportHistory(const QString& account, const QString& with, const QString& path,
                          bool replace) const override {
        constexpr int everything = -1;
        const auto messages = parts_.history.find(bareJid(account), bareJid(with), everything, {});
        // What was exported before is worth more than a part of it.
        if (!parts_.history.readWhole())
            return QCoreApplication::translate("Messenger", "Nie można odczytać archiwum rozmów.");
        const bool json = path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
        const QByteArray content = json ? historyAsJson(messages) : historyAsText(messages);
        const QString reason = replaceFile(path, content, replace ? Target::inPlace : Target::nothing);
        if (reason.isEmpty()) return {};
        return QCoreApplication::translate("Messenger", "Nie można zapisać pliku %1: %2").arg(path, reason);
    }

private:
    TalkParts parts_;
};

}  // namespace

std::unique_ptr<TalkFace> talkOnHost(const TalkParts& parts) { return std::make_unique<TalkOnHost>(parts); }

}  // namespace oku
