// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QString>

#include "messenger/core/values/alarm.h"
#include "messenger/core/windows/links.h"

namespace oku {

class KeyRing;
class Players;
class PictureReader;
namespace net {
class Resolver;
}

/// How a messenger starts.
struct MessengerOptions {
    QString profileDir;       ///< empty: the user's own (XDG). Settings, contact lists, history and cache lie in it
    QString modulePath;       ///< the plugin's file
    bool verbose = false;     ///< logged() tells trace lines too; without it only levels below 2
    QString caFile;           ///< PEM file of authorities to trust beside the system's; for tests and private servers
    bool stanzaGuard = true;  ///< whether StanzaGuard looks at what comes; off only in tests
    int loginSeconds = 60;    ///< a login that takes longer is aborted
    int typingSeconds = 30;   ///< a typing notice that is shown goes away after this time
    SetAlarm alarms;          ///< what times the questions that hold the plugin; empty: the system's timers
    LinkOpener linkOpener;    ///< opens addresses and received files; null: the system's program
    std::shared_ptr<net::Resolver> resolver;  ///< null: the system's
    std::shared_ptr<Players> players;         ///< what plays in the session; null: nobody looks
    std::shared_ptr<KeyRing> keyRing;         ///< where passwords are kept; null: there is none
    std::shared_ptr<PictureReader> pictures;  ///< reads pictures; null: none is read
};

}  // namespace oku
