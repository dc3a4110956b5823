// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

namespace oku::picture {

/// Gives up for good what reading a picture does not need; what is open stays open. From then on, in this process:
/// - nothing can be opened, neither a file nor a socket, as no further descriptor can be had (RLIMIT_NOFILE is 0); all
///   but standard input, output and error is closed;
/// - memory, time of the processor, and what can be written to a file are limited; there is no core file;
/// - where the system filters its calls (seccomp, on the processors that confinement.cpp knows), all but a short list
///   fails: no other program, no process of its own, no signal to others, no look at the file system at all;
/// - it ends when the program that started it does.
/// Without the filter the process could still look at names of files and signal processes of its user; the limits hold
/// all the same. False when one of the limits could not be set; nothing foreign may be read then.
[[nodiscard]] bool confine();

}  // namespace oku::picture
