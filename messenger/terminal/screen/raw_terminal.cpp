// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/raw_terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace oku::terminal {
namespace {

std::optional<termios> modesOf(int descriptor) {
    termios modes = {};
    if (::isatty(descriptor) == 0 || ::tcgetattr(descriptor, &modes) != 0) return std::nullopt;
    return modes;
}

}  // namespace

RawTerminal::RawTerminal(int descriptor) : descriptor_(descriptor), before_(modesOf(descriptor)) {
    if (!before_) return;
    termios modes = *before_;
    ::cfmakeraw(&modes);
    ::tcsetattr(descriptor_, TCSADRAIN, &modes);
}

RawTerminal::~RawTerminal() {
    if (before_) ::tcsetattr(descriptor_, TCSADRAIN, &*before_);
}

NoEcho::NoEcho(int descriptor) : descriptor_(descriptor), before_(modesOf(descriptor)) {
    if (!before_) return;
    termios modes = *before_;
    modes.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(descriptor_, TCSADRAIN, &modes);
}

NoEcho::~NoEcho() {
    if (before_) ::tcsetattr(descriptor_, TCSADRAIN, &*before_);
}

ScreenSize terminalSize(int descriptor) {
    winsize size = {};
    if (::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) return {};
    return {size.ws_col, size.ws_row};
}

}  // namespace oku::terminal
