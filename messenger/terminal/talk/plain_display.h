// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The interactive program without a screen: lines in, lines out. For pipes, logs and terminals that can do no more.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <QByteArray>

#include "messenger/terminal/screen/raw_terminal.h"
#include "messenger/terminal/talk/session.h"

namespace oku::terminal {

class PlainDisplay final : public Display {
public:
    using Writer = std::function<void(const QByteArray& bytes)>;

    /// `columns` 0: lines are as long as they are. `input` is where passwords are typed.
    PlainDisplay(MessengerFace& messenger, SessionOptions options, Colours colours, int columns, int input,
                 Writer write, std::function<void()> onEnded);

    /// What a terminal is told so that it brackets what is pasted, and what takes that back.
    static QByteArray markPastes();
    static QByteArray leavePastes();

    Session& session() { return session_; }
    /// Bytes of the input, cut anywhere; none at all is its end. A line may hold whoever submits it in an event loop,
    /// from which more is fed: lines are submitted in their order all the same.
    void feed(const QByteArray& bytes);

    void appended(const LogEntry& entry) override;
    void changed() override;
    int columns() const override;
    void ended() override { onEnded_(); }

private:
    Colours colours_;
    int columns_;
    int inputDescriptor_;
    Writer write_;
    std::function<void()> onEnded_;
    std::optional<QByteArray> nextLine();
    void takeLine(QByteArray line);

    QByteArray input_;
    qsizetype taken_ = 0;  ///< so much at the front of `input_` was submitted
    /// The line so far that was pasted, or holds what was: a paste may go over several lines of the input.
    QByteArray pieces_;
    bool pasting_ = false;
    bool beginsPasted_ = false;
    std::unique_ptr<NoEcho> noEcho_;
    Session session_;
};

}  // namespace oku::terminal
