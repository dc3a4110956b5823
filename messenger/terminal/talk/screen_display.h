// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The interactive program on a whole screen: keys in, frames out.
#pragma once

#include <functional>
#include <QByteArray>
#include <QElapsedTimer>
#include <QTimer>

#include "messenger/terminal/screen/key.h"
#include "messenger/terminal/screen/line_editor.h"
#include "messenger/terminal/screen/screen.h"
#include "messenger/terminal/talk/contact_pane.h"
#include "messenger/terminal/talk/session.h"

namespace oku::terminal {

class ScreenDisplay final : public Display {
public:
    using Writer = std::function<void(const QByteArray& bytes)>;

    /// `onEnded` is called when the messenger is unloaded.
    ScreenDisplay(MessengerFace& messenger, SessionOptions options, Colours colours, ScreenSize size, Writer write,
                  std::function<void()> onEnded);

    Session& session() { return session_; }

    /// From now on frames are written.
    void show();
    void resize(const ScreenSize& size);
    /// Bytes from the terminal; none at all is its end.
    void feed(const QByteArray& bytes);

    void appended(const LogEntry& entry) override;
    void changed() override;
    int columns() const override { return size_.columns; }
    int logColumns() const override;
    void contactTouched(const Peer& peer) override { pane_.touch(peer); }
    void contactsReset() override { pane_.reset(); }
    void ended() override;

private:
    void handle(const Key& key);
    /// True for a key that is not the editor's.
    bool handleWindowKey(const Key& key);
    /// True for a key that moved in the list of contacts, or is about it.
    bool handlePaneKey(const Key& key);
    void togglePane();
    void showNeighbour(int step);
    void scrollBy(int lines);
    void cancel();
    void edited(EditResult result);
    void draw();
    /// The line is not shown while a secret is asked for.
    void hideSecrets();

    ScreenSize size_;
    Writer write_;
    std::function<void()> onEnded_;
    FramePainter painter_;
    KeyDecoder decoder_;
    int scroll_ = 0;
    bool shown_ = false;
    QTimer drawSoon_;
    QElapsedTimer drawn_;  ///< since the last time
    QTimer escapeAlone_;
    Session session_;
    ContactPane pane_;
    LineEditor editor_;
};

}  // namespace oku::terminal
