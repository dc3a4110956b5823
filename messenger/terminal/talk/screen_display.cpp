// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/screen_display.h"

#include <algorithm>
#include <utility>

#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kDrawDelay = 15;    // milliseconds: what comes together is drawn together
constexpr int kEscapeDelay = 50;  // milliseconds after which an escape was the key of this name

}  // namespace

ScreenDisplay::ScreenDisplay(MessengerFace& messenger, SessionOptions options, Colours colours, ScreenSize size,
                             Writer write, std::function<void()> onEnded)
    : size_(size),
      write_(std::move(write)),
      onEnded_(std::move(onEnded)),
      painter_(colours),
      session_(messenger, *this, std::move(options)),
      pane_(session_),
      editor_([this](const QString& text, qsizetype cursor) { return session_.complete(text, cursor); }) {
    drawSoon_.setSingleShot(true);
    escapeAlone_.setSingleShot(true);
    escapeAlone_.setInterval(kEscapeDelay);
    QObject::connect(&drawSoon_, &QTimer::timeout, &drawSoon_, [this] { draw(); });
    QObject::connect(&escapeAlone_, &QTimer::timeout, &escapeAlone_, [this] {
        for (const Key& key : decoder_.flush()) handle(key);
    });
}

void ScreenDisplay::show() {
    shown_ = true;
    changed();
}

void ScreenDisplay::resize(const ScreenSize& size) {
    size_ = size;
    painter_.forget();
    changed();
}

void ScreenDisplay::feed(const QByteArray& bytes) {
    if (bytes.isEmpty()) {
        session_.quit();
        return;
    }
    escapeAlone_.stop();
    for (const Key& key : decoder_.feed(bytes)) handle(key);
    if (decoder_.pending()) escapeAlone_.start();
}

void ScreenDisplay::handle(const Key& key) {
    // Keys may come faster than the screen is drawn.
    hideSecrets();
    if (!handlePaneKey(key) && !handleWindowKey(key)) edited(editor_.handle(key));
    changed();
}

bool ScreenDisplay::handlePaneKey(const Key& key) {
    switch (key.code) {
        case KeyCode::PaneToggle:
            togglePane();
            return true;
        case KeyCode::PaneFocus:
            pane_.focused() ? pane_.leave() : pane_.focus();
            return true;
        case KeyCode::PaneReachable: {
            ContactView& view = session_.contactView();
            view.setReachableOnly(!view.reachableOnly());
            return true;
        }
        case KeyCode::PanePageUp:
        case KeyCode::PanePageDown:
            pane_.focus();
            break;
        default:
            if (!pane_.focused()) return false;
    }
    const ContactPane::Outcome outcome = pane_.handle(key);
    if (outcome.opened) {
        scroll_ = 0;
        session_.conversations().open(*outcome.opened);
    }
    return outcome.taken;
}

// Where there is no room beside the log, the list stands in its place for as long as one moves in it.
void ScreenDisplay::togglePane() {
    const int columns = pane_.columnsOf(size_.columns);
    session_.contactView().setShown(columns == 0);
    if (columns > 0)
        pane_.leave();
    else if (pane_.columnsOf(size_.columns) == 0)
        pane_.focus();
}

void ScreenDisplay::showNeighbour(int step) {
    const int count = static_cast<int>(session_.windows().conversations().size()) + 1;
    if (session_.conversations().show((session_.windows().currentNumber() + step + count) % count)) scroll_ = 0;
}

int ScreenDisplay::logColumns() const { return terminal::logColumns(size_, pane_.columnsOf(size_.columns)); }

bool ScreenDisplay::handleWindowKey(const Key& key) {
    switch (key.code) {
        case KeyCode::PageUp:
            scrollBy(std::max(1, logRows(size_) - 1));
            return true;
        case KeyCode::PageDown:
            scrollBy(-std::max(1, logRows(size_) - 1));
            return true;
        case KeyCode::PreviousWindow:
        case KeyCode::NextWindow:
            showNeighbour(key.code == KeyCode::NextWindow ? 1 : -1);
            return true;
        case KeyCode::Redraw:
            painter_.forget();
            return true;
        case KeyCode::Cancel:
            if (editor_.searching()) return false;
            cancel();
            return true;
        case KeyCode::EndOfInput:
            if (!editor_.text().isEmpty())
                edited(editor_.handle({KeyCode::Delete, {}}));
            else
                session_.quit();
            return true;
        case KeyCode::End:
            if (scroll_ == 0) return false;
            scroll_ = 0;
            return true;
        case KeyCode::Alt:
            break;
        default:
            return false;
    }
    const QChar c = key.text.isEmpty() ? QChar() : key.text.front();
    const int next = c.toLower() == u'a' ? session_.windows().nextUnread() : c.isDigit() ? c.digitValue() : -1;
    if (next >= 0 && session_.conversations().show(next)) scroll_ = 0;
    return true;
}

void ScreenDisplay::scrollBy(int lines) { scroll_ = std::max(0, scroll_ + lines); }

void ScreenDisplay::cancel() {
    if (session_.secret().wanted())
        session_.secret().cancel();
    else if (editor_.text().isEmpty())
        session_.log().tell(say(Text::HowToQuit));
    editor_.clear();
    session_.typed({});
}

void ScreenDisplay::edited(EditResult result) {
    if (result == EditResult::Submitted) {
        scroll_ = 0;
        session_.submit(editor_.takeSubmitted());
        // What leads to such a question may have held the answer already.
        if (session_.secret().wanted()) editor_.forgetSubmitted();
    } else if (result == EditResult::Changed) {
        session_.typed(editor_.text());
    }
}

void ScreenDisplay::appended(const LogEntry& entry) {
    if (scroll_ == 0) return;
    // Who reads above keeps the place.
    LogLayout layout = session_.view().layout();
    layout.columns = logColumns();
    scroll_ += static_cast<int>(layOut(entry, layout).size());
}

void ScreenDisplay::changed() {
    if (!shown_ || drawSoon_.isActive()) return;
    // A key shows at once, unless something was drawn just before.
    const qint64 sinceDrawn = drawn_.isValid() ? drawn_.elapsed() : kDrawDelay;
    drawSoon_.start(static_cast<int>(std::clamp<qint64>(kDrawDelay - sinceDrawn, 0, kDrawDelay)));
}

void ScreenDisplay::ended() {
    shown_ = false;
    drawSoon_.stop();
    onEnded_();
}

void ScreenDisplay::hideSecrets() {
    if (editor_.secret() != session_.secret().wanted()) editor_.setSecret(session_.secret().wanted());
}

void ScreenDisplay::draw() {
    drawn_.start();
    hideSecrets();
    ScreenContent content;
    content.title = session_.view().title();
    content.entries = session_.log().entries();
    content.layout = session_.view().layout();
    content.scroll = scroll_;
    content.status = pane_.focused() ? Line{{u' ' + say(Text::PaneHint), Style::Bar}} : session_.view().status();
    content.paneColumns = pane_.columnsOf(size_.columns);
    if (content.paneColumns > 0) content.pane = pane_.lines(content.paneColumns, logRows(size_));
    content.prompt = session_.view().prompt();
    const Frame frame = composeFrame(content, editor_, size_);
    scroll_ = frame.scroll;
    write_(painter_.paintFrame(frame));
}

}  // namespace oku::terminal
