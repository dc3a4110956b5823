// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

namespace oku::net {

/// Counts logins that fail in a row after the socket opened. The plugin dials again after 3 s for ever when a server
/// takes the connection and then drops it; this is what keeps it from hammering that server.
class LoginPacer {
public:
    LoginPacer(int after, int first, int most) : after_(after), first_(first), most_(most) {}

    void failed() { ++failures_; }
    void reset() { failures_ = 0; }
    int failures() const { return failures_; }

    /// Milliseconds to wait before the next dial: none before `after` failures, then twice as long each time.
    int delay() const {
        if (failures_ < after_) return 0;
        long long delay = first_;
        for (int i = after_; i < failures_ && delay < most_; ++i) delay *= 2;
        return static_cast<int>(std::min<long long>(delay, most_));
    }

private:
    int after_;
    int first_;
    int most_;
    int failures_ = 0;
};

}  // namespace oku::net
