// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/wording.h"

#include <array>

#include "messenger/terminal/screen/printable.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

struct StatusRow {
    QChar mark;
    Text text;
    Style style;
};

// Indexed by the status less one.
constexpr std::array kStatuses = std::to_array<StatusRow>({
    {u'●', Text::StatusOnline, Style::Online},
    {u'◉', Text::StatusChat, Style::Online},
    {u'⊘', Text::StatusDnd, Style::Busy},
    {u'◐', Text::StatusAway, Style::Away},
    {u'◌', Text::StatusXa, Style::Away},
    {u'◇', Text::StatusInvisible, Style::Offline},
    {u'○', Text::StatusOffline, Style::Offline},
    {u'✗', Text::StatusError, Style::Error},
});

const StatusRow& rowOf(Status status) {
    const auto at = static_cast<std::size_t>(status) - 1;
    return at < kStatuses.size() ? kStatuses[at] : kStatuses.back();
}

}  // namespace

QString bareJid(const QString& jid) {
    const QString bare = jid.section(u'/', 0, 0);
    return bare.trimmed().toLower();
}

std::optional<BoxButton> buttonFromWord(const QString& word) {
    struct Row {
        const char* word;
        BoxButton button;
    };
    static constexpr std::array rows = std::to_array<Row>({{"ok", BoxButton::ok},
                                                           {"yes", BoxButton::yes},
                                                           {"tak", BoxButton::yes},
                                                           {"no", BoxButton::no},
                                                           {"nie", BoxButton::no}});
    for (const Row& row : rows)
        if (word.compare(QLatin1String(row.word), Qt::CaseInsensitive) == 0) return row.button;
    return std::nullopt;
}

QString statusText(Status status) { return say(rowOf(status).text); }
QChar statusMark(Status status) { return rowOf(status).mark; }

Style statusStyle(Status status) { return rowOf(status).style; }

QString connectionText(ConnectionState state) {
    switch (state) {
        case ConnectionState::offline:
            return say(Text::ConnectionOffline);
        case ConnectionState::connecting:
            return say(Text::ConnectionConnecting);
        case ConnectionState::connected:
            return say(Text::ConnectionConnected);
        case ConnectionState::encrypted:
            return say(Text::ConnectionEncrypted);
        case ConnectionState::authorized:
            return say(Text::ConnectionAuthorized);
        case ConnectionState::online:
            return say(Text::ConnectionOnline);
    }
    return {};
}

QString connectionText(ConnectionState state, bool encrypted) {
    const bool loggedIn = state == ConnectionState::authorized || state == ConnectionState::online;
    if (!loggedIn || encrypted) return connectionText(state);
    return QStringLiteral("%1 (%2)").arg(connectionText(state), say(Text::NotEncrypted));
}

QString withSubjectAndDelay(const Message& message, const QString& text) {
    const QString whole = message.subject.isEmpty() ? text : say(Text::WithSubject, message.subject, text);
    if (!message.delayed.isValid()) return whole;
    return say(Text::WrittenAt, message.delayed.toLocalTime().toString(QStringLiteral("d.MM.yyyy HH:mm")), whole);
}

QString deliveryText(const Message& message, const QString& to) {
    const auto tell = [&](Text text) { return say(text, message.number, to); };
    switch (message.state) {
        case DeliveryState::queued:
            return tell(Text::DeliveryQueued);
        case DeliveryState::unconfirmed:
            return tell(Text::DeliveryUnconfirmed);
        case DeliveryState::failed:
            return tell(Text::DeliveryFailed);
        case DeliveryState::cancelled:
            return tell(Text::DeliveryCancelled);
        case DeliveryState::received:
        case DeliveryState::sent:
            break;
    }
    return tell(Text::DeliverySent);
}

QVariant shownSetting(const QString& key, const QVariant& value) {
    const bool secret = value.isValid() && key.endsWith(QLatin1String("Pass"));
    return secret ? QVariant(QStringLiteral("***")) : value;
}

QString certificateText(const CertificateProblem& problem) {
    QString reason = problem.reason;
    while (reason.endsWith(u'.')) reason.chop(1);  // more of the sentence follows
    return say(Text::CertificateNotice, problem.host, reason, problem.fingerprint);
}

QString subscriptionText(const Contact& contact) {
    struct Row {
        const char* subscription;
        Text text;
    };
    static constexpr std::array rows = std::to_array<Row>({{"none", Text::SubscriptionNone},
                                                           {"from", Text::SubscriptionFrom},
                                                           {"to", Text::SubscriptionTo},
                                                           {"both", Text::SubscriptionBoth}});
    QString text = say(Text::SubscriptionUnknown);
    for (const Row& row : rows)
        if (contact.subscription == QLatin1String(row.subscription)) text = say(row.text);
    return contact.waiting ? QStringLiteral("%1, %2").arg(text, say(Text::SubscriptionWaiting)) : text;
}

QString oneLine(const QString& text) { return printable(text); }

QString inOneLine(const QString& lines) {
    return oneLine(QString(lines).replace(QLatin1String("\n"), QLatin1String(", ")));
}

QString withDescription(const QString& text, const QString& description) {
    return description.isEmpty() ? text : text + QStringLiteral(" — ") + oneLine(description);
}

}  // namespace oku::terminal
