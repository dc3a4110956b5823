// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <optional>
#include <QString>
#include <QStringList>

#include "messenger/core/messenger_face.h"
#include "messenger/terminal/talk/contact_tree.h"
#include "messenger/terminal/talk/windows.h"

namespace oku::terminal {

/// The contacts of all accounts, and whom one talks to beside them: their names, and what lists show of them.
class ContactDirectory {
public:
    ContactDirectory(const MessengerFace& messenger, const Windows& windows)
        : messenger_(messenger), windows_(windows) {}

    /// As it may stand in a line.
    [[nodiscard]] QString nameOf(const Peer& peer) const;
    [[nodiscard]] bool isContact(const Peer& peer) const;
    /// The account's contact with this name, beginning of a name or address. Gives a reason when nobody fits, or more
    /// than one.
    QString find(const QString& account, const QString& text, QString& jid) const;

    [[nodiscard]] QStringList accountNames() const;
    void eachListed(const std::function<void(const ListedContact&)>& take) const;
    [[nodiscard]] std::optional<ListedContact> listed(const Peer& peer) const;

private:
    [[nodiscard]] ListedContact listedOf(const QString& account, const Contact& contact) const;

    const MessengerFace& messenger_;
    const Windows& windows_;
};

}  // namespace oku::terminal
