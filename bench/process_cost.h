// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>
#include <fstream>
#include <string>

namespace bench {

/// Of the whole process, in microseconds.
inline double cpuTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// The most that was resident so far, in KiB; 0 where the system does not tell. (What getrusage tells counts the
/// process that started this one as well.)
inline long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        long kibibytes = 0;
        if (word == "VmHWM:" && status >> kibibytes) return kibibytes;
    }
    return 0;
}

}  // namespace bench
