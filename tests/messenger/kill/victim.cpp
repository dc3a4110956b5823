// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/kill/victim.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <new>
#include <thread>

namespace oku::test {
namespace {

using Clock = std::chrono::steady_clock;

/// Numbers that parent and child both see.
class Shared {
public:
    struct Numbers {
        std::atomic<std::uint32_t> begun;
        std::atomic<std::uint32_t> done;
    };

    Shared() : place_(mmap(nullptr, sizeof(Numbers), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
        if (place_ == MAP_FAILED) throw std::bad_alloc();
        new (place_) Numbers{};
    }
    ~Shared() { munmap(place_, sizeof(Numbers)); }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    Numbers* operator->() const { return static_cast<Numbers*>(place_); }

private:
    void* place_;
};

[[noreturn]] void saveForEver(const Shared& numbers, std::uint32_t first,
                              const std::function<bool(std::uint32_t)>& save) {
    for (std::uint32_t number = first;; ++number) {
        numbers->begun = number;
        if (!save(number)) _exit(1);
        numbers->done = number;
    }
}

}  // namespace

Interrupted killWhileSaving(std::uint32_t first, const std::function<bool(std::uint32_t)>& save, std::mt19937& random) {
    const Shared numbers;
    const pid_t child = fork();
    if (child == 0) saveForEver(numbers, first, save);
    // How long a save takes is only known once there was one; then the moment falls anywhere in the next two.
    const auto start = Clock::now();
    const auto limit = start + std::chrono::minutes(2);
    while (numbers->done < first && Clock::now() < limit && waitpid(child, nullptr, WNOHANG) == 0)
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    const auto length = Clock::now() - start;
    std::uniform_int_distribution<std::int64_t> moment(0, 2 * length.count());
    std::this_thread::sleep_for(Clock::duration(moment(random)));
    kill(child, SIGKILL);
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFSIGNALED(status) || numbers->done < first) return {};
    return {numbers->done, numbers->begun};
}

std::string textOfSave(std::uint32_t number) { return "save-" + std::to_string(number) + "-of-many"; }

std::uint32_t numberIn(const std::string& content) {
    const std::string mark = "save-";
    const std::size_t at = content.find(mark);
    return at == std::string::npos ? 0 : static_cast<std::uint32_t>(std::atoll(content.c_str() + at + mark.size()));
}

}  // namespace oku::test
