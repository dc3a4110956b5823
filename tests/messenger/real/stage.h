// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <functional>
#include <memory>
#include <QDir>
#include <QTemporaryDir>

#include "messenger/core/host_core.h"
#include "tests/messenger/real/server.h"

namespace oku::test {

/// The real plugin in a real host, with one account on a server of the test's.
class RealStage : public testing::Test {
protected:
    ~RealStage() override;
    void TearDown() override;

    /// Starts the host; `settings` are further lines of the account's file.
    void start(bool guarded, const QByteArray& settings = "OKU/AllowClearText = 1\n");
    /// Starts it and logs in.
    void logIn(bool guarded);
    AccountEntry& entry() const { return *core->accounts.all().front(); }
    /// How long to wait for what must come. A test that lives by a faster clock needs more of it.
    static inline int patience = 60'000;
    /// Lets the event loop run until `condition` holds; false after `milliseconds`.
    static bool waitFor(const std::function<bool()>& condition, int milliseconds = patience);
    /// What the server said so far has been handled when this returns.
    void settle();

    int loginSeconds = 60;
    bool verbose = false;
    QTemporaryDir directory;
    Server server;
    std::unique_ptr<HostCore> core;
    QStringList notices;
    QList<Message> received;
    QStringList states;  ///< words of the connection's states

private:
    QString before_ = QDir::currentPath();
    int settled_ = 0;
};

}  // namespace oku::test
