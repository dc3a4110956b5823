// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include "messenger/core/messenger_face.h"
#include "messenger/terminal/talk/contact_directory.h"
#include "messenger/terminal/talk/display.h"
#include "messenger/terminal/talk/talk_log.h"
#include "messenger/terminal/talk/windows.h"

namespace oku::terminal {

/// How a session begins.
struct SessionOptions {
    QString account;           ///< the chosen account, added when it is not there; empty: the first one
    QString password;          ///< of that account; empty: asked for when it is new
    QString status;            ///< to be set once the account is there; empty: none
    bool verbose = false;      ///< tell the log
    bool oneWindow = false;    ///< show all in one window, whatever conversation is open; typing notices too
    QString startDirectory;    ///< what relative paths are relative to
    int typingPause = 10'000;  ///< milliseconds without a key after which nobody is typing any more
};

/// What the parts of a session share.
struct Desk {
    MessengerFace& messenger;
    Display& display;
    const SessionOptions& options;
    Windows& windows;
    TalkLog& log;
    const ContactDirectory& contacts;
};

}  // namespace oku::terminal
