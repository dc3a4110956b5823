// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/account_display.h"

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

Style connectionStyle(ConnectionState state, const QString& reason) {
    if (state == ConnectionState::online) return Style::Online;
    if (state == ConnectionState::offline) return reason.isEmpty() ? Style::Offline : Style::Error;
    return Style::Faint;
}

}  // namespace

AccountDisplay::AccountDisplay(const Desk& desk, ChosenAccount& chosen) : desk_(desk), chosen_(chosen) {
    const AccountsFace& accounts = desk.messenger.accounts();
    connect(&accounts, &AccountsFace::accountChanged, this, &AccountDisplay::onChanged);
    connect(&accounts, &AccountsFace::accountRemoved, this, &AccountDisplay::onRemoved);
    connect(&accounts, &AccountsFace::connectionChanged, this, &AccountDisplay::onConnection);
    connect(&accounts, &AccountsFace::ownStatusChanged, this, &AccountDisplay::onOwnStatus);
    connect(&accounts, &AccountsFace::certificateRefused, this, &AccountDisplay::onCertificateRefused);
    connect(&desk.messenger.windows(), &WindowsFace::noticed, this, &AccountDisplay::onNotice);
}

void AccountDisplay::onChanged(const QString& account) {
    desk_.display.changed();
    if (told_.contains(account)) return;
    told_.append(account);
    desk_.display.contactsReset();
    desk_.log.tellOf({account, {}}, say(Text::AccountIsThere, account), Style::Plain, kInformation);
}

void AccountDisplay::onRemoved(const QString& account) {
    told_.removeAll(account);
    refused_.remove(account);
    chosen_.forget(account);
    desk_.display.contactsReset();
    desk_.log.tellOf({account, {}}, say(Text::AccountGone, account), Style::Plain, kInformation);
}

void AccountDisplay::onConnection(const QString& account, ConnectionState state, const QString& reason) {
    if (state == ConnectionState::offline) desk_.windows.forgetTyping(account);
    QString text = connectionText(state, desk_.messenger.accounts().encrypted(account));
    const bool told = notices_.take(account) == reason;  // the plugin's own notice said it already
    if (!reason.isEmpty() && !told) text += QStringLiteral(": ") + oneLine(reason);
    const bool settled = state == ConnectionState::online || state == ConnectionState::offline;
    desk_.log.tellOf({account, {}}, text, connectionStyle(state, reason), reason.isEmpty() ? kInformation : kAlarm,
                     settled ? Shown::InSight : Shown::Both);
}

void AccountDisplay::onOwnStatus(const QString& account, Status status, const QString& description) {
    desk_.log.tellOf({account, {}}, withDescription(say(Text::OwnStatus, statusText(status)), description),
                     statusStyle(status), statusMark(status));
}

void AccountDisplay::onNotice(const QString& account, const QString& text) {
    notices_.insert(account, text);
    desk_.log.tellOf({account, {}}, text, Style::Notice, kAlarm, Shown::InSight);
}

void AccountDisplay::onCertificateRefused(const QString& account, const CertificateProblem& problem) {
    refused_.insert(account, problem.fingerprint);
    desk_.log.tellOf({account, {}}, certificateText(problem) + u'\n' + say(Text::PinHint), Style::Error, kAlarm,
                     Shown::InSight);
}

}  // namespace oku::terminal
