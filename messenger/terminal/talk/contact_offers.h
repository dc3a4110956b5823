// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/talk/dialog_prompt.h"

namespace oku::terminal {

/// What the plugin has to offer for one contact: pages of its properties, and what its menu may hold. The plugin is
/// asked for both, and answers a little later.
class ContactOffers : public QObject {
public:
    ContactOffers(const Desk& desk, DialogPrompt& dialogs);

    /// The page at this place, counted from 1, of the contact's properties. 0: the first one, and what others there
    /// are.
    QString openPage(const Peer& peer, qsizetype place);
    /// Says what can be done with the contact, and by which commands.
    QString tellMenu(const Peer& peer);

private:
    void onPages(const Peer& peer, const QList<DialogPage>& pages);
    void onMenu(const Peer& peer, const QList<MenuItem>& items);
    void tellFurther(const Peer& peer, const QList<DialogPage>& pages);

    Desk desk_;
    DialogPrompt& dialogs_;
    Peer wanted_;          ///< whose page is to be opened
    qsizetype place_ = 0;  ///< of that page
    Peer asked_;           ///< whose menu was asked for
};

}  // namespace oku::terminal
