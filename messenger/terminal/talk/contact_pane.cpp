// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/contact_pane.h"

#include <algorithm>
#include <utility>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kColumnsForBoth = 64;   // narrower screens show the list or the log
constexpr int kColumnsUnasked = 100;  // narrower screens show it beside the log to who asked for it
constexpr int kNarrowest = 18;
constexpr int kWidest = 32;
constexpr std::size_t kMostTouched = 20'000;  // more of them are read anew, all at once

// What stands at the right end of a row.
QString unreadSign(int unread) { return unread > 0 ? QStringLiteral("(%1)").arg(unread) : QString(); }

Line row(const Line& left, const QString& right, Style rightStyle, int columns, bool chosen) {
    Line line = cutLine(left, std::max(0, columns - displayWidth(right)));
    const int missing = columns - lineWidth(line) - displayWidth(right);
    if (missing > 0) line.push_back({QString(missing, u' '), Style::Plain});
    if (!right.isEmpty()) line.push_back({right, rightStyle});
    if (!chosen) return cutLine(line, columns);
    for (Span& span : line) span.style = span.style == Style::Theirs ? Style::BarAlert : Style::Bar;
    return cutLine(line, columns);
}

Line groupLine(const TreeRow& group, int columns, bool chosen) {
    const QString name = group.contact.stranger ? say(Text::NotOnRoster) : oneLine(group.contact.group);
    const QString counts = QStringLiteral(" (%1/%2)").arg(group.reachable).arg(group.members);
    const int room = std::max(1, columns - 2 - displayWidth(counts));
    const QString cut = displayWidth(name) > room ? fitToWidth(name, room) : name;
    const QString right = group.folded ? unreadSign(group.unread) : QString();
    return row({{(group.folded ? u'▸' : u'▾') + QStringLiteral(" ") + cut, Style::Heading}, {counts, Style::Faint}},
               right, Style::Theirs, columns, chosen);
}

}  // namespace

void ContactPane::reset() {
    stale_ = true;
    touched_.clear();
}

void ContactPane::touch(const Peer& peer) {
    if (stale_) return;
    touched_.emplace(peer.account, peer.jid);
    if (touched_.size() > kMostTouched) reset();
}

void ContactPane::update() {
    tree_.showReachableOnly(session_.contactView().reachableOnly());
    if (std::exchange(stale_, false)) {
        tree_.reset(session_.contacts().accountNames());
        session_.contacts().eachListed([this](const ListedContact& contact) { tree_.put(contact); });
        return;
    }
    for (const auto& [account, jid] : std::exchange(touched_, {})) {
        if (const auto contact = session_.contacts().listed({account, jid}))
            tree_.put(*contact);
        else
            tree_.remove({account, jid});
    }
}

int ContactPane::columnsOf(int screen) const {
    const auto wish = session_.contactView().shown();
    const bool shown = wish.value_or(screen >= kColumnsUnasked) || focused_;
    if (!shown) return 0;
    if (screen < kColumnsForBoth) return focused_ ? screen : 0;
    return std::clamp(screen / 4, kNarrowest, kWidest);
}

// Where the cursor is now: its contact may have moved, or be gone.
ContactTree::Place ContactPane::cursor() const {
    if (!cursorPeer_.none()) {
        const auto place = tree_.find(cursorPeer_);
        if (place != tree_.end()) return tree_.at(place->first);
    }
    const auto place = cursor_ ? tree_.at(*cursor_) : tree_.first();
    return place == tree_.end() ? tree_.last() : place;
}

void ContactPane::moveTo(ContactTree::Place place) {
    if (place == tree_.end()) return;
    cursor_ = place->first;
    cursorPeer_ = place->second.kind == TreeRow::Kind::Contact ? place->second.contact.peer : Peer{};
}

void ContactPane::moveBy(int rows) {
    auto place = cursor();
    for (; rows != 0 && place != tree_.end(); rows += rows < 0 ? 1 : -1) {
        const auto other = rows < 0 ? tree_.before(place) : tree_.next(place);
        if (other == tree_.end()) break;
        place = other;
    }
    moveTo(place);
}

void ContactPane::foldGroup(bool folded) {
    const auto place = cursor();
    if (place == tree_.end()) return;
    const auto heading = ContactTree::headingOf(place->first);
    tree_.fold(heading, folded);
    moveTo(tree_.at(heading));
}

void ContactPane::focus() {
    update();
    focused_ = true;
    moveTo(cursor());
}

bool ContactPane::handleMove(KeyCode code) {
    switch (code) {
        case KeyCode::Up:
            moveBy(-1);
            return true;
        case KeyCode::Down:
            moveBy(1);
            return true;
        case KeyCode::PageUp:
        case KeyCode::PanePageUp:
            moveBy(-std::max(1, rows_ - 1));
            return true;
        case KeyCode::PageDown:
        case KeyCode::PanePageDown:
            moveBy(std::max(1, rows_ - 1));
            return true;
        case KeyCode::Home:
            moveTo(tree_.first());
            return true;
        case KeyCode::End:
            moveTo(tree_.last());
            return true;
        case KeyCode::Left:
            foldGroup(true);
            return true;
        case KeyCode::Right:
            foldGroup(false);
            return true;
        default:
            return false;
    }
}

ContactPane::Outcome ContactPane::handle(const Key& key) {
    update();
    if (handleMove(key.code)) return {};
    const bool space = key.code == KeyCode::Text && key.text == QStringLiteral(" ");
    if (key.code == KeyCode::Escape || key.code == KeyCode::Cancel) {
        leave();
        return {};
    }
    if (key.code != KeyCode::Enter && !space) {
        leave();
        return {false, {}};
    }
    const auto place = cursor();
    if (place == tree_.end()) return {};
    if (key.code == KeyCode::Enter && place->second.kind == TreeRow::Kind::Contact) {
        leave();
        return {true, place->second.contact.peer};
    }
    foldGroup(place->second.kind == TreeRow::Kind::Contact || !place->second.folded);
    return {};
}

// The conversation that is looked at stays in sight, unless somebody moves about in the list.
void ContactPane::followConversation() {
    const Peer current = session_.windows().current();
    if (focused_ || current == followed_) return;
    followed_ = current;
    const auto place = tree_.find(current);
    if (place != tree_.end()) moveTo(tree_.at(place->first));
}

// The first row that is seen: the one of the last time, where the cursor is seen then.
ContactTree::Place ContactPane::topFor(ContactTree::Place cursor, int rows) const {
    auto top = top_ ? tree_.at(*top_) : tree_.first();
    if (top != tree_.end() && !(cursor->first < top->first)) {
        auto place = top;
        for (int row = 0; row < rows && place != tree_.end(); ++row, place = tree_.next(place))
            if (place == cursor) return top;
        top = cursor;
        for (int row = 1; row < rows; ++row) {
            const auto above = tree_.before(top);
            if (above == tree_.end()) break;
            top = above;
        }
        return top;
    }
    return cursor;
}

Line ContactPane::contactLine(const ListedContact& contact, int columns, bool chosen) const {
    const bool current = contact.peer == session_.windows().current();
    const bool unseen = contact.hidden && contact.status == Status::offline;
    const QString mark = QString(current ? u'>' : u' ') + (unseen ? QChar(u'?') : statusMark(contact.status)) + u' ';
    const Style style = statusStyle(contact.status);
    const Style nameStyle = contact.unread > 0 ? Style::Theirs : current ? Style::Heading : style;
    const QString typing = session_.windows().isTyping(contact.peer) ? QStringLiteral("…") : QString();
    const QString right = typing + unreadSign(contact.unread);
    return row({{mark, style}, {oneLine(contact.name), nameStyle}}, right.isEmpty() ? right : u' ' + right,
               Style::Theirs, columns, chosen);
}

std::vector<Line> ContactPane::lines(int columns, int rows) {
    update();
    followConversation();
    rows_ = rows;
    std::vector<Line> result;
    const auto chosen = cursor();
    if (chosen == tree_.end()) {
        const QString why = say(tree_.empty() ? Text::RosterEmpty : Text::RosterNoneFits);
        for (const QString& text : wrapText(why, columns, columns)) result.push_back({{text, Style::Faint}});
        return result;
    }
    auto place = topFor(chosen, rows);
    top_ = place->first;
    for (; static_cast<int>(result.size()) < rows && place != tree_.end(); place = tree_.next(place)) {
        const TreeRow& shown = place->second;
        const bool marked = focused_ && place == chosen;
        if (shown.kind == TreeRow::Kind::Contact)
            result.push_back(contactLine(shown.contact, columns, marked));
        else if (shown.kind == TreeRow::Kind::Group)
            result.push_back(groupLine(shown, columns, marked));
        else
            result.push_back(
                row({{oneLine(shown.contact.peer.account), Style::Heading}}, {}, Style::Plain, columns, marked));
    }
    return result;
}

}  // namespace oku::terminal
