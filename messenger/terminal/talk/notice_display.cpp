// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/notice_display.h"

#include <QTimer>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

NoticeDisplay::NoticeDisplay(const Desk& desk) : desk_(desk) {
    connect(&desk.messenger.windows(), &WindowsFace::boxOpened, this, &NoticeDisplay::onBox);
    connect(&desk.messenger.windows(), &WindowsFace::boxClosed, this, [this] { desk_.display.changed(); });
    connect(&desk.messenger.wire(), &WireFace::logged, this, &NoticeDisplay::onLogLine);
    connect(&desk.messenger.wire(), &WireFace::xmlSeen, this, &NoticeDisplay::onXml);
    const RosterFace& roster = desk.messenger.roster();
    connect(&roster, &RosterFace::infoReceived, this, &NoticeDisplay::onInfo);
    connect(&roster, &RosterFace::infoComplete, this, [this](const QString& account, const QString& jid) {
        desk_.log.tell(say(Text::InfoDone, desk_.contacts.nameOf({account, jid})), Style::Faint);
    });
    connect(&roster, &RosterFace::serverInfoReceived, this, &NoticeDisplay::onServerInfo);
}

void NoticeDisplay::onBox(const MessageBox& box) {
    const QString text = QStringLiteral("%1: %2").arg(box.title, box.text);
    if (box.style == BoxStyle::question) {
        QStringList lines{text, say(Text::AnswerHint, box.number)};
        if (box.holds) lines.append(say(Text::EverythingWaits));
        if (box.seconds > 0) lines.append(say(Text::AnsweredAfter, box.seconds));
        desk_.log.tellOf({}, lines.join(u'\n'), Style::Question, kQuestion, Shown::InSight);
        return;
    }
    const bool error = box.style == BoxStyle::error || box.style == BoxStyle::warning;
    desk_.log.tellOf({}, text, error ? Style::Error : Style::Notice, error ? kAlarm : kInformation, Shown::InSight);
    // A notice has been read when it is shown, and the plugin waits until it is answered.
    QTimer::singleShot(0, this, [this, number = box.number] {
        if (const QString reason = desk_.messenger.windows().answerBox(number, BoxButton::ok); !reason.isEmpty())
            desk_.log.tellError(reason);
    });
}

void NoticeDisplay::onLogLine(const LogLine& line) {
    if (!desk_.options.verbose) return;
    desk_.log.tellOf({}, QStringLiteral("[%1] %2").arg(line.tag, line.text),
                     line.level <= 0 ? Style::Error : Style::Faint, QStringLiteral("#"));
}

void NoticeDisplay::onXml(const QString& account, bool incoming, const QString& data) {
    desk_.log.tellOf({account, {}}, data.trimmed(), incoming ? Style::Theirs : Style::Mine,
                     QString(incoming ? u'⇐' : u'⇒'));
}

void NoticeDisplay::onInfo(const QString& account, const ContactInfo& info) {
    const auto row = [this](Text label, const QString& value) {
        if (!value.isEmpty()) desk_.log.list(QStringLiteral("  ") + say(label) + QStringLiteral(": ") + oneLine(value));
    };
    const Resource& resource = info.resource;
    desk_.log.list(QStringLiteral("%1/%2").arg(desk_.contacts.nameOf({account, info.jid}), oneLine(resource.name)),
                   Style::Heading);
    row(Text::InfoPresence, QStringLiteral("%1 %2")
                                .arg(statusMark(resource.status))
                                .arg(withDescription(statusText(resource.status), resource.description)));
    row(Text::InfoPriority, QString::number(resource.priority));
    if (resource.changed.isValid())
        row(Text::InfoChanged, resource.changed.toLocalTime().toString(QStringLiteral("d.MM.yyyy HH:mm:ss")));
    row(Text::InfoClient, QStringLiteral("%1 %2").arg(info.client, info.version).trimmed());
    row(Text::InfoSystem, info.os);
    row(Text::InfoFeatures, info.features.join(QStringLiteral(", ")));
}

void NoticeDisplay::onServerInfo(const QString&, const ServerInfo& info) {
    desk_.log.list(info.domain, Style::Heading);
    for (const QString& identity : info.identities) desk_.log.list(QStringLiteral("  ") + identity);
    desk_.log.list(QStringLiteral("  ") + say(Text::InfoFeatures) + QStringLiteral(": ") +
                   info.features.join(QStringLiteral(", ")));
}

}  // namespace oku::terminal
