// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>
#include <QString>

#include "messenger/terminal/talk/display.h"
#include "messenger/terminal/talk/talk_log.h"

namespace oku::terminal {

/// The question for a text that is not shown, such as a password. The next line that is typed is its answer.
class SecretPrompt {
public:
    SecretPrompt(Display& display, TalkLog& log) : display_(display), log_(log) {}

    /// Hands the answer on to `use`. A question that is open goes.
    void ask(const QString& question, std::function<void(const QString& secret)> use);
    /// Whether one is open.
    [[nodiscard]] bool wanted() const { return static_cast<bool>(request_); }
    /// Of the open one.
    [[nodiscard]] const QString& question() const { return request_->question; }
    /// Takes the answer to the open one; an empty one cancels it.
    void submit(const QString& answer);
    void cancel();

private:
    struct Request {
        QString question;
        std::function<void(const QString&)> use;
    };

    Display& display_;
    TalkLog& log_;
    std::unique_ptr<Request> request_;
};

}  // namespace oku::terminal
