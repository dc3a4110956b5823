// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/picture/confinement.h"

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <vector>

namespace oku::picture {
namespace {

constexpr rlim_t kMiB = 1 << 20;
constexpr rlim_t kSeconds = 10;

struct Limit {
    decltype(RLIMIT_AS) what;
    rlim_t most;
};

constexpr Limit kLimits[] = {
    {RLIMIT_CORE, 0},          {RLIMIT_CPU, kSeconds},   {RLIMIT_FSIZE, 4 * kMiB}, {RLIMIT_NOFILE, 0},
// The sanitizers map more than any limit would leave them.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    {RLIMIT_DATA, 512 * kMiB}, {RLIMIT_AS, 1024 * kMiB},
#endif
};

#if defined(__x86_64__)
constexpr unsigned kProcessor = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr unsigned kProcessor = AUDIT_ARCH_AARCH64;
#else
constexpr unsigned kProcessor = 0;
#endif

/// What reading, scaling (which Qt does on several threads) and writing to an open descriptor take.
constexpr int kCalls[] = {
    SYS_read,
    SYS_write,
    SYS_close,
    SYS_lseek,
    SYS_fstat,
    SYS_mmap,
    SYS_munmap,
    SYS_mremap,
    SYS_mprotect,
    SYS_madvise,
    SYS_brk,
    SYS_futex,
    SYS_set_robust_list,
    SYS_rseq,
    SYS_sched_yield,
    SYS_sched_getaffinity,
    SYS_getpid,
    SYS_gettid,
    SYS_tgkill,
    SYS_rt_sigprocmask,
    SYS_rt_sigaction,
    SYS_rt_sigreturn,
    SYS_sigaltstack,
    SYS_clock_gettime,
    SYS_clock_nanosleep,
    SYS_getrandom,
    SYS_exit,
    SYS_exit_group,
    SYS_restart_syscall,
};

/// Each call that is not in the list fails with EPERM; a thread may be made, a process may not.
std::vector<sock_filter> filter() {
    const auto load = [](unsigned offset) { return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offset); };
    const auto give = [](unsigned verdict) { return sock_filter BPF_STMT(BPF_RET | BPF_K, verdict); };
    const auto fail = [&give](int error) { return give(SECCOMP_RET_ERRNO | static_cast<unsigned>(error)); };
    const auto unless = [](unsigned value, unsigned char skipped) {
        return sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, skipped);
    };
    std::vector<sock_filter> rules{load(offsetof(seccomp_data, arch)),
                                   sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kProcessor, 1, 0),
                                   give(SECCOMP_RET_KILL_PROCESS), load(offsetof(seccomp_data, nr))};
    for (const int call : kCalls) {
        rules.push_back(unless(static_cast<unsigned>(call), 1));
        rules.push_back(give(SECCOMP_RET_ALLOW));
    }
    // The C library takes the older call when the newer one, whose wishes a filter cannot see, is not there.
    rules.push_back(unless(SYS_clone3, 1));
    rules.push_back(fail(ENOSYS));
    rules.push_back(unless(SYS_clone, 3));
    rules.push_back(load(offsetof(seccomp_data, args)));
    rules.push_back(sock_filter BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_THREAD, 0, 1));
    rules.push_back(give(SECCOMP_RET_ALLOW));
    rules.push_back(fail(EPERM));
    return rules;
}

void filterCalls() {
    if (kProcessor == 0) return;
    std::vector<sock_filter> rules = filter();
    const sock_fprog program{static_cast<unsigned short>(rules.size()), rules.data()};
    // A system without such filters refuses; the limits hold there too.
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

}  // namespace

bool confine() {
    const pid_t parent = getppid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) return false;
    prctl(PR_SET_DUMPABLE, 0);
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return false;
    close_range(STDERR_FILENO + 1, ~0U, 0);
    for (const Limit& limit : kLimits) {
        // Whoever starts the program may have less to give already.
        rlimit now{};
        if (getrlimit(limit.what, &now) != 0) return false;
        const rlim_t most = std::min(limit.most, now.rlim_max);
        const rlimit both{most, most};
        if (setrlimit(limit.what, &both) != 0) return false;
    }
    filterCalls();
    return true;
}

}  // namespace oku::picture
