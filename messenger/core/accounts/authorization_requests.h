// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QStringList>

namespace oku {

/// Who asked to see the own presence and waits for an answer. Anybody can ask, so there is a bound.
class AuthorizationRequests {
public:
    enum class Taken {
        yes,      ///< waits for an answer now, or did before
        first,    ///< the first for which there is no room
        further,  ///< one more for which there is no room
    };

    Taken add(const QString& jid) {
        if (known_.contains(jid)) return Taken::yes;
        if (inOrder_.size() >= kMost) return std::exchange(overflowing_, true) ? Taken::further : Taken::first;
        known_.insert(jid);
        inOrder_.append(jid);
        return Taken::yes;
    }

    void remove(const QString& jid) {
        if (!known_.remove(jid)) return;
        inOrder_.removeOne(jid);
        overflowing_ = false;
    }

    /// In the order in which they came.
    [[nodiscard]] const QStringList& list() const { return inOrder_; }

private:
    static constexpr qsizetype kMost = 1000;

    QStringList inOrder_;
    QSet<QString> known_;
    bool overflowing_ = false;
};

}  // namespace oku
