// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/contact_view.h"

#include "messenger/core/values/setting_keys.h"

namespace oku::terminal {

void ContactView::read() {
    const QString account = chosen_.jid();
    if (account.isEmpty()) return;
    const AccountsFace& accounts = desk_.messenger.accounts();
    const QVariant shown = accounts.settingValue(account, QString::fromUtf16(setting::contactList));
    if (shown.isValid()) shown_ = shown.toInt() != 0;
    reachableOnly_ = accounts.settingValue(account, QString::fromUtf16(setting::reachableOnly)).toInt() != 0;
}

void ContactView::setShown(bool shown) {
    if (shown != shown_) keep(setting::contactList, shown);
    shown_ = shown;
    desk_.display.changed();
}

void ContactView::setReachableOnly(bool only) {
    if (only != reachableOnly_) keep(setting::reachableOnly, only);
    reachableOnly_ = only;
    desk_.display.changed();
}

void ContactView::keep(const char16_t* key, bool value) {
    const QString account = chosen_.jid();
    if (account.isEmpty()) return;
    const QString reason = desk_.messenger.accounts().setSetting(account, QString::fromUtf16(key), value ? 1 : 0);
    if (!reason.isEmpty()) desk_.log.tellError(reason);
}

}  // namespace oku::terminal
