// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/secret_prompt.h"

#include <utility>

#include "messenger/terminal/texts.h"

namespace oku::terminal {

void SecretPrompt::ask(const QString& question, std::function<void(const QString&)> use) {
    request_ = std::make_unique<Request>(Request{question, std::move(use)});
    display_.changed();
}

void SecretPrompt::submit(const QString& answer) {
    if (answer.isEmpty()) {
        cancel();
        return;
    }
    const auto request = std::exchange(request_, nullptr);
    request->use(answer);
    display_.changed();
}

void SecretPrompt::cancel() {
    if (!request_) return;
    request_.reset();
    log_.tell(say(Text::SecretCancelled));
}

}  // namespace oku::terminal
