// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Standard input and output and signals as the event loop needs them.
#pragma once

#include <functional>
#include <memory>
#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <utility>
#include <vector>

namespace oku::terminal {

/// Fills the place of each standard descriptor that is closed, which the next file to be opened would take: with an
/// input at its end, an output that nobody reads, and one for errors that takes all. To be called before any file is
/// opened. False when there is nothing to fill it with.
[[nodiscard]] bool fillStandardDescriptors();

/// Hands on what comes on a file descriptor; an empty piece is its end, after which nothing follows.
class InputReader {
public:
    using Receiver = std::function<void(const QByteArray& bytes)>;

    InputReader(int descriptor, Receiver receive);

private:
    void read();

    int descriptor_;
    Receiver receive_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

/// Writes all bytes, waiting as long as it takes; once a signal asks the program to end, only a moment longer for a
/// reader that takes nothing. False when not all could be written.
bool writeAll(int descriptor, const QByteArray& bytes);

/// A descriptor that is written to for as long as somebody reads: with the first write that fails it is lost, and
/// nothing is written any more.
class Output {
public:
    explicit Output(int descriptor) : descriptor_(descriptor) {}

    void write(const QByteArray& bytes);
    /// Writes at the end of this turn of the event loop, together with what else comes in it.
    void writeSoon(const QByteArray& bytes);
    void flush();
    bool lost() const { return lost_; }
    /// Called once from the event loop when the output is lost.
    void whenLost(std::function<void()> onLost) { onLost_ = std::move(onLost); }

private:
    int descriptor_;
    bool lost_ = false;
    QByteArray waiting_;
    std::function<void()> onLost_;
    QObject context_;
};

/// Calls `handle` in the event loop for each of the signals. A signal that asks the program to end (all but SIGWINCH)
/// is handled once; the second one ends the program in the usual way, so that a program that hangs can be ended.
/// One object a process.
class SignalWatcher {
public:
    using Handler = std::function<void(int signal)>;

    SignalWatcher(std::vector<int> numbers, Handler handle);
    ~SignalWatcher();
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;

private:
    void read();

    std::vector<int> numbers_;
    Handler handle_;
    int pipe_[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace oku::terminal
