// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QString>
#include <QStringList>

#include "messenger/terminal/screen/edited_text.h"
#include "messenger/terminal/screen/key.h"

namespace oku::terminal {

/// What may stand in place of the text from `start` up to the cursor.
struct Completion {
    qsizetype start = 0;
    QStringList candidates;
};

enum class EditResult {
    Ignored,   ///< the key means nothing to the editor
    Changed,   ///< text, cursor or candidates changed
    Submitted  ///< `takeSubmitted` has a line
};

/// The line being typed: editing, history, completion. Knows nothing of the display but widths.
class LineEditor {
public:
    using Completer = std::function<Completion(const QString& text, qsizetype cursor)>;

    explicit LineEditor(Completer completer = {}) : completer_(std::move(completer)) {}

    EditResult handle(const Key& key);

    const QString& text() const { return line_.text(); }
    qsizetype cursor() const { return line_.cursor(); }
    /// Candidates to show after a completion that is not finished; empty otherwise.
    const QStringList& candidates() const { return candidates_; }
    /// The one that stands in the line; -1 before the second Tab.
    qsizetype candidateAt() const { return candidateAt_; }
    bool searching() const { return searching_; }
    const QString& searchText() const { return searchText_; }
    /// Whether an earlier line has the text.
    bool searchFound() const { return searchFound_; }

    /// The line that was submitted last; it is also in the history unless secret.
    QString takeSubmitted() { return std::exchange(submitted_, {}); }

    /// Takes it out of the history.
    void forgetSubmitted();

    void setText(const QString& text);
    void clear() { setText({}); }

    /// A secret line is not shown and does not enter the history.
    void setSecret(bool secret);
    bool secret() const { return secret_; }

    /// The line as shown in `columns`, scrolled so that the cursor is seen; line feeds show as a sign.
    EditorView view(int columns) { return secret_ ? EditorView() : line_.view(columns); }

private:
    void complete(bool backwards);
    void placeCandidate(const QString& candidate);
    void walkHistory(int step);
    EditResult submit();
    EditResult handleSearch(const Key& key);
    void search(bool next);
    EditResult edit(const Key& key);

    Completer completer_;
    EditedText line_;
    QString submitted_;
    bool keptSubmitted_ = false;  ///< it is the last one in the history
    bool secret_ = false;

    QStringList history_;
    qsizetype historyAt_ = 0;  ///< history_.size() is the line being typed
    QString draft_;

    QStringList candidates_;
    qsizetype completionStart_ = 0;
    qsizetype candidateAt_ = -1;

    bool searching_ = false;
    QString searchText_;
    qsizetype searchAt_ = 0;
    bool searchFound_ = true;
};

}  // namespace oku::terminal
