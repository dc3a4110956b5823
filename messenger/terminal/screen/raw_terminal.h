// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The terminal's modes, changed for as long as the object lives.
#pragma once

#include <termios.h>
#include <optional>

#include "messenger/terminal/screen/screen.h"

namespace oku::terminal {

/// Gives every key at once and echoes nothing. Does nothing where the descriptor is no terminal.
class RawTerminal {
public:
    explicit RawTerminal(int descriptor);
    ~RawTerminal();
    RawTerminal(const RawTerminal&) = delete;
    RawTerminal& operator=(const RawTerminal&) = delete;

private:
    int descriptor_;
    std::optional<termios> before_;
};

/// Lines as usual, but without echo, for a password.
class NoEcho {
public:
    explicit NoEcho(int descriptor);
    ~NoEcho();
    NoEcho(const NoEcho&) = delete;
    NoEcho& operator=(const NoEcho&) = delete;

private:
    int descriptor_;
    std::optional<termios> before_;
};

/// The size of the terminal; 80 by 24 where it does not tell.
ScreenSize terminalSize(int descriptor);

}  // namespace oku::terminal
