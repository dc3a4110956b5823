// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The rest of a command's line, taken apart word by word.
#pragma once

#include <QString>

namespace oku::terminal {

class Arguments {
public:
    explicit Arguments(QString text) : rest_(text.trimmed()) {}

    bool empty() const { return rest_.isEmpty(); }

    /// The next word, or what stands in double quotes (a backslash takes the next character as it is). Empty when there
    /// is none.
    QString word();
    /// All that is left, as it was typed; a single quoted text loses its quotes.
    QString rest();
    /// All that is left, word for word what was typed.
    QString verbatim();

private:
    QString rest_;
};

/// The text so that Arguments::word gives it back: in quotes when it has blanks or quotes.
QString quoted(const QString& text);

}  // namespace oku::terminal
