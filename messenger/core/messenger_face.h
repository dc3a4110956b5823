// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "messenger/core/accounts/accounts_face.h"
#include "messenger/core/cards/cards_face.h"
#include "messenger/core/dialogs/dialogs_face.h"
#include "messenger/core/news/news_face.h"
#include "messenger/core/roster/roster_face.h"
#include "messenger/core/talk/talk_face.h"
#include "messenger/core/transfers/transfers_face.h"
#include "messenger/core/windows/windows_face.h"
#include "messenger/core/wire/wire_face.h"

namespace oku {

/// The messenger as a program sees it: its start and its end, and the faces that say and tell everything else. User
/// interfaces stand on this class, its faces and their values, and on nothing else of the core; a test puts scripted
/// faces in their place.
///
/// Used on one thread with an event loop (a QCoreApplication must exist). Every command of a face returns at once: what
/// needs the plugin waits in a queue while a call into the plugin is on the stack (a message box that stays open holds
/// one there). Signals may be emitted while the plugin is on the stack; calling commands from a slot is allowed.
/// Accounts are named by their bare JID. A command for an unknown account, or one that cannot be carried out, returns a
/// reason (one clear line for the user); an empty string means that it was taken.
class MessengerFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Opens the profile and loads the plugin. Returns an empty string, or one line with the reason of the failure
    /// (missing or foreign module, profile that cannot be written). Nothing connects by itself.
    [[nodiscard]] virtual QString start() = 0;
    /// Unloads the plugin as soon as no call into it is on the stack (open boxes are answered with no or OK), closes
    /// everything and emits finished(). Safe to call twice.
    virtual void shutdown() = 0;
    [[nodiscard]] virtual bool running() const = 0;
    /// The profile's directory, ending in the separator.
    [[nodiscard]] virtual QString profileDir() const = 0;

    /// They live as long as the messenger.
    [[nodiscard]] virtual AccountsFace& accounts() const = 0;
    [[nodiscard]] virtual RosterFace& roster() const = 0;
    [[nodiscard]] virtual TalkFace& talk() const = 0;
    [[nodiscard]] virtual CardsFace& cards() const = 0;
    [[nodiscard]] virtual NewsFace& news() const = 0;
    [[nodiscard]] virtual WindowsFace& windows() const = 0;
    [[nodiscard]] virtual DialogsFace& dialogs() const = 0;
    [[nodiscard]] virtual WireFace& wire() const = 0;
    [[nodiscard]] virtual TransfersFace& transfers() const = 0;

signals:
    /// shutdown() is done: the plugin is unloaded and all files are written.
    void finished();
};

}  // namespace oku
