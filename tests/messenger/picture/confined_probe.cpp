// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Gives up what oku-picture gives up, then tries what that should not be able to do, and tells of each whether it
// could.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <cstdio>
#include <thread>

#include "messenger/picture/confinement.h"

namespace {

void tell(const char* what, bool could) {
    std::printf("%s %s\n", what, could ? "yes" : "no");
    std::fflush(stdout);
}

bool canFork() {
    const pid_t child = fork();
    if (child == 0) _exit(0);
    if (child > 0) waitpid(child, nullptr, 0);
    return child > 0;
}

bool canThread() {
    try {
        std::thread([] {}).join();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool canHave(std::size_t bytes) {
    return mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0) !=
           MAP_FAILED;
}

}  // namespace

int main() {
    const int before = open("/dev/null", O_RDWR);
    const int stays = open("probe-stays", O_CREAT | O_WRONLY, 0600);
    if (before < 0 || stays < 0 || !oku::picture::confine()) return 1;
    tell("descriptor from before", write(before, "x", 1) == 1);
    tell("file", open("/etc/passwd", O_RDONLY) >= 0);
    tell("new file", open("probe-was-here", O_CREAT | O_WRONLY, 0600) >= 0);
    tell("socket", socket(AF_INET, SOCK_STREAM, 0) >= 0);
    tell("local socket", socket(AF_UNIX, SOCK_STREAM, 0) >= 0);
    tell("duplicate", dup(0) >= 0);
    tell("thread", canThread());
    tell("memory", canHave(std::size_t{2} << 30));
    tell("fork", canFork());
    tell("signal", kill(getppid(), 0) == 0);
    tell("look", access("/etc/passwd", F_OK) == 0);
    tell("remove", unlink("probe-stays") == 0);
    char program[] = "/bin/true";
    char* arguments[] = {program, nullptr};
    execv(program, arguments);
    tell("program", false);
    _exit(0);
}
