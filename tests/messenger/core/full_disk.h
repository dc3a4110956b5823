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

}  // namespace oku::test
