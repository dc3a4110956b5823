// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

namespace oku::net {

/// A one-shot timer whose time stands still while it is paused.
class PausableTimer : public QTimer {
public:
    explicit PausableTimer(QObject* parent) : QTimer(parent) { setSingleShot(true); }

    void begin(int milliseconds) {
        left_ = milliseconds;
        running_ = true;
        if (!paused_) start(left_);
    }

    bool isBegun() const { return running_; }

    void cancel() {
        running_ = false;
        stop();
    }

    void setPaused(bool paused) {
        if (paused == paused_) return;
        paused_ = paused;
        if (!running_) return;
        if (paused) {
            left_ = isActive() ? remainingTime() : 0;
            stop();
        } else {
            start(left_);
        }
    }

private:
    int left_ = 0;
    bool running_ = false;
    bool paused_ = false;
};

}  // namespace oku::net
