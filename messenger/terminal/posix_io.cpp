// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/posix_io.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <csignal>
#include <QTimer>
#include <utility>

namespace oku::terminal {
namespace {

// Written by the signal handler, which can reach nothing else.
volatile std::sig_atomic_t signalPipe = -1;
// Seconds since a signal asked the program to end.
volatile std::sig_atomic_t ticks = 0;

// How many ticks a write waits for its reader once the program is to end; one that is only slow gets the last lines.
constexpr int kPatientTicks = 2;

constexpr qsizetype kMostWaiting = 65536;  // bytes that are written together

void onTick(int) {
    ticks = ticks + 1;
    ::alarm(1);
}

// From then on a signal a second breaks off any wait for a reader, so that it can be given up. A terminal may have room
// and still not take what is written, so there is no knowing beforehand whether a write will wait.
void startTicking() {
    struct sigaction action = {};
    action.sa_handler = onTick;
    ::sigaction(SIGALRM, &action, nullptr);
    ::alarm(1);
}

void onSignal(int signal) {
    const int saved = errno;
    const auto byte = static_cast<unsigned char>(signal);
    // When the pipe is full a signal is under way already, and the result changes nothing.
    [[maybe_unused]] const auto written = ::write(signalPipe, &byte, 1);
    if (signal != SIGWINCH) {
        startTicking();
        std::signal(signal, SIG_DFL);
    }
    errno = saved;
}

}  // namespace

bool fillStandardDescriptors() {
    constexpr std::array kModes = {O_RDONLY, O_PATH, O_WRONLY};  // no write reaches what is open as a path
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) >= 0) continue;
        // The lowest number that is free is given, and those below are in use by now.
        if (::open("/dev/null", kModes[static_cast<std::size_t>(descriptor)]) != descriptor) return false;
    }
    return true;
}

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
    qsizetype done = 0;
    int patienceEnds = ticks + kPatientTicks;
    while (done < bytes.size() && ticks < patienceEnds) {
        const ssize_t count = ::write(descriptor, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count >= 0) {
            done += count;
            patienceEnds = ticks + kPatientTicks;
        } else if (errno == EAGAIN) {
            pollfd waiting{descriptor, POLLOUT, 0};
            ::poll(&waiting, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return done == bytes.size();
}

void Output::write(const QByteArray& bytes) {
    if (lost_ || writeAll(descriptor_, bytes)) return;
    lost_ = true;
    // Whoever wrote is in the middle of its work.
    QTimer::singleShot(0, &context_, [this] {
        if (onLost_) onLost_();
    });
}

void Output::writeSoon(const QByteArray& bytes) {
    if (waiting_.isEmpty())
        QMetaObject::invokeMethod(
            &context_, [this] { flush(); }, Qt::QueuedConnection);
    waiting_ += bytes;
    if (waiting_.size() >= kMostWaiting) flush();
}

void Output::flush() {
    if (waiting_.isEmpty()) return;
    write(waiting_);
    waiting_.resize(0);
}

SignalWatcher::SignalWatcher(std::vector<int> numbers, Handler handle)
    : numbers_(std::move(numbers)), handle_(std::move(handle)) {
    if (::pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0) return;
    signalPipe = pipe_[1];
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
    ::alarm(0);
    ticks = 0;
    notifier_.reset();
    signalPipe = -1;
    for (const int end : pipe_)
        if (end >= 0) ::close(end);
}

void SignalWatcher::read() {
    std::array<unsigned char, 64> buffer;
    const ssize_t count = ::read(pipe_[0], buffer.data(), buffer.size());
    for (ssize_t at = 0; at < count; ++at) handle_(buffer[static_cast<std::size_t>(at)]);
}

}  // namespace oku::terminal
