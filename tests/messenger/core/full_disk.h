// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/resource.h>
#include <csignal>
#include <QtGlobal>

namespace oku::test {

/// From here to its end no file of this process can grow beyond so many bytes, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(qint64 most = 0) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit few{static_cast<rlim_t>(most), before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &few);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() { end(); }
    void end() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit before_{};
};

/// From here to its end this process can open no file, as one that has to be made on a disk without free inodes; what
/// is open stays so, and files can be renamed. Nothing may run an event loop meanwhile.
class NoNewFiles {
public:
    NoNewFiles() {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{0, before_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    NoNewFiles(const NoNewFiles&) = delete;
    NoNewFiles& operator=(const NoNewFiles&) = delete;
    ~NoNewFiles() { setrlimit(RLIMIT_NOFILE, &before_); }

private:
    rlimit before_{};
};

}  // namespace oku::test
