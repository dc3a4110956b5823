// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The list of contacts beside the log: what of it is seen, and the keys that move in it.
#pragma once

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "messenger/terminal/screen/key.h"
#include "messenger/terminal/screen/style.h"
#include "messenger/terminal/talk/contact_tree.h"

namespace oku::terminal {

class Session;

class ContactPane {
public:
    explicit ContactPane(const Session& session) : session_(session) {}

    /// All contacts may be others, or this one; looked at when the pane is drawn the next time.
    void reset();
    void touch(const Peer& peer);

    /// The keys go to the pane.
    bool focused() const { return focused_; }
    void focus();
    void leave() { focused_ = false; }

    /// What a key did in the focused pane.
    struct Outcome {
        bool taken = true;
        std::optional<Peer> opened;
    };
    Outcome handle(const Key& key);

    /// Columns that the pane takes of a screen: 0 where it is not seen, all of them where there is no room beside it.
    int columnsOf(int screen) const;
    /// The rows that are seen; none are laid out beside those.
    std::vector<Line> lines(int columns, int rows);

private:
    void update();
    void followConversation();
    void moveTo(ContactTree::Place place);
    void moveBy(int rows);
    void foldGroup(bool folded);
    bool handleMove(KeyCode code);
    ContactTree::Place cursor() const;
    ContactTree::Place topFor(ContactTree::Place cursor, int rows) const;
    Line contactLine(const ListedContact& contact, int columns, bool chosen) const;

    const Session& session_;
    ContactTree tree_;
    bool stale_ = true;                              ///< the tree has to be built anew
    std::set<std::pair<QString, QString>> touched_;  ///< by account and JID
    bool focused_ = false;
    int rows_ = 1;  ///< seen the last time
    std::optional<ContactTree::Key> cursor_;
    Peer cursorPeer_;  ///< where a contact is, which may move
    std::optional<ContactTree::Key> top_;
    Peer followed_;  ///< the conversation that was seen the last time
};

}  // namespace oku::terminal
