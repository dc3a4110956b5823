#include "messenger/terminal/posix_io.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <QTimer>
#include <utility>

namespace oku::terminal {
namespace {

// Written by the signal handler, which can reach nothing else.
volatile std::sig_atomic_t signalPipe = -1;
// Readable from the first signal on that asks the program to end.
volatile std::sig_atomic_t endingEvent = -1;

// How long a write waits for its reader once the program is to end; one that is only slow gets the last lines.
constexpr int kPatienceAtTheEnd = 1000;

void onSignal(int signal) {
    const int saved = errno;
    const auto byte = static_cast<unsigned char>(signal);
    // When the pipe is full a signal is under way already, and the result changes nothing.
    [[maybe_unused]] auto written = ::write(signalPipe, &byte, 1);
    if (signal != SIGWINCH) {
        const std::uint64_t one = 1;
        written = ::write(endingEvent, &one, sizeof one);
        std::signal(signal, SIG_DFL);
    }
    errno = saved;
}

// Waits until the descriptor takes bytes, or tells what is wrong with it. False when the program is to end and the
// reader stands still.
bool awaitRoom(int descriptor) {
    std::array waiting = {pollfd{descriptor, POLLOUT, 0}, pollfd{endingEvent, POLLIN, 0}};
    while (::poll(waiting.data(), waiting.size(), -1) < 0 && errno == EINTR) continue;
    return waiting[0].revents != 0 || ::poll(waiting.data(), 1, kPatienceAtTheEnd) > 0;
}

}  // namespace

InputReader::InputReader(int descriptor, Receiver receive) : descriptor_(descriptor), receive_(std::move(receive)) {
    notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
}

void InputReader::read() {
    std::array<char, 65536> buffer;
    const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count <= 0) notifier_->setEnabled(false);
    receive_(QByteArray(buffer.data(), count > 0 ? count : 0));
}

bool writeAll(int descriptor, const QByteArray& bytes) {
    // No more at once than a pipe with room takes whole: a longer write would wait where no signal ends it.
    constexpr qsizetype kPiece = PIPE_BUF;
    qsizetype done = 0;
    while (done < bytes.size()) {
        if (!awaitRoom(descriptor)) return false;
        const qsizetype piece = std::min(kPiece, bytes.size() - done);
        const ssize_t count = ::write(descriptor, bytes.constData() + done, static_cast<size_t>(piece));
        if (count >= 0)
            done += count;
        else if (errno != EAGAIN && errno != EINTR)
            return false;
    }
    return true;
}

void Output::write(const QByteArray& bytes) {
    if (lost_ || writeAll(descriptor_, bytes)) return;
    lost_ = true;
    // Whoever wrote is in the middle of its work.
    QTimer::singleShot(0, &context_, [this] {
        if (onLost_) onLost_();
    });
}

SignalWatcher::SignalWatcher(std::vector<int> numbers, Handler handle)
    : numbers_(std::move(numbers)), handle_(std::move(handle)) {
    if (::pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0) return;
    signalPipe = pipe_[1];
    endingEvent = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
    for (const int signal : numbers_) {
        struct sigaction action = {};
        action.sa_handler = onSignal;
        action.sa_flags = SA_RESTART;
        ::sigaction(signal, &action, nullptr);
    }
}

SignalWatcher::~SignalWatcher() {
    for (const int signal : numbers_) std::signal(signal, SIG_DFL);
    notifier_.reset();
    signalPipe = -1;
    for (const int end : {pipe_[0], pipe_[1], static_cast<int>(std::exchange(endingEvent, -1))})
        if (end >= 0) ::close(end);
}

void SignalWatcher::read() {
    std::array<unsigned char, 64> buffer;
    const ssize_t count = ::read(pipe_[0], buffer.data(), buffer.size());
    for (ssize_t at = 0; at < count; ++at) handle_(buffer[static_cast<std::size_t>(at)]);
}

}  // namespace oku::terminal
